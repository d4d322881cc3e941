#include "panels/QZPaintGraphConfigWC.h"
#include "platform/QZGlobalEnv.h"
#include "support/Contrast.h"
#include "support/Spies.h"
#include "support/widgets/Keyboard.h"
#include "support/widgets/Picture.h"

#include <QAccessible>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <QWindow>

#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <utility>

namespace {

constexpr auto argb = QColor::HexArgb;

/// Writes down each message with its argument.
struct Recorder final : QZPaintGraphConfigWCDelegate {
    using Panel = QZPaintGraphConfigWC;
    QStringList messages;

    void write(const char* name, const QString& value) { messages << QLatin1String(name) + value; }
    void paintGraphConfigDidEdit(Panel&) override { write("edit", {}); }
    void paintGraphConfigStrokeColorDidChange(Panel&, const QColor& c) override { write("stroke ", c.name(argb)); }
    void paintGraphConfigFillColorDidChange(Panel&, const QColor& c) override { write("fill ", c.name(argb)); }
    void paintGraphConfigLineTypeDidChange(Panel&, std::uint64_t t) override { write("type ", QString::number(t)); }
    void paintGraphConfigLineWidthDidChange(Panel&, double w) override { write("width ", QString::number(w)); }
    void paintGraphConfigIsLockedDidChange(Panel&, bool b) override { write("locked ", QString::number(int{b})); }
    void paintGraphConfigDidDelete(Panel&) override { write("delete", {}); }

    QStringList taken() { return std::exchange(messages, {}); }
};

class GraphConfig : public ::testing::Test {
protected:
    void SetUp() override
    {
        panel.setDelegate(&delegate);
        panel.window().show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel.window()));
    }

    template <typename Widget = QWidget>
    Widget& control(const char* name)
    {
        auto* found = panel.window().findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    void click(const char* name) { QTest::mouseClick(&control(name), Qt::LeftButton); }

    /// Opens the pop-up and releases the mouse over the item.
    void choose(const char* name, int tag)
    {
        auto& popUp = control<QZPopUpButton>(name);
        QTest::mouseClick(&popUp, Qt::LeftButton);
        ASSERT_TRUE(popUp.menu().isVisible());
        QTest::mouseClick(popUp.itemWithTag(tag)->defaultWidget(), Qt::LeftButton);
        EXPECT_FALSE(popUp.menu().isVisible());
    }
    /// The tags of all items that are marked.
    QList<int> marked(const char* name)
    {
        QList<int> tags;
        for (const QZPopUpButtonMenuItem* item : control<QZPopUpButton>(name).items()) {
            if (item->customHighlight())
                tags << item->tag();
        }
        return tags;
    }
    QColorDialog* picker()
    {
        auto* dialog = panel.window().findChild<QColorDialog*>();
        return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
    }

    Recorder delegate;
    QZPaintGraphConfigWC panel{QStringLiteral("QZPaintGraphConfigWC")};
};

} // namespace

TEST_F(GraphConfig, ShowsTheControlsOfTheMaskAndIsAsWideAsTheyAre)
{
    const std::array controls{"btnEdit",      "cwStrokeColor", "cwFillColor", "popLineType",
                              "popLineWidth", "btnIsLocked",   "btnDelete"};
    panel.window().move(70, 80);
    // Title 10, wells and buttons 30, pop-ups 52, and 1 for each control's line.
    for (const auto& [mask, width] :
         {std::pair{0U, 10}, {26U, 147}, {90U, 178}, {127U, 271}, {1U, 41}, {64U, 41}, {127U << 7U, 10}}) {
        SCOPED_TRACE(mask);
        panel.setEnabledConfigs(mask);
        EXPECT_EQ(panel.window().geometry(), QRect(70, 80, width, 30));
        int right = 10;
        for (std::size_t bit = 0; bit < controls.size(); ++bit) {
            SCOPED_TRACE(controls.at(bit));
            QWidget& view = control(controls.at(bit));
            QWidget& separator = control(qPrintable(QStringLiteral("boxVertical%1").arg(bit + 1)));
            const bool isShown = (mask >> bit & 1U) != 0;
            EXPECT_EQ(view.isHidden(), !isShown);
            EXPECT_EQ(separator.isHidden(), !isShown);
            if (isShown) {
                EXPECT_EQ(separator.mapTo(&panel.window(), QPoint()), QPoint(right, 0));
                EXPECT_EQ(view.mapTo(&panel.window(), QPoint()), QPoint(right + 1, 0));
                right += 1 + view.width();
            }
        }
    }
}

