#include "app/chart/PanePlot.h"

#include <algorithm>
#include <cmath>

double PanePlot::selectTest(const QPointF& /*pos*/, bool /*onlySelectable*/, QVariant* /*details*/) const
{
    return -1;
}

QCPRange PanePlot::getKeyRange(bool& foundRange, QCP::SignDomain /*inSignDomain*/) const
{
    foundRange = false;
    return {};
}

QCPRange PanePlot::getValueRange(bool& foundRange, QCP::SignDomain /*inSignDomain*/,
                                 const QCPRange& /*inKeyRange*/) const
{
    foundRange = false;
    return {};
}

void PanePlot::drawLegendIcon(QCPPainter* /*painter*/, const QRectF& /*rect*/) const {}

int PanePlot::barBodyWidth() const
{
    const double barWidth = keyAxis()->axisRect()->width() / keyAxis()->range().size();
    const int body = std::max(1, static_cast<int>(std::floor(std::min(barWidth * 0.72, barWidth - 1))));
    return body % 2 == 0 ? body - 1 : body;
}

int PanePlot::yOf(double value) const
{
    constexpr double farOff = 100'000; // px
    const double y = valueAxis()->coordToPixel(value);
    return std::isnan(y) ? 0 : static_cast<int>(std::floor(std::clamp(y, -farOff, farOff)));
}
