#pragma once

#include "panels/QZColorPicker.h"
#include "panels/QZPaintGraphConfigColorWell.h"
#include "panels/QZPaintTextConfigWCDelegate.h"
#include "panels/QZPaintTextConfigWindow.h"
#include "panels/QZPaintTextField.h"
#include "platform/QZNotificationCenter.h"

#include <QColor>
#include <QComboBox>
#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>

/// The editor of a text note: its text, colour and size. It is given the note's values and tells its delegate what the
/// user changes; it never touches a note. Setting a value tells nobody.
///
/// Its controls come from an interface file, by identifier: txtText, cwColor and popSize, whose items are sizes in px.
///
/// Main thread only, except for sharedWC().
class QZPaintTextConfigWC final : public QObject {
    Q_OBJECT
public:
    /// The application's editor, made with its window on first use.
    static QZPaintTextConfigWC& sharedWC();
    /// That editor if it was made, else null.
    static QZPaintTextConfigWC* existing();

    /// Loads the interface file of that name. Without a usable one there are no controls, with a line in the log.
    explicit QZPaintTextConfigWC(const QString& interfaceFile);
    ~QZPaintTextConfigWC() override;

    /// Lives as long as the editor. Not shown by it: see orderFront().
    [[nodiscard]] QZPaintTextConfigWindow& window() { return window_; }
    /// Shows the window above the one of `chart`, its top left corner at `topLeft` of the screen (px, y downwards) or
    /// as near as it fits there, with the keyboard in the text.
    void orderFront(const QWidget& chart, QPoint topLeft);

    /// Borrowed; forgotten when it is destroyed. Null for none.
    void setDelegate(QZPaintTextConfigWCDelegate* delegate);
    [[nodiscard]] QZPaintTextConfigWCDelegate* delegate() const;

    /// "新建" at first, at a size of 12.
    void setText(const QString& text);
    [[nodiscard]] QString text() const { return txtText_->toPlainText(); }

    void setColor(const QColor& color);
    [[nodiscard]] QColor color() const { return cwColor_->color(); }

    /// px. A size that the menu does not offer is shown in the field all the same, and no item is chosen.
    void setSize(std::int64_t size);
    /// The chosen item's, 0 when none is.
    [[nodiscard]] std::int64_t size() const;

    // What the controls do: each takes over its control's value and tells the delegate.

    /// The end of the edit: closes the window.
    void editedText();
    void selectedColor();
    void selectedSize();
    void controlTextDidChange();
    /// Makes the field as high as its text, and the window with it.
    void sizeToFit();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    template <typename Widget>
    Widget* outlet(const QString& name);
    void windowDidLoad();
    void applyTheme();
    void showFieldIn(const QColor& color);
    void showFieldAt(std::int64_t size);

    QZPaintTextConfigWindow window_;
    QZColorPicker colorPicker_{window_};
    QZPaintTextConfigWCDelegate* delegate_ = nullptr;
    std::weak_ptr<void> delegateLifetime_;

    // All of them are children of the window. A control that the interface file lacks is one that is never shown.
    QWidget* contents_ = nullptr; // null without a usable interface file
    QZPaintTextField* txtText_ = nullptr;
    QZPaintGraphConfigColorWell* cwColor_ = nullptr;
    QComboBox* popSize_ = nullptr;
    QString toldText_; // last, so that a keystroke which changes nothing is not reported

    QZObservation styleObservation_;
};
