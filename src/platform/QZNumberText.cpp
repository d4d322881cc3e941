#include "platform/QZNumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

QString fixedText(double value, int decimals)
{
    constexpr int mostDecimals = 17;
    constexpr std::size_t longest = std::numeric_limits<double>::max_exponent10 + mostDecimals + 3;
    std::array<char, longest> text{};
    const auto result =
        std::to_chars(text.begin(), text.end(), value, std::chars_format::fixed, std::clamp(decimals, 0, mostDecimals));
    return QString::fromLatin1(text.data(), result.ptr - text.data());
}
