#include "tools/QZPaintCaption.h"

#include "model/QZPaintChart.h"
#include "platform/QZGetFixData.h"
#include "platform/QZNumberText.h"

QString priceCaption(const QZPaintChart* chart, double price, int decimals)
{
    if (auto caption = chart == nullptr ? std::nullopt : chart->captionOfPrice(price))
        return *caption;
    constexpr double compactFrom = 1000000.0;
    if (price > compactFrom || price < -compactFrom)
        return QZGetFixData(price, 0);
    return fixedText(price, decimals);
}

QString percentCaption(double percent, int decimals)
{
    return fixedText(percent, decimals) + u'%';
}

QString countCaption(const QString& identify, std::int64_t count)
{
    return identify + QStringLiteral(" : ") + QString::number(count);
}
