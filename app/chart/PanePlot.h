#pragma once

#include "app/chart/CustomPlot.h"

/// Something painted into a pane's plot that can neither be picked nor has a say in what the axes show.
class PanePlot : public QCPAbstractPlottable {
public:
    using QCPAbstractPlottable::QCPAbstractPlottable;

    double selectTest(const QPointF& pos, bool onlySelectable, QVariant* details) const override;
    QCPRange getKeyRange(bool& foundRange, QCP::SignDomain inSignDomain) const override;
    QCPRange getValueRange(bool& foundRange, QCP::SignDomain inSignDomain, const QCPRange& inKeyRange) const override;

protected:
    /// Width of a bar's body or column (px): odd, so that there is a middle, and with a gap of at least a pixel to the
    /// neighbour as long as there is room for one.
    [[nodiscard]] int barBodyWidth() const;
    /// The row of pixels (of the plot, y downwards) of a value; far outside the plot it stays there somewhere.
    [[nodiscard]] int yOf(double value) const;
    void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;
};
