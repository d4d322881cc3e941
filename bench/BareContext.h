#pragma once

#include "platform/QZGraphicsContext.h"

#include <QGlyphRun>
#include <QHash>
#include <QPainter>
#include <QPolygonF>

#include <functional>
#include <memory>
#include <vector>

/// Notes what figures draw as the cheapest calls to a bare QPainter that draw the same: horizontal lines filled or
/// blitted from one strip per dash, slanted ones stroked leg by leg, which leaves out the joins, captions as glyph runs
/// that were shaped beforehand. It knows no more than what the tools of the benchmarks draw.
class BareContext : public QZGraphicsContext {
public:
    explicit BareContext(QSize size) : size_(size) {}

    /// Everything noted, on a cleared image, within its bounds.
    void draw(QImage& image) const;

    void saveState() override { saved_.push_back(state_); }
    void restoreState() override;
    void setLineWidth(double width) override { state_.width = width; }
    void setLineCap(QZLineCap /*cap*/) override {}
    void setLineJoin(QZLineJoin /*join*/) override {}
    void setLineDash(double phase, std::span<const double> lengths) override;
    void setStrokeColor(const QColor& color) override { state_.stroke = color; }
    void setFillColor(const QColor& color) override { state_.fill = color; }

    void strokeSegment(QZLine line) override;
    void beginPath() override { path_.clear(); }
    void moveTo(QZPoint point) override { path_.append(flipped(point)); }
    void lineTo(QZPoint point) override { path_.append(flipped(point)); }
    void addArc(QZPoint, double, double, double, bool) override { qFatal("no bare arcs"); }
    void closePath() override { path_.append(path_.constFirst()); }
    void strokePath() override;
    void fillPath() override { qFatal("no bare fills"); }
    void strokeRect(QZRect rect) override;
    void fillRect(QZRect /*rect*/) override { qFatal("no bare fills"); }
    void strokeEllipse(QZRect /*bounds*/) override { qFatal("no bare ellipses"); }
    void clearRect(QZRect /*rect*/) override { qFatal("no bare handles"); }
    void drawImage(const QImage& /*image*/, QZRect /*rect*/) override { qFatal("no bare images"); }
    void drawText(const QString& text, const QFont& font, const QColor& color, QZRect rect) override;

private:
    struct State {
        double width = 1.0;
        QList<qreal> dash; // px; none is solid
        QColor stroke = Qt::black;
        QColor fill = Qt::black;
    };

    [[nodiscard]] QPointF flipped(QZPoint point) const { return {point.x, size_.height() - point.y}; }
    [[nodiscard]] QPen pen() const;
    /// A line of the current style from the left edge to the right one.
    [[nodiscard]] std::shared_ptr<const QImage> strip();

    QSize size_;
    State state_;
    std::vector<State> saved_;
    QPolygonF path_;
    std::vector<std::function<void(QPainter&)>> calls_;
    QHash<QString, std::shared_ptr<const QImage>> strips_;
};
