#include "model/QZPaintLogicAxis.h"

#include "platform/QZNumberText.h"

#include <limits>

namespace {

constexpr QLatin1StringView dateKey("date");
constexpr QLatin1StringView timeKey("time");
constexpr QLatin1StringView priceKey("price");

std::int32_t intValue(const QCborValue& value)
{
    const std::int64_t wide = value.isInteger() ? value.toInteger() : 0;
    using Limits = std::numeric_limits<std::int32_t>;
    return wide < Limits::min() || wide > Limits::max() ? 0 : static_cast<std::int32_t>(wide);
}

} // namespace

QCborMap QZPaintLogicAxis::encodeWithCoder() const
{
    return {{dateKey, date}, {timeKey, time}, {priceKey, price}};
}

QZPaintLogicAxis QZPaintLogicAxis::initWithCoder(const QCborMap& coder)
{
    return {intValue(coder[dateKey]), intValue(coder[timeKey]), coder[priceKey].toDouble()};
}

QString QZPaintLogicAxis::description() const
{
    return QStringLiteral("date = %1, time = %2, price = %3").arg(date).arg(time).arg(fixedText(price, 3));
}
