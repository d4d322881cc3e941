#include "platform/QZGetFixData.h"

#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr int usualDecimals = 2;
constexpr int maxDecimals = 9;
constexpr double unitStep = 1e4;
constexpr std::array<QStringView, 3> unitNames = {u"", u"万", u"亿"};

QZFixDataFormatter& currentFormatter()
{
    static QZFixDataFormatter formatter;
    return formatter;
}

} // namespace

QZFixDataFormatter setFixDataFormatter(QZFixDataFormatter formatter)
{
    return std::exchange(currentFormatter(), std::move(formatter));
}

QString QZGetFixData(double value, int option)
{
    // A copy: the formatter may replace itself while it runs.
    if (const QZFixDataFormatter formatter = currentFormatter())
        return formatter(value, option);
    if (!std::isfinite(value))
        return QStringLiteral("--");
    const int decimals = option > 0 && option <= maxDecimals ? option : usualDecimals;
    double inUnit = value;
    std::size_t unit = 0;
    QString text = QString::number(inUnit, 'f', decimals);
    // Judged by the rounded text, which is what the reader sees.
    while (unit + 1 < unitNames.size() && std::abs(text.toDouble()) >= unitStep) {
        inUnit /= unitStep;
        ++unit;
        text = QString::number(inUnit, 'f', decimals);
    }
    if (text.toDouble() == 0 && text.startsWith(u'-'))
        text.remove(0, 1);
    return text.append(unitNames[unit]);
}
