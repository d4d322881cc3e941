#pragma once

#include "app/chart/ChartData.h"
#include "app/chart/ChartTheme.h"
#include "app/chart/PanePlot.h"

#include <memory>

/// Paints one mark per visible bar, on whole pixels so that it is crisp; bars that share a pixel column are painted as
/// one (see BarSeries::outline). It reads the chart's bars in place.
class BarPlot : public PanePlot {
public:
    BarPlot(QCPAxis* keyAxis, QCPAxis* valueAxis);

    void setData(std::shared_ptr<const ChartData> data) { data_ = std::move(data); }
    void setColors(const QColor& up, const QColor& down);

protected:
    /// Where a bar goes (px of the plot, y downwards).
    struct Column {
        int center = 0;
        int width = 1; ///< odd, so that there is a middle
    };

    void draw(QCPPainter* painter) override;
    virtual void drawBar(QCPPainter& painter, const Bar& bar, Column column, const QColor& color) const = 0;

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
