#pragma once

#include "platform/QZDevicePixels.h"
#include "platform/QZFont.h"
#include "platform/QZTextMask.h"

#include <QCache>
#include <QColor>
#include <QHash>

#include <array>
#include <list>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// Captions are measured and painted without laying each of them out: that costs more than all lines of a figure. Texts
/// of one line come back by their ink, and numbers, of which no two captions are alike, are put together from the ink
/// of their characters. What is painted is what QZTextLayout paints, to a quarter of a device pixel.
///
/// One per thread, each with at most 0.8 MB: what was not needed for longest goes first.
class QZTextCache {
public:
    static QZTextCache& ofThread();
    QZTextCache();

    QZTextSize size(const QString& text, const QFont& font);
    /// Paints with the top left corner at `topLeft`, in the painter's coordinates. False, and nothing painted, for what
    /// is to be laid out: several lines, colours of its own, very large or not on `pixels` within reach.
    bool draw(const QZDevicePixels& pixels, double ratio, const QString& text, const QFont& font, const QColor& color,
              QPointF topLeft);

private:
    static constexpr std::u16string_view numberCharacters = u"0123456789.,:%+-/";

    struct Key {
        QString text;
        QFont font;
        double ratio = 0.0;
        int phase = 0;

        friend bool operator==(const Key&, const Key&) = default;
        friend size_t qHash(const Key& key, size_t seed)
        {
            return qHashMulti(seed, key.text, key.font, key.ratio, key.phase);
        }
    };
    struct Line {
        QZTextSize size;
        double baseline = 0.0;
        bool hasMasks = false; // one line without colours of its own, as far as is known
    };
    using Masks = std::array<std::optional<QZTextMask>, QZTextMask::phaseCount>;
    struct ScaledNumbers {
        double ratio = 0.0;
        std::array<Masks, numberCharacters.size()> masks;
    };
    /// The characters of numbers in one font.
    struct Numbers {
        QFont font;
        Line line;
        bool areAdditive = false; // a number is as wide as its characters, whatever stands beside them
        std::array<double, numberCharacters.size()> advances{};
        std::list<ScaledNumbers> scales;
    };

    struct Placed {
        const QZTextMask* mask = nullptr;
        QPoint corner; // in device pixels
    };

    /// The places of the text's characters in `numberCharacters`; empty where it is something else.
    std::span<const std::size_t> numberIndices(const QString& text);
    Numbers& numbersOf(const QFont& font);
    const QZTextMask* maskOf(Numbers& numbers, std::size_t index, double ratio, int phase);
    /// Null for a text that is too long to be kept.
    Line* lineOf(const QString& text, const QFont& font);
    const QZTextMask* maskOf(const QString& text, const QFont& font, double ratio, int phase);
    bool placeNumber(Numbers& numbers, double ratio, QPointF start);
    bool placeLine(const QString& text, const QFont& font, double ratio, QPointF start);
    bool blendPlaced(const QZDevicePixels& pixels, const QColor& color);
    void setColor(const QColor& color);
    void add(const QZTextMask& mask, QPoint corner);

    QCache<Key, Line> lines_;
    QCache<Key, QZTextMask> masks_;
    std::list<Numbers> numbers_; // the latest first
    std::size_t numberBytes_ = 0;

    QImage canvas_; // the text that is being painted
    QRgb color_ = 0;
    std::array<QRgb, 256> shades_{}; // of the colour, by ink

    // Of the text at hand.
    std::vector<std::size_t> indices_;
    std::vector<Placed> placed_;
};
