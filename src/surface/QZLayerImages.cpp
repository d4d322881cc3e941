#include "surface/QZLayerImages.h"

#include <QPainter>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr std::uint64_t lastLineType = 4;

void drawAll(QZLayerImages::Figures figures, QZPainterContext& context)
{
    for (const auto& figure : figures)
        figure->drawInContext(context);
}

} // namespace

void QZLayerCanvas::paint(const std::function<void(QZPainterContext&)>& draw) const
{
    QPainter painter(&image);
    if (clip)
        painter.setClipRect(*clip);
    QZPainterContext context(painter, height, QZPainterContext::Edges::PixelSnapped);
    draw(context);
}

bool QZLayerImages::canPicture(Figures over)
{
    return std::ranges::all_of(over, [](const auto& figure) {
        return figure->isHidden() ||
               (!figure->isSelected() && !figure->isEditing() && figure->lineType() <= lastLineType);
    });
}

QZLayerImages::QZLayerImages(const QZLayerCanvas& canvas, Members members, Figures under, QZPaintGraph& graph,
                             Figures over)
    : members_(std::move(members))
{
    canvas.image.fill(Qt::transparent);
    if (!under.empty()) {
        canvas.paint([&](QZPainterContext& context) {
            drawAll(under, context);
            styleUnder_ = context.state();
        });
        under_ = canvas.image.copy();
    }
    canvas.paint([&](QZPainterContext& context) {
        context.setState(styleUnder_);
        graph.drawInContext(context);
    });
    if (over.empty())
        return;
    over_ = QImage(canvas.image.size(), canvas.image.format());
    over_.setDevicePixelRatio(canvas.image.devicePixelRatio());
    over_.fill(Qt::transparent);
    QZLayerCanvas{over_, canvas.clip, canvas.height}.paint(
        [over](QZPainterContext& context) { drawAll(over, context); });
    over_.setDevicePixelRatio(1.0);
    drawOver(canvas);
}

void QZLayerImages::draw(const QZLayerCanvas& canvas, QZPaintGraph& graph) const
{
    if (under_.isNull())
        canvas.image.fill(Qt::transparent);
    else
        std::memcpy(canvas.image.bits(), under_.constBits(), static_cast<std::size_t>(under_.sizeInBytes()));
    canvas.paint([&](QZPainterContext& context) {
        context.setState(styleUnder_);
        graph.drawInContext(context);
    });
    drawOver(canvas);
}

void QZLayerImages::drawOver(const QZLayerCanvas& canvas) const
{
    if (over_.isNull())
        return;
    QImage& image = canvas.image;
    // Pixel upon pixel, whatever their ratio to px is: a painter of the image itself would scale.
    QImage pixels(image.bits(), image.width(), image.height(), image.bytesPerLine(), image.format());
    QPainter(&pixels).drawImage(0, 0, over_);
}
