#pragma once

#include "model/QZDrawingTypes.h"
#include "panels/QZPaintControlButton.h"
#include "panels/QZPaintControlProfiles.h"
#include "panels/QZPaintControlWCDelegate.h"
#include "panels/QZPanelWindow.h"
#include "platform/QZNotificationCenter.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

/// The tool palette: one floating window with a button for each tool and for the magnet, the eye (hide or show all) and
/// delete all. Which buttons there are comes from its interface file; each one's identifier is the name of a shape type
/// and its dynamic property `action` names the operation that a click calls: changeShape, setMagnetAction,
/// deleteAllGraphs or eyeAction. The buttons are direct children of the file's one widget.
///
/// Main thread only, except for sharedManager().
class QZPaintControl final : public QObject {
    Q_OBJECT
public:
    /// The application's palette, made with its window on first use.
    static QZPaintControl& sharedManager();
    /// That palette if it was made, else null.
    static QZPaintControl* existing();

    /// Loads the interface file of that name. Without a usable one the window stays empty, with a line in the log.
    explicit QZPaintControl(const QString& interfaceFile);
    ~QZPaintControl() override;

    /// Lives as long as the palette. Not shown by it: see QZPanelWindow::addToWindowOf().
    [[nodiscard]] QZPanelWindow& window() { return window_; }

    /// Borrowed; forgotten when it is destroyed. Null for none. A chosen tool goes along: the delegate before is told
    /// that no tool is chosen, the new one which is; with null the tool is let go of.
    void setDelegate(QZPaintControlWCDelegate* delegate);
    [[nodiscard]] QZPaintControlWCDelegate* delegate() const;

    /// The tools that may be chosen, an OR of QZShapeType; QZAllEnabledTypes at first. While everything is hidden only
    /// the eye follows at once. Setting the present mask again does nothing, whatever the buttons' states are.
    void setEnableTypes(std::uint64_t enableTypes);
    [[nodiscard]] std::uint64_t enableTypes() const { return enableTypes_; }

    /// Enables the tools of a profile in "QZPaintControl.plist" (QZPaintControlRealTimeKey,
    /// QZPaintControlCandlestickKey or a host's own); all when it has none of that key. The file is read once.
    void setControlKey(const QString& controlKey);
    [[nodiscard]] QString controlKey() const { return controlKey_; }

    /// The chosen tool, QZShapeTypeNone when none is.
    [[nodiscard]] QZShapeType selectedType() const;

    /// Setting either flag changes no button and tells nobody.
    [[nodiscard]] bool isMagnet() const { return magnet_; }
    void setMagnet(bool magnet) { magnet_ = magnet; }
    [[nodiscard]] bool isHidden() const { return hidden_; }
    void setHidden(bool hidden) { hidden_ = hidden; }

    /// The window of the graph configuration strip, which goes along with the palette.
    [[nodiscard]] static QZPanelWindow& assistantPanel();

    // What the buttons do. `sender` is the one that was pressed. Each hands the keyboard back to the main window.

    /// Chooses the sender's tool.
    void changeShape(QZPaintControlButton& sender);
    void setMagnetAction(QZPaintControlButton& sender);
    void deleteAllGraphs(QZPaintControlButton& sender);
    /// Hides or shows all figures. While they are hidden only the eye can be pressed.
    void eyeAction(QZPaintControlButton& sender);

    /// Lets go of the chosen tool and deselects all buttons, the function buttons only if asked to.
    void resetAllButtons(bool includingFunctions);

private:
    void windowDidLoad();
    static void returnKeyboard();
    void configWindowColors();
    void connectAction(QZPaintControlButton& button);
    [[nodiscard]] QList<QZPaintControlButton*> buttons() const;
    void deselect(QZPaintControlButton& button) const;
    /// Tells the delegate which tool is chosen.
    void sendShape() const;
    /// Follows the figure being drawn: when it is finished its tool's button is released.
    void syncButtonSelection(const QZNotification& notification);
    void windowWillClose();

    QZPanelWindow window_;
    QWidget* content_ = nullptr; // a child of the window; null without a usable interface file
    QPointer<QZPaintControlButton> lastSelectedBtn_;
    std::uint64_t enableTypes_ = QZAllEnabledTypes;
    QString controlKey_;
    std::optional<QZPaintControlProfiles> configDict_;
    bool magnet_ = false;
    bool hidden_ = false;
    QZPaintControlWCDelegate* delegate_ = nullptr;
    std::weak_ptr<void> delegateLifetime_;
    std::array<QZObservation, 2> observations_;
};
