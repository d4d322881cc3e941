#include "surface/QZPaintStripHost.h"

#include "model/QZPaintGraph.h"
#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"

void QZPaintStripHost::showStrip(const QZPaintGraph& figure, unsigned configs, const QWidget& view)
{
    QZPaintGraphConfigWC& strip = QZPaintGraphConfigWC::sharedWC();
    strip.setFillColor(Qt::white); // not the figure's own
    strip.setStrokeColor(figure.strokeColor());
    strip.setLineType(figure.lineType());
    strip.setLineWidth(static_cast<double>(figure.lineWidth()));
    strip.setIsLocked(figure.isLocked());
    strip.setEnabledConfigs(configs);
    strip.window().addToWindowOf(view);
}

void QZPaintStripHost::setStripConfigs(unsigned configs)
{
    QZPaintGraphConfigWC::sharedWC().setEnabledConfigs(configs);
}

std::int64_t QZPaintStripHost::armedType() const
{
    const QZPaintControl* palette = QZPaintControl::existing();
    return palette == nullptr ? QZShapeTypeNone : palette->selectedType();
}
