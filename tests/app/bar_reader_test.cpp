#include "app/bars/BarReader.h"
#include "app/bars/SampleBars.h"

#include <QDir>
#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>

#include <algorithm>
#include <gtest/gtest.h>

namespace {

QString write(const char* name, const QByteArray& content)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QLatin1String(name)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    return file.fileName();
}

BarReadResult read(const QByteArray& content)
{
    return readBars(write("bars.csv", content));
}

TEST(BarReader, UnderstandsEveryLayout)
{
    // Two bars of two days, or two minutes of one day; the first is always 10 11 9 10.5, which BAR stands for.
    using Row = std::tuple<const char*, const char*, std::int64_t, double>;
    for (const auto& [name, content, moment, volume] : {
             Row{"tab, trailing empty columns",
                 "date\topen\thigh\tlow\tclose\tvolume\tsplit\n2020-01-02\t10\t11\t9\t10.5\t700\t\n", 20200102000000,
                 700},
             Row{"semicolon, decimal comma", "Date;Open;High;Low;Close\n2020-01-02;10;11,0;9;10,5\n", 20200102000000,
                 0},
             Row{"mark, carriage returns, blank lines", "\xEF\xBB\xBF\r\ndate,OHLC\r\n\r\n2020-01-02,BAR\r\n\r\n",
                 20200102000000, 0},
             Row{"quoted, delimiter in quotes",
                 "\"date\",\"note;\",open,high,low,\"close\"\n\"2020-01-02\",\"a \"\"b\"\", c\",10,11, \"9\" ,10.5\n",
                 20200102000000, 0},
             Row{"time column", "time,date,OHLC\n9:30,2020-01-02,BAR\n09:31:05,2020-01-02,BAR\n", 20200102093000, 0},
             Row{"T and zone", "datetime,OHLC\n2020-01-02T09:30:15.250Z,BAR\n2020-01-02T09:31:00+08:00,BAR\n",
                 20200102093015, 0},
             Row{"fourteen digits", "time,OHLC\n20200102093000,BAR\n2020-01-02 09:31,BAR\n", 20200102093000, 0},
             Row{"epoch seconds, minutes", "timestamp,OHLC\n1577957400,BAR\n1577957460,BAR\n", 20200102093000, 0},
             Row{"milliseconds, a bar a day", "date,OHLC\n1577957400000,BAR\n1578043800000,BAR\n", 20200102000000, 0},
             Row{"dots, four digits", "trade_date,time,OHLC\n2020.01.02,0930,BAR\n2020.1.2,093105,BAR\n",
                 20200102093000, 0},
             Row{"halves of a day", "open_time,OHLC\n2020-01-02 12:05 AM,BAR\n2020-01-02 1:00:07 pm,BAR\n",
                 20200102000500, 0},
             Row{"thousands", "date,OHLC,vol\n2020-01-02,BAR,\"1,234,567\"\n", 20200102000000, 1234567},
             Row{"epoch before 1970", "date,OHLC\n-315532800,BAR\n", 19600102000000, 0},
         }) {
        SCOPED_TRACE(name);
        const QByteArray text =
            QByteArray(content).replace("OHLC", "open,high,low,close").replace("BAR", "10,11,9,10.5");
        QStringEncoder utf16(moment % 2 == 0 ? QStringConverter::Utf16LE : QStringConverter::Utf16BE,
                             QStringConverter::Flag::WriteBom);
        const BarReadResult other = read(utf16(QString::fromUtf8(text)));
        const BarReadResult result = read(text);
        ASSERT_EQ(result.error + result.skipReasons.join(u'\n'), QString());
        EXPECT_EQ(other.summary(), result.summary());
        const Bar& bar = result.series.at(0);
        EXPECT_EQ(bar.date * std::int64_t{1000000} + bar.time, moment);
        EXPECT_EQ(result.series.isIntraday(), bar.time != 0);
        EXPECT_EQ(std::vector({bar.open, bar.high, bar.low, bar.close, bar.volume}),
                  std::vector({10.0, 11.0, 9.0, 10.5, volume}));
    }
}

