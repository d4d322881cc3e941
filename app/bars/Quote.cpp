#include "app/bars/Quote.h"

std::optional<Quote> quoteOf(const BarSeries& series)
{
    if (series.isEmpty())
        return std::nullopt;
    const Bar& newest = series.bars().back();
    const int today = series.lowerBound(newest.date, 0);
    const double before = today > 0 ? series.at(today - 1).close : series.at(0).open;
    return Quote{newest.close, before == 0 ? 0 : (newest.close - before) / before * 100};
}
