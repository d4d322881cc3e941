#pragma once

#include "model/QZDrawingTypes.h"
#include "panels/QZColorPicker.h"
#include "panels/QZPaintGraphConfigColorWell.h"
#include "panels/QZPaintGraphConfigTitleView.h"
#include "panels/QZPaintGraphConfigWCDelegate.h"
#include "panels/QZPanelWindow.h"
#include "panels/QZPopUpButton.h"
#include "platform/QZNotificationCenter.h"

#include <QAbstractButton>
#include <QColor>
#include <QObject>

#include <array>
#include <cstdint>
#include <memory>

/// The graph configuration strip: a floating window that shows and edits the style of the selected figure. It is given
/// the figure's values and tells its delegate what the user changes; it never touches a figure. Setting a value tells
/// nobody.
///
/// Its controls come from an interface file, by identifier: titleView, boxVertical1 to boxVertical7 (the line before
/// each control), btnEdit, cwStrokeColor, cwFillColor, popLineType, popLineWidth, btnIsLocked and btnDelete. Values of
/// controls that the file leaves out are kept all the same.
///
/// Main thread only, except for sharedWC().
class QZPaintGraphConfigWC final : public QObject {
    Q_OBJECT
public:
    /// Widest line that the strip keeps (px).
    static constexpr double maxLineWidth = 1000.0;

    /// The application's strip, made with its window on first use.
    static QZPaintGraphConfigWC& sharedWC();
    /// That strip if it was made, else null.
    static QZPaintGraphConfigWC* existing();

    /// Loads the interface file of that name. Without a usable one there are no controls, with a line in the log.
    explicit QZPaintGraphConfigWC(const QString& interfaceFile);
    ~QZPaintGraphConfigWC() override;

    /// Lives as long as the strip. Not shown by it: see QZPanelWindow::addToWindowOf().
    [[nodiscard]] QZPanelWindow& window() { return window_; }

    /// Borrowed; forgotten when it is destroyed. Null for none.
    void setDelegate(QZPaintGraphConfigWCDelegate* delegate);
    [[nodiscard]] QZPaintGraphConfigWCDelegate* delegate() const;

    /// The controls that are shown, bits of QZGraphConfig; all at first. The window is as wide as they are and stays
    /// where it is.
    void setEnabledConfigs(std::uint64_t enabledConfigs);
    [[nodiscard]] std::uint64_t enabledConfigs() const { return enabledConfigs_; }

    /// An invalid colour is not taken: a line always has one.
    void setStrokeColor(const QColor& color);
    [[nodiscard]] QColor strokeColor() const { return cwStrokeColor_->color(); }

    /// Invalid for none, as it is at first.
    void setFillColor(const QColor& color);
    [[nodiscard]] QColor fillColor() const { return cwFillColor_->color(); }

    /// 0 to 4 are the items of the menu; another type is kept, and no item is marked.
    void setLineType(std::uint64_t lineType);
    [[nodiscard]] std::uint64_t lineType() const { return lineType_; }

    /// In px, rounded to a whole number and kept from 1 to maxLineWidth; what is no number becomes 1. No item is
    /// marked for a width that has none.
    void setLineWidth(double lineWidth);
    [[nodiscard]] double lineWidth() const { return lineWidth_; }

    void setIsLocked(bool isLocked);
    [[nodiscard]] bool isLocked() const { return btnIsLocked_->isChecked(); }

    /// What the user last chose here, whatever figure was shown since.
    struct Line {
        std::uint64_t type = 0;
        double width = 1.0; ///< px
        QColor color;
    };
    [[nodiscard]] const Line& chosenLine() const { return chosenLine_; }

    // What the controls do: each takes over its control's value and tells the delegate.

    void clickedEdit();
    void selectedStrokeColor();
    void selectedFillColor();
    void selectedLineType();
    void selectedLineWidth();
    void clickedIsLocked();
    void clickedDelete();
    /// Closes the colour picker with the window.
    void windowWillClose();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Config {
        QWidget* separator = nullptr;
        QWidget* control = nullptr; // null when the interface file has none
    };

    template <typename Widget>
    Widget* outlet(const QString& name);
    void loadOutlets(const QString& interfaceFile);
    void windowDidLoad();
    void connectControls();
    void prepareItems();
    /// Shows the controls of enabledConfigs() and gives the window their width.
    void layOutControls();
    void applyTheme();
    void placeOverChart();
    /// Brings the strip back into the chart window, unless its user put it outside.
    void keepOverChart();

    QZPanelWindow window_;
    QZColorPicker colorPicker_{window_};
    std::uint64_t enabledConfigs_ = QZGraphConfig::all;
    std::uint64_t lineType_ = 0;
    int lineWidth_ = 1; // px
    Line chosenLine_;

    QPointer<const QWidget> placedOver_; // the chart window that the strip was shown over last
    bool isOutside_ = false;             // its user moved it out of that window

    QZPaintGraphConfigWCDelegate* delegate_ = nullptr;
    std::weak_ptr<void> delegateLifetime_;

    // All of them are children of the window. A control that the interface file lacks is one that is never shown.
    QWidget* contents_ = nullptr; // null without a usable interface file
    QZPaintGraphConfigTitleView* titleView_ = nullptr;
    QWidget* stackContainer_ = nullptr;
    std::array<Config, 7> configs_; // by bit of enabledConfigs()
    QAbstractButton* btnEdit_ = nullptr;
    QZPaintGraphConfigColorWell* cwStrokeColor_ = nullptr;
    QZPaintGraphConfigColorWell* cwFillColor_ = nullptr;
    QZPopUpButton* popLineType_ = nullptr;
    QZPopUpButton* popLineWidth_ = nullptr;
    QAbstractButton* btnIsLocked_ = nullptr;
    QAbstractButton* btnDelete_ = nullptr;

    QZObservation styleObservation_;
};
