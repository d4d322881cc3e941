#pragma once

#include "app/bars/Bars.h"

#include <QString>

#include <string_view>
#include <vector>

/// A row of a bar file: the bar, or why there is none.
struct BarRow {
    Bar bar;
    const char* problem = nullptr;
};

/// Understands the lines of a delimited bar file (UTF-8, without their line ends). Commas, semicolons and tabs
/// delimit; a file with semicolons may write decimal commas, in others a comma may stand before each three digits of a
/// quoted number. Columns are found by the names in the header. Prices may be negative, as those of futures were.
class BarRowParser {
public:
    /// Learns delimiter and columns from the header. Returns what is wrong with it, a null string if nothing is.
    QString readHeader(std::string_view line);

    /// Reads a row. The moment is as written, epoch numbers are UTC; time zone suffixes and fractions of a second are
    /// dropped. Open, close and high may be off by rounding: high and low are then widened to hold all four prices.
    BarRow parse(std::string_view line);

private:
    bool split(std::string_view line);
    [[nodiscard]] const char* readMoment(Bar& bar) const;
    [[nodiscard]] const char* readPrices(Bar& bar) const;
    [[nodiscard]] bool readNumber(int column, double& value) const;

    char delimiter_ = ',';
    int moment_ = -1; ///< column of the date, which may carry the time too
    int clock_ = -1;  ///< column that holds the time of day only, -1 if there is none
    int open_ = -1;
    int high_ = -1;
    int low_ = -1;
    int close_ = -1;
    int volume_ = -1;
    std::size_t fieldsNeeded_ = 0;
    std::vector<std::string_view> fields_; ///< views of the line being read
};
