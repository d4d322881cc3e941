#include "model/QZPaintGraph.h"

#include "model/QZPaintChart.h"
#include "model/QZPaintDefaults.h"
#include "model/QZPaintGraphOwner.h"
#include "model/QZPaintOptions.h"
#include "model/QZPlaneGeometry.h"
#include "platform/QZFont.h"
#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"

#include <algorithm>

namespace {

// Whole px; a host's answer that is none gives the thinnest line.
std::uint64_t wholeWidth(double width)
{
    constexpr double widest = 1.0e6;
    return width >= 0.0 && width <= widest ? static_cast<std::uint64_t>(width) : 1;
}

bool isSameOnScreen(const QColor& a, const QColor& b)
{
    return a.isValid() == b.isValid() && a.rgba64() == b.rgba64();
}

} // namespace

QZPaintGraph::QZPaintGraph(std::int64_t type, int maxPointCount)
    : type_(type),
      points_(static_cast<std::size_t>(maxPointCount)),
      lineType_(QZPaintDefaults::current().lineType()),
      lineWidth_(wholeWidth(QZPaintDefaults::current().lineWidth())),
      strokeColor_(QZPaintDefaults::current().strokeColor()),
      fillColor_(QZPaintDefaults::current().fillColor()),
      text_(QZPaintDefaults::current().text()),
      font_(labelFont(QZPaintDefaults::current().textSize()))
{
    if (!fillColor_.isValid())
        fillColor_ = strokeColor_;
    reloadFontAndColor();
}

void QZPaintGraph::initWithLayer(const std::shared_ptr<QZPaintGraphOwner>& layer, const QColor& strokeColor,
                                 const QColor& fillColor, std::uint64_t lineType, std::int32_t lineWidth,
                                 std::vector<QZPaintLogicAxis> logicAxises, const QString& text, const QFont& textFont,
                                 bool isLocked, bool isEditing, bool isSelected)
{
    layer_ = layer;
    strokeColor_ = strokeColor;
    fillColor_ = fillColor;
    lineType_ = lineType;
    lineWidth_ = static_cast<std::uint64_t>(lineWidth);
    logicAxises_ = std::move(logicAxises);
    text_ = text;
    font_ = textFont;
    locked_ = isLocked;
    editing_ = isEditing;
    selected_ = isSelected;
}

void QZPaintGraph::reloadFontAndColor()
{
    keyPointColor_ = QZGlobalEnv::getShareInstance()
                         .paletteLoad()
                         .getCustomColor(QStringLiteral("QZLinePaintToolFactory.KeyPointColor"))
                         .value_or(QColor(Qt::black));
}

bool QZPaintGraph::isFixed() const
{
    return locked_ && QZPaintOptions::current().lockedFiguresStay;
}

int QZPaintGraph::placedPointCount() const
{
    return editing_ ? currentPoint_.value_or(-1) + 1 : maxPointCount();
}

std::span<const QZPoint> QZPaintGraph::placedPoints() const
{
    return std::span(points_).first(static_cast<std::size_t>(placedPointCount()));
}

const QZPaintChart* QZPaintGraph::chart() const
{
    const auto owner = layer();
    return owner ? owner->chart() : nullptr;
}

double QZPaintGraph::priceAt(QZPoint point) const
{
    const QZPaintChart* host = chart();
    const auto axis = host == nullptr ? std::nullopt : host->convertFromPoint(point);
    return axis ? axis->price : 0.0;
}

std::optional<QZPaintRetangleModel> QZPaintGraph::rangeOfPoints() const
{
    Q_ASSERT(maxPointCount() >= 2);
    const QZPaintChart* host = chart();
    return host == nullptr ? std::nullopt : host->infomationForRetangle(points_[0], points_[1], deltaCount_);
}

QFont QZPaintGraph::captionFont() const
{
    return systemFont(static_cast<double>(lineWidth_) + 10.0);
}

QZRect QZPaintGraph::frame() const
{
    const auto owner = layer();
    return owner ? owner->frame() : QZRect{};
}

QZRect QZPaintGraph::validateRect() const
{
    const QZPaintChart* host = chart();
    return host == nullptr ? QZRect{} : host->validateRect();
}

void QZPaintGraph::requestDisplay() const
{
    if (const auto owner = layer())
        owner->setNeedsDisplayOf(*this);
}

