#include "app/bars/BarReader.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class BarReader : public testing::Test {
protected:
    QString write(const char* name, const QByteArray& content)
    {
        const QString path = folder_.filePath(QString::fromUtf8(name));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return path;
    }

    BarReadResult read(const QByteArray& content) { return readBars(write("bars.csv", content)); }

    QTemporaryDir folder_;
};

TEST_F(BarReader, UnderstandsEveryLayout)
{
    struct Row {
        const char* name;
        const char* content;
        std::int32_t date, time;
        double volume;
    };
    // Two bars of two days, or two minutes of one day; the first is always 10 11 9 10.5.
    for (const Row& row : {
             Row{"tab, trailing empty columns",
                 "date\topen\thigh\tlow\tclose\tvolume\tsplit\n2020-01-02\t10\t11\t9\t10.5\t700\t\n", 20200102, 0, 700},
             Row{"semicolon, decimal comma", "Date;Open;High;Low;Close\n2020-01-02;10;11,0;9;10,5\n", 20200102, 0, 0},
             Row{"mark, carriage returns, blank lines",
                 "\xEF\xBB\xBF\r\ndate,open,high,low,close\r\n\r\n2020-01-02,10,11,9,10.5\r\n\r\n", 20200102, 0, 0},
             Row{"quoted, delimiter in quotes",
                 "\"date\",\"note;\",open,high,low,\"close\"\n\"2020-01-02\",\"a \"\"b\"\", c\",10,11, \"9\" ,10.5\n",
                 20200102, 0, 0},
             Row{"time column",
                 "time,date,open,high,low,close\n9:30,2020-01-02,10,11,9,10.5\n09:31:05,2020-01-02,10,11,9,10\n",
                 20200102, 93000, 0},
             Row{"T and zone",
                 "datetime,open,high,low,close\n2020-01-02T09:30:15.250Z,10,11,9,10.5\n"
                 "2020-01-02T09:31:00+08:00,10,11,9,10\n",
                 20200102, 93015, 0},
             Row{"fourteen digits",
                 "time,open,high,low,close\n20200102093000,10,11,9,10.5\n2020-01-02 09:31,10,11,9,10\n", 20200102,
                 93000, 0},
             Row{"epoch seconds, minutes",
                 "timestamp,open,high,low,close\n1577957400,10,11,9,10.5\n1577957460,10,11,9,10\n", 20200102, 93000, 0},
             Row{"epoch milliseconds, one bar a day",
                 "date,open,high,low,close\n1577957400000,10,11,9,10.5\n1578043800000,10,11,9,10\n", 20200102, 0, 0},
             Row{"epoch before 1970", "date,open,high,low,close\n-315532800,10,11,9,10.5\n", 19600102, 0, 0},
         }) {
        SCOPED_TRACE(row.name);
        const BarReadResult result = read(row.content);
        ASSERT_TRUE(result.isOk()) << result.error.toStdString();
        EXPECT_EQ(result.skippedRows, 0) << result.skipReasons.join(u'\n').toStdString();
        EXPECT_EQ(result.series.timeAt(0), (BarTime{row.date, row.time}));
        EXPECT_EQ(result.series.isIntraday(), row.time != 0);
        const Bar& bar = result.series.at(0);
        EXPECT_EQ(std::vector({bar.open, bar.high, bar.low, bar.close, bar.volume}),
                  std::vector({10.0, 11.0, 9.0, 10.5, row.volume}));
    }
}

TEST_F(BarReader, SkipsBadRowsAndSaysWhy)
{
    struct Row {
        const char* text;
        const char* reason;
    };
    for (const Row& row : {
             Row{"2020-01-02,10,11abc,9,10,1", "high is not a number"},
             Row{"2020-01-02,10,11,9,10,many", "volume is not a number"},
             Row{"2020-01-02,10,11,9,10,-1", "negative volume"},
             Row{"2020-01-02,0,11,0,10,1", "price is not positive"},
             Row{"2020-01-02,10,9,11,10,1", "high below low"},
             Row{"2020-01-02,12,11,9,10,1", "open outside high and low"},
             Row{"2020-01-02,10,11,9,8.99,1", "close outside high and low"},
             Row{"2020-02-30,10,11,9,10,1", "unreadable date"},
             Row{"2020-01-02 24:00,10,11,9,10,1", "unreadable date"},
             Row{",10,11,9,10,1", "unreadable date"},
             Row{"2020-01-02,10,11,9", "too few fields"},
             Row{"\"2020-01-02,10,11,9,10,1", "unclosed quote"},
         }) {
        SCOPED_TRACE(row.text);
        const BarReadResult result =
            read(QByteArray("date,open,high,low,close,volume\n2020-01-06,10,11,9,10,1\n") + row.text + "\n");
        EXPECT_TRUE(result.isOk());
        EXPECT_EQ(result.series.size(), 1);
        EXPECT_EQ(result.skippedRows, 1);
        EXPECT_EQ(result.skipReasons, QStringList(result.path + QStringLiteral(":3: ") + QLatin1String(row.reason)));
    }
}