TEST_F(GraphConfig, TellsWhatTheUserDoes)
{
    struct Row {
        const char* message;
        std::function<void()> action;
    };
    const auto press = [this](const char* name, Qt::Key key) { QTest::keyClick(&control(name), key); };
    const auto toggle = [](QWidget& button) { // as assistive technology does
        auto* actions = QAccessible::queryAccessibleInterface(&button)->actionInterface();
        actions->doAction(QAccessibleActionInterface::toggleAction());
    };
    const std::array rows{
        Row{"edit", [&] { click("btnEdit"); }},
        Row{"edit", [&] { press("btnEdit", Qt::Key_Return); }},
        Row{"delete", [&] { press("btnDelete", Qt::Key_Space); }},
        Row{"locked 1", [&] { click("btnIsLocked"); }},
        Row{"locked 0", [&] { press("btnIsLocked", Qt::Key_Space); }},
        Row{"locked 1", [&] { toggle(control("btnIsLocked")); }},
        Row{"type 3", [&] { choose("popLineType", 3); }},
        Row{"type 3", [&] { choose("popLineType", 3); }}, // the same again
        Row{"width 10", [&] { choose("popLineWidth", 9); }},
        Row{"width 1", [&] { choose("popLineWidth", 0); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.message);
        row.action();
        EXPECT_EQ(delegate.taken(), QStringList(QLatin1String(row.message)));
    }
    EXPECT_EQ(panel.lineType(), 3U);
    EXPECT_EQ(marked("popLineType"), QList<int>{3});
    {
        Recorder shortLived;
        panel.setDelegate(&shortLived);
    }
    EXPECT_EQ(panel.delegate(), nullptr);
    click("btnDelete");
}

TEST_F(GraphConfig, APopUpIsWorkedFromTheKeyboard)
{
    auto& popUp = control<QZPopUpButton>("popLineWidth");
    panel.setLineWidth(4);
    for (const Qt::Key opener : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down}) {
        SCOPED_TRACE(opener);
        const double before = panel.lineWidth();
        QTest::keyClick(&popUp, opener);
        ASSERT_TRUE(popUp.menu().isVisible());
        QTest::keyClick(&popUp.menu(), Qt::Key_Down);
        QTest::keyClick(&popUp.menu(), Qt::Key_Return);
        EXPECT_FALSE(popUp.menu().isVisible());
        EXPECT_EQ(delegate.taken(), QStringList(QStringLiteral("width %1").arg(before + 1)));
    }
}

TEST_F(GraphConfig, APopUpTakesAnyTagsAndStaysOnTheScreen)
{
    auto& popUp = control<QZPopUpButton>("popLineType");
    const QRect screen = popUp.screen()->availableGeometry();
    panel.window().move(screen.bottomLeft() - QPoint(0, 60));
    popUp.openMenu();
    EXPECT_EQ(popUp.menu().geometry().bottom() + 1, popUp.mapToGlobal(QPoint()).y());
    popUp.menu().close();

    const LogSpy log;
    popUp.setItemTags({QStringLiteral("7"), QStringLiteral("x"), QStringLiteral("-1"), QStringLiteral("0")});
    EXPECT_EQ(popUp.itemTags().join(u' '), QStringLiteral("7 0"));
    EXPECT_EQ(log.lines.size(), 2);
    EXPECT_EQ(popUp.selectedTag(), QZPopUpButton::noTag);
}

TEST_F(GraphConfig, APictureThatAThemeCannotGiveIsTheLibrarys)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("t.json")));
    QFile light(QStringLiteral(":/qz/themes/light.json"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && light.open(QIODevice::ReadOnly));
    file.write(light.readAll().replace("{}", R"({"QZPaintGraphConfigWC.ConfigTitle": "none.svg"})"));
    file.close();
    const LogSpy log;
    QZPaletteLoad theme;
    ASSERT_TRUE(theme.loadTheme(file.fileName(), nullptr));
    const QString key = QStringLiteral("QZPaintGraphConfigWC.ConfigTitle");
    EXPECT_EQ(theme.getCustomImage(key), QZGlobalEnv::getShareInstance().paletteLoad().getCustomImage(key));
    EXPECT_EQ(log.lines.size(), 1);
}

TEST(GraphConfigFile, AStripWithoutControlsKeepsItsValues)
{
    const LogSpy log;
    QZPaintGraphConfigWC strip(QStringLiteral("no such file"));
    EXPECT_EQ(log.lines.size(), 1);
    EXPECT_EQ(strip.window().size(), QSize(1, 1));
    strip.setEnabledConfigs(2);
    strip.setLineWidth(4);
    strip.setStrokeColor(Qt::blue);
    EXPECT_EQ(strip.lineWidth(), 4);
    EXPECT_EQ(strip.strokeColor(), QColor(Qt::blue));
}

