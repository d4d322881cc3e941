#pragma once

#include <QString>

#include <cstdint>

/// "61.8%": `percent` with `decimals` places and its sign.
QString percentCaption(double percent, int decimals);

/// The caption of a price with `decimals` places; beyond ±1000000, both exclusive, its compact form.
QString priceCaption(double price, int decimals);

/// "bars : 12": what a host calls the bars of a range, and how many there are.
QString countCaption(const QString& identify, std::int64_t count);
