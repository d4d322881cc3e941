#pragma once

#include "app/chart/ChartData.h"
#include "app/chart/ChartTheme.h"
#include "app/chart/CustomPlot.h"

#include <memory>

/// Paints one mark per visible bar, on whole pixels so that it is crisp; bars that share a pixel column are painted as
/// one (see BarSeries::outline). It reads the chart's bars in place.
class BarPlot : public QCPAbstractPlottable {
public:
    BarPlot(QCPAxis* keyAxis, QCPAxis* valueAxis);

    void setData(std::shared_ptr<const ChartData> data) { data_ = std::move(data); }
    void setColors(const QColor& up, const QColor& down);

    double selectTest(const QPointF& pos, bool onlySelectable, QVariant* details) const override;
    QCPRange getKeyRange(bool& foundRange, QCP::SignDomain inSignDomain) const override;
    QCPRange getValueRange(bool& foundRange, QCP::SignDomain inSignDomain, const QCPRange& inKeyRange) const override;

protected:
    /// Where a bar goes (px of the plot, y downwards).
    struct Column {
        int center = 0;
        int width = 1; ///< odd, so that there is a middle
    };

    void draw(QCPPainter* painter) override;
    void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;
    virtual void drawBar(QCPPainter& painter, const Bar& bar, Column column, const QColor& color) const = 0;
    [[nodiscard]] int yOf(double value) const;

private:
    void drawSharedColumns(QCPPainter& painter) const;
    void drawColored(QCPPainter& painter, const Bar& bar, Column column) const;

    std::shared_ptr<const ChartData> data_;
    QColor up_;
    QColor down_;
};

class CandlePlot final : public BarPlot {
public:
    using BarPlot::BarPlot;

protected:
    void drawBar(QCPPainter& painter, const Bar& bar, Column column, const QColor& color) const override;
};

class VolumePlot final : public BarPlot {
public:
    using BarPlot::BarPlot;

protected:
    void drawBar(QCPPainter& painter, const Bar& bar, Column column, const QColor& color) const override;
};
