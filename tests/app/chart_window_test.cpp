#include "ChartFixture.h"
#include "app/chart/AxisTicks.h"
#include "app/chart/ChartPalette.h"
#include "app/chart/ChartTheme.h"
#include "app/window/Appearance.h"
#include "app/window/Preferences.h"
#include "panels/QZPaintControl.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "platform/QZGlobalEnv.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

namespace {

/// A chart of a folder: "a1" rose by a tenth on its last day, "a2" is intraday and fell by a fifth since the day
/// before, "a10" is no file of bars.
class ChartWindowTest : public ::testing::Test {
protected:
    ChartWindowTest()
    {
        write("a1.csv", "date,open,high,low,close\n2024-01-02,9,11,8,10\n2024-01-03,10,12,9,11\n");
        write("a2.csv", "date,time,open,high,low,close\n2024-01-02,09:31,9,11,8,9\n2024-01-02,09:32,9,11,8,10\n"
                        "2024-01-03,09:31,9,11,8,9\n2024-01-03,09:32,9,11,8,8\n");
        write("a10.csv", "nothing of the kind\n");
        write("a3.md", "");
        EXPECT_TRUE(window.showFiles({folder.path()}));
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void write(const char* name, const char* text) const
    {
        QFile file(folder.filePath(QLatin1String(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) > -1);
    }
    [[nodiscard]] std::string row(int index) const
    {
        const QTreeWidgetItem& item = *list.topLevelItem(index);
        return (item.text(0) + u' ' + item.text(1) + u' ' + item.text(2)).toStdString();
    }
    [[nodiscard]] std::string shown() const
    {
        return window.windowTitle().remove(QLatin1String(" - qzchart")).toStdString();
    }
    [[nodiscard]] QZGraphSet& figures() { return window.chart().panes().front()->paintLayer()->graphs(); }

    const QTemporaryDir folder;
    ChartWindow window;
    QTreeWidget& list = *window.watchList().findChild<QTreeWidget*>();
};

std::string themeName()
{
    return QZGlobalEnv::getShareInstance().themeName().toStdString();
}

/// The context menu that a right press at a point of the window opens, line by line; closed again, or one line chosen.
std::string contextMenu(QWidget& window, QPointF place, const char* chosen = "")
{
    QTest::mouseClick(window.windowHandle(), Qt::RightButton, {}, place.toPoint());
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QStringList lines;
    QAction* action = nullptr;
    if (menu != nullptr) {
        for (QAction* each : menu->actions()) {
            lines << each->text().remove(u'&').section(u'\t', 0, 0);
            if (lines.back() == QString::fromUtf8(chosen))
                action = each;
        }
        menu->close();
    }
    if (action != nullptr)
        action->trigger();
    UserInput::settle();
    return lines.join(u' ').toStdString();
}

} // namespace

TEST_F(ChartWindowTest, TellsPricesAndGoesFromStockToStockByKeyNameAndClick)
{
    EXPECT_TRUE(QTest::qWaitFor([this] { return !list.topLevelItem(2)->text(1).isEmpty(); }));
    ASSERT_EQ(list.topLevelItemCount(), 3);
    EXPECT_EQ(row(0), "a1 11.00 +10.00%");
    EXPECT_EQ(row(1), "a2 8.00 -20.00%");
    EXPECT_NE(list.topLevelItem(0)->foreground(2), list.topLevelItem(1)->foreground(2));
    EXPECT_TRUE(list.topLevelItem(2)->toolTip(0).endsWith(
        QLatin1String("a10.csv:1: no header line with the columns date, open, high, low and close")))
        << list.topLevelItem(2)->toolTip(0).toStdString();

    UserInput user(window);
    EXPECT_EQ(shown(), "a1");
    user.key(Qt::Key_4);
    user.click(user.positionOf(*window.chart().panes().front(), {100, 100}));
    user.key(Qt::Key_5);
    user.click(user.positionOf(*window.chart().panes().front(), {100, 200}));
    ASSERT_EQ(figures().count(), 1U);
    struct Row {
        const char* name;
        std::function<void()> go;
        const char* stock;
    };
    const auto key = [this](Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window.windowHandle(), code, modifiers); // shortcuts, too
    };
    for (const Row& step : {Row{"next", [&] { key(Qt::Key_PageDown); }, "a2"},
                            Row{"next, unreadable", [&] { key(Qt::Key_PageDown); }, "a10"},
                            Row{"no further one", [&] { key(Qt::Key_PageDown); }, "a10"},
                            Row{"by its name",
                                [&] {
                                    key(Qt::Key_Slash);
                                    for (const auto code : {Qt::Key_A, Qt::Key_1, Qt::Key_Return})
                                        key(code);
                                },
                                "a1"},
                            Row{"the filter given up",
                                [&] {
                                    key(Qt::Key_K, Qt::ControlModifier);
                                    key(Qt::Key_2);
                                    key(Qt::Key_Escape);
                                },
                                "a1"},
                            Row{"by a click",
                                [&] {
                                    const QPoint place = list.visualItemRect(list.topLevelItem(1)).center();
                                    user.click(list.viewport()->mapTo(&window, QPointF(place)));
                                },
                                "a2"},
                            Row{"previous", [&] { key(Qt::Key_PageUp); }, "a1"}}) {
        SCOPED_TRACE(step.name);
        step.go();
        EXPECT_EQ(shown(), step.stock);
        EXPECT_EQ(list.currentItem()->text(0).toStdString(), step.stock);
        EXPECT_EQ(window.chart().isVisible(), shown() != "a10");
        EXPECT_EQ(figures().count() == 1, shown() == "a1");
        EXPECT_TRUE(window.chart().hasFocus() || shown() == "a10");
    }
}

TEST_F(ChartWindowTest, RemembersWhatTheUserChose)
{
    Preferences::keepIn(folder.filePath(QStringLiteral("q.ini")));
    Appearance& appearance = Appearance::shared();
    const QColor red = ChartTheme::current().candleUp;
    window.showFiles({folder.path()});
    window.resize(700, 500);
    window.periods()->activated(window.periods()->findText(QStringLiteral("Week")));
    window.watchList().step(1);
    EXPECT_EQ(window.periods()->currentText().toStdString(), "Week") << "a stock that has the period as well";
    appearance.toggle();
    appearance.setGreenRises(true);
    window.chart().setLogarithmic(true);
    window.chart().setAveragesVisible(false);
    window.chart().setMacdVisible(true);
    EXPECT_TRUE(window.close());

    Preferences::keepIn({});
    appearance.toggle();
    appearance.setGreenRises(false);
    Preferences::keepIn(folder.filePath(QStringLiteral("q.ini")));
    appearance.restore();
    EXPECT_EQ(themeName(), "dark");
    ChartWindow later;
    later.restorePlace();
    EXPECT_EQ(later.size(), QSize(700, 500));
    EXPECT_TRUE(later.chart().isLogarithmic());
    std::vector<bool> shown;
    std::ranges::transform(later.chart().viewActions(), std::back_inserter(shown), &QAction::isChecked);
    EXPECT_EQ(shown, (std::vector{false, true})) << "averages, MACD";
    EXPECT_TRUE(later.restoreFiles());
    EXPECT_EQ(later.windowTitle().toStdString(), "a2 - qzchart");
    EXPECT_EQ(later.periods()->currentText().toStdString(), "Week");
    EXPECT_EQ(later.watchList().findChild<QTreeWidget*>()->topLevelItemCount(), 3);
    EXPECT_TRUE(QFile::remove(folder.filePath(QStringLiteral("a2.csv"))));
    EXPECT_TRUE(later.restoreFiles()); // another one of the list
    EXPECT_EQ(later.windowTitle().toStdString(), "a1 - qzchart");

    appearance.choose(ThemeChoice::Light);
    EXPECT_NE(ChartTheme::current().candleUp, red);
    appearance.setGreenRises(false);
    EXPECT_EQ(ChartTheme::current().candleUp, red);
    Preferences::keepIn({});
}

TEST_F(ChartWindowTest, FollowsTheSystemsColoursUntilTheUserChooses)
{
    Appearance& appearance = Appearance::shared();
    const auto systemBecomes = [&](bool isDark) {
        appearance.setSystem([isDark] { return isDark; });
        QEvent change(QEvent::ThemeChange);
        QCoreApplication::sendEvent(window.windowHandle(), &change);
    };
    appearance.restore(); // with nothing remembered
    EXPECT_EQ(themeName(), "light");
    systemBecomes(true);
    EXPECT_EQ(themeName(), "dark");
    // What is made outside the chart looks like it.
    EXPECT_LT(QMenu().palette().color(QPalette::Window).lightness(), 128);
    appearance.choose(ThemeChoice::Light);
    systemBecomes(true);
    EXPECT_EQ(themeName(), "light");
}

TEST_F(ChartWindowTest, KeepsTheFiguresOfTwoUsersApart)
{
    const auto become = [this](const QString& user) {
        QTimer answer;
        answer.setSingleShot(true);
        QObject::connect(&answer, &QTimer::timeout, [user] {
            auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            dialog->setTextValue(user);
            dialog->accept();
        });
        answer.start();
        window.changeUser();
    };
    const auto told = [this](const QString& text) {
        const auto labels = window.statusBar()->findChildren<QLabel*>();
        return std::ranges::any_of(labels, [&text](const QLabel* label) { return label->text() == text; });
    };
    UserInput user(window);
    const auto draw = [&](double y) {
        user.key(Qt::Key_5);
        user.click(user.positionOf(*window.chart().panes().front(), {100, y}));
    };
    become(QStringLiteral("ann"));
    draw(100);
    become(QStringLiteral("bob"));
    EXPECT_TRUE(told(QStringLiteral("User: bob")));
    EXPECT_EQ(figures().count(), 0U);
    draw(100);
    draw(200);
    become(QStringLiteral("ann"));
    EXPECT_EQ(figures().count(), 1U);
    become(QStringLiteral("bob"));
    EXPECT_EQ(figures().count(), 2U);
    become({});
    EXPECT_TRUE(told(QStringLiteral("No login user")));
}

TEST_F(ChartTest, TheRightButtonOffersWhatCanBeDoneAndNothingToSomebodyWhoDraws)
{
    constexpr const char* ofFigure = "Style… Locked Delete";
    constexpr const char* ofChart =
        "Drawing tools Range statistics Keep the tool Period Reset the view  Watch list Theme Rising bars";
    QZPaintLayer& layer = *candles.paintLayer();
    const auto strip = [] { return QZPaintGraphConfigWC::sharedWC().window().isVisible(); };
    user.key(Qt::Key_1);
    EXPECT_EQ(contextMenu(window, at(240, 100)), "") << "a tool is chosen";
    user.click(at(240, 100));
    EXPECT_EQ(contextMenu(window, at(260, 110)), "") << "one point is placed";
    user.click(at(260, 110));
    user.key(Qt::Key_Escape);
    EXPECT_EQ(contextMenu(window, at(250, 100)), ofChart) << "beside the figure";
    EXPECT_FALSE(figure()->isSelected());
    EXPECT_EQ(contextMenu(window, at(250, 105)), ofFigure);
    EXPECT_TRUE(figure()->isSelected());
    QZPaintGraphConfigWC::sharedWC().window().close();
    contextMenu(window, at(250, 105), "Style…");
    EXPECT_TRUE(strip());
    contextMenu(window, at(250, 105), "Locked");
    EXPECT_TRUE(figure()->isLocked());
    contextMenu(window, at(250, 105), "Delete");
    EXPECT_EQ(layer.graphs().count(), 0U);
    EXPECT_FALSE(strip());
    ChartPalette::button(QZSTToolText)->click();
    user.click(at(250, 105));
    EXPECT_EQ(contextMenu(window, at(250, 105) + QPointF(5, 5)), "Edit text… Style… Locked Delete");
}

TEST_F(ChartTest, AToolIsKeptByItsKeyOrByShiftAtTheLastPoint)
{
    const auto chosen = [] { return QZPaintControl::sharedManager().selectedType(); };
    user.key(Qt::Key_1);
    user.click(at(240, 100));
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::ShiftModifier, at(250, 105).toPoint());
    UserInput::settle();
    EXPECT_EQ(chosen(), QZSTLineSegment);
    user.click(at(260, 100)); // without a key in between
    user.click(at(270, 105));
    EXPECT_EQ(chosen(), QZShapeTypeNone);
    user.key(Qt::Key_K);
    user.drag(at(265, 102.5), at(255, 102.5)); // an edit chooses nothing
    EXPECT_EQ(chosen(), QZShapeTypeNone);
    user.key(Qt::Key_5);
    user.click(user.positionOf(volumes, {200, 40})); // of the pane whose figure was not begun first
    EXPECT_EQ(chosen(), QZSTHorizon);
    user.key(Qt::Key_Escape);
    EXPECT_EQ(chosen(), QZShapeTypeNone);
    EXPECT_EQ(candles.paintLayer()->graphs().count() + volumes.paintLayer()->graphs().count(), 3U);
}

TEST(VolumeText, IsWrittenAsTheLanguageCounts)
{
    const QLocale before;
    const auto written = [](QLocale::Language language) {
        QLocale::setDefault(QLocale(language));
        QStringList texts;
        for (const double volume : {950.0, 12500.0, -3.46e8, 1.2e9})
            texts << volumeText(volume);
        return texts.join(u' ').toStdString();
    };
    EXPECT_EQ(written(QLocale::English), "950 12.5K -346M 1.2B");
    EXPECT_EQ(written(QLocale::Chinese), "950 1.25万 -3.46亿 12亿");
    QLocale::setDefault(before);
}
