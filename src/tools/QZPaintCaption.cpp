#include "tools/QZPaintCaption.h"

#include "platform/QZGetFixData.h"

QString priceCaption(double price, int decimals)
{
    constexpr double compactFrom = 1000000.0;
    if (price > compactFrom || price < -compactFrom)
        return QZGetFixData(price, 0);
    return QString::asprintf("%.*f", decimals, price);
}
