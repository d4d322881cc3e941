#include "platform/QZTextLayout.h"

#include <QGlyphRun>
#include <QTextOption>

#include <algorithm>

namespace {

// A quarter of a million characters or so; what lies beyond is past any pane.
constexpr double unlimitedWidth = 1.0e6;
constexpr double tabStops = 28.0;

// A QTextLayout knows one end of line.
QString withLineSeparators(QString text)
{
    text.replace(QStringLiteral("\r\n"), QString(QChar::LineSeparator));
    for (const QChar end : {QChar(QChar::LineFeed), QChar(QChar::CarriageReturn), QChar(QChar::ParagraphSeparator)})
        text.replace(end, QChar(QChar::LineSeparator));
    return text;
}

QTextOption singleLines()
{
    // Absolutely left, or right-to-left text would start at the far end of the unlimited width.
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTabStopDistance(tabStops);
    return option;
}

} // namespace

QZTextLayout::QZTextLayout(const QString& text, const QFont& font) : layout_(withLineSeparators(text), font)
{
    layout_.setTextOption(singleLines());
    layout_.setCacheEnabled(true);
    layout_.beginLayout();
    for (QTextLine line = layout_.createLine(); line.isValid(); line = layout_.createLine()) {
        line.setLineWidth(unlimitedWidth);
        line.setPosition({0.0, size_.height});
        size_.width = std::max(size_.width, line.naturalTextWidth());
        size_.height += line.height();
    }
    layout_.endLayout();
}

std::vector<double> QZTextLayout::stops() const
{
    const QList<QGlyphRun> runs = layout_.glyphRuns();
    if (runs.size() != 1 || runs[0].positions().size() != layout_.text().size())
        return {};
    std::vector<double> stops;
    for (const QPointF position : runs[0].positions())
        stops.push_back(position.x());
    return stops;
}
