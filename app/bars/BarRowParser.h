#pragma once

#include "app/bars/BarMoment.h"
#include "app/bars/Bars.h"

#include <QString>

#include <string_view>
#include <vector>

/// A row of a bar file: the bar, or why there is none.
struct BarRow {
    Bar bar;
    const char* problem = nullptr;
    bool isOrderOpen = false; ///< day and month of the date were taken to be in an order that is still unknown
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

    /// Of the dates that end with the year, as far as the rows read so far tell.
    [[nodiscard]] DateOrder dateOrder() const { return dateOrder_; }
    /// The more usual order of such dates, where nothing tells: with dots the day comes first.
    [[nodiscard]] DateOrder usualDateOrder() const { return hasDots_ ? DateOrder::DayFirst : DateOrder::MonthFirst; }

private:
    bool split(std::string_view line);
    [[nodiscard]] const char* readMoment(BarRow& row);
    [[nodiscard]] const char* readPrices(Bar& bar) const;
    [[nodiscard]] bool readNumber(int column, double& value) const;

    char delimiter_ = ',';
    DateOrder dateOrder_ = DateOrder::Unknown;
    bool hasDots_ = false; ///< between day, month and year, in a row whose order is open
    int moment_ = -1;      ///< column of the date, which may carry the time too
    int clock_ = -1;       ///< column that holds the time of day only, -1 if there is none
    int open_ = -1;
    int high_ = -1;
    int low_ = -1;
    int close_ = -1;
    int volume_ = -1;
    std::size_t fieldsNeeded_ = 0;
    std::vector<std::string_view> fields_; ///< views of the line being read
};
