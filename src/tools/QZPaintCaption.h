#pragma once

#include <QString>

/// "61.8%": `percent` with `decimals` places and its sign.
QString percentCaption(double percent, int decimals);

/// The caption of a price with `decimals` places; beyond ±1000000, both exclusive, its compact form.
QString priceCaption(double price, int decimals);
