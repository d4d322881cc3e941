#include "platform/QZPainterContext.h"
#include "surface/QZPaintLayer.h"
#include "surface/QZPaintManagerView.h"

#include <QPaintEngine>
#include <QPainter>
#include <QScopeGuard>

#include <algorithm>
#include <mutex>
#include <span>

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
    if (!arePointsStale_)
        return;
    arePointsStale_ = false;
    const std::lock_guard lock(graphs_);
    const auto graphs = graphs_.snapshot();
    // As drawing does, this leaves alone what nobody sees: the chart may delete what it cannot place.
    for (const auto& graph : drawnOf(*graphs))
        if (!graph->isHidden())
            graph->reloadKeyPoints();
    const auto current = currentGraph_;
    if (current && current->isEditing())
        current->reloadKeyPoints();
}

void QZPaintLayer::reloadGraphFontAndColor()
{
    const std::lock_guard lock(graphs_);
    const auto graphs = graphs_.snapshot();
    for (const auto& graph : *graphs)
        graph->reloadFontAndColor();
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
    if (fits && !needsDisplay_)
        return contents_;
    needsDisplay_ = false;
    arePointsStale_ = false;
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
    needsDisplay_ = true;
    arePointsStale_ = true;
    if (managerView_ != nullptr)
        managerView_->updateOverlay();
}
