#include "app/chart/PanePlot.h"

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
