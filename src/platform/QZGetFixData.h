#pragma once

#include <QString>

/// A number in compact form: from 1e8 on in 亿, from 1e4 on in 万, else as it is ("-1234.50", "2.00万", "3.46亿").
/// `option` is the number of decimals, 1 to 9; 0, and anything else, stands for the usual two. A number that rounding
/// would lift to ten thousand of its unit takes the next one: 9999.999 is "1.00万". Not a number or infinite: "--".
QString QZGetFixData(double value, int option = 0);
