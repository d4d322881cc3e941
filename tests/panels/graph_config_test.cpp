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

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr auto argb = QColor::HexArgb;

/// Writes down each message with its argument.
struct Recorder final : QZPaintGraphConfigWCDelegate {
    using Panel = QZPaintGraphConfigWC;
    QStringList messages;

    void paintGraphConfigDidEdit(Panel&) override { messages << u"edit"_s; }
    void paintGraphConfigStrokeColorDidChange(Panel&, const QColor& c) override
    {
        messages << u"stroke"_s + c.name(argb);
    }
    void paintGraphConfigFillColorDidChange(Panel&, const QColor& c) override { messages << u"fill"_s + c.name(argb); }
    void paintGraphConfigLineTypeDidChange(Panel&, std::uint64_t t) override { messages << u"type%1"_s.arg(t); }
    void paintGraphConfigLineWidthDidChange(Panel&, double w) override { messages << u"width%1"_s.arg(w); }
    void paintGraphConfigIsLockedDidChange(Panel&, bool b) override { messages << u"locked%1"_s.arg(int{b}); }
    void paintGraphConfigDidDelete(Panel&) override { messages << u"delete"_s; }

    QString taken() { return std::exchange(messages, {}).join(u' '); }
};

class GraphConfig : public ::testing::Test {
protected:
    void SetUp() override
    {
        panel.setDelegate(&delegate);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    QWidget& control(const char* name) { return *window.findChild<QWidget*>(QLatin1String(name)); }
    void click(const char* name) { QTest::mouseClick(&control(name), Qt::LeftButton); }
    void press(const char* name, Qt::Key key) { QTest::keyClick(&control(name), key); }
    /// The tags of all items that are marked: "#3".
    static QString marked(const QZPopUpButton& popUp)
    {
        QString tags;
        for (const QZPopUpButtonMenuItem* item : popUp.items())
            tags += item->customHighlight() ? u"#%1"_s.arg(item->tag()) : QString();
        return tags;
    }
    QColorDialog* picker()
    {
        auto* dialog = window.findChild<QColorDialog*>();
        return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
    }

    Recorder delegate;
    QZPaintGraphConfigWC panel{u"QZPaintGraphConfigWC"_s};
    QZPanelWindow& window = panel.window();
    QZPopUpButton& types = *window.findChild<QZPopUpButton*>(u"popLineType"_s);
    QZPopUpButton& widths = *window.findChild<QZPopUpButton*>(u"popLineWidth"_s);
    QZPaintGraphConfigColorWell& stroke = *window.findChild<QZPaintGraphConfigColorWell*>(u"cwStrokeColor"_s);
    QZPaintGraphConfigColorWell& fill = *window.findChild<QZPaintGraphConfigColorWell*>(u"cwFillColor"_s);
};

} // namespace

