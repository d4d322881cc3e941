#pragma once

#include <QString>

#include <functional>

/// A number in compact form: from 1e8 on in 亿, from 1e4 on in 万, else as it is ("-1234.50", "2.00万", "3.46亿").
/// `option` is the number of decimals, 1 to 9; 0, and anything else, stands for the usual two. A number that rounding
/// would lift to ten thousand of its unit takes the next one: 9999.999 is "1.00万". Not a number or infinite: "--".
/// With a formatter of the host's, whatever that returns.
QString QZGetFixData(double value, int option = 0);

/// Writes `value` in the host's own form; `option` as for QZGetFixData, as the caller gave it.
using QZFixDataFormatter = std::function<QString(double value, int option)>;

/// Lets `formatter` write the numbers and returns the one in use until now, empty for the form above. An empty one
/// restores that form. Main thread only; redraw the panes for it to show.
QZFixDataFormatter setFixDataFormatter(QZFixDataFormatter formatter);
