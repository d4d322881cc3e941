#include "platform/QZTextCache.h"

#include "platform/QZTextLayout.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

// Budgets in bytes; with the canvas they come to 0.8 MB.
constexpr qsizetype lineBudget = 128 * 1024;
constexpr qsizetype maskBudget = 256 * 1024;
constexpr std::size_t numberBudget = 256 * 1024;
constexpr std::size_t mostNumberFonts = 16;
constexpr std::size_t mostRatios = 2; // of screens a window stands on, or moves between
constexpr QSize canvasSize(512, 64);
// What a cache's own node and the heap take (bytes).
constexpr qsizetype overhead = 200;

constexpr qsizetype longestNumber = 32;
constexpr qsizetype longestText = 200;
// Device pixels; higher lines do not fit the canvas with what reaches out of them.
constexpr double highestLine = 40.0;
constexpr double widestLine = 450.0;

/// A device pixel and how many quarters of one lie behind it. The text engine counts in 64ths and drops the rest, but
/// what is one of them short of the next quarter goes there.
struct PenPlace {
    int pixel = 0;
    int phase = 0;
};

constexpr double unit = 64.0;

PenPlace penPlace(double x)
{
    const double place = (std::floor(x * unit) + 1.0) / unit;
    const double pixel = std::floor(place);
    return {static_cast<int>(pixel), static_cast<int>((place - pixel) * QZTextMask::phaseCount)};
}

int baselinePixel(double y)
{
    return static_cast<int>(std::floor(std::floor(y * unit) / unit + 0.5));
}

// As the raster painter multiplies: rounded, all four channels at once.
QRgb scaled(QRgb color, uint factor)
{
    constexpr uint evenChannels = 0xff00ff;
    constexpr uint halves = 0x800080;
    uint low = (color & evenChannels) * factor;
    low = ((low + ((low >> 8U) & evenChannels) + halves) >> 8U) & evenChannels;
    uint high = ((color >> 8U) & evenChannels) * factor;
    high = (high + ((high >> 8U) & evenChannels) + halves) & ~evenChannels;
    return low | high;
}

} // namespace

QZTextCache& QZTextCache::ofThread()
{
    thread_local QZTextCache cache;
    return cache;
}

QZTextCache::QZTextCache()
    : lines_(lineBudget), masks_(maskBudget), canvas_(canvasSize, QImage::Format_ARGB32_Premultiplied)
{
    setColor(Qt::black);
}

std::span<const std::size_t> QZTextCache::numberIndices(const QString& text)
{
    indices_.clear();
    if (text.size() > longestNumber)
        return {};
    for (const QChar character : text) {
        const std::size_t index = numberCharacters.find(character.unicode());
        if (index == std::u16string_view::npos)
            return {};
        indices_.push_back(index);
    }
    return indices_;
}

QZTextCache::Numbers& QZTextCache::numbersOf(const QFont& font)
{
    if (numberBytes_ > numberBudget) {
        numbers_.clear();
        numberBytes_ = 0;
    }
    const auto found = std::ranges::find(numbers_, font, &Numbers::font);
    if (found != numbers_.end()) {
        numbers_.splice(numbers_.begin(), numbers_, found);
        return numbers_.front();
    }
    if (numbers_.size() == mostNumberFonts)
        numbers_.pop_back();
    Numbers& numbers = numbers_.emplace_front();
    numberBytes_ += sizeof(Numbers);
    numbers.font = font;
    // Every character before every other: kerning or joining of any two of them would show.
    QString pairs;
    for (const char16_t first : numberCharacters) {
        for (const char16_t second : numberCharacters)
            pairs.append(QChar(first)).append(QChar(second));
    }
    const QZTextLayout layout(pairs, font);
    numbers.line = {layout.size(), layout.baseline(), true};
    const std::vector<double> stops = layout.stops();
    if (stops.empty())
        return numbers;
    const auto advance = [&stops](std::size_t i) { return stops[i + 1] - stops[i]; };
    for (std::size_t i = 0; i < numberCharacters.size(); ++i)
        numbers.advances.at(i) = advance(2 * i * numberCharacters.size());
    numbers.areAdditive = true;
    for (std::size_t i = 0; i + 1 < stops.size(); ++i) {
        const std::size_t index = numberCharacters.find(pairs[static_cast<qsizetype>(i)].unicode());
        numbers.areAdditive = numbers.areAdditive && advance(i) == numbers.advances.at(index);
    }
    return numbers;
}

const QZTextMask* QZTextCache::maskOf(Numbers& numbers, std::size_t index, double ratio, int phase)
{
    auto scale = std::ranges::find(numbers.scales, ratio, &ScaledNumbers::ratio);
    if (scale == numbers.scales.end()) {
        if (numbers.scales.size() == mostRatios)
            numbers.scales.clear();
        scale = numbers.scales.emplace(numbers.scales.end());
        scale->ratio = ratio;
        numberBytes_ += sizeof(ScaledNumbers);
    }
    std::optional<QZTextMask>& mask = scale->masks.at(index).at(static_cast<std::size_t>(phase));
    if (!mask) {
        mask = textMask(QString(QChar(numberCharacters[index])), numbers.font, ratio, phase);
        numberBytes_ += mask ? mask->bytes() : 0;
    }
    return mask ? &*mask : nullptr;
}

