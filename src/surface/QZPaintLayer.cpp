#include "surface/QZPaintLayer.h"

#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPanelWindow.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZPainterContext.h"
#include "surface/QZPaintActiveManager.h"
#include "surface/QZPaintManagerView.h"
#include "surface/QZPaintSplitView.h"
#include "tools/QZPaintToolTable.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace {

// The host reads this flag to know that mouse input belongs to the drawing tools.
void setPaintEditing(bool editing)
{
    const auto flag = QStringLiteral("CONTEXT_IS_PAINT_EDITING");
    QZGlobalEnv::getShareInstance().setGlobalContext(flag, flag, editing);
}

// The strip's delete button comes with a finished figure.
constexpr unsigned deleteConfig = 64;

std::shared_ptr<QZPaintGraph> nearestGraph(const QZGraphSet::Members& graphs, QZPoint point)
{
    const std::shared_ptr<QZPaintGraph>* nearest = nullptr;
    double best = maxMinDistance;
    for (const auto& graph : graphs) {
        const double distance = graph->minDistanceFromPoint(point);
        if (distance < best) {
            best = distance;
            nearest = &graph;
        }
    }
    return nearest == nullptr ? nullptr : *nearest;
}

} // namespace

std::shared_ptr<QZPaintLayer> QZPaintLayer::create(QZPaintManagerView* managerView)
{
    return std::shared_ptr<QZPaintLayer>(new QZPaintLayer(managerView));
}

QZPaintLayer::QZPaintLayer(QZPaintManagerView* managerView)
    : managerView_(managerView),
      finishedObservation_(QZNotificationCenter::defaultCenter().observe(
          QZPaintGraphFinishedEditingNotification,
          [this](const QZNotification& notification) { finishEditing(notification); }))
{}

std::shared_ptr<QZPaintGraph> QZPaintLayer::allocGraphWithType(std::int64_t type)
{
    if (managerView_ == nullptr || (managerView_->enableTypes() & type) == 0)
        return nullptr;
    auto graph = createPaintTool(type);
    setPaintEditing(true);
    graph->setLayer(shared_from_this());
    graph->setSelected(true);
    return graph;
}

std::shared_ptr<QZPaintGraph> QZPaintLayer::getClosedGraph(QZPoint point)
{
    const std::lock_guard lock(graphs_);
    return nearestGraph(*graphs_.snapshot(), point);
}

void QZPaintLayer::mouseDown(QZPoint point)
{
    if (!isActive_)
        return;
    if (currentGraph_ && currentGraph_->isEditing())
        placePoint(point);
    else
        selectGraphAt(point);
}

void QZPaintLayer::placePoint(QZPoint point)
{
    const auto graph = currentGraph_;
    graph->mouseDown(point);
    QZPaintActiveManager::sharedManager().setCurrentActiveLayer(shared_from_this());
    if (graph->isEditing())
        return;
    setPaintEditing(false);
    const std::lock_guard lock(graphs_);
    graphs_.add(graph);
    graph->setDragStartPoint(point);
    postFinishedEditing();
}

void QZPaintLayer::selectGraphAt(QZPoint point)
{
    std::shared_ptr<QZPaintGraph> found;
    {
        const std::lock_guard lock(graphs_);
        const auto graphs = graphs_.snapshot();
        found = nearestGraph(*graphs, point);
        for (const auto& graph : *graphs)
            if (graph != found)
                graph->setSelected(false);
    }
    setCurrentGraph(found);
    if (!found)
        return;
    found->setSelected(true);
    if (QZPaintSplitView* split = splitView()) {
        split->resetPiantConfigDelegate();
        QZPaintActiveManager::sharedManager().setCurrentActiveLayer(shared_from_this());
    }
    found->setCurrentPoint(std::nullopt);
    found->setDragStartPoint(point);
    found->mouseDown(point);
}

