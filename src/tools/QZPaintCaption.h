#pragma once

#include <QString>

#include <cstdint>

class QZPaintChart;

/// "61.8%": `percent` with `decimals` places and its sign.
QString percentCaption(double percent, int decimals);

/// The caption of a price as `chart`, which may be null, writes it; else with `decimals` places, and beyond ±1000000,
/// both exclusive, in its compact form.
QString priceCaption(const QZPaintChart* chart, double price, int decimals);

/// "bars : 12": what a host calls the bars of a range, and how many there are.
QString countCaption(const QString& identify, std::int64_t count);
