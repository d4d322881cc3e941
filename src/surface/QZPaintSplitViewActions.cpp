#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPaintTextConfigWC.h"
#include "panels/QZPanelWindow.h"
#include "platform/QZAlert.h"
#include "platform/QZFont.h"
#include "surface/QZPaintActiveManager.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"
#include "surface/QZPaintSplitView.h"
#include "tools/QZPaintMarks.h"

#include <algorithm>
#include <iterator>
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
    const auto serve = [this](auto& panel) {
        const QWidget* chart = panel.window().chartWindow();
        if (chart == nullptr || chart == window())
            panel.setDelegate(this);
    };
    serve(QZPaintGraphConfigWC::sharedWC());
    serve(QZPaintTextConfigWC::sharedWC());
}

void QZPaintSplitView::showStrip(const QZPaintGraph& figure, unsigned configs, const QWidget& view)
{
    QZPaintStripHost::showStrip(figure, configs, view);
    // What is typed on would go to this figure.
    if (auto* editor = QZPaintTextConfigWC::existing())
        closePanel(editor->window());
    QZPaintGraphConfigWC::sharedWC().setDelegate(this);
}

void QZPaintSplitView::showTextPanel(const QZPaintToolText& note, const QWidget& view)
{
    QZPaintStripHost::showTextPanel(note, view);
    QZPaintTextConfigWC::sharedWC().setDelegate(this);
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
    hidePanels();
    return true;
}

void QZPaintSplitView::closePanel(QZPanelWindow& panel)
{
    if (panel.chartWindow() != nullptr && panel.chartWindow() != window())
        return;
    panel.removeFromWindowOf(*this);
    panel.hide();
}

void QZPaintSplitView::hidePanels()
{
    closePanel(QZPaintGraphConfigWC::sharedWC().window());
    if (auto* editor = QZPaintTextConfigWC::existing())
        closePanel(editor->window());
}

void QZPaintSplitView::hideIdlePanels()
{
    const QZPaintGraphConfigWC* strip = QZPaintGraphConfigWC::existing();
    const QZPaintTextConfigWC* editor = QZPaintTextConfigWC::existing();
    const bool areShownHere =
        (strip != nullptr && strip->delegate() == this) || (editor != nullptr && editor->delegate() == this);
    const auto needsStrip = [](const auto& layer) {
        return layer->currentGraph() && layer->currentGraph()->showsConfigStrip();
    };
    if (areShownHere && std::ranges::none_of(paintLayers(), needsStrip))
        hidePanels();
}

void QZPaintSplitView::changeShapeTo(std::int64_t type, const QImage& imageThumbnail)
{
    const auto layers = paintLayers();
    // All before the first is armed: each one cancelled ends painting for the whole application.
    for (const auto& layer : layers)
        layer->cancelCurrentGraph();
    std::shared_ptr<QZPaintGraph> armed;
    for (const auto& layer : layers) {
        const auto graph = layer->allocGraphWithType(type);
        layer->setCurrentGraph(graph);
        if (!graph)
            continue;
        graph->setThumbnail(imageThumbnail);
        armed = graph;
    }
    setStripConfigs(armed ? armed->editingConfigs() : QZGraphConfig::deleteGraph);
    if (!armed)
        hidePanels();
}

void QZPaintSplitView::removeAllGraphs(QZPaintControl& /*sender*/)
{
    const QPointer<QZPaintSplitView> self(this); // a window may close under the question, or when an observer is told
    const int answer = QZAlert::run({.message = QStringLiteral("您要删除所有画线吗？"),
                                     .buttons = {QStringLiteral("取消"), QStringLiteral("确定")}});
    if (answer != confirmButton || self == nullptr)
        return;
    for (const auto& layer : paintLayers()) {
        {
            const std::lock_guard lock(layer->graphs());
            layer->graphs().removeAllButFixed();
        }
        const auto graph = layer->currentGraph();
        if (graph && graph->isEditing()) {
            graph->setEditing(false);
            QZNotificationCenter::defaultCenter().post(QZPaintSyncGraphTypeNotification, graph.get());
        }
        layer->cancelCurrentGraph();
        layer->setNeedsDisplay();
    }
    if (self != nullptr)
        closeConfigWindows();
}

