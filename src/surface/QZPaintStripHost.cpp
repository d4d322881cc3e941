#include "surface/QZPaintStripHost.h"

#include "model/QZPaintGraph.h"
#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPaintTextConfigWC.h"
#include "tools/QZPaintMarks.h"

#include <QFontInfo>

void QZPaintStripHost::showStrip(const QZPaintGraph& figure, unsigned configs, const QWidget& view)
{
    QZPaintGraphConfigWC& strip = QZPaintGraphConfigWC::sharedWC();
    strip.setFillColor(Qt::white); // not the figure's own
    strip.setStrokeColor(figure.strokeColor());
    strip.setLineType(figure.lineType());
    strip.setLineWidth(static_cast<double>(figure.lineWidth()));
    strip.setIsLocked(figure.isLocked());
    strip.setEnabledConfigs(configs);
    strip.setDelegate(nullptr);
    strip.window().addToWindowOf(view);
}

void QZPaintStripHost::setStripConfigs(unsigned configs)
{
    QZPaintGraphConfigWC::sharedWC().setEnabledConfigs(configs);
}

void QZPaintStripHost::showTextPanel(const QZPaintToolText& note, const QWidget& view)
{
    QZPaintTextConfigWC& editor = QZPaintTextConfigWC::sharedWC();
    editor.setText(note.text());
    editor.setColor(note.strokeColor());
    editor.setSize(QFontInfo(note.font()).pixelSize());
    editor.setDelegate(nullptr);
    // Overlaps the note by the 1 px of its border.
    const QZPoint topLeft = note.topLeftLocation();
    const QPointF corner(topLeft.x, view.height() - (topLeft.y + 1.0));
    editor.orderFront(view, view.mapToGlobal(corner).toPoint());
}

std::int64_t QZPaintStripHost::armedType() const
{
    const QZPaintControl* palette = QZPaintControl::existing();
    return palette == nullptr ? QZShapeTypeNone : palette->selectedType();
}