void QZPaintLayer::mouseMoved(QZPoint point)
{
    bool isNear = false;
    {
        const std::lock_guard lock(graphs_);
        isNear = std::ranges::any_of(*graphs_.snapshot(), [point](const auto& graph) {
            return graph->isNearKeyPoint(point) || graph->isNearSelectionLine(point);
        });
    }
    if (!isNear)
        setCursor(QZCursor::Arrow);
    if (const auto graph = currentGraph_)
        graph->mouseMoved(graph->isEditing() ? precise(point) : point);
}

void QZPaintLayer::mouseDragged(QZPoint point)
{
    if (const auto graph = currentGraph_)
        graph->mouseDragged(precise(point));
}

void QZPaintLayer::mouseUp(QZPoint point)
{
    if (const auto graph = currentGraph_)
        graph->mouseUp(point);
}

QZPoint QZPaintLayer::precise(QZPoint point) const
{
    return managerView_ == nullptr ? point : managerView_->convertToPrecisionPoint(point);
}

void QZPaintLayer::keyDown(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Escape:
        if (currentGraph_ && currentGraph_->isEditing())
            endCurrentGraph();
        break;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        deleteCurrentGraph();
        break;
    default:
        break;
    }
}

void QZPaintLayer::deleteCurrentGraph()
{
    {
        const std::lock_guard lock(graphs_);
        const bool isFinished = graphs_.contains(currentGraph_.get());
        // The band over a range belongs to the host, which is told that its user closed it.
        const bool isBand = isFinished && currentGraph_->type() == QZSTToolRangeStatistics;
        if (isBand) {
            QZNotificationCenter::defaultCenter().post(QZRangeStatisticsTimeChangedNotification, this,
                                                       {{QStringLiteral("timeType"), 5U}});
        } else if (isFinished) {
            graphs_.remove(currentGraph_.get());
        }
    }
    endCurrentGraph();
}

void QZPaintLayer::endCurrentGraph()
{
    if (currentGraph_)
        currentGraph_->setEditing(false);
    postFinishedEditing();
    cancelCurrentGraph();
    setNeedsDisplay();
}

void QZPaintLayer::postFinishedEditing()
{
    QZNotificationCenter::defaultCenter().post(QZPaintGraphFinishedEditingNotification, this);
}

void QZPaintLayer::finishEditing(const QZNotification& notification)
{
    if (notification.object == this) {
        const unsigned configs = currentGraph_ ? currentGraph_->editingConfigs() : 0;
        QZPaintGraphConfigWC::sharedWC().setEnabledConfigs(configs | deleteConfig);
        QZNotificationCenter::defaultCenter().post(QZPaintSyncGraphTypeNotification, currentGraph_.get());
        return;
    }
    setCurrentGraph(nullptr);
    setNeedsDisplay();
}

void QZPaintLayer::cancelCurrentGraph()
{
    setPaintEditing(false);
    if (currentGraph_) {
        currentGraph_->setEditing(false);
        currentGraph_->setSelected(false);
    }
    setCurrentGraph(nullptr);
}

void QZPaintLayer::setCurrentGraph(std::shared_ptr<QZPaintGraph> graph)
{
    if (currentGraph_ == graph)
        return;
    currentGraph_ = std::move(graph);
    const std::int64_t type = currentGraph_ ? currentGraph_->type() : QZShapeTypeNone;
    if (currentGraph_ && type != QZSTToolRangeStatistics && type != QZSTToolRule)
        showConfigWindow(*currentGraph_);
    else
        closeConfigWindows();
}

void QZPaintLayer::showConfigWindow(const QZPaintGraph& graph)
{
    QZPaintGraphConfigWC& strip = QZPaintGraphConfigWC::sharedWC();
    strip.setFillColor(Qt::white); // not the figure's own
    strip.setStrokeColor(graph.strokeColor());
    strip.setLineType(graph.lineType());
    strip.setLineWidth(static_cast<double>(graph.lineWidth()));
    strip.setIsLocked(graph.isLocked());
    strip.setEnabledConfigs(graph.editingConfigs() | (graph.isEditing() ? 0U : deleteConfig));
    if (managerView_ != nullptr)
        strip.window().addToWindowOf(*managerView_);
}

