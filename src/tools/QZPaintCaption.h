#pragma once

#include <QString>

/// The caption of a price with `decimals` places; beyond ±1000000, both exclusive, its compact form.
QString priceCaption(double price, int decimals);
