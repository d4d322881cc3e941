#pragma once

#include <QString>

/// `value` with `decimals` places, rounded as it is in binary: what C's "%.*f" prints, whatever the locale.
/// QString::asprintf() rounds ties in decimal instead.
QString fixedText(double value, int decimals);
