#include "BareContext.h"

#include <QTextLayout>

#include <algorithm>
#include <cmath>

void BareContext::draw(QImage& image) const
{
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setClipRect(image.rect());
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto& call : calls_)
        call(painter);
}

void BareContext::restoreState()
{
    state_ = saved_.back();
    saved_.pop_back();
}

void BareContext::setLineDash(double phase, std::span<const double> lengths)
{
    state_.dash.clear();
    if (lengths.size() == 2 && lengths[1] == 0.0)
        return;
    if (phase != 0.0 || lengths.size() % 2 != 0)
        qFatal("no such bare dashes");
    state_.dash.append({lengths.begin(), lengths.end()});
}

QPen BareContext::pen() const
{
    QPen pen(state_.stroke, state_.width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    QList<qreal> pattern;
    for (const qreal length : state_.dash)
        pattern.append(length / state_.width);
    if (!pattern.isEmpty())
        pen.setDashPattern(pattern);
    return pen;
}

std::shared_ptr<const QImage> BareContext::strip()
{
    QString key = state_.stroke.name(QColor::HexArgb) + QString::number(state_.width);
    for (const qreal length : state_.dash)
        key += QLatin1Char(' ') + QString::number(length);
    std::shared_ptr<const QImage>& strip = strips_[key];
    if (!strip) {
        QImage image(size_.width(), qRound(state_.width), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(pen());
        painter.drawLine(QLineF(0.0, state_.width / 2.0, size_.width(), state_.width / 2.0));
        painter.end();
        strip = std::make_shared<const QImage>(image);
    }
    return strip;
}

void BareContext::strokeSegment(QZLine line)
{
    const QPointF start = flipped(line.start);
    const QPointF end = flipped(line.end);
    if (start.y() != end.y()) {
        calls_.emplace_back([pen = pen(), start, end](QPainter& painter) {
            painter.setPen(pen);
            painter.drawLine(start, end);
        });
        return;
    }
    const QPointF corner(std::min(start.x(), end.x()), std::round(start.y() - state_.width / 2.0));
    if (state_.dash.isEmpty()) {
        const QRectF rect(corner, QSizeF(std::abs(end.x() - start.x()), state_.width));
        calls_.emplace_back([rect, color = state_.stroke](QPainter& painter) { painter.fillRect(rect, color); });
    } else {
        const auto image = strip();
        const QRectF part(0.0, 0.0, std::abs(end.x() - start.x()), image->height());
        calls_.emplace_back([image, corner, part](QPainter& painter) { painter.drawImage(corner, *image, part); });
    }
}

void BareContext::strokePath()
{
    QList<QLineF> legs;
    for (qsizetype i = 1; i < path_.size(); ++i)
        legs.append({path_[i - 1], path_[i]});
    calls_.emplace_back([pen = pen(), legs](QPainter& painter) {
        painter.setPen(pen);
        painter.drawLines(legs);
    });
    path_.clear();
}

void BareContext::strokeRect(QZRect rect)
{
    const QPointF topLeft = flipped({rect.minX(), rect.maxY()});
    const QRectF box(topLeft, QSizeF(rect.maxX() - rect.minX(), rect.maxY() - rect.minY()));
    if (!state_.dash.isEmpty()) {
        calls_.emplace_back([pen = pen(), box](QPainter& painter) {
            painter.setPen(pen);
            painter.drawRect(box);
        });
        return;
    }
    const double w = state_.width;
    const QPointF corner(std::round(box.x() - w / 2.0), std::round(box.y() - w / 2.0));
    const QSizeF size(std::round(box.width()), std::round(box.height()));
    for (const QRectF& side : {QRectF(corner, QSizeF(size.width() + w, w)),
                               QRectF(corner + QPointF(0.0, size.height()), QSizeF(size.width() + w, w)),
                               QRectF(corner + QPointF(0.0, w), QSizeF(w, size.height() - w)),
                               QRectF(corner + QPointF(size.width(), w), QSizeF(w, size.height() - w))})
        calls_.emplace_back([side, color = state_.stroke](QPainter& painter) { painter.fillRect(side, color); });
}

void BareContext::drawText(const QString& text, const QFont& font, const QColor& color, QZRect rect)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const QPointF corner = flipped({rect.minX(), rect.maxY()});
    for (const QGlyphRun& run : layout.glyphRuns()) {
        calls_.emplace_back([run, color, corner](QPainter& painter) {
            painter.setPen(color);
            painter.drawGlyphRun(corner, run);
        });
    }
}
