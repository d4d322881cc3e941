#pragma once

#include "platform/QZDevicePixels.h"
#include "platform/QZLineDash.h"

#include <QCache>
#include <QColor>
#include <QImage>

/// Dashes of horizontal and vertical lines, painted once per style and blended from there: dash by dash, a level over a
/// whole pane costs a hundred times as much. Dashes keep their phase to 1/32 of a device pixel.
///
/// One per thread, each with at most 1.1 MB: what was not needed for longest goes first.
class QZDashStrips {
public:
    /// The whole device pixels of a line, all lengths in device pixels.
    struct Stretch {
        bool isVertical = false;
        int start = 0;       ///< along the line: left or top
        int length = 0;      ///< more than 0
        int side = 0;        ///< across it: top or left
        int width = 0;       ///< more than 0
        double way = 0.0;    ///< how far into the pattern `start` is
        bool isBack = false; ///< the pattern runs towards the left or the top
    };

    static QZDashStrips& ofThread();

    /// `dash` is in px, and its phase does not count. False, and nothing painted, when a strip would be very large.
    bool draw(const QZDevicePixels& pixels, double ratio, const Stretch& stretch, const QZLineDash& dash,
              const QColor& color);

private:
    struct Key {
        QZLineDash dash; // in device pixels
        int width = 0;
        int shift = 0; // in `shiftsPerPixel`
        bool isVertical = false;
        bool isBack = false;
        QRgb color = 0;

        friend bool operator==(const Key&, const Key&) = default;
        friend size_t qHash(const Key& key, size_t seed)
        {
            const auto lengths = key.dash.lengths();
            return qHashMulti(qHashRange(lengths.begin(), lengths.end(), seed), key.width, key.shift, key.isVertical,
                              key.isBack, key.color);
        }
    };

    static QImage painted(const Key& key, int length);

    QCache<Key, QImage> strips_{1100 * 1024};
};
