#include "ChartFixture.h"
#include "app/window/StoreNotice.h"
#include "model/QZPaintOptions.h"
#include "platform/QZAlert.h"
#include "platform/QZGlobalEnv.h"
#include "surface/QZGraphDatabase.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QScopeGuard>

namespace {} // namespace

TEST_F(ChartTest, FiguresComeBackWithTheirStockPeriodAndUser)
{
    using Dates = std::vector<std::int32_t>;
    const QString other = stock + u'2';
    const auto shownWith = [&](const QString& name, int step = 1) {
        window.showBars(market(name, step));
        return firstDates(window);
    };
    drawSegment(240, 260);
    const Dates first{bars()[240].date};
    EXPECT_EQ(shownWith(other), Dates{});
    drawSegment(250, 270);
    const Dates second{bars()[250].date};
    EXPECT_EQ(shownWith(stock), first);
    EXPECT_EQ(shownWith(stock, 7), Dates{}) << "weeks";
    EXPECT_EQ(shownWith(other), second);

    QZGlobalEnv::getShareInstance().setLoginUser(QStringLiteral("another"));
    EXPECT_EQ(firstDates(window), Dates{});
    QZGlobalEnv::getShareInstance().setLoginUser(QString());
    EXPECT_EQ(firstDates(window), second);
    drawSegment(230, 245);
    window.close();

    ChartWindow later;
    later.showBars(market(other));
    EXPECT_EQ(firstDates(later), (Dates{second[0], bars()[230].date}));
}

TEST_F(ChartTest, EachPeriodHasItsFigures)
{
    drawSegment(250, 260);
    auto& periods = *window.findChild<QComboBox*>();
    const auto choose = [&periods](int index) {
        periods.setCurrentIndex(index);
        Q_EMIT periods.activated(index);
        return periods.currentText();
    };
    EXPECT_EQ(choose(2), QStringLiteral("Month"));
    EXPECT_EQ(bars().size(), 14U);
    EXPECT_EQ(candles.paintLayer()->graphs().count(), 0U);
    window.showBars(market(stock)); // read again, the period stays
    EXPECT_EQ(bars().size(), 14U);
    EXPECT_EQ(choose(0), QStringLiteral("Day"));
    EXPECT_EQ(candles.paintLayer()->graphs().count(), 1U);
}

TEST_F(ChartTest, ACrashCostsNothingAndTwoProgramsShareAStock)
{
    ChartWindow other; // as of another program: nothing but the file connects the two
    other.showBars(market(stock));
    const auto draw = [](ChartWindow& shown, std::int32_t date) {
        QZPaintLayer& layer = *shown.chart().panes().front()->paintLayer();
        const auto graph = layer.allocGraphWithType(QZSTLineSegment);
        graph->setEditing(false);
        graph->setLogicAxises({{date, 0, 10.5}, {20200120, 0, 11.25}});
        layer.graphs().add(graph);
    };
    draw(window, 20200106);
    draw(other, 20200107);
    using Dates = std::vector<std::int32_t>;
    EXPECT_TRUE(QTest::qWaitFor([&] { return firstDates(window) == Dates{20200106, 20200107}; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return firstDates(other) == Dates{20200107, 20200106}; }));
    // Neither window was closed.
    ChartWindow later;
    later.showBars(market(stock));
    EXPECT_EQ(firstDates(later).size(), 2U);
}

TEST_F(ChartTest, ADamagedFileIsSaidAndLosesNothing)
{
    const QScopeGuard usual([] { QZPaintOptions::setCurrent({}); });
    QZPaintOptions::setCurrent({.failedLoadBarsSave = true});
    drawSegment(250, 260);
    ASSERT_TRUE(chart.panes()[0]->storeDB());
    const QString path = ChartPane::graphDatabase()->databasePath();
    const auto replaceFileBy = [&path](const QByteArray& content) {
        ChartPane::graphDatabase()->close();
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    };
    QFile good(path);
    ASSERT_TRUE(good.open(QIODevice::ReadOnly));
    const QByteArray whole = good.readAll();
    const auto* notice = window.findChild<StoreNotice*>();
    EXPECT_FALSE(notice->isVisible());

    replaceFileBy("no database");
    window.showBars(market(QStringLiteral("another")));
    window.showBars(market(stock));
    drawSegment(240, 245);
    notice->tryAgain()->trigger();
    EXPECT_TRUE(notice->isVisible());
    EXPECT_TRUE(notice->findChild<QLabel*>()->text().startsWith(QStringLiteral("The file of the drawings is damaged")));
    replaceFileBy(whole);
    notice->tryAgain()->trigger();
    EXPECT_FALSE(notice->isVisible());
    EXPECT_EQ(firstDates(window).size(), 2U) << "the stored one and the one that was drawn meanwhile";

    replaceFileBy("no database");
    drawSegment(230, 235);
    notice->startNewFile()->trigger();
    EXPECT_FALSE(notice->isVisible());
    const QFileInfo info(path);
    const QStringList aside = info.dir().entryList({info.fileName() + QStringLiteral(".kept-*")});
    ASSERT_EQ(aside.size(), 1);
    EXPECT_EQ(QFileInfo(info.dir().filePath(aside.front())).size(), 11);
    ChartWindow later;
    later.showBars(market(stock));
    EXPECT_EQ(firstDates(later).size(), 3U);
}

TEST_F(ChartTest, AsksBeforeFiguresThatCannotBeStoredAreLost)
{
    drawSegment(250, 260);
    ASSERT_TRUE(chart.panes()[0]->storeDB());
    const auto database = ChartPane::graphDatabase();
    ASSERT_TRUE(database->executeUpdate(
        "CREATE TRIGGER full BEFORE INSERT ON GraphTable BEGIN SELECT RAISE(ABORT, 'full'); END"));
    drawSegment(240, 245);
    int questions = 0;
    int answer = 0;
    const auto runner = QZAlert::setRunner([&](const QZAlertRequest& question) {
        ++questions;
        return question.message.contains(QStringLiteral("cannot be stored")) ? QZAlert::firstButton + answer : -1;
    });
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
    answer = 1;
    EXPECT_TRUE(window.close());
    EXPECT_EQ(questions, 2);
    QZAlert::setRunner(runner);
    EXPECT_TRUE(database->openWithFlags(6) && database->executeUpdate("DROP TRIGGER full"));
}