TEST(BarReader, LearnsTheOrderOfDatesFromTheOthersOfTheFile)
{
    using Row = std::tuple<const char*, const char*, std::int32_t, const char*>; // dates, the first one, what is said
    for (const auto& [name, dates, first, said] : {
             Row{"a day tells", "01/02/2020 02/02/2020 13/02/2020", 20200201, ""},
             Row{"a month tells", "1/2/2020 1/3/2020 1/13/2020", 20200102, ""},
             Row{"with times", "01-02-2020@09:30 13-02-2020@09:30", 20200201, ""},
             Row{"rises with the day first", "05/02/2020 06/02/2020 01/03/2020", 20200205,
                 ", dates taken for day/month/year"},
             Row{"falls with the day first", "01/03/2020 06/02/2020 05/02/2020", 20200205,
                 ", dates taken for day/month/year"},
             Row{"rises with the month first", "01/12/2020 02/01/2020 02/03/2020", 20200112,
                 ", dates taken for month/day/year"},
             Row{"nothing tells", "01/02/2020", 20200102, ", dates taken for month/day/year"},
             Row{"nothing tells, dots", "01.02.2020", 20200201, ", dates taken for day/month/year"},
             Row{"what was settled holds", "13/02/2020 14/02/2020 02/13/2020", 20200213,
                 ", 1 row skipped (first: line 4: unreadable date)"},
         }) {
        SCOPED_TRACE(name);
        QString text = QStringLiteral("date,open,high,low,close\n");
        for (const QString& date : QString::fromLatin1(dates).split(u' '))
            text += date + QStringLiteral(",1,1,1,1\n");
        text.replace(u'@', u' ');
        const BarReadResult result = read(text.toUtf8());
        ASSERT_TRUE(result.isOk()) << result.error.toStdString();
        const std::vector<Bar>& bars = result.series.bars();
        EXPECT_TRUE(std::ranges::any_of(bars, [first = first](const Bar& bar) { return bar.date == first; }));
        const QString last = QString::number(bars.back().date).insert(6, u'-').insert(4, u'-');
        EXPECT_EQ(result.summary().section(last, -1), QLatin1String(said));
    }
}

TEST(BarReader, SkipsBadRowsAndSaysWhy)
{
    using Row = std::pair<const char*, const char*>;
    for (const auto& [text, reason] : {
             Row{"2020-01-02,10,11abc,9,10,1", "high is not a number"},
             Row{"2020-01-02,10,11,9,10,many", "volume is not a number"},
             Row{"2020-01-02,10,11,9,10,-1", "negative volume"},
             Row{"2020-01-02,10,11,9,10,\"12,34\"", "volume is not a number"},
             Row{"2020-01-02 13:00 PM,10,11,9,10,1", "unreadable date"},
             Row{"2020-01-02,10,9,11,10,1", "high below low"},
             Row{"2020-01-02,12,11,9,10,1", "open outside high and low"},
             Row{"2020-01-02,10,11,9,8.99,1", "close outside high and low"},
             Row{"2020-02-30,10,11,9,10,1", "unreadable date"},
             Row{"2020-01-02 24:00,10,11,9,10,1", "unreadable date"},
             Row{",10,11,9,10,1", "unreadable date"},
             Row{"2020-01-02,10,11,9", "too few fields"},
             Row{"\"2020-01-02,10,11,9,10,1", "unclosed quote"},
         }) {
        SCOPED_TRACE(text);
        EXPECT_EQ(
            read(QByteArray("date,open,high,low,close,volume\n2020-01-06,10,11,9,10,1\n") + text + "\n").summary(),
            QStringLiteral("bars.csv: 1 bar, 2020-01-06 to 2020-01-06, 1 row skipped (first: line 3: %1)")
                .arg(QLatin1String(reason)));
    }
}

TEST(BarReader, SkipsAnEndlessLineAndGoesOn)
{
    const QByteArray header = "date,open,high,low,close,note\n";
    const QByteArray longest = QByteArray("2020-01-02,10,11,9,10,").leftJustified(1 << 20, 'x');
    const BarReadResult result =
        read(header + longest + "\n" + longest + "x\n" + longest.repeated(3) + "\n2020-01-03,1,1,1,1,\n");
    EXPECT_EQ(result.series.size(), 2);
    EXPECT_EQ(result.skippedRows, 2);
    EXPECT_EQ(result.skipReasons.value(1), result.path + QStringLiteral(":4: the line is longer than 1 MB"));
}

TEST(BarReader, SortsWidensARangeByRoundingAndLetsTheLastDuplicateWin)
{
    const BarReadResult result =
        readBars(write("XYZ.daily.csv", "date,open,high,low,close\n2020-01-03,3,3,3,3\n"
                                        "2020-01-02,10,20,10.000001,20.000001\n2020-01-03,4,4,4,4\nbad\n"));
    EXPECT_EQ(result.summary(), QStringLiteral("XYZ.daily.csv: 2 bars, 2020-01-02 to 2020-01-03, 1 row skipped (first: "
                                               "line 5: too few fields), 1 duplicate replaced"));
    EXPECT_EQ(result.series.name(), QStringLiteral("XYZ.daily"));
    EXPECT_EQ(result.series.priceRange(0, 0)->high, 20.000001);
    EXPECT_EQ(result.series.priceRange(0, 0)->low, 10.0);
    EXPECT_EQ(result.series.bars().back().close, 4.0);
    EXPECT_EQ(read("date,open,high,low,close\n2020-04-20,1,2,-40.3200001,-40.32\n").series.at(0).low, -40.3200001);
}

