#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

/// The window of a panel: a tool window that floats above the chart window it is attached to, without a place of its
/// own in the task switcher, moves along with that window and hides with it. It leaves the keyboard where it is when it
/// is shown and gives it back to the chart after a click; its tooltips show while the chart has it.
class QZPanelWindow : public QWidget {
    Q_OBJECT
public:
    /// `flags` are added to those of a tool window. Not shown yet.
    explicit QZPanelWindow(Qt::WindowFlags flags = {});

    /// Attaches to the window of `chart` and shows above it, as soon as that shows. Attached to another window before,
    /// it moves over.
    void addToWindowOf(const QWidget& chart);
    /// Lets go of the window of `chart`, if attached to it.
    void removeFromWindowOf(const QWidget& chart);
    [[nodiscard]] QWidget* chartWindow() const { return chartWindow_; }
    /// Whether the keyboard stays here after a click instead of going back to the chart.
    [[nodiscard]] virtual bool canBecomeKeyWindow() const { return false; }
    /// Gives the keyboard back to the chart after a control was used, if this panel or a dialog of its has it.
    void returnKeyboard();

Q_SIGNALS:
    /// The window is about to close, by its user or with its chart window.
    void willClose();
    /// The chart window got another size.
    void chartResized();

protected:
    void closeEvent(QCloseEvent* event) override;
    /// What no control of the panel takes goes to the chart: Escape and Delete work wherever the keyboard is.
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void attachTo(QWidget* window);
    /// A mouse button was released over it, wherever.
    void clicked();
    /// Gives the keyboard back unless a menu is open.
    void returnUnlessChoosing();

    QPointer<QWidget> chartWindow_;
    QWidget* outline_ = nullptr;  // a child, above the others
    bool showsWithChart_ = false; // hidden only as long as the chart window is
    QTimer secondReturn_;
};
