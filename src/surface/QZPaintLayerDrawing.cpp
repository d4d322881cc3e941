#include "platform/QZPainterContext.h"
#include "surface/QZLayerImages.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"

#include <QPaintEngine>
#include <QPainter>
#include <QScopeGuard>

#include <algorithm>
#include <mutex>
#include <optional>
#include <span>
#include <utility>

namespace {

/// The latest ones, as many as are drawn.
std::span<const std::shared_ptr<QZPaintGraph>> drawnOf(const QZGraphSet::Members& graphs)
{
    return std::span(graphs).last(std::min(graphs.size(), static_cast<std::size_t>(maxGraphCount)));
}

/// Whether whole numbers of the painter's px are whole numbers of the device's: only its pixel ratio lies between them.
bool isOnPixels(const QPainter& painter)
{
    const QTransform transform = painter.combinedTransform();
    const double ratio = painter.device()->devicePixelRatio();
    return painter.paintEngine()->type() == QPaintEngine::Raster && transform.type() <= QTransform::TxScale &&
           transform.m11() == ratio && transform.m22() == ratio;
}

} // namespace

void QZPaintLayer::followChart()
{
    const Changed stale = std::exchange(stale_, Changed::Nothing);
    if (stale == Changed::Nothing)
        return;
    const std::lock_guard lock(graphs_);
    const auto current = currentGraph_;
    if (stale == Changed::Everything) {
        const auto graphs = graphs_.snapshot();
        // As drawing does, this leaves alone what nobody sees: the chart may delete what it cannot place.
        for (const auto& graph : drawnOf(*graphs))
            if (!graph->isHidden())
                graph->reloadKeyPoints();
    } else if (current && !current->isEditing() && !current->isHidden()) {
        current->reloadKeyPoints();
    }
    if (current && current->isEditing())
        current->reloadKeyPoints();
}

void QZPaintLayer::reloadGraphFontAndColor()
{
    const std::lock_guard lock(graphs_);
    const auto graphs = graphs_.snapshot();
    for (const auto& graph : *graphs)
        graph->reloadFontAndColor();
    images_.reset();
}

void QZPaintLayer::drawInContext(QZGraphicsContext& context)
{
    const std::lock_guard lock(graphs_);
    const auto graphs = graphs_.snapshot();
    for (const auto& graph : drawnOf(*graphs))
        graph->drawInContext(context);
    const auto current = currentGraph_;
    if (current && !graphs_.contains(current.get()))
        current->drawInContext(context);
}

const QImage& QZPaintLayer::contents(QSize size, double devicePixelRatio)
{
    const QSize pixels = (QSizeF(size) * devicePixelRatio).toSize();
    const bool fits = contents_.size() == pixels && contents_.devicePixelRatio() == devicePixelRatio;
    if (fits && !needsDisplay())
        return contents_;
    const Changed changed = std::exchange(changed_, Changed::Nothing);
    stale_ = Changed::Nothing;
    if (!fits) {
        contents_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        contents_.setDevicePixelRatio(devicePixelRatio);
    }
    if (contents_.isNull())
        return contents_;
    const auto clip = managerView_ == nullptr ? std::nullopt : std::optional(managerView_->flippedValidateRect());
    const QZLayerCanvas canvas{contents_, clip, static_cast<double>(size.height())};
    if (fits && changed == Changed::CurrentGraph && drawStep(canvas))
        return contents_;
    images_.reset();
    contents_.fill(Qt::transparent);
    canvas.paint([this](QZPainterContext& context) { drawInContext(context); });
    return contents_;
}

bool QZPaintLayer::drawStep(const QZLayerCanvas& canvas)
{
    const auto current = currentGraph_;
    if (!current || !(current->isDragging() || current->isEditing()))
        return false;
    const std::lock_guard lock(graphs_);
    const auto members = graphs_.snapshot();
    if (const auto images = images_; images && images->areOf(members)) {
        images->draw(canvas, *current);
        return true;
    }
    const QZLayerImages::Figures drawn = drawnOf(*members);
    const auto at = std::ranges::find(drawn, current);
    const auto under = static_cast<std::size_t>(at - drawn.begin());
    const bool isFinished = at != drawn.end();
    const QZLayerImages::Figures over = drawn.subspan(under + (isFinished ? 1 : 0));
    if (isFinished != graphs_.contains(current.get()) || !QZLayerImages::canPicture(over))
        return false;
    images_ = std::make_shared<const QZLayerImages>(canvas, members, drawn.first(under), *current, over);
    return true;
}

void QZPaintLayer::drawGraphs(QPainter& painter)
{
    if (managerView_ == nullptr)
        return;
    isPictured_ = true;
    painter.save();
    const auto restore = qScopeGuard([&] {
        painter.restore();
        isPictured_ = false;
    });
    painter.setClipRect(managerView_->flippedValidateRect(), Qt::IntersectClip);
    const auto edges = isOnPixels(painter) ? QZPainterContext::Edges::PixelSnapped : QZPainterContext::Edges::Exact;
    QZPainterContext context(painter, frame().height, edges);
    const std::lock_guard lock(graphs_);
    const auto graphs = graphs_.snapshot();
    for (const auto& graph : drawnOf(*graphs))
        graph->drawInContext(context);
}

void QZPaintLayer::setNeedsDisplay()
{
    changed_ = stale_ = Changed::Everything;
    if (managerView_ != nullptr)
        managerView_->updateOverlay();
}

void QZPaintLayer::setNeedsDisplayOf(const QZPaintGraph& graph)
{
    if (&graph != currentGraph_.get()) {
        setNeedsDisplay();
        return;
    }
    changed_ = std::max(changed_, Changed::CurrentGraph);
    stale_ = std::max(stale_, Changed::CurrentGraph);
    if (managerView_ != nullptr)
        managerView_->updateOverlay();
}

void QZPaintLayer::forgetPictureOf(const QZPaintGraph& graph)
{
    if (&graph != currentGraph_.get())
        images_.reset();
}