void QZPaintSplitView::showOrHiddenAllGraphs(QZPaintControl& sender)
{
    for (const auto& layer : allPaintLayers()) {
        layer->cancelCurrentGraph();
        {
            const std::lock_guard lock(layer->graphs());
            const auto graphs = layer->graphs().snapshot();
            for (const auto& graph : *graphs)
                graph->setHidden(sender.isHidden());
        }
        layer->setNeedsDisplay();
    }
}

void QZPaintSplitView::windowWillClosed(QZPaintControl& /*sender*/)
{
    for (const auto& layer : paintLayers()) {
        if (!layer->currentGraph() || !layer->currentGraph()->isEditing())
            continue;
        layer->cancelCurrentGraph();
        layer->setNeedsDisplay();
    }
}

std::vector<std::shared_ptr<QZPaintLayer>> QZPaintSplitView::paintLayers() const
{
    std::vector<std::shared_ptr<QZPaintLayer>> layers;
    for (const QZPaintManagerView* view : managerViews())
        layers.push_back(view->paintLayer());
    return layers;
}

std::vector<std::shared_ptr<QZPaintLayer>> QZPaintSplitView::allPaintLayers()
{
    std::vector<std::shared_ptr<QZPaintLayer>> layers;
    for (const QZPaintSplitView* split : splitViews())
        std::ranges::copy(split->paintLayers(), std::back_inserter(layers));
    return layers;
}

std::vector<std::shared_ptr<QZPaintLayer>> QZPaintSplitView::targetLayers() const
{
    if (activeView_ != nullptr)
        return {activeView_->paintLayer()};
    return paintLayers();
}

template <typename Change>
void QZPaintSplitView::changeCurrentGraphs(Change change)
{
    for (const auto& layer : targetLayers())
        if (const auto graph = layer->currentGraph())
            change(*graph);
}

void QZPaintSplitView::paintGraphConfigDidEdit(QZPaintGraphConfigWC& /*panel*/)
{
    for (const auto& layer : targetLayers())
        layer->mouseDoubleClicked();
}

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
    const auto layers = targetLayers();
    for (const auto& layer : layers) {
        const auto graph = layer->currentGraph();
        if (graph && graph->isFixed())
            return;
        if (graph) {
            const std::lock_guard lock(layer->graphs());
            layer->graphs().remove(graph.get());
        }
        layer->cancelCurrentGraph();
    }
    hidePanels();
    for (const auto& layer : layers)
        layer->setNeedsDisplay();
}

template <typename Change>
void QZPaintSplitView::changeCurrentNotes(Change change)
{
    changeCurrentGraphs([&change](QZPaintGraph& graph) {
        if (auto* note = dynamic_cast<QZPaintToolText*>(&graph))
            change(*note);
    });
}

void QZPaintSplitView::paintTextConfigTextDidChange(QZPaintTextConfigWC& /*panel*/, const QString& text)
{
    changeCurrentNotes([&text](QZPaintToolText& note) { note.setText(text); });
}

void QZPaintSplitView::paintTextConfigColorDidChange(QZPaintTextConfigWC& /*panel*/, const QColor& color)
{
    changeCurrentNotes([&color](QZPaintToolText& note) {
        note.setStrokeColor(color);
        QZPaintGraphConfigWC::sharedWC().setStrokeColor(color);
    });
}

void QZPaintSplitView::paintTextConfigSizeDidChange(QZPaintTextConfigWC& /*panel*/, std::int64_t size)
{
    changeCurrentNotes([size](QZPaintToolText& note) {
        note.setFont(labelFont(static_cast<double>(size)));
        // A font by itself asks for no redraw.
        if (const auto owner = note.layer())
            owner->setNeedsDisplay();
    });
}
