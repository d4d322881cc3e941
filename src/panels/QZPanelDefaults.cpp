#include "panels/QZPanelDefaults.h"

#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "panels/QZPaintTextConfigWC.h"

void QZPanelDefaults::install()
{
    static const QZPanelDefaults defaults;
    setPanels(&defaults);
}

std::uint64_t QZPanelDefaults::lineType() const
{
    const QZPaintGraphConfigWC* strip = QZPaintGraphConfigWC::existing();
    return strip == nullptr ? QZPaintDefaults::lineType() : strip->lineType();
}

double QZPanelDefaults::lineWidth() const
{
    const QZPaintGraphConfigWC* strip = QZPaintGraphConfigWC::existing();
    return strip == nullptr ? QZPaintDefaults::lineWidth() : strip->lineWidth();
}

QColor QZPanelDefaults::strokeColor() const
{
    const QZPaintGraphConfigWC* strip = QZPaintGraphConfigWC::existing();
    return strip == nullptr ? QZPaintDefaults::strokeColor() : strip->strokeColor();
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
