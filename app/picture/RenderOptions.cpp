#include "app/picture/RenderOptions.h"

#include "app/bars/BarMoment.h"
#include "app/picture/ChartPicture.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace {

constexpr int smallestSide = 100;
constexpr int largestSide = 10000;

// Names of options.
constexpr QLatin1StringView render{"render"};
constexpr QLatin1StringView renderAll{"render-all"};
constexpr QLatin1StringView stock{"stock"};
constexpr QLatin1StringView period{"period"};
constexpr QLatin1StringView user{"user"};
constexpr QLatin1StringView size{"size"};
constexpr QLatin1StringView from{"from"};
constexpr QLatin1StringView to{"to"};

struct Period {
    const char* name;
    QZPaintCycle cycle;
};

constexpr std::array periods{
    Period{"day", QZPCCandlestickCycleDay},       Period{"week", QZPCCandlestickCycleWeek},
    Period{"month", QZPCCandlestickCycleMonth},   Period{"quarter", QZPCCandlestickCycleQuarter},
    Period{"year", QZPCCandlestickCycleYear},     Period{"1m", QZPCCandlestickCycleMin1},
    Period{"5m", QZPCCandlestickCycleMin5},       Period{"15m", QZPCCandlestickCycleMin15},
    Period{"30m", QZPCCandlestickCycleMin30},     Period{"60m", QZPCCandlestickCycleMin60},
    Period{"120m", QZPCCandlestickCycleMin120},   Period{"1-day-line", QZPCRealTimeCycleDay},
    Period{"2-day-line", QZPCRealTimeCycle2Day},  Period{"3-day-line", QZPCRealTimeCycle3Day},
    Period{"4-day-line", QZPCRealTimeCycle4Day},  Period{"5-day-line", QZPCRealTimeCycle5Day},
    Period{"6-day-line", QZPCRealTimeCycle6Day},  Period{"7-day-line", QZPCRealTimeCycle7Day},
    Period{"8-day-line", QZPCRealTimeCycle8Day},  Period{"9-day-line", QZPCRealTimeCycle9Day},
    Period{"10-day-line", QZPCRealTimeCycle10Day}};

QString periodNames()
{
    QStringList names;
    for (const Period& each : periods)
        names.append(QLatin1String(each.name));
    return names.join(QStringLiteral(", "));
}

std::optional<QSize> sizeOf(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const QSize read(match.captured(1).toInt(), match.captured(2).toInt());
    const auto isUsable = [](int side) { return side >= smallestSide && side <= largestSide; };
    return isUsable(read.width()) && isUsable(read.height()) ? std::optional(read) : std::nullopt;
}

/// What does not go together in a request, null if all of it does.
QString misuseOf(const RenderRequest& asked, bool asksForOne)
{
    if (asksForOne && asked.isAll)
        return QStringLiteral("--render and --render-all: one of them at a time");
    if (asked.isAll) {
        return asked.stocks.isEmpty() ? QStringLiteral("--render-all: name files of bars, or folders of such files")
                                      : QString();
    }
    if (asked.stocks.isEmpty())
        return QStringLiteral("--render: name the bars with --stock FILE");
    if (asked.stocks.size() > 1)
        return QStringLiteral("--render: one stock at a time; --render-all takes several");
    return ChartPicture::unusableName(asked.target);
}

} // namespace

QString periodName(QZPaintCycle cycle)
{
    const auto found = std::ranges::find(periods, cycle, &Period::cycle);
    return found == periods.end() ? strQZPaintCycle(cycle) : QLatin1String(found->name);
}

RenderOptions::RenderOptions(QCommandLineParser& parser) : parser_(parser)
{
    parser.addOptions(
        {{render, QStringLiteral("Write a picture of a stock's stored figures, without a window: .png, .svg or .pdf."),
          QStringLiteral("picture")},
         {renderAll,
          QStringLiteral("Write a picture of each stock and period that has stored figures into the folder DIR. "
                         "Stocks are the files given, or those in the folders given."),
          QStringLiteral("DIR")},
         {stock, QStringLiteral("Bars of the stock to render."), QStringLiteral("FILE")},
         {period, QStringLiteral("Period to render: %1; that of the bars if none is given.").arg(periodNames()),
          QStringLiteral("name")},
         {user, QStringLiteral("Whose figures to render."), QStringLiteral("name")},
         {size, QStringLiteral("Size of the picture."), QStringLiteral("WIDTHxHEIGHT"), QStringLiteral("1600x900")},
         {from, QStringLiteral("First date to render."), QStringLiteral("yyyy-mm-dd")},
         {to, QStringLiteral("Last date to render."), QStringLiteral("yyyy-mm-dd")}});
}

bool RenderOptions::isAsked(const char* argument)
{
    return std::strncmp(argument, "--render", 8) == 0;
}

bool RenderOptions::isChosen() const
{
    return parser_.isSet(render) || parser_.isSet(renderAll);
}

std::optional<BarTime> RenderOptions::moment(const QString& option, QString& error) const
{
    if (!parser_.isSet(option))
        return std::nullopt;
    const std::string text = parser_.value(option).toStdString();
    auto order = DateOrder::Unknown; // of 01/02/2024, which is refused
    const auto read = endsWithYear(text) ? std::nullopt : parseBarMoment(text, order);
    if (!read)
        error = QStringLiteral("--%1 %2: no such date, write it as 2024-01-31").arg(option, parser_.value(option));
    return read;
}

std::optional<RenderRequest> RenderOptions::request(QString& error) const
{
    RenderRequest asked;
    asked.isAll = parser_.isSet(renderAll);
    asked.target = parser_.value(asked.isAll ? renderAll : render);
    asked.stocks = parser_.values(stock) + parser_.positionalArguments();
    if (parser_.isSet(user))
        asked.user = parser_.value(user);
    asked.from = moment(from, error);
    asked.to = moment(to, error);
    if (const auto read = sizeOf(parser_.value(size))) {
        asked.size = *read;
    } else {
        error = QStringLiteral("--size %1: write it as 1600x900, with %2 to %3 px on each side")
                    .arg(parser_.value(size))
                    .arg(smallestSide)
                    .arg(largestSide);
    }
    if (parser_.isSet(period)) {
        const auto found = std::ranges::find_if(
            periods, [&](const Period& each) { return parser_.value(period) == QLatin1String(each.name); });
        if (found != periods.end())
            asked.cycle = found->cycle;
        else
            error = QStringLiteral("--period %1: there are %2").arg(parser_.value(period), periodNames());
    }
    const QString misuse = misuseOf(asked, parser_.isSet(render));
    if (!misuse.isNull())
        error = misuse;
    return error.isNull() ? std::optional(asked) : std::nullopt;
}