TEST_F(GraphConfig, APopUpOpensOnPressAndPicksWhereADragEnds)
{
    auto& popUp = control<QZPopUpButton>("popLineType");
    QWindow* strip = panel.window().windowHandle();
    const QPoint center = popUp.mapTo(&panel.window(), popUp.rect().center());
    const auto release = [&](int tag) {
        QWidget* view = popUp.itemWithTag(tag)->defaultWidget();
        QTest::mouseRelease(popUp.menu().windowHandle(), Qt::LeftButton, {}, view->geometry().center());
    };
    QTest::mousePress(strip, Qt::LeftButton, {}, center);
    ASSERT_TRUE(popUp.menu().isVisible());
    release(4);
    EXPECT_FALSE(popUp.menu().isVisible());

    QTest::mouseClick(strip, Qt::LeftButton, {}, center);
    ASSERT_TRUE(popUp.menu().isVisible()) << "a click leaves it open";
    QTest::mousePress(popUp.menu().windowHandle(), Qt::LeftButton, {},
                      popUp.itemWithTag(1)->defaultWidget()->geometry().center());
    release(2);
    EXPECT_EQ(delegate.taken(), QStringList({QStringLiteral("type 4"), QStringLiteral("type 2")}));
}

TEST_F(GraphConfig, SettersTellNobodyAndMoveTheMark)
{
    EXPECT_EQ(marked("popLineType"), QList<int>{0});
    EXPECT_EQ(marked("popLineWidth"), QList<int>{0});
    panel.setStrokeColor(Qt::blue);
    EXPECT_EQ(control("cwStrokeColor").accessibleDescription(), QStringLiteral("#ff0000ff"));
    panel.setStrokeColor(QColor());
    panel.setFillColor(Qt::green);
    panel.setIsLocked(true);
    EXPECT_EQ(panel.strokeColor(), QColor(Qt::blue));
    EXPECT_EQ(panel.fillColor(), QColor(Qt::green));
    EXPECT_TRUE(panel.isLocked());

    struct Width {
        double set, kept;
        int tag; // -1 when none is marked
    };
    for (const Width& row : {Width{2.6, 3, 2}, Width{2.4, 2, 1}, Width{10, 10, 9}, Width{11, 11, -1}, Width{1, 1, 0},
                             Width{0, 1, -1}, Width{-3, 1, -1}, Width{std::nan(""), 1, -1}, Width{1e308, 1000, -1}}) {
        SCOPED_TRACE(row.set);
        panel.setLineWidth(row.set);
        EXPECT_EQ(panel.lineWidth(), row.kept);
        EXPECT_EQ(marked("popLineWidth"), row.tag < 0 ? QList<int>() : QList<int>{row.tag});
    }
    for (const auto& [type, tags] : {std::pair{std::uint64_t{4}, QList<int>{4}}, {7, {}}, {0, {0}}, {~0ULL, {}}}) {
        SCOPED_TRACE(type);
        panel.setLineType(type);
        EXPECT_EQ(panel.lineType(), type);
        EXPECT_EQ(marked("popLineType"), tags);
    }
    EXPECT_EQ(delegate.messages, QStringList());
}

TEST_F(GraphConfig, OneColourPickerFollowsTheActiveWell)
{
    panel.setFillColor(QColor(1, 2, 3, 4));
    click("cwStrokeColor");
    QColorDialog* dialog = picker();
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(dialog->currentColor(), QColor(254, 100, 0));
    dialog->setCurrentColor(Qt::blue);
    EXPECT_EQ(delegate.taken(), QStringList(QStringLiteral("stroke #ff0000ff")));

    QTest::keyClick(&control("cwFillColor"), Qt::Key_Return);
    ASSERT_EQ(picker(), dialog);
    EXPECT_FALSE(control<QZPaintGraphConfigColorWell>("cwStrokeColor").isActive());
    EXPECT_TRUE(control<QZPaintGraphConfigColorWell>("cwFillColor").isActive());
    EXPECT_EQ(dialog->currentColor(), QColor(1, 2, 3, 4));
    EXPECT_EQ(delegate.taken(), QStringList()) << "switching changes no colour";
    dialog->setCurrentColor(QColor(10, 20, 30, 4));
    EXPECT_EQ(delegate.taken(), QStringList(QStringLiteral("fill #040a141e")));
    EXPECT_EQ(panel.strokeColor(), QColor(Qt::blue));

    panel.setFillColor(Qt::white); // another figure was selected
    EXPECT_EQ(dialog->currentColor(), QColor(Qt::white));
    EXPECT_EQ(delegate.taken(), QStringList());
    dialog->close();
    EXPECT_FALSE(control<QZPaintGraphConfigColorWell>("cwFillColor").isActive());
}