TEST_F(GraphConfig, TellsWhatTheUserDoes)
{
    click("btnEdit");
    press("btnEdit", Qt::Key_Return);
    press("btnDelete", Qt::Key_Space);
    click("btnIsLocked");
    press("btnIsLocked", Qt::Key_Space);
    auto* lock = QAccessible::queryAccessibleInterface(&control("btnIsLocked"))->actionInterface();
    lock->doAction(QAccessibleActionInterface::toggleAction()); // as assistive technology does
    EXPECT_EQ(delegate.taken(), u"edit edit delete locked1 locked0 locked1"_s);

    for (const Qt::Key opener : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Up, Qt::Key_Down}) {
        press("popLineWidth", opener);
        ASSERT_TRUE(widths.menu().isVisible()) << opener;
        QTest::keyClick(&widths.menu(), Qt::Key_Down);
        QTest::keyClick(&widths.menu(), Qt::Key_Return);
        EXPECT_FALSE(widths.menu().isVisible());
    }
    EXPECT_EQ(delegate.taken(), u"width2 width3 width4 width5 width6"_s);

    const QPoint center = types.mapTo(&window, types.rect().center());
    const auto at = [this](int tag) { return types.itemWithTag(tag)->defaultWidget()->geometry().center(); };
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, center);
    ASSERT_TRUE(types.menu().isVisible());
    QTest::mouseRelease(types.menu().windowHandle(), Qt::LeftButton, {}, at(4));
    for (const int pressed : {1, 2}) {
        EXPECT_FALSE(types.menu().isVisible());
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, center);
        ASSERT_TRUE(types.menu().isVisible()) << "a click leaves it open";
        QTest::mousePress(types.menu().windowHandle(), Qt::LeftButton, {}, at(pressed));
        QTest::mouseRelease(types.menu().windowHandle(), Qt::LeftButton, {}, at(2));
    }
    EXPECT_EQ(delegate.taken(), u"type4 type2 type2"_s) << "the same again counts";
    EXPECT_EQ(panel.lineType(), 2U);
    EXPECT_EQ(marked(types), u"#2"_s);
    {
        Recorder shortLived;
        panel.setDelegate(&shortLived);
    }
    EXPECT_EQ(panel.delegate(), nullptr);
    click("btnDelete");
}

TEST_F(GraphConfig, ItsGripMovesItAndItsMenusStayOnTheScreen)
{
    window.move(100, 100);
    QWidget& grip = control("titleView");
    QTest::mousePress(&grip, Qt::LeftButton, {}, QPoint(5, 15));
    QTest::mouseMove(&grip, QPoint(35, 5));
    QTest::mouseRelease(&grip, Qt::LeftButton, {}, QPoint(5, 15));
    QTest::mouseMove(&grip, QPoint(50, 50));
    EXPECT_EQ(window.pos(), QPoint(130, 90)) << "let go";

    window.move(types.screen()->availableGeometry().bottomLeft() - QPoint(0, 60));
    types.openMenu();
    EXPECT_EQ(types.menu().geometry().bottom() + 1, types.mapToGlobal(QPoint()).y());
    types.menu().close();
}

TEST_F(GraphConfig, WhatItsFilesLackTheLibraryGivesOrItGoesWithout)
{
    LogSpy log;
    types.setItemTags(u"7,x,-1,0"_s.split(u','));
    EXPECT_EQ(types.itemTags().join(u' '), u"7 0"_s);
    EXPECT_EQ(log.lines.size(), 2);
    EXPECT_EQ(types.selectedTag(), QZPopUpButton::noTag);

    const QTemporaryDir folder;
    QFile file(folder.filePath(u"t.json"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"name": "x", "colors": {}, "images": {"QZPaintGraphConfigWC.ConfigTitle": "none.svg"}})");
    file.close();
    QZPaletteLoad theme;
    const QImage ours = theme.getCustomImage(u"QZPaintGraphConfigWC.ConfigTitle"_s);
    ASSERT_TRUE(theme.loadTheme(file.fileName(), nullptr));
    EXPECT_EQ(theme.getCustomImage(u"QZPaintGraphConfigWC.ConfigTitle"_s), ours);
    EXPECT_EQ(log.lines.filter(u"none.svg"_s).size(), 1);

    log.lines.clear();
    QZPaintGraphConfigWC strip(u"no such file"_s);
    EXPECT_EQ(log.lines.size(), 1);
    EXPECT_EQ(strip.window().size(), QSize(1, 1));
    strip.setEnabledConfigs(2);
    strip.setLineWidth(4);
    strip.setStrokeColor(Qt::blue);
    EXPECT_EQ(strip.lineWidth(), 4);
    EXPECT_EQ(strip.strokeColor(), QColor(Qt::blue));
}

