#pragma once

#include "platform/QZGeometry.h"

#include <QCborMap>
#include <QString>

#include <cstdint>

/// A figure's point in chart coordinates: what is stored, and what stays put while the chart scrolls and zooms.
struct QZPaintLogicAxis {
    std::int32_t date = 0;  ///< of the bar, in the host's encoding
    std::int32_t time = 0;  ///< of the bar, in the host's encoding
    double price = 0.0;     ///< vertical chart value
    QZPoint orginalPoint{}; ///< the layer point (px) it was last converted from; not archived

    /// Keyed archive with "date", "time" and "price". A missing or mistyped value reads as 0.
    [[nodiscard]] QCborMap encodeWithCoder() const;
    static QZPaintLogicAxis initWithCoder(const QCborMap& coder);

    /// "date = 20240102, time = 93000, price = 10.500"
    [[nodiscard]] QString description() const;
};