TEST_F(GraphConfig, TheColourPickerGoesWithItsStrip)
{
    QWidget chart;
    const std::array<std::function<void()>, 3> ways{[&] { panel.window().close(); }, [&] { chart.close(); },
                                                    [&] { panel.setEnabledConfigs(64); }};
    for (const auto& leave : ways) {
        chart.show();
        panel.window().addToWindowOf(chart);
        click("cwStrokeColor");
        ASSERT_NE(picker(), nullptr);
        leave();
        EXPECT_EQ(picker(), nullptr);
        EXPECT_FALSE(control<QZPaintGraphConfigColorWell>("cwStrokeColor").isActive());
    }
    const QPoint middle(chart.geometry().center().x() - 271 / 2, chart.geometry().top() + 40);
    EXPECT_EQ(panel.window().pos(), middle) << "a strip not moved before appears over the chart";
}

TEST_F(GraphConfig, GivesTheKeyboardBackToTheChart)
{
    QWidget chart;
    chart.show();
    // By Return; what that opens is left by Escape.
    for (const char* name : {"btnEdit", "cwStrokeColor", "popLineType", "btnIsLocked", "btnDelete", "detached"}) {
        SCOPED_TRACE(name);
        panel.window().addToWindowOf(chart);
        panel.window().activateWindow();
        ASSERT_TRUE(getsKeyboard(&panel.window()));
        if (panel.window().findChild<QWidget*>(QLatin1String(name)) == nullptr)
            panel.window().removeFromWindowOf(chart);
        else
            QTest::keyClick(&control(name), Qt::Key_Return);
        QWidget* opened = picker() == nullptr ? QApplication::activePopupWidget() : picker();
        EXPECT_TRUE(picker() == nullptr || getsKeyboard(opened));
        if (opened != nullptr)
            QTest::keyClick(opened, Qt::Key_Escape);
        EXPECT_TRUE(getsKeyboard(&chart));
    }
}

TEST_F(GraphConfig, ReadsWellInBothThemes)
{
    for (const QString& name : {QStringLiteral("light"), QStringLiteral("dark")}) {
        SCOPED_TRACE(name.toStdString());
        if (QZGlobalEnv::getShareInstance().themeName() != name)
            QZGlobalEnv::getShareInstance().setTheme(name);
        const auto color = [this](QPalette::ColorRole role) { return panel.window().palette().color(role); };
        for (const auto background : {QPalette::Window, QPalette::Midlight, QPalette::Mid}) // plain, hovered, pressed
            EXPECT_GE(contrast(color(QPalette::ButtonText), color(background)), 3) << background;
        EXPECT_GE(contrast(color(QPalette::Dark), color(QPalette::Window)), 3) << "outline of a well";

        Picture picture;
        picture.add(panel.window());
        panel.window().activateWindow();
        ASSERT_TRUE(getsKeyboard(&panel.window()));
        control("cwStrokeColor").setFocus();
        for (const char* focused : {"cwStrokeColor", "cwFillColor"}) {
            QTest::keyClick(&control(focused), Qt::Key_Tab);
            QTest::mouseMove(&control("popLineWidth"));
            picture.add(panel.window());
            panel.setLineType(3);
            panel.setFillColor(Qt::blue);
            panel.setIsLocked(true);
            control<QZPaintGraphConfigColorWell>("cwStrokeColor").setActive(true);
        }
        for (const char* popUp : {"popLineType", "popLineWidth"}) {
            auto& opened = control<QZPopUpButton>(popUp);
            QTest::mouseClick(&opened, Qt::LeftButton);
            QTest::keyClick(&opened.menu(), Qt::Key_Down);
            picture.add(panel.window());
            picture.add(opened.menu());
            opened.menu().close();
        }
        EXPECT_TRUE(picture.isLike(QStringLiteral("panels/strip-%1.png").arg(name)));
        panel.setLineType(0);
    }
    QZGlobalEnv::getShareInstance().setTheme(QStringLiteral("light"));
}

TEST_F(GraphConfig, DraggingTheGripMovesTheStrip)
{
    panel.window().move(100, 100);
    QWidget& grip = control("titleView");
    QTest::mousePress(&grip, Qt::LeftButton, {}, QPoint(5, 15));
    QTest::mouseMove(&grip, QPoint(35, 5));
    QTest::mouseRelease(&grip, Qt::LeftButton, {}, QPoint(5, 15));
    EXPECT_EQ(panel.window().pos(), QPoint(130, 90));
    QTest::mouseMove(&grip, QPoint(50, 50));
    EXPECT_EQ(panel.window().pos(), QPoint(130, 90)) << "let go";
}
