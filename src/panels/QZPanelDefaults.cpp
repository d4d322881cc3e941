#include "panels/QZPanelDefaults.h"

#include "model/QZPaintOptions.h"
#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPaintTextConfigWC.h"

namespace {

/// The line of a new figure.
QZPaintGraphConfigWC::Line lineFor(const QZPaintGraphConfigWC& strip)
{
    if (QZPaintOptions::current().newFiguresTakeChosenLine)
        return strip.chosenLine();
    return {strip.lineType(), strip.lineWidth(), strip.strokeColor()};
}

} // namespace

void QZPanelDefaults::install()
{
    static const QZPanelDefaults defaults;
    setPanels(&defaults);
}

std::uint64_t QZPanelDefaults::lineType() const
{
    const QZPaintGraphConfigWC* strip = QZPaintGraphConfigWC::existing();
    return strip == nullptr ? QZPaintDefaults::lineType() : lineFor(*strip).type;
}

double QZPanelDefaults::lineWidth() const
{
    const QZPaintGraphConfigWC* strip = QZPaintGraphConfigWC::existing();
    return strip == nullptr ? QZPaintDefaults::lineWidth() : lineFor(*strip).width;
}

QColor QZPanelDefaults::strokeColor() const
{
    const QZPaintGraphConfigWC* strip = QZPaintGraphConfigWC::existing();
    return strip == nullptr ? QZPaintDefaults::strokeColor() : lineFor(*strip).color;
}

QColor QZPanelDefaults::fillColor() const
{
    const QZPaintGraphConfigWC* strip = QZPaintGraphConfigWC::existing();
    return strip == nullptr ? QZPaintDefaults::fillColor() : strip->fillColor();
}

QString QZPanelDefaults::text() const
{
    const QZPaintTextConfigWC* editor = QZPaintTextConfigWC::existing();
    return editor == nullptr ? QZPaintDefaults::text() : editor->text();
}

double QZPanelDefaults::textSize() const
{
    const QZPaintTextConfigWC* editor = QZPaintTextConfigWC::existing();
    return editor == nullptr || editor->size() == 0 ? QZPaintDefaults::textSize() : static_cast<double>(editor->size());
}

bool QZPanelDefaults::isMagnet() const
{
    const QZPaintControl* palette = QZPaintControl::existing();
    return palette == nullptr ? QZPaintDefaults::isMagnet() : palette->isMagnet();
}
