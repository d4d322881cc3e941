#pragma once

#include <QDockWidget>
#include <QString>
#include <QStringList>
#include <QThreadPool>

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

/// The stocks at hand: a list of bar files with last price and today's change, which are read in the background. A file
/// that cannot be read stays in the list and says why. The list leaves the keyboard with the chart; only its filter
/// line takes it, until Return picks a stock or Escape gives up.
class WatchList : public QDockWidget {
    Q_OBJECT

public:
    explicit WatchList(QWidget* parent);
    ~WatchList() override;

    /// Lists other files, and shows itself if there are several.
    void setFiles(const QStringList& paths);
    /// Marks the file on show; none if it is not in the list.
    void setCurrentFile(const QString& path);

    /// Chooses the next file, or with -1 the one before, among those that the filter lets through; stops at the ends.
    void step(int direction);
    /// Takes the keyboard for the name of a stock.
    void startFilter();
    void applyTheme();

Q_SIGNALS:
    void fileChosen(const QString& path);
    /// The keyboard is free again.
    void filterLeft();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void readInBackground(const QString& path, int row);
    void tell(int row, const QString& last, double percent);
    void tellFailure(int row, const QString& reason);
    void filter(const QString& text);
    /// Chooses what the filter found: a name that begins with it, else one that holds it.
    void pick();
    void leaveFilter();
    void choose(QTreeWidgetItem* item);

    QLineEdit* filter_; // owned as child widgets
    QTreeWidget* list_;
    int generation_ = 0; ///< of the list; what was read for an earlier one is dropped
    QThreadPool readers_;
};
