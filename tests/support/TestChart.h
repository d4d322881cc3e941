#pragma once

#include "model/QZPaintChart.h"
#include "model/QZPlaneGeometry.h"

#include <cmath>
#include <functional>
#include <ostream>
#include <utility>

inline void PrintTo(QZPoint point, std::ostream* out)
{
    *out << point.x << "," << point.y;
}

/// One answer of a chart: a test may put its own in place of it and reads how often it was asked.
template <typename Signature>
class Hook {
public:
    explicit Hook(std::function<Signature> body) : body_(std::move(body)) {}
    void answerWith(std::function<Signature> body) { body_ = std::move(body); }
    template <typename... Args>
    auto operator()(Args&&... args) const
    {
        ++calls_;
        return body_(std::forward<Args>(args)...);
    }
    [[nodiscard]] int calls() const { return calls_; }

private:
    std::function<Signature> body_;
    mutable int calls_ = 0;
};

/// A linear chart: bars 10 px apart, bar 0 at x = 0 with the date 20240000, each px of height a price of 1.
class TestChart : public QZPaintChart {
public:
    static constexpr double barWidth = 10.0;
    static constexpr int firstDate = 20240000, barCount = 100;

    TestChart() = default;
    TestChart(const TestChart&) = delete; // the answers know their chart
    TestChart& operator=(const TestChart&) = delete;

    QZRect rect{0.0, 0.0, 400.0, 300.0};
    /// px by which the bars have moved to the right.
    double scroll = 0.0;

    Hook<std::optional<QZPaintLogicAxis>(QZPoint)> fromPoint{[this](QZPoint p) -> std::optional<QZPaintLogicAxis> {
        if (!isWithinDrawingRange(p) || std::isnan(p.x) || std::isnan(p.y))
            return std::nullopt;
        return QZPaintLogicAxis{firstDate + barAt(p.x), 0, p.y};
    }};
    Hook<QZPoint(const QZPaintLogicAxis&)> fromAxis{[this](const QZPaintLogicAxis& axis) {
        return axis.date == 0 ? unplaceablePoint
                              : QZPoint{(1.0 * axis.date - firstDate) * barWidth + scroll, axis.price};
    }};
    Hook<std::optional<QString>(double)> priceCaption{[](double) { return std::nullopt; }};
    Hook<bool(QZPoint)> mayGoLeft{[](QZPoint) { return true; }};
    Hook<bool(QZPoint)> mayGoRight{[](QZPoint) { return true; }};
    Hook<double(double, bool)> magnetX{[this](double x, bool) { return barAt(x) * barWidth + scroll; }};
    Hook<double(float, int)> barToTheRight{[this](float x, int gap) {
        const int bar = barAt(static_cast<double>(x)) + gap;
        return bar < barCount ? bar * barWidth + scroll : missingCoordinate;
    }};
    Hook<bool(QZRegressionCalcData&)> regression{[](QZRegressionCalcData& data) {
        data.line1Y1 = data.line1Y2 = 100.0;
        data.line2Y1 = data.line2Y2 = 120.0;
        data.line3Y1 = data.line3Y2 = 80.0;
        return true;
    }};
    Hook<bool(QZBoxLineCalcData&)> boxLine{[](QZBoxLineCalcData& data) {
        data.firstEdgeY = 50.0;
        data.secondEdgeY = 150.0;
        data.averageCostY = data.averageCost = 100.0F;
        return true;
    }};
    Hook<std::optional<QZPaintRetangleModel>(QZPoint, QZPoint, int)> range{
        [this](QZPoint start, QZPoint end, int) -> std::optional<QZPaintRetangleModel> {
            return QZPaintRetangleModel{barAt(end.x) - barAt(start.x), static_cast<float>(end.y / start.y - 1.0),
                                        QString::number(end.y - start.y), QStringLiteral("bars")};
        }};
    Hook<QZPoint(QZPoint, std::uint64_t)> magnet{[](QZPoint p, std::uint64_t) { return p; }};

    QZRect validateRect() const override { return rect; }
    QZPoint convertToPrecisionPoint(QZPoint p) const override
    {
        return fromAxis(fromPoint(p).value_or(QZPaintLogicAxis{}));
    }
    std::optional<QZPaintLogicAxis> convertFromPoint(QZPoint p) const override { return fromPoint(p); }
    QZPoint convertFromLogicAxis(const QZPaintLogicAxis& axis) const override { return fromAxis(axis); }
    bool canBeDraggedToLeft(QZPoint p) const override { return mayGoLeft(p); }
    bool canBeDraggedToRight(QZPoint p) const override { return mayGoRight(p); }
    double convertXForMagnet(double x, bool canOverflow) const override { return magnetX(x, canOverflow); }
    double getXPointWithLocation(float x, int gapCount) const override { return barToTheRight(x, gapCount); }
    bool calcRegressionData(QZRegressionCalcData& data) const override { return regression(data); }
    bool calcBoxLineData(QZBoxLineCalcData& data) const override { return boxLine(data); }
    std::optional<QZPaintRetangleModel> infomationForRetangle(QZPoint start, QZPoint end, int count) const override
    {
        return range(start, end, count);
    }
    QZPoint convertPointForMagnet(QZPoint p, std::uint64_t style) const override { return magnet(p, style); }
    std::optional<QString> captionOfPrice(double price) const override { return priceCaption(price); }

private:
    [[nodiscard]] int barAt(double x) const
    {
        const double bar = std::round((x - scroll) / barWidth);
        return std::abs(bar) < 1e6 ? static_cast<int>(bar) : 0;
    }
};
