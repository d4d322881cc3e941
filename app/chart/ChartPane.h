#pragma once

#include "app/chart/AxisTicks.h"
#include "app/chart/ChartData.h"
#include "app/chart/ChartTheme.h"
#include "app/chart/ChartViewport.h"
#include "app/chart/PaneOverlay.h"
#include "app/chart/PaneScale.h"
#include "surface/QZPaintManagerView.h"

#include <memory>
#include <optional>
#include <span>

class BarPlot;
class QCPAxis;
class QCPAxisRect;
class QCPAxisTickerText;
class QCPPainter;
class QCustomPlot;

/// One pane of the chart: bars over a time axis that all panes share, with a value axis of its own on the right. It
/// answers the drawing tools' questions from its scale; what a value means (price or volume) is the derived pane's. Its
/// object name tells its stored figures from those of the other panes.
///
/// Dates and times are those of the bars (yyyymmdd, hhmmss). Every bar index has one, so a figure's point may lie in
/// the past and in the future as well as on a loaded bar.
class ChartPane : public QZPaintManagerView {
public:
    [[nodiscard]] const PaneScale& scale() const { return scale_; }
    [[nodiscard]] const std::shared_ptr<const ChartData>& chartData() const { return data_; }

    virtual void setChartData(std::shared_ptr<const ChartData> shown);
    virtual void applyTheme(const ChartTheme& theme);
    /// Only the lowest pane writes the dates.
    void setDateAxisVisible(bool visible);

    void setLegendVisible(bool visible) { reading_->setLegendVisible(visible); }

    /// Takes the values' range from the visible bars, unless it is the user's own. Returns the width that the value
    /// axis needs (px).
    int fitValues();
    /// Shows bars and figures at the viewport's present place, with a value axis `axisWidth` px wide.
    void refresh(int axisWidth);

    // What the user does to the values' scale. It shows with the next fitValues() and refresh().

    /// Whether a logarithmic scale is wanted; it comes into force where hasLogarithms().
    void setLogarithmic(bool isLogarithmic);
    /// Whether every value of the pane has a logarithm. A pane that answers false always stays linear.
    [[nodiscard]] virtual bool hasLogarithms() const { return false; }
    /// Makes the range the user's own, until fitAgain() or other bars: `factor` times taller candles, or moved upwards.
    void stretchValues(double factor);
    void shiftValues(double pixels);
    [[nodiscard]] bool hasOwnRange() const { return ownRange_.has_value(); }
    void fitAgain() { ownRange_.reset(); }
    /// Whether a point (px, y upwards) lies on the strip of the value axis.
    [[nodiscard]] bool isOnValueAxis(QZPoint point) const;

    /// Points the crosshair at a bar, and at `y` (px of the pane, upwards) where the mouse is in this pane; without a
    /// bar there is no crosshair, and the legend tells of the newest bar.
    void pointAt(std::optional<int> bar, std::optional<double> y);
    [[nodiscard]] const PaneOverlay& reading() const { return *reading_; }

    /// Paints the pane as it stands, in its coordinates (px, y downwards): bars, axes, legend and figures, without
    /// crosshair and handles. `painter` gets its state back.
    void paintPicture(QCPPainter& painter) const;

    /// The tools that have a figure, and the palette's functions.
    [[nodiscard]] std::int64_t enableTypes() const override;
    [[nodiscard]] std::optional<QZPaintLogicAxis> convertFromPoint(QZPoint point) const override;
    [[nodiscard]] QZPoint convertFromLogicAxis(const QZPaintLogicAxis& axis) const override;
    [[nodiscard]] bool canBeDraggedToLeft(QZPoint point) const override;
    [[nodiscard]] bool canBeDraggedToRight(QZPoint point) const override;
    [[nodiscard]] double convertXForMagnet(double x, bool canOverflow) const override;
    [[nodiscard]] double getXPointWithLocation(float location, int gapCount) const override;
    bool calcRegressionData(QZRegressionCalcData& lines) const override;
    bool calcBoxLineData(QZBoxLineCalcData& boxData) const override;
    [[nodiscard]] std::optional<QZPaintRetangleModel> infomationForRetangle(QZPoint start, QZPoint endPoint,
                                                                            int deltaCount) const override;
    [[nodiscard]] QZPoint convertPointForMagnet(QZPoint point, std::uint64_t style) const override;
    [[nodiscard]] std::optional<QString> captionOfPrice(double price) const override { return valueText(price); }

protected:
    /// `viewport` is borrowed and outlives the pane.
    ChartPane(const ChartViewport& viewport, QWidget* parent);