TEST_F(GraphConfig, SettersTellNobodyAndMoveTheMark)
{
    EXPECT_EQ(marked(types) + marked(widths), u"#0#0"_s);
    panel.setStrokeColor(Qt::blue);
    EXPECT_EQ(stroke.accessibleDescription(), u"#ff0000ff"_s);
    panel.setStrokeColor(QColor());
    panel.setFillColor(Qt::green);
    panel.setIsLocked(true);
    EXPECT_EQ(panel.strokeColor(), QColor(Qt::blue));
    EXPECT_EQ(panel.fillColor(), QColor(Qt::green));
    EXPECT_TRUE(panel.isLocked());

    QStringList kept;
    for (const double width : {2.6, 2.4, 10.0, 11.0, 1.0, 0.0, -3.0, std::nan(""), 1e308}) {
        panel.setLineWidth(width);
        kept << QString::number(panel.lineWidth()) + marked(widths);
    }
    EXPECT_EQ(kept.join(u' '), u"3#2 2#1 10#9 11 1#0 1 1 1 1000"_s);
    for (const auto& [type, mark] : {std::pair{std::uint64_t{4}, u"#4"_s}, {7, {}}, {0, u"#0"_s}, {~0ULL, {}}}) {
        panel.setLineType(type);
        EXPECT_EQ(panel.lineType(), type);
        EXPECT_EQ(marked(types), mark);
    }
    EXPECT_EQ(delegate.taken(), QString());
}

TEST_F(GraphConfig, OneColourPickerFollowsTheActiveWellAndGoesWithItsStrip)
{
    panel.setFillColor(QColor(1, 2, 3, 4));
    click("cwStrokeColor");
    QColorDialog* dialog = picker();
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(dialog->currentColor(), QColor(254, 100, 0));
    dialog->setCurrentColor(Qt::blue);
    press("cwFillColor", Qt::Key_Return);
    ASSERT_EQ(picker(), dialog);
    EXPECT_TRUE(!stroke.isActive() && fill.isActive());
    EXPECT_EQ(dialog->currentColor(), QColor(1, 2, 3, 4));
    dialog->setCurrentColor(QColor(10, 20, 30, 4));
    EXPECT_EQ(panel.strokeColor(), QColor(Qt::blue));
    panel.setFillColor(Qt::white); // another figure was selected
    EXPECT_EQ(dialog->currentColor(), QColor(Qt::white));
    EXPECT_EQ(delegate.taken(), u"stroke#ff0000ff fill#040a141e"_s) << "neither switching nor being told tells";
    dialog->close();
    EXPECT_FALSE(fill.isActive());

    QWidget chart;
    for (const auto& leave : {std::function<void()>([&] { window.close(); }), {[&] { chart.close(); }}, {[&] {
                                  panel.setEnabledConfigs(64);
                              }}}) {
        chart.show();
        window.addToWindowOf(chart);
        click("cwStrokeColor");
        ASSERT_NE(picker(), nullptr);
        leave();
        EXPECT_EQ(picker(), nullptr);
        EXPECT_FALSE(stroke.isActive());
    }
    const QPoint middle(chart.geometry().center().x() - 271 / 2, chart.geometry().top() + 40);
    EXPECT_EQ(window.pos(), middle) << "a strip not moved before appears over the chart";

    chart.resize(200, 200);
    chart.show();
    window.addToWindowOf(chart);
    panel.setStrokeColor(Qt::red);
    click("cwStrokeColor");
    EXPECT_FALSE(picker()->frameGeometry().intersects(chart.frameGeometry())) << "there is room beside it";
    picker()->setCurrentColor(Qt::green);
    EXPECT_EQ(panel.strokeColor(), QColor(Qt::green));
    QTest::keyClick(picker(), Qt::Key_Escape);
    EXPECT_EQ(panel.strokeColor(), QColor(Qt::red));
    EXPECT_EQ(picker(), nullptr);
    EXPECT_TRUE(delegate.taken().endsWith(u"stroke#ff00ff00 stroke#ffff0000"_s));
}

