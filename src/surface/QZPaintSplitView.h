#pragma once

#include "panels/QZPaintControlWCDelegate.h"
#include "panels/QZPaintGraphConfigWCDelegate.h"
#include "panels/QZPaintTextConfigWCDelegate.h"
#include "platform/QZGeometry.h"
#include "surface/QZPaintManagerView.h"
#include "surface/QZPaintStripHost.h"

#include <QImage>
#include <QPointer>
#include <QSplitter>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class QZPaintLayer;
class QZPanelWindow;

/// Stacks the chart panes of one window. It routes mouse and keys: it activates the pane that is clicked and hands
/// every event to the right pane's paint layer, in that pane's coordinates. And it is the delegate of the tool palette,
/// of the graph configuration strip and of the text editor: what is picked there lands on its panes. Widgets in it that
/// are no manager views only take part in the layout.
///
/// Several windows share one palette, one strip and one editor. The palette's tool is armed in the split view that is
/// its delegate and goes along when another one becomes it; the eye works on all of them. The strip acts on the window
/// that it is shown over, whichever one is active.
///
/// An observer of any notification may delete panes, or the split view itself, while an event is handled.
class QZPaintSplitView : public QSplitter,
                         public QZPaintStripHost,
                         public QZPaintControlWCDelegate,
                         public QZPaintGraphConfigWCDelegate,
                         public QZPaintTextConfigWCDelegate {
    Q_OBJECT
public:
    explicit QZPaintSplitView(Qt::Orientation orientation, QWidget* parent = nullptr);
    QZPaintSplitView(const QZPaintSplitView&) = delete;
    QZPaintSplitView& operator=(const QZPaintSplitView&) = delete;
    ~QZPaintSplitView() override;

    /// The pane that the last left press chose; null on a divider and before the first press, and once it is deleted or
    /// taken out.
    [[nodiscard]] QZPaintManagerView* activeView() const { return activeView_; }
    /// Chooses a pane as a press in it does, without placing or selecting anything; null leaves none active, as a press
    /// on a divider. A view that is no pane of this one changes nothing, with a line in the log.
    void setActiveView(QZPaintManagerView* view);
    /// Activates the layer of the pane at `point` (px in this view, y downwards) and deactivates all others; the pane,
    /// or null.
    QZPaintManagerView* activeViewAtPoint(QPointF point);
    /// The manager views among the panes, in order.
    [[nodiscard]] std::vector<QZPaintManagerView*> managerViews() const;

    /// Whether the strip serves this view; switching it on makes this view the panels' delegate.
    [[nodiscard]] bool isSupportPaint() const { return isSupportPaint_; }
    void setSupportPaint(bool supportPaint);
    /// Whether the palette, too, serves this view.
    void setEnablePaintControl(bool enable) { enablePaintControl_ = enable; }
    /// Makes this view the delegate of the strip and, where enabled, of the palette, whose chosen tool is then armed
    /// here instead of there. A strip that is shown over another window keeps its delegate. A host with several chart
    /// windows calls it for the one that becomes active.
    void resetPiantConfigDelegate();
    /// Hides strip and text editor; false, with nothing done, unless the active pane's layer is the application's
    /// active one.
    bool closeConfigWindows();

    // What the palette asks, of every pane.

    /// Cancels what is being drawn and starts a figure of `type` wherever it is accepted; `imageThumbnail` goes with
    /// its first point.
    void changeShapeTo(std::int64_t type, const QImage& imageThumbnail) override;
    /// Asks the user first.
    void removeAllGraphs(QZPaintControl& sender) override;
    /// Of every split view, since there is one eye for all.
    void showOrHiddenAllGraphs(QZPaintControl& sender) override;
    void windowWillClosed(QZPaintControl& sender) override;

    // What the strip asks, of the active pane's current figure; without an active pane, of every pane's.

    void paintGraphConfigDidEdit(QZPaintGraphConfigWC& panel) override;
    void paintGraphConfigStrokeColorDidChange(QZPaintGraphConfigWC& panel, const QColor& color) override;
    void paintGraphConfigFillColorDidChange(QZPaintGraphConfigWC& panel, const QColor& color) override;
    void paintGraphConfigLineTypeDidChange(QZPaintGraphConfigWC& panel, std::uint64_t lineType) override;
    void paintGraphConfigLineWidthDidChange(QZPaintGraphConfigWC& panel, double lineWidth) override;
    void paintGraphConfigIsLockedDidChange(QZPaintGraphConfigWC& panel, bool isLocked) override;
    void paintGraphConfigDidDelete(QZPaintGraphConfigWC& panel) override;

    // What the text editor asks, of the same figure if it is a note.

    void paintTextConfigTextDidChange(QZPaintTextConfigWC& panel, const QString& text) override;
    /// The strip shows the colour as well.
    void paintTextConfigColorDidChange(QZPaintTextConfigWC& panel, const QColor& color) override;
    void paintTextConfigSizeDidChange(QZPaintTextConfigWC& panel, std::int64_t size) override;

    // What the layers of its panes ask, beyond what the panels answer.

    /// Makes this view the strip's delegate as well: it acts on what it shows.
    void showStrip(const QZPaintGraph& figure, unsigned configs, const QWidget& view) override;
    void showTextPanel(const QZPaintToolText& note, const QWidget& view) override;
    void hidePanels() final;
    void hideIdlePanels() final;
    bool takePanels() override;
    [[nodiscard]] bool isActivePane(const QZPaintManagerView& view) const override { return activeView_ == &view; }

protected:
    QSplitterHandle* createHandle() override;
    void childEvent(QChildEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Also of the second press of a double click, which Qt hands over here.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    friend class QZPaintManagerView;
    friend class QZPaintSplitHandle;

    struct Press {
        QPointF location;
        std::uint64_t time = 0; // ms
        int clickCount = 0;
    };

    /// False when there is nothing more to do: the click was swallowed, or this view is gone.
    bool mouseDown(QPointF location, int clickCount);
    void mouseMoved(QPointF location);
    /// Whether a figure took the drag, which then must not move a divider, or this view is gone.
    bool mouseDragged(QPointF location);
    void mouseUp(QPointF location);
    /// 1, or one more than that of the press before when it follows fast and near.
    int clickCountOf(const QMouseEvent& press);
    void activateOnly(const QZPaintManagerView* view);
    /// Ends what `view` was doing, and with the last figure that the strip could show the strip.
    void viewWillLeave(QZPaintManagerView& view);

    [[nodiscard]] QZPoint pointIn(const QZPaintManagerView& view, QPointF location) const;
    /// Whether `location` lies in the frame of a shown pane.
    [[nodiscard]] static bool isInFrame(const QZPaintManagerView& view, QPointF location);
    /// Calls `visit` with each pane that is still here when its turn comes, and its layer. Safe even when a visit
    /// deletes this view.
    template <typename Visit>
    void forEachView(Visit visit) const;
    [[nodiscard]] std::vector<std::shared_ptr<QZPaintLayer>> paintLayers() const;
    /// The layers that a panel's action works on.
    [[nodiscard]] std::vector<std::shared_ptr<QZPaintLayer>> targetLayers() const;
    /// Takes `panel` off this window, unless it has gone over to another one.
    void closePanel(QZPanelWindow& panel);
    template <typename Change>
    void changeCurrentGraphs(Change change);
    template <typename Change>
    void changeCurrentNotes(Change change);
    /// Every split view of the application.
    static std::vector<QZPaintSplitView*>& splitViews();
    static std::vector<std::shared_ptr<QZPaintLayer>> allPaintLayers();

    QPointer<QZPaintManagerView> activeView_;
    std::optional<QPointF> pressLocation_; // of a press that no drag has followed yet
    Press lastPress_;
    bool isSupportPaint_ = false;
    bool enablePaintControl_ = false;
};
