#include "surface/QZPaintLayer.h"

#include "model/QZPaintNotifications.h"
#include "model/QZPaintOptions.h"
#include "platform/QZGlobalEnv.h"
#include "surface/QZLayerImages.h"
#include "surface/QZPaintActiveManager.h"
#include "surface/QZPaintLayerHost.h"
#include "surface/QZPaintManagerView.h"
#include "tools/QZPaintMarks.h"
#include "tools/QZPaintToolTable.h"

#include <QKeyEvent>

#include <algorithm>

namespace {

// The host reads this flag to know that mouse input belongs to the drawing tools.
void setPaintEditing(bool editing)
{
    QZGlobalEnv::getShareInstance().setGlobalContext(QZContextIsPaintEditing, QZContextIsPaintEditing, editing);
}

bool isInReach(const QZPaintGraph& graph)
{
    return !graph.isHidden() || !QZPaintOptions::current().hiddenFiguresIgnoreMouse;
}

std::shared_ptr<QZPaintGraph> nearestGraph(const QZGraphSet::Members& graphs, QZPoint point)
{
    const std::shared_ptr<QZPaintGraph>* nearest = nullptr;
    double best = maxMinDistance;
    for (const auto& graph : graphs) {
        if (!isInReach(*graph))
            continue;
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
    followChart();
    const std::lock_guard lock(graphs_);
    return nearestGraph(*graphs_.snapshot(), point);
}

void QZPaintLayer::mouseDown(QZPoint point)
{
    if (!isActive_)
        return;
    followChart();
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
    const auto found = getClosedGraph(point);
    deselectAllBut(found.get());
    setCurrentGraph(found);
    if (!found)
        return;
    found->setSelected(true);
    if (QZPaintLayerHost* host = this->host(); host != nullptr && host->takePanels())
        QZPaintActiveManager::sharedManager().setCurrentActiveLayer(shared_from_this());
    found->setCurrentPoint(std::nullopt);
    found->setDragStartPoint(point);
    found->mouseDown(point);
}

void QZPaintLayer::deselectAllBut(const QZPaintGraph* graph)
{
    const std::lock_guard lock(graphs_);
    const auto graphs = graphs_.snapshot();
    for (const auto& each : *graphs)
        if (each.get() != graph)
            each->setSelected(false);
}

void QZPaintLayer::mouseMoved(QZPoint point)
{
    followChart();
    bool isNear = false;
    {
        const std::lock_guard lock(graphs_);
        isNear = std::ranges::any_of(*graphs_.snapshot(), [point](const auto& graph) {
            return isInReach(*graph) && !graph->isFixed() &&
                   (graph->isNearKeyPoint(point) || graph->isNearSelectionLine(point));
        });
    }
    if (!isNear)
        setCursor(QZCursor::Arrow);
    if (const auto graph = currentGraph_)
        graph->mouseMoved(graph->isEditing() ? precise(point) : point);
}

void QZPaintLayer::mouseDragged(QZPoint point)
{
    followChart();
    if (const auto graph = currentGraph_)
        graph->mouseDragged(precise(point));
}

void QZPaintLayer::mouseUp(QZPoint point)
{
    followChart();
    if (const auto graph = currentGraph_)
        graph->mouseUp(point);
    images_.reset();
}

void QZPaintLayer::mouseDoubleClicked()
{
    if (const auto graph = currentGraph_)
        orderFrontPaintTextConfigWindow(*graph);
}

void QZPaintLayer::orderFrontPaintTextConfigWindow(QZPaintGraph& graph)
{
    const auto* note = dynamic_cast<const QZPaintToolText*>(&graph);
    if (note != nullptr && host() != nullptr)
        host()->showTextPanel(*note, *managerView_);
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
    if (currentGraph_ && currentGraph_->isFixed())
        return;
    {
        const std::lock_guard lock(graphs_);
        const bool isFinished = graphs_.contains(currentGraph_.get());
        if (isFinished && currentGraph_->isClosedByHost()) {
            QZNotificationCenter::defaultCenter().post(
                QZRangeStatisticsTimeChangedNotification, this,
                {{QZRangeStatistics::timeTypeKey, QZRangeStatistics::timeTypeClosed}});
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
        if (QZPaintLayerHost* host = this->host())
            host->setStripConfigs(configs | QZGraphConfig::deleteGraph);
        QZNotificationCenter::defaultCenter().post(QZPaintSyncGraphTypeNotification, currentGraph_.get());
        return;
    }
    if (currentGraph_ && currentGraph_->isEditing())
        setPaintEditing(false);
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
    images_.reset();
    if (stale_ != Changed::Nothing)
        stale_ = Changed::Everything; // the figure before is not the current one any more
    // A figure that was dropped while another pane was in use is selected still.
    if (currentGraph_)
        deselectAllBut(currentGraph_.get());
    if (currentGraph_ && currentGraph_->showsConfigStrip())
        showStrip(*currentGraph_);
    else if (!closeConfigWindows() && host() != nullptr)
        host()->hideIdlePanels();
}

void QZPaintLayer::showStrip(const QZPaintGraph& graph)
{
    // Deleting comes with a finished figure.
    const unsigned configs = graph.editingConfigs() | (graph.isEditing() ? 0U : QZGraphConfig::deleteGraph);
    if (QZPaintLayerHost* host = this->host())
        host->showStrip(graph, configs, *managerView_);
}

void QZPaintLayer::setActive(bool active)
{
    if (isActive_ == active)
        return;
    isActive_ = active;
    if (active) {
        if (!currentGraph_ && acceptsArmedTool())
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

QZPaintLayerHost* QZPaintLayer::host() const
{
    return managerView_ == nullptr ? nullptr : &managerView_->layerHost();
}

bool QZPaintLayer::acceptsArmedTool() const
{
    const QZPaintLayerHost* host = this->host();
    const std::int64_t armed = host == nullptr ? QZShapeTypeNone : host->armedType();
    return armed == QZShapeTypeNone || (managerView_->enableTypes() & armed) != 0;
}

bool QZPaintLayer::closeConfigWindows()
{
    if (!isActivePane() || QZPaintActiveManager::sharedManager().currentActiveLayer().get() != this)
        return false;
    host()->hidePanels();
    return true;
}

QZRect QZPaintLayer::frame() const
{
    return managerView_ == nullptr ? QZRect{} : managerView_->layerFrame();
}

bool QZPaintLayer::isActivePane() const
{
    const QZPaintLayerHost* host = this->host();
    return !isPictured_ && host != nullptr && host->isActivePane(*managerView_);
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
