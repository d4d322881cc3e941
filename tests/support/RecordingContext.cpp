#include "support/RecordingContext.h"

#include <algorithm>

namespace {

std::string number(double value)
{
    QString text = QString::number(value, 'f', 3);
    while (text.contains(u'.') && (text.endsWith(u'0') || text.endsWith(u'.')))
        text.chop(1);
    return text == QLatin1String("-0") ? "0" : text.toStdString();
}

} // namespace

std::string RecordingContext::at(QZPoint point)
{
    return number(point.x) + "," + number(point.y);
}

std::string RecordingContext::box(QZRect rect)
{
    return " " + at({rect.x, rect.y}) + " " + number(rect.width) + "x" + number(rect.height);
}

std::string RecordingContext::name(const QColor& color)
{
    return " " + color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb).toStdString();
}

std::string RecordingContext::pen() const
{
    const bool isPlain = state_.cap == QZLineCap::Butt && state_.join == QZLineJoin::Miter;
    const bool isRound = state_.cap == QZLineCap::Round && state_.join == QZLineJoin::Round;
    return " w" + number(state_.width) + name(state_.stroke) + state_.dash +
           (isPlain ? "" : (isRound ? " round" : " other caps or joins"));
}

int RecordingContext::count(const std::string& operation) const
{
    return static_cast<int>(
        std::ranges::count_if(lines, [&](const std::string& line) { return line.starts_with(operation + " "); }));
}

void RecordingContext::restoreState()
{
    restoredTooOften_ = restoredTooOften_ || saved_.empty();
    if (saved_.empty())
        return;
    state_ = saved_.back();
    saved_.pop_back();
}

void RecordingContext::setLineDash(double phase, std::span<const double> lengths)
{
    state_.dash.clear();
    if (lengths.empty() || (lengths.size() == 2 && lengths[1] == 0.0))
        return;
    for (const double length : lengths)
        state_.dash += (state_.dash.empty() ? " dash " : ",") + number(length);
    if (phase != 0.0)
        state_.dash += " phase " + number(phase);
}

void RecordingContext::addArc(QZPoint center, double radius, double startAngle, double endAngle, bool clockwise)
{
    path_.value() += " arc " + at(center) + " r" + number(radius) + " " + number(startAngle) + ".." + number(endAngle) +
                     (clockwise ? " cw" : " ccw");
}

void RecordingContext::endPath(const std::string& operation, const std::string& style)
{
    lines.push_back(operation + path_.value() + style);
    path_.reset();
}

void RecordingContext::drawText(const QString& text, const QFont& font, const QColor& color, QZRect rect)
{
    lines.push_back("text \"" + text.toStdString() + "\" " + at({rect.x, rect.y}) + " " +
                    std::to_string(font.pixelSize()) + "px" + name(color));
    textBoxes.push_back(rect);
}
