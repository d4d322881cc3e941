#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPanelWindow.h"
#include "platform/QZAlert.h"
#include "surface/QZPaintActiveManager.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"
#include "surface/QZPaintSplitView.h"

#include <mutex>

namespace {

// The buttons of the question before everything is deleted; the first, harmless one is the default.
constexpr int confirmButton = QZAlert::firstButton + 1;

} // namespace

void QZPaintSplitView::setSupportPaint(bool supportPaint)
{
    isSupportPaint_ = supportPaint;
    if (supportPaint)
        resetPiantConfigDelegate();
}

void QZPaintSplitView::resetPiantConfigDelegate()
{
    if (enablePaintControl_)
        QZPaintControl::sharedManager().setDelegate(this);
    QZPaintGraphConfigWC::sharedWC().setDelegate(this);
}

bool QZPaintSplitView::takePanels()
{
    resetPiantConfigDelegate();
    return true;
}

bool QZPaintSplitView::closeConfigWindows()
{
    const auto layer = activeView_ == nullptr ? nullptr : activeView_->paintLayer();
    if (layer != QZPaintActiveManager::sharedManager().currentActiveLayer())
        return false;
    closeConfigWindow();
    return true;
}

void QZPaintSplitView::closeConfigWindow()
{
    QZPanelWindow& strip = QZPaintGraphConfigWC::sharedWC().window();
    if (strip.chartWindow() != nullptr && strip.chartWindow() != window())
        return;
    strip.removeFromWindowOf(*this);
    strip.hide();
}

void QZPaintSplitView::changeShapeTo(std::int64_t type, const QImage& imageThumbnail)
{
    constexpr unsigned deleteOnly = 64;
    unsigned configs = deleteOnly;
    for (QZPaintManagerView* view : managerViews()) {
        QZPaintLayer& layer = *view->paintLayer();
        layer.cancelCurrentGraph();
        layer.setCurrentGraph(layer.allocGraphWithType(type));
        if (!layer.currentGraph())
            continue;
        layer.currentGraph()->setThumbnail(imageThumbnail);
        configs = layer.currentGraph()->editingConfigs();
    }
    QZPaintGraphConfigWC::sharedWC().setEnabledConfigs(configs);
}

void QZPaintSplitView::removeAllGraphs(QZPaintControl& /*sender*/)
{
    const QPointer<QZPaintSplitView> self(this); // a window may close under the question
    const int answer = QZAlert::run({.message = QStringLiteral("您要删除所有画线吗？"),
                                     .buttons = {QStringLiteral("取消"), QStringLiteral("确定")}});
    if (answer != confirmButton || self == nullptr)
        return;
    for (QZPaintManagerView* view : managerViews()) {
        QZPaintLayer& layer = *view->paintLayer();
        {
            const std::lock_guard lock(layer.graphs());
            layer.graphs().removeAll();
        }
        if (layer.currentGraph() && layer.currentGraph()->isEditing()) {
            layer.currentGraph()->setEditing(false);
            QZNotificationCenter::defaultCenter().post(QZPaintSyncGraphTypeNotification, layer.currentGraph().get());
        }
        layer.cancelCurrentGraph();
        view->displayPaintLayer();
    }
    closeConfigWindows();
}

void QZPaintSplitView::showOrHiddenAllGraphs(QZPaintControl& sender)
{
    for (QZPaintManagerView* view : managerViews()) {
        QZPaintLayer& layer = *view->paintLayer();
        layer.cancelCurrentGraph();
        {
            const std::lock_guard lock(layer.graphs());
            const auto graphs = layer.graphs().snapshot();
            for (const auto& graph : *graphs)
                graph->setHidden(sender.isHidden());
        }
        view->displayPaintLayer();
    }
}

void QZPaintSplitView::windowWillClosed(QZPaintControl& /*sender*/)
{
    for (QZPaintManagerView* view : managerViews()) {
        QZPaintLayer& layer = *view->paintLayer();
        if (!layer.currentGraph() || !layer.currentGraph()->isEditing())
            continue;
        layer.cancelCurrentGraph();
        view->displayPaintLayer();
    }
}

std::vector<QZPaintLayer*> QZPaintSplitView::targetLayers() const
{
    std::vector<QZPaintLayer*> layers;
    if (activeView_ != nullptr)
        layers.push_back(activeView_->paintLayer().get());
    else
        for (const QZPaintManagerView* view : managerViews())
            layers.push_back(view->paintLayer().get());
    return layers;
}

template <typename Change>
void QZPaintSplitView::changeCurrentGraphs(Change change)
{
    for (const QZPaintLayer* layer : targetLayers())
        if (layer->currentGraph())
            change(*layer->currentGraph());
}

// Only a text note has a text to edit.
void QZPaintSplitView::paintGraphConfigDidEdit(QZPaintGraphConfigWC& /*panel*/) {}

void QZPaintSplitView::paintGraphConfigStrokeColorDidChange(QZPaintGraphConfigWC& /*panel*/, const QColor& color)
{
    changeCurrentGraphs([&color](QZPaintGraph& graph) { graph.setStrokeColor(color); });
}

void QZPaintSplitView::paintGraphConfigFillColorDidChange(QZPaintGraphConfigWC& /*panel*/, const QColor& color)
{
    changeCurrentGraphs([&color](QZPaintGraph& graph) { graph.setFillColor(color); });
}

void QZPaintSplitView::paintGraphConfigLineTypeDidChange(QZPaintGraphConfigWC& /*panel*/, std::uint64_t lineType)
{
    changeCurrentGraphs([lineType](QZPaintGraph& graph) { graph.setLineType(lineType); });
}

void QZPaintSplitView::paintGraphConfigLineWidthDidChange(QZPaintGraphConfigWC& /*panel*/, double lineWidth)
{
    const auto width = static_cast<std::uint64_t>(lineWidth);
    changeCurrentGraphs([width](QZPaintGraph& graph) { graph.setLineWidth(width); });
}

void QZPaintSplitView::paintGraphConfigIsLockedDidChange(QZPaintGraphConfigWC& /*panel*/, bool isLocked)
{
    changeCurrentGraphs([isLocked](QZPaintGraph& graph) { graph.setLocked(isLocked); });
}

void QZPaintSplitView::paintGraphConfigDidDelete(QZPaintGraphConfigWC& /*panel*/)
{
    for (QZPaintLayer* layer : targetLayers()) {
        if (const auto graph = layer->currentGraph()) {
            const std::lock_guard lock(layer->graphs());
            layer->graphs().remove(graph.get());
        }
        layer->cancelCurrentGraph();
    }
    closeConfigWindow();
    for (QZPaintLayer* layer : targetLayers())
        layer->setNeedsDisplay();
}