void QZPaintLayer::setActive(bool active)
{
    if (isActive_ == active)
        return;
    isActive_ = active;
    if (active) {
        const QZPaintControl* palette = QZPaintControl::existing();
        const std::int64_t chosen = palette == nullptr ? QZShapeTypeNone : palette->selectedType();
        const bool isRefused = chosen != 0 && managerView_ != nullptr && (managerView_->enableTypes() & chosen) == 0;
        if (!currentGraph_ && !isRefused)
            closeConfigWindows();
        return;
    }
    // A figure in creation starts over when the user comes back to the pane.
    if (currentGraph_ && currentGraph_->isEditing())
        currentGraph_->setCurrentPoint(0);
    else
        setCurrentGraph(nullptr);
    setNeedsDisplay();
}

void QZPaintLayer::setMouseInside(bool inside)
{
    if (isMouseInside_ == inside)
        return;
    isMouseInside_ = inside;
    setNeedsDisplay();
}

void QZPaintLayer::reloadGraphFontAndColor()
{
    const std::lock_guard lock(graphs_);
    const auto graphs = graphs_.snapshot();
    for (const auto& graph : *graphs)
        graph->reloadFontAndColor();
}

QZPaintSplitView* QZPaintLayer::splitView() const
{
    return managerView_ == nullptr ? nullptr : managerView_->splitView();
}

bool QZPaintLayer::closeConfigWindows()
{
    QZPaintSplitView* split = splitView();
    if (split == nullptr || QZPaintActiveManager::sharedManager().currentActiveLayer().get() != this)
        return false;
    return split->closeConfigWindows();
}

void QZPaintLayer::drawInContext(QZGraphicsContext& context)
{
    const std::lock_guard lock(graphs_);
    const auto graphs = graphs_.snapshot();
    const auto limit = static_cast<std::size_t>(maxGraphCount);
    const std::size_t first = graphs->size() > limit ? graphs->size() - limit : 0;
    for (std::size_t i = first; i < graphs->size(); ++i)
        (*graphs)[i]->drawInContext(context);
    const auto current = currentGraph_;
    if (current && !graphs_.contains(current.get()))
        current->drawInContext(context);
}

const QImage& QZPaintLayer::contents(QSize size, double devicePixelRatio)
{
    const QSize pixels = (QSizeF(size) * devicePixelRatio).toSize();
    const bool fits = contents_.size() == pixels && contents_.devicePixelRatio() == devicePixelRatio;
    if (fits && !needsDisplay_)
        return contents_;
    needsDisplay_ = false;
    if (!fits) {
        contents_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        contents_.setDevicePixelRatio(devicePixelRatio);
    }
    contents_.fill(Qt::transparent);
    if (contents_.isNull())
        return contents_;
    QPainter painter(&contents_);
    if (managerView_ != nullptr)
        painter.setClipRect(managerView_->flippedValidateRect());
    QZPainterContext context(painter, size.height(), QZPainterContext::Edges::PixelSnapped);
    drawInContext(context);
    return contents_;
}

void QZPaintLayer::setNeedsDisplay()
{
    needsDisplay_ = true;
    if (managerView_ != nullptr)
        managerView_->updateOverlay();
}

QZRect QZPaintLayer::frame() const
{
    return managerView_ == nullptr ? QZRect{} : managerView_->layerFrame();
}

bool QZPaintLayer::isActivePane() const
{
    const QZPaintSplitView* split = splitView();
    return split != nullptr && split->activeView() == managerView_;
}

void QZPaintLayer::removeGraph(const QZPaintGraph& graph)
{
    const std::lock_guard lock(graphs_);
    graphs_.remove(&graph);
}

void QZPaintLayer::setCursor(QZCursor cursor)
{
    const Qt::CursorShape shape = qtCursorShape(cursor);
    if (managerView_ != nullptr && managerView_->cursor().shape() != shape)
        managerView_->setCursor(shape);
}

const QZPaintChart* QZPaintLayer::chart() const
{
    return managerView_;
}

QString QZPaintLayer::description() const
{
    return QStringLiteral("<QZPaintLayer: 0x%1>").arg(reinterpret_cast<quintptr>(this), 0, 16);
}
