#pragma once

#include "app/bars/Bars.h"

#include <QString>
#include <QStringList>

#include <functional>

/// What came out of a bar file. Either `error` is set and the series is empty, or the series holds at least one bar.
struct BarReadResult {
    QString path;
    BarSeries series;
    int skippedRows = 0;     ///< rows that hold no usable bar
    int duplicateRows = 0;   ///< rows replaced by a later one with the same date and time
    QStringList skipReasons; ///< of the first few skipped rows, as "/path/x.csv:12: high below low"
    QString error;           ///< why the file is unusable, as "/path/x.csv:1: no column named close"; null if it is not
    QString dateOrder{};     ///< "day/month/year" where no date told which of the two comes first; null if one did

    bool isCancelled = false; ///< the reader of the progress asked to stop, which is an error too

    [[nodiscard]] bool isOk() const { return error.isNull(); }

    /// One line for a status bar: "daily.csv: 1,738 bars, 2010-01-04 to 2016-11-25, 3 rows skipped (first: line 12:
    /// high below low)"; the error of an unusable file.
    [[nodiscard]] QString summary() const;
};

/// Hears from time to time which part of a file was read, 0 to 1; stops the reading by false.
using BarReadProgress = std::function<bool(double part)>;

/// Reads a delimited text file of bars (see BarRowParser for its format), also from a resource. The file is UTF-8,
/// which is streamed, or UTF-16 with its byte order mark. A line longer than 1 MB is skipped. Dates such as 01/02/2020
/// are read in the order that the others of the file have. Where no day has two bars the bars are daily ones and lose
/// their time. The series is named after the file.
BarReadResult readBars(const QString& path, const BarReadProgress& progress = {});