TEST_F(GraphConfig, StaysOverItsChartWindowUnlessItsUserPutsItElsewhere)
{
    QWidget chart;
    chart.setGeometry(100, 100, 600, 400);
    chart.show();
    window.addToWindowOf(chart);
    const int height = window.height();
    const auto isOver = [this](const QWidget& other) { return other.geometry().contains(window.geometry()); };
    window.move(420, 500 - height);
    chart.resize(500, 300);
    EXPECT_EQ(window.geometry().bottomRight(), chart.geometry().bottomRight());
    QWidget other;
    other.setGeometry(0, 450, 500, 120);
    other.show();
    window.addToWindowOf(other);
    EXPECT_TRUE(isOver(other));
    window.move(700, 20); // by its grip
    other.resize(480, 110);
    window.hide();
    window.addToWindowOf(other);
    EXPECT_EQ(window.pos(), QPoint(700, 20));
    window.addToWindowOf(chart);
    EXPECT_TRUE(isOver(chart));
}

TEST_F(GraphConfig, GivesTheKeyboardBackToTheChart)
{
    QWidget chart;
    chart.show();
    // By Return; what that opens is left by Escape.
    for (const char* name : {"btnEdit", "cwStrokeColor", "popLineType", "btnIsLocked", "btnDelete", "detached"}) {
        SCOPED_TRACE(name);
        window.addToWindowOf(chart);
        window.activateWindow();
        ASSERT_TRUE(getsKeyboard(&window));
        if (window.findChild<QWidget*>(QLatin1String(name)) == nullptr)
            window.removeFromWindowOf(chart);
        else
            press(name, Qt::Key_Return);
        QWidget* opened = picker() == nullptr ? QApplication::activePopupWidget() : picker();
        EXPECT_TRUE(picker() == nullptr || getsKeyboard(opened));
        if (opened != nullptr)
            QTest::keyClick(opened, Qt::Key_Escape);
        EXPECT_TRUE(getsKeyboard(&chart));
    }
}

TEST_F(GraphConfig, ReadsWellInBothThemes)
{
    for (const QString& name : {u"light"_s, u"dark"_s}) {
        SCOPED_TRACE(name.toStdString());
        if (QZGlobalEnv::getShareInstance().themeName() != name)
            QZGlobalEnv::getShareInstance().setTheme(name);
        const auto color = [this](QPalette::ColorRole role) { return window.palette().color(role); };
        for (const auto background : {QPalette::Window, QPalette::Midlight, QPalette::Mid}) // plain, hovered, pressed
            EXPECT_GE(contrast(color(QPalette::ButtonText), color(background)), 3) << background;
        EXPECT_GE(contrast(color(QPalette::Dark), color(QPalette::Window)), 3) << "outline of a well";

        Picture picture;
        for (const std::uint64_t mask : {26U, 64U, 127U << 7U, 127U}) {
            panel.setEnabledConfigs(mask);
            picture.add(window);
        }
        window.activateWindow();
        ASSERT_TRUE(getsKeyboard(&window));
        stroke.setFocus();
        for (const char* focused : {"cwStrokeColor", "cwFillColor"}) {
            press(focused, Qt::Key_Tab);
            QTest::mouseMove(&widths);
            picture.add(window);
            panel.setLineType(3);
            panel.setFillColor(Qt::blue);
            panel.setIsLocked(true);
            stroke.setActive(true);
        }
        for (QZPopUpButton* popUp : {&types, &widths}) {
            QTest::mouseClick(popUp, Qt::LeftButton);
            QTest::keyClick(&popUp->menu(), Qt::Key_Down);
            picture.add(window);
            picture.add(popUp->menu());
            popUp->menu().close();
        }
        EXPECT_TRUE(picture.isLike(u"panels/strip-%1.png"_s.arg(name)));
        panel.setLineType(0);
    }
    QZGlobalEnv::getShareInstance().setTheme(u"light"_s);
}
