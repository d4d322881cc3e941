#include "app/chart/PaneOverlay.h"

#include "platform/QZFont.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double fontSize = 11;
constexpr double tagPadding = 5;
constexpr double legendInset = 6;
constexpr double legendGap = 10;

} // namespace

PaneOverlay::PaneOverlay(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    setFont(systemFont(fontSize));
}

void PaneOverlay::setPlot(const QRectF& plot)
{
    plot_ = plot;
    update();
}

void PaneOverlay::setTheme(const ChartTheme& theme)
{
    theme_ = theme;
    update();
}

void PaneOverlay::setCrosshair(std::optional<Crosshair> crosshair)
{
    crosshair_ = std::move(crosshair);
    update();
}

void PaneOverlay::setLegend(std::vector<LegendPart> legend)
{
    legend_ = std::move(legend);
    update();
}

void PaneOverlay::setLegendVisible(bool visible)
{
    isLegendVisible_ = visible;
    update();
}

void PaneOverlay::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    paintLegend(painter);
    paintCrosshair(painter);
}

void PaneOverlay::paintCrosshair(QPainter& painter) const
{
    if (!crosshair_)
        return;
    QColor line = theme_.axisText;
    line.setAlphaF(0.6F);
    painter.setPen(QPen(line, 1, Qt::DashLine));
    const auto onPixel = [](double coordinate) { return std::floor(coordinate) + 0.5; };
    if (crosshair_->x >= plot_.left() && crosshair_->x <= plot_.right()) {
        const double x = onPixel(crosshair_->x);
        painter.drawLine(QPointF(x, plot_.top()), QPointF(x, plot_.bottom()));
        if (!crosshair_->dateTag.isEmpty())
            paintTag(painter, crosshair_->dateTag, {crosshair_->x, plot_.bottom() + 2}, Qt::TopEdge);
    }
    if (crosshair_->y) {
        const double y = onPixel(*crosshair_->y);
        painter.setPen(QPen(line, 1, Qt::DashLine));
        painter.drawLine(QPointF(plot_.left(), y), QPointF(plot_.right(), y));
        paintTag(painter, crosshair_->valueTag, {plot_.right() + 1, *crosshair_->y}, Qt::LeftEdge);
    }
}

void PaneOverlay::paintTag(QPainter& painter, const QString& text, QPointF anchor, Qt::Edge side) const
{
    const QFontMetricsF metrics(font());
    QRectF tag(QPointF(), QSizeF(std::ceil(metrics.horizontalAdvance(text)) + 2 * tagPadding, metrics.height() + 2));
    if (side == Qt::LeftEdge)
        tag.moveTo(anchor.x(), anchor.y() - tag.height() / 2);
    else
        tag.moveTo(anchor.x() - tag.width() / 2, anchor.y());
    tag.moveLeft(std::round(std::clamp(tag.left(), 0.0, std::max(0.0, width() - tag.width()))));
    tag.moveTop(std::round(std::clamp(tag.top(), 0.0, std::max(0.0, height() - tag.height()))));
    painter.fillRect(tag, theme_.axisText);
    painter.setPen(theme_.background);
    painter.drawText(tag, Qt::AlignCenter, text);
}

void PaneOverlay::paintLegend(QPainter& painter) const
{
    if (!isLegendVisible_)
        return;
    const QFontMetricsF metrics(font());
    painter.setFont(font());
    double x = plot_.left() + legendInset;
    for (const LegendPart& part : legend_) {
        const double width = metrics.horizontalAdvance(part.text);
        if (x + width > plot_.right() - legendInset)
            return;
        const QRectF ground(x - 2, plot_.top() + legendInset - 1, width + 4, metrics.height() + 2);
        QColor veil = theme_.background;
        veil.setAlphaF(0.75F); // legible over candles
        painter.fillRect(ground, veil);
        painter.setPen(part.color.isValid() ? part.color : theme_.axisText);
        painter.drawText(QPointF(x, plot_.top() + legendInset + metrics.ascent()), part.text);
        x += width + legendGap;
    }
}
