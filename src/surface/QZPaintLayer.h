#pragma once

#include "model/QZPaintGraphOwner.h"
#include "platform/QZNotificationCenter.h"
#include "surface/QZGraphSet.h"

#include <QImage>
#include <QSize>

#include <cstdint>
#include <memory>

class QKeyEvent;
class QPainter;
class QZGraphicsContext;
class QZLayerImages;
struct QZLayerCanvas;
class QZPaintLayerHost;
class QZPaintManagerView;

/// The drawing layer over one chart pane: owns the pane's figures, makes new ones, gives mouse and keys to the right
/// one and draws them all. Points are layer coordinates (px, y upwards), which are the manager view's.
///
/// A figure in creation is the current one and not yet among the finished ones; it joins them with its last point.
class QZPaintLayer final : public QZPaintGraphOwner,
                           public QZNotificationObject,
                           public std::enable_shared_from_this<QZPaintLayer> {
public:
    /// `managerView` is borrowed; it clears itself when it goes.
    [[nodiscard]] static std::shared_ptr<QZPaintLayer> create(QZPaintManagerView* managerView);

    /// A new figure in creation, selected and tied to this layer, for the caller to make current; null when the pane
    /// does not accept the type. From here until the creation ends or is cancelled, the host's context flag
    /// QZContextIsPaintEditing is true.
    [[nodiscard]] std::shared_ptr<QZPaintGraph> allocGraphWithType(std::int64_t type);

    /// The finished figure nearest to `point`, strictly closer than maxMinDistance; null when there is none. Of equally
    /// near ones the first counts.
    [[nodiscard]] std::shared_ptr<QZPaintGraph> getClosedGraph(QZPoint point);

    void mouseDown(QZPoint point);
    void mouseMoved(QZPoint point);
    void mouseDragged(QZPoint point);
    void mouseUp(QZPoint point);
    /// Opens the text editor if the current figure is a note.
    void mouseDoubleClicked();
    /// Escape cancels a figure in creation; Delete and Backspace remove the current figure.
    void keyDown(const QKeyEvent& event);

    /// The figure in creation, or the selected finished one.
    [[nodiscard]] const std::shared_ptr<QZPaintGraph>& currentGraph() const { return currentGraph_; }
    void setCurrentGraph(std::shared_ptr<QZPaintGraph> graph);
    /// Ends creation and selection; finished figures stay.
    void cancelCurrentGraph();

    /// An active layer takes clicks and shows a selection.
    [[nodiscard]] bool isActive() const { return isActive_; }
    void setActive(bool active);
    void setMouseInside(bool inside);

    QZGraphSet& graphs() { return graphs_; }
    [[nodiscard]] QZPaintManagerView* managerView() const { return managerView_; }
    void setManagerView(QZPaintManagerView* view) { managerView_ = view; }

    /// Takes the handles' colour from the theme for every figure.
    void reloadGraphFontAndColor();

    /// Hides the strip when it serves this layer; whether it did.
    bool closeConfigWindows();

    void drawInContext(QZGraphicsContext& context);
    /// Draws the finished figures for a picture, see QZPaintManagerView::drawGraphs().
    void drawGraphs(QPainter& painter);
    /// The drawn layer, transparent where nothing is. Drawn anew only when it was asked to be or its size changed.
    const QImage& contents(QSize size, double devicePixelRatio);
    [[nodiscard]] bool needsDisplay() const { return changed_ != Changed::Nothing; }

    void setNeedsDisplay() override;
    void setNeedsDisplayOf(const QZPaintGraph& graph) override;
    void forgetPictureOf(const QZPaintGraph& graph) override;
    [[nodiscard]] QZRect frame() const override;
    [[nodiscard]] bool isMouseInside() const override { return isMouseInside_; }
    [[nodiscard]] bool isActivePane() const override;
    void removeGraph(const QZPaintGraph& graph) override;
    void setCursor(QZCursor cursor) override;
    void orderFrontPaintTextConfigWindow(QZPaintGraph& graph) override;
    [[nodiscard]] const QZPaintChart* chart() const override;
    [[nodiscard]] QString description() const override;

private:
    enum class Changed { Nothing, CurrentGraph, Everything };

    explicit QZPaintLayer(QZPaintManagerView* managerView);

    void finishEditing(const QZNotification& notification);
    /// A frame whose other figures come from pictures of them, while the current one is dragged or placed. False, with
    /// nothing drawn, when they cannot.
    bool drawStep(const QZLayerCanvas& canvas);
    /// Brings the figures' screen points to where the chart is now, once for every request to redraw: what is measured
    /// or converted between a scroll and its frame uses the new places.
    void followChart();
    void placePoint(QZPoint point);
    void selectGraphAt(QZPoint point);
    void deselectAllBut(const QZPaintGraph* graph);
    void deleteCurrentGraph();
    void endCurrentGraph();
    void postFinishedEditing();
    void showStrip(const QZPaintGraph& graph);
    [[nodiscard]] QZPoint precise(QZPoint point) const;
    /// Null once the view is gone.
    [[nodiscard]] QZPaintLayerHost* host() const;
    [[nodiscard]] bool acceptsArmedTool() const;

    QZPaintManagerView* managerView_;
    QZGraphSet graphs_;
    std::shared_ptr<QZPaintGraph> currentGraph_;
    bool isActive_ = false;
    bool isMouseInside_ = false;
    Changed changed_ = Changed::Everything; // since the last frame
    Changed stale_ = Changed::Nothing; // the same, unless the points have followed the chart since it was asked for
    QImage contents_;
    std::shared_ptr<const QZLayerImages> images_; // while they hold
    bool isPictured_ = false;                     // nothing counts as selected while a picture is made
    QZObservation finishedObservation_;
};