void QZPaintGraph::tellOfChange() const
{
    if (const auto owner = layer())
        owner->forgetPictureOf(*this);
}

void QZPaintGraph::setLogicAxises(std::vector<QZPaintLogicAxis> axises)
{
    logicAxises_ = std::move(axises);
    tellOfChange();
}

void QZPaintGraph::setHidden(bool hidden)
{
    hidden_ = hidden;
    tellOfChange();
}

void QZPaintGraph::setFont(const QFont& font)
{
    font_ = font;
    tellOfChange();
}

std::vector<QZPaintLogicAxis> QZPaintGraph::convertToLogicAxises() const
{
    const QZPaintChart* host = chart();
    std::vector<QZPaintLogicAxis> axises;
    std::ranges::transform(placedPoints(), std::back_inserter(axises), [host](QZPoint point) {
        auto axis = host == nullptr ? std::nullopt : host->convertFromPoint(point);
        if (axis)
            axis->orginalPoint = point;
        return axis.value_or(QZPaintLogicAxis{});
    });
    return axises;
}

void QZPaintGraph::convertToKeyPoint()
{
    if (isContainsInvalidLogicPoint())
        return;
    const QZPaintChart* host = chart();
    if (host == nullptr)
        return;
    // A stored figure may carry more or fewer chart points than it has key points.
    const std::size_t count = std::min(points_.size(), logicAxises_.size());
    for (std::size_t i = 0; i < count; ++i)
        points_[i] = host->convertFromLogicAxis(logicAxises_[i]);
    if (points_.size() == 2) {
        const auto range = host->infomationForRetangle(points_[0], points_[1], 0);
        deltaCount_ = range ? range->count : 0;
    }
}

void QZPaintGraph::reloadKeyPoints()
{
    if (followsChart() && !isGraphDragging_)
        convertToKeyPoint();
}

bool QZPaintGraph::isContainsInvalidPoint()
{
    return isContainsInvalidLogicPoint() || isContainsInvalidScreenPoint();
}

bool QZPaintGraph::isContainsInvalidLogicPoint()
{
    if (std::ranges::find(points_, unplaceablePoint) == points_.end())
        return false;
    writeBusCommonLog(QStringLiteral("Contains InvalidPoint! Delete it!"));
    if (const auto owner = layer())
        owner->removeGraph(*this);
    return true;
}

bool QZPaintGraph::isContainsInvalidScreenPoint() const
{
    if (std::ranges::all_of(points_, isWithinDrawingRange))
        return false;
    const auto owner = layer();
    writeBusCommonLog(
        QStringLiteral("Contains convert failure point! %1!").arg(owner ? owner->description() : QString()));
    return true;
}

bool QZPaintGraph::isSelected() const
{
    if (!selected_)
        return false;
    const auto owner = layer();
    return owner && owner->isActivePane();
}

void QZPaintGraph::setSelected(bool selected)
{
    if (selected_ == selected)
        return;
    selected_ = selected;
    needsDisplay_ = selected || editing_;
    requestDisplay();
}

void QZPaintGraph::setEditing(bool editing)
{
    if (editing_ == editing)
        return;
    editing_ = editing;
    needsDisplay_ = isSelected() || editing;
    requestDisplay();
}

void QZPaintGraph::setLineType(std::uint64_t lineType)
{
    if (lineType_ == lineType)
        return;
    lineType_ = lineType;
    requestDisplay();
}

void QZPaintGraph::setLineWidth(std::uint64_t lineWidth)
{
    if (lineWidth_ == lineWidth)
        return;
    lineWidth_ = lineWidth;
    requestDisplay();
}

void QZPaintGraph::setStrokeColor(const QColor& color)
{
    if (isSameOnScreen(strokeColor_, color))
        return;
    strokeColor_ = color;
    requestDisplay();
}

void QZPaintGraph::setFillColor(const QColor& color)
{
    if (isSameOnScreen(fillColor_, color))
        return;
    fillColor_ = color;
    requestDisplay();
}

void QZPaintGraph::tintFillColor()
{
    constexpr float tintOpacity = 0.2F;
    fillColor_ = strokeColor_;
    fillColor_.setAlphaF(tintOpacity);
}

void QZPaintGraph::setText(const QString& text)
{
    if (text_ == text && text_.isNull() == text.isNull())
        return;
    text_ = text;
    requestDisplay();
}