TEST_F(BarReader, SkipsAnEndlessLineAndGoesOn)
{
    const QByteArray header = "date,open,high,low,close,note\n";
    const QByteArray longest = QByteArray("2020-01-02,10,11,9,10,").leftJustified(1 << 20, 'x');
    const BarReadResult result =
        read(header + longest + "\n" + longest + "x\n" + longest.repeated(3) + "\n2020-01-03,1,1,1,1,\n");
    EXPECT_EQ(result.series.size(), 2);
    EXPECT_EQ(result.skippedRows, 2);
    EXPECT_TRUE(result.skipReasons.value(1).endsWith(QStringLiteral(":4: the line is longer than 1 MB")));
}

TEST_F(BarReader, ToleratesRoundingByWideningTheRange)
{
    const BarReadResult result = read("date,open,high,low,close\n2020-01-02,10,20,10.000001,20.000001\n");
    ASSERT_EQ(result.series.size(), 1);
    EXPECT_EQ(result.series.at(0).high, 20.000001);
    EXPECT_EQ(result.series.at(0).low, 10.0);
}

TEST_F(BarReader, SortsAndLetsTheLastDuplicateWin)
{
    const BarReadResult result = readBars(write("XYZ.daily.csv", "date,open,high,low,close\n2020-01-03,3,3,3,3\n"
                                                                 "2020-01-02,2,2,2,2\n2020-01-03,4,4,4,4\nbad\n"));
    ASSERT_EQ(result.series.size(), 2);
    EXPECT_EQ(result.series.name(), QStringLiteral("XYZ.daily"));
    EXPECT_EQ(result.series.at(0).date, 20200102);
    EXPECT_EQ(result.series.at(1).close, 4.0);
    EXPECT_EQ(result.summary(), QStringLiteral("XYZ.daily.csv: 2 bars, 2020-01-02 to 2020-01-03, 1 row skipped (first: "
                                               "line 5: too few fields), 1 duplicate replaced"));
}

TEST_F(BarReader, NamesWhatMakesAFileUnusable)
{
    const QByteArray header("date,open,high,low,close\n");
    struct Row {
        QString path;
        const char* error; ///< after the path
    };
    for (const Row& row : {
             Row{folder_.filePath(QStringLiteral("none.csv")), ": no such file"},
             Row{folder_.path(), ": is a directory"},
             Row{QStringLiteral("/dev/zero"), ": is not a regular file"},
             Row{write("empty.csv", ""), ":1: the file is empty"},
             Row{write("nul.csv", header + QByteArray("2020-01-02,1,1,1,1\n\0\n", 22)),
                 ":3: the file is not UTF-8 text (it holds a NUL byte)"},
             Row{write("plain.csv", "2020-01-02,1,1,1,1\n"),
                 ":1: no header line with the columns date, open, high, low and close"},
             Row{write("noclose.csv", "\ndate,open,high,low,last\n2020-01-02,1,1,1,1\n"), ":2: no column named close"},
             Row{write("header.csv", header), ":1: no row after the header"},
             Row{write("bad.csv", header + "x,1,1,1,1\n"), ":2: unreadable date (no usable row in the file)"},
         }) {
        SCOPED_TRACE(row.path.toStdString());
        const BarReadResult result = readBars(row.path);
        EXPECT_TRUE(result.series.isEmpty());
        EXPECT_EQ(result.error, row.path + QLatin1String(row.error));
        EXPECT_EQ(result.summary(), result.error);
    }
}

TEST(BarSeries, RangesClampToTheLoadedBars)
{
    const BarSeries series(QString(), {{20200102, 0, 5, 6, 4, 5, 10}, {20200103, 0, 5, 9, 5, 5, 30}});
    EXPECT_EQ(series.lowerBound(20200104, 0), 2);
    EXPECT_EQ(series.priceRange(-5, 99)->high, 9.0);
    EXPECT_FALSE(series.priceRange(2, 9));
    EXPECT_EQ(series.maxVolume(-1, 99), 30.0);
}

} // namespace
