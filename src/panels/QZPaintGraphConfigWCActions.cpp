#include "panels/QZPaintGraphConfigWC.h"

#include <QSignalBlocker>

#include <cmath>
#include <limits>

// What the strip is told and what it tells: values and actions.

void QZPaintGraphConfigWC::setDelegate(QZPaintGraphConfigWCDelegate* delegate)
{
    delegate_ = delegate;
    delegateLifetime_ = delegate == nullptr ? std::weak_ptr<void>() : delegate->lifetime_;
}

QZPaintGraphConfigWCDelegate* QZPaintGraphConfigWC::delegate() const
{
    return delegateLifetime_.expired() ? nullptr : delegate_;
}

void QZPaintGraphConfigWC::setStrokeColor(const QColor& color)
{
    if (!color.isValid())
        return;
    cwStrokeColor_->setColor(color);
    colorPicker_.reload(*cwStrokeColor_);
}

void QZPaintGraphConfigWC::setFillColor(const QColor& color)
{
    cwFillColor_->setColor(color);
    colorPicker_.reload(*cwFillColor_);
}

void QZPaintGraphConfigWC::setLineType(std::uint64_t lineType)
{
    lineType_ = lineType;
    const bool isTag = lineType <= static_cast<std::uint64_t>(std::numeric_limits<int>::max());
    popLineType_->selectItemWithTag(isTag ? static_cast<int>(lineType) : QZPopUpButton::noTag);
}

void QZPaintGraphConfigWC::setLineWidth(double lineWidth)
{
    const double rounded = std::round(lineWidth);
    const bool isUsable = rounded >= 1.0 && rounded <= maxLineWidth; // not for what is no number
    lineWidth_ = static_cast<int>(isUsable ? rounded : (rounded > maxLineWidth ? maxLineWidth : 1.0));
    popLineWidth_->selectItemWithTag(isUsable ? lineWidth_ - 1 : QZPopUpButton::noTag);
}

void QZPaintGraphConfigWC::setIsLocked(bool isLocked)
{
    const QSignalBlocker silent(btnIsLocked_);
    btnIsLocked_->setChecked(isLocked);
}

void QZPaintGraphConfigWC::clickedEdit()
{
    window_.returnKeyboard(); // first: what the delegate opens may take it
    if (auto* told = delegate())
        told->paintGraphConfigDidEdit(*this);
}

void QZPaintGraphConfigWC::selectedStrokeColor()
{
    chosenLine_.color = strokeColor();
    if (auto* told = delegate())
        told->paintGraphConfigStrokeColorDidChange(*this, strokeColor());
}

void QZPaintGraphConfigWC::selectedFillColor()
{
    if (auto* told = delegate())
        told->paintGraphConfigFillColorDidChange(*this, fillColor());
}

void QZPaintGraphConfigWC::selectedLineType()
{
    if (const int tag = popLineType_->selectedTag(); tag != QZPopUpButton::noTag)
        setLineType(static_cast<std::uint64_t>(tag));
    chosenLine_.type = lineType_;
    if (auto* told = delegate())
        told->paintGraphConfigLineTypeDidChange(*this, lineType_);
}

void QZPaintGraphConfigWC::selectedLineWidth()
{
    if (const int tag = popLineWidth_->selectedTag(); tag != QZPopUpButton::noTag)
        setLineWidth(tag + 1.0);
    chosenLine_.width = lineWidth();
    if (auto* told = delegate())
        told->paintGraphConfigLineWidthDidChange(*this, lineWidth());
}

void QZPaintGraphConfigWC::clickedIsLocked()
{
    if (auto* told = delegate())
        told->paintGraphConfigIsLockedDidChange(*this, isLocked());
    window_.returnKeyboard();
}

void QZPaintGraphConfigWC::clickedDelete()
{
    if (auto* told = delegate())
        told->paintGraphConfigDidDelete(*this);
    window_.returnKeyboard();
}

void QZPaintGraphConfigWC::windowWillClose()
{
    colorPicker_.close();
}
