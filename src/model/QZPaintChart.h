#pragma once

#include "model/QZHostRecords.h"
#include "model/QZPaintLogicAxis.h"
#include "platform/QZGeometry.h"

#include <cstdint>
#include <optional>

/// What a figure asks of the chart under it. Points are layer coordinates (px, y upwards).
class QZPaintChart {
public:
    virtual ~QZPaintChart() = default;

    /// The area of the pane in which figures show and may be dragged.
    [[nodiscard]] virtual QZRect validateRect() const = 0;
    /// `point` moved to what the chart can represent: a bar and a price.
    [[nodiscard]] virtual QZPoint convertToPrecisionPoint(QZPoint point) const = 0;

    /// Date and time of the bar under `point` and the price at its height; nothing where the chart has neither.
    [[nodiscard]] virtual std::optional<QZPaintLogicAxis> convertFromPoint(QZPoint point) const = 0;
    /// The point of a date, time and price at the current scroll and scale; unplaceablePoint where there is none.
    [[nodiscard]] virtual QZPoint convertFromLogicAxis(const QZPaintLogicAxis& axis) const = 0;

    /// Whether a figure's extreme point may be dragged to `point` at the left or right edge of validateRect.
    [[nodiscard]] virtual bool canBeDraggedToLeft(QZPoint point) const = 0;
    [[nodiscard]] virtual bool canBeDraggedToRight(QZPoint point) const = 0;

    /// `x` snapped to a bar; with `canOverflow` the answer may lie beyond the chart's last bar.
    [[nodiscard]] virtual double convertXForMagnet(double x, bool canOverflow) const = 0;
    /// x of the bar `gapCount` bars to the right of the one under `location`; missingCoordinate when there is none.
    [[nodiscard]] virtual double getXPointWithLocation(float location, int gapCount) const = 0;

    /// Fill in `data` for the bars between its x1 and x2; false when the chart cannot.
    virtual bool calcRegressionData(QZRegressionCalcData& data) const = 0;
    virtual bool calcBoxLineData(QZBoxLineCalcData& data) const = 0;
    /// Statistics of the bars between two points. `deltaCount` is the count answered last for this figure, or 0.
    [[nodiscard]] virtual std::optional<QZPaintRetangleModel> infomationForRetangle(QZPoint start, QZPoint endPoint,
                                                                                    int deltaCount) const = 0;

    /// `point` moved to the chart value that the magnet snaps to. `style` is 0.
    [[nodiscard]] virtual QZPoint convertPointForMagnet(QZPoint point, std::uint64_t style) const = 0;

    /// How captions write a price of this chart, which knows its decimals. Nothing, as here, for the library's own
    /// form: two or three decimals, compact beyond ±1000000.
    [[nodiscard]] virtual std::optional<QString> captionOfPrice(double /*price*/) const { return std::nullopt; }
};