    /// The bars with the values that this pane plots, one for each loaded bar.
    [[nodiscard]] virtual std::span<const Bar> plottedBars() const = 0;
    /// What the value axis shows while the bars `first` to `last` are visible; neither need be loaded. Positive while
    /// the scale is logarithmic.
    [[nodiscard]] virtual PriceRange valueRange(int first, int last) const = 0;
    [[nodiscard]] virtual std::vector<AxisTick> valueTicks(double low, double high, int maxCount) const = 0;
    [[nodiscard]] virtual QString valueText(double value) const = 0;
    /// The difference between two values.
    [[nodiscard]] virtual QString changeText(double from, double to) const = 0;
    /// What the legend tells of a loaded bar, the most important first.
    [[nodiscard]] virtual std::vector<LegendPart> legendOf(int bar) const = 0;
    /// A value that has a tag of its own on the axis.
    [[nodiscard]] virtual std::optional<double> taggedValue() const { return std::nullopt; }
    /// Whether the lowest value keeps its place while the user stretches the scale; else the middle does.
    [[nodiscard]] virtual bool stretchesFromBottom() const { return false; }
    /// After the scale changed, before the plot is drawn.
    virtual void updateDecoration() {}

    /// Makes `plot`, which the chart owns from then on, the pane's marks; a pane may do without.
    void setBarPlot(BarPlot* plot) { barPlot_ = plot; }
    [[nodiscard]] BarPlot* barPlot() const { return barPlot_; }
    [[nodiscard]] QCustomPlot* plot() const { return plot_; }
    [[nodiscard]] QCPAxis* timeAxis() const;
    [[nodiscard]] QCPAxis* valueAxis() const;

    void resizeEvent(QResizeEvent* event) override;

private:
    /// Bars that are loaded, from one to the other.
    struct LoadedRange {
        int first = 0;
        int last = -1;
    };

    void layOut();
    void updateTicks();
    [[nodiscard]] PriceRange fittedRange() const;
    /// Takes a range of levels (see PaneScale) if it can be shown.
    void setOwnRange(double bottom, double top);
    /// What canBeDraggedToLeft(), with `direction` -1, and canBeDraggedToRight(), with 1, answer of a point at `x`,
    /// given the plot's edge on that side (px).
    [[nodiscard]] bool canBeDragged(double x, int direction, double edge, bool hasScreenBeyond) const;
    /// The loaded bars between two x (px); nothing when there are none or an x is not a number.
    [[nodiscard]] std::optional<LoadedRange> loadedBetween(double x1, double x2) const;
    [[nodiscard]] std::span<const Bar> plottedBars(LoadedRange range) const;

    const ChartViewport& viewport_;
    std::shared_ptr<const ChartData> data_ = std::make_shared<const ChartData>();
    PaneScale scale_;
    bool isLogarithmWanted_ = false;
    std::optional<PriceRange> ownRange_;
    int axisWidth_ = 60;
    bool showsDates_ = false;
    QCustomPlot* plot_;
    PaneOverlay* reading_; // owned as a child widget
    BarPlot* barPlot_ = nullptr;
    QSharedPointer<QCPAxisTickerText> dateTicker_;
    QSharedPointer<QCPAxisTickerText> valueTicker_;
};