QZTextCache::Line* QZTextCache::lineOf(const QString& text, const QFont& font)
{
    if (text.size() > longestText)
        return nullptr;
    const Key key{text, font};
    if (Line* line = lines_.object(key))
        return line;
    const QZTextLayout layout(text, font);
    auto* line = new Line{layout.size(), layout.baseline(), layout.lineCount() == 1};
    const auto cost = static_cast<qsizetype>(sizeof(Line) + sizeof(Key)) + 2 * text.size() + overhead;
    return lines_.insert(key, line, cost) ? line : nullptr;
}

const QZTextMask* QZTextCache::maskOf(const QString& text, const QFont& font, double ratio, int phase)
{
    const Key key{text, font, ratio, phase};
    if (const QZTextMask* mask = masks_.object(key))
        return mask;
    auto made = textMask(text, font, ratio, phase);
    if (!made)
        return nullptr;
    auto* mask = new QZTextMask(std::move(*made));
    const auto cost = static_cast<qsizetype>(mask->bytes() + sizeof(Key)) + 2 * text.size() + overhead;
    return masks_.insert(key, mask, cost) ? mask : nullptr;
}

QZTextSize QZTextCache::size(const QString& text, const QFont& font)
{
    if (const auto indices = numberIndices(text); !indices.empty()) {
        if (const Numbers& numbers = numbersOf(font); numbers.areAdditive) {
            const auto add = [&numbers](double sum, std::size_t i) { return sum + numbers.advances.at(i); };
            return {std::accumulate(indices.begin(), indices.end(), 0.0, add), numbers.line.size.height};
        }
    }
    const Line* line = lineOf(text, font);
    return line != nullptr ? line->size : QZTextLayout(text, font).size();
}

bool QZTextCache::draw(const QZDevicePixels& pixels, double ratio, const QString& text, const QFont& font,
                       const QColor& color, QPointF topLeft)
{
    placed_.clear();
    if (!pixels.areReached())
        return false;
    Numbers* numbers = numberIndices(text).empty() ? nullptr : &numbersOf(font);
    if (numbers != nullptr && !numbers->areAdditive)
        numbers = nullptr;
    const Line* line = numbers != nullptr ? &numbers->line : lineOf(text, font);
    if (line == nullptr || !line->hasMasks || line->size.height * ratio > highestLine)
        return false;
    const QPointF start = pixels.at(topLeft + QPointF(0.0, line->baseline));
    const bool isPlaced = numbers != nullptr
                              ? placeNumber(*numbers, ratio, start)
                              : line->size.width * ratio <= widestLine && placeLine(text, font, ratio, start);
    return isPlaced && blendPlaced(pixels, color);
}

bool QZTextCache::placeNumber(Numbers& numbers, double ratio, QPointF start)
{
    const int baseline = baselinePixel(start.y());
    double x = start.x();
    for (const std::size_t index : indices_) {
        const PenPlace pen = penPlace(x);
        const QZTextMask* mask = maskOf(numbers, index, ratio, pen.phase);
        if (mask == nullptr)
            return false;
        placed_.push_back({mask, mask->corner + QPoint(pen.pixel, baseline)});
        x += numbers.advances.at(index) * ratio;
    }
    return true;
}

bool QZTextCache::placeLine(const QString& text, const QFont& font, double ratio, QPointF start)
{
    const PenPlace pen = penPlace(start.x());
    const QZTextMask* mask = maskOf(text, font, ratio, pen.phase);
    if (mask == nullptr) {
        if (Line* line = lineOf(text, font))
            line->hasMasks = false;
        return false;
    }
    placed_.push_back({mask, mask->corner + QPoint(pen.pixel, baselinePixel(start.y()))});
    return true;
}

bool QZTextCache::blendPlaced(const QZDevicePixels& pixels, const QColor& color)
{
    QRect area;
    for (const Placed& placed : placed_)
        area |= QRect(placed.corner, placed.mask->size);
    if (area.width() > canvas_.width() || area.height() > canvas_.height())
        return false;
    if (area.isEmpty())
        return true;
    setColor(color);
    for (int y = 0; y < area.height(); ++y)
        std::fill_n(reinterpret_cast<QRgb*>(canvas_.scanLine(y)), area.width(), 0U);
    for (const Placed& placed : placed_)
        add(*placed.mask, placed.corner - area.topLeft());
    pixels.blend(canvas_, QRect(QPoint(), area.size()), area.topLeft());
    return true;
}

void QZTextCache::setColor(const QColor& color)
{
    const QRgb wanted = qPremultiply(color.rgba());
    if (wanted == color_)
        return;
    color_ = wanted;
    for (std::size_t ink = 0; ink < shades_.size(); ++ink)
        shades_.at(ink) = scaled(wanted, static_cast<uint>(ink));
}

void QZTextCache::add(const QZTextMask& mask, QPoint corner)
{
    const uchar* ink = mask.ink.data();
    for (int y = 0; y < mask.size.height(); ++y) {
        QRgb* pixel = reinterpret_cast<QRgb*>(canvas_.scanLine(corner.y() + y)) + corner.x();
        for (int x = 0; x < mask.size.width(); ++x, ++pixel, ++ink) {
            // Neighbours share a few pixels of their anti-aliased edges.
            const QRgb shade = shades_[*ink];
            *pixel = *pixel == 0 ? shade : shade + scaled(*pixel, 255U - static_cast<uint>(qAlpha(shade)));
        }
    }
}
