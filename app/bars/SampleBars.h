#pragma once

#include <QByteArray>
#include <QString>

/// The made-up market that the chart opens with. Only integers enter, so the bytes are the same on every platform;
/// app/bars/samples/ holds them as shipped.

/// 2,000 daily bars from 2015-01-05 on: weekdays without about a dozen holidays a year.
QByteArray dailySampleCsv();

/// 20 sessions of 240 one-minute bars, 09:30 to 11:30 and 13:00 to 15:00, each stamped with its first second.
QByteArray minuteSampleCsv();

/// Resource paths of the shipped samples, for readBars().
QString dailySamplePath();
QString minuteSamplePath();