TEST(BarReader, NamesWhatMakesAFileUnusable)
{
    const QByteArray header("date,open,high,low,close\n");
    using Row = std::pair<QString, const char*>; // its path, and the error after the path
    for (const auto& [path, error] : {
             Row{QStringLiteral("none.csv"), ": no such file"},
             Row{QDir::tempPath(), ": is a directory"},
             Row{QStringLiteral("/dev/zero"), ": is not a regular file"},
             Row{write("empty.csv", ""), ":1: the file is empty"},
             Row{write("nul.csv", header + QByteArray("2020-01-02,1,1,1,1\n\0\n", 22)),
                 ":3: the file is not text (it holds a NUL byte)"},
             Row{write("plain.csv", "2020-01-02,1,1,1,1\n"),
                 ":1: no header line with the columns date, open, high, low and close"},
             Row{write("noclose.csv", "\ndate,open,high,low,last\n2020-01-02,1,1,1,1\n"), ":2: no column named close"},
             Row{write("header.csv", header), ":1: no row after the header"},
             Row{write("bad.csv", header + "x,1,1,1,1\n"), ":2: unreadable date (no usable row in the file)"},
         }) {
        SCOPED_TRACE(path.toStdString());
        const BarReadResult result = readBars(path);
        EXPECT_TRUE(result.series.isEmpty());
        EXPECT_EQ(result.error, path + QLatin1String(error));
        EXPECT_EQ(result.summary(), result.error);
    }
}

TEST(BarReader, TellsHowFarItIsAndStopsWhenAsked)
{
    const QString path =
        write("long.csv", "date,open,high,low,close\n" + QByteArray("2020-01-02,1,1,1,1\n").repeated(9000));
    for (const bool goesOn : {true, false}) {
        SCOPED_TRACE(goesOn);
        std::vector<double> parts;
        const BarReadResult result = readBars(path, [&](double part) {
            parts.push_back(part);
            return goesOn;
        });
        EXPECT_EQ(parts.size(), goesOn ? 2U : 1U);
        EXPECT_NEAR(parts.back(), goesOn ? 0.91 : 0.455, 0.01);
        EXPECT_EQ(result.isCancelled, !goesOn);
        EXPECT_EQ(result.isOk(), goesOn);
    }
}

TEST(BarSeries, OutlinesAnyStretchOfTheLoadedBars)
{
    std::vector<Bar> bars;
    for (int i = 0; i < 700; ++i) {
        const double close = (i * 7919) % 1009;
        bars.push_back({20200102, i, close - 1, close + 2, close - 3, close, static_cast<double>((i * 31) % 997)});
    }
    const BarSeries series(QString(), bars);
    for (const auto& [first, last] : {std::pair{0, 699},
                                      {-5, 9999},
                                      {15, 16},
                                      {16, 31},
                                      {16, 32},
                                      {1, 15},
                                      {255, 512},
                                      {256, 511},
                                      {3, 690},
                                      {699, 699}}) {
        SCOPED_TRACE(testing::Message() << first << " to " << last);
        const auto from = bars.begin() + std::max(first, 0);
        const auto end = bars.begin() + std::min(last + 1, 700);
        const auto outline = series.outline(first, last);
        ASSERT_TRUE(outline);
        EXPECT_EQ(outline->open, from->open);
        EXPECT_EQ(outline->close, (end - 1)->close);
        EXPECT_EQ(outline->low, std::ranges::min_element(from, end, {}, &Bar::low)->low);
        EXPECT_EQ(outline->high, std::ranges::max_element(from, end, {}, &Bar::high)->high);
        EXPECT_EQ(outline->volume, std::ranges::max_element(from, end, {}, &Bar::volume)->volume);
    }
    EXPECT_FALSE(series.priceRange(700, 900));
    EXPECT_EQ(series.maxVolume(-9, -1), 0);
    EXPECT_EQ(series.lowerBound(20200103, 0), 700);
}

TEST(SampleBars, ShippedFilesAreTheGeneratedOnesAndReadBackWhole)
{
    for (const auto& [path, generated, summary] :
         {std::tuple{dailySamplePath(), dailySampleCsv(), "daily.csv: 2,000 bars, 2015-01-05 to 2023-01-11"},
          {minuteSamplePath(), minuteSampleCsv(), "minutes.csv: 4,800 bars, 2022-08-01 09:30 to 2022-08-26 14:59"}}) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.readAll() == generated) << path.toStdString();
        EXPECT_EQ(readBars(path).summary().toStdString(), summary);
    }
    EXPECT_EQ(readBars(minuteSamplePath()).series.timeAt(120), (BarTime{20220801, 130000}));
}

} // namespace
