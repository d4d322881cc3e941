#include "panels/QZInterfaceLoader.h"
#include "panels/QZPaintGraphConfigWC.h"
#include "platform/QZGlobalEnv.h"
#include "support/Spies.h"

#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
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

QColor pixel(QWidget& widget, QPoint at)
{
    return widget.grab().toImage().pixelColor(at);
}

} // namespace

TEST_F(GraphConfig, StartsWithAllControlsAndAPlainLine)
{
    EXPECT_EQ(panel.enabledConfigs(), 127U);
    EXPECT_EQ(panel.strokeColor(), QColor(254, 100, 0));
    EXPECT_FALSE(panel.fillColor().isValid());
    EXPECT_EQ(panel.lineWidth(), 1.0);
    EXPECT_EQ(marked("popLineType"), QList<int>{0});
    EXPECT_EQ(marked("popLineWidth"), QList<int>{0});
}

TEST_F(GraphConfig, ShowsTheControlsOfTheMaskAndIsAsWideAsTheyAre)
{
    const std::array controls{"btnEdit",      "cwStrokeColor", "cwFillColor", "popLineType",
                              "popLineWidth", "btnIsLocked",   "btnDelete"};
    struct Row {
        std::uint64_t mask;
        int width; // title 10, wells and buttons 30, pop-ups 52, and 1 for each control's line
    };
    panel.window().move(70, 80);
    for (const bool isVisible : {true, false}) {
        panel.window().setVisible(isVisible);
        for (const Row& row : {Row{0, 10}, {26, 147}, {90, 178}, {127, 271}, {1, 41}, {64, 41}, {127U << 7U, 10}}) {
            SCOPED_TRACE(row.mask);
            panel.setEnabledConfigs(row.mask);
            EXPECT_EQ(panel.window().geometry(), QRect(70, 80, row.width, 30));
            int right = 10;
            for (std::size_t bit = 0; bit < controls.size(); ++bit) {
                SCOPED_TRACE(controls.at(bit));
                QWidget& view = control(controls.at(bit));
                QWidget& separator = control(qPrintable(QStringLiteral("boxVertical%1").arg(bit + 1)));
                const bool isShown = (row.mask >> bit & 1U) != 0;
                EXPECT_EQ(view.isHidden(), !isShown);
                EXPECT_EQ(separator.isHidden(), !isShown);
                if (isShown && isVisible) {
                    EXPECT_EQ(separator.mapTo(&panel.window(), QPoint()), QPoint(right, 0));
                    EXPECT_EQ(view.mapTo(&panel.window(), QPoint()), QPoint(right + 1, 0));
                    right += 1 + view.width();
                }
            }
        }
    }
    panel.window().resize(99, 30);
    panel.setEnabledConfigs(127U << 7U);
    EXPECT_EQ(panel.window().width(), 99) << "the present mask again must not lay out";
}

TEST_F(GraphConfig, TellsWhatTheUserDoes)
{
    struct Row {
        const char* name;
        std::function<void()> action;
        QStringList messages;
    };
    const auto press = [this](const char* name, Qt::Key key) { QTest::keyClick(&control(name), key); };
    const std::array rows{
        Row{"edit", [&] { click("btnEdit"); }, {QStringLiteral("edit")}},
        Row{"edit by Enter", [&] { press("btnEdit", Qt::Key_Return); }, {QStringLiteral("edit")}},
        Row{"delete", [&] { click("btnDelete"); }, {QStringLiteral("delete")}},
        Row{"delete by space", [&] { press("btnDelete", Qt::Key_Space); }, {QStringLiteral("delete")}},
        Row{"lock", [&] { click("btnIsLocked"); }, {QStringLiteral("locked 1")}},
        Row{"unlock by space", [&] { press("btnIsLocked", Qt::Key_Space); }, {QStringLiteral("locked 0")}},
        Row{"line type", [&] { choose("popLineType", 3); }, {QStringLiteral("type 3")}},
        Row{"the same line type", [&] { choose("popLineType", 3); }, {QStringLiteral("type 3")}},
        Row{"line width", [&] { choose("popLineWidth", 9); }, {QStringLiteral("width 10")}},
        Row{"thinnest line", [&] { choose("popLineWidth", 0); }, {QStringLiteral("width 1")}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        row.action();
        EXPECT_EQ(delegate.taken(), row.messages);
    }
    EXPECT_EQ(panel.lineType(), 3U);
    EXPECT_EQ(marked("popLineType"), QList<int>{3});
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

TEST_F(GraphConfig, APopUpOpensOnPressPicksWhereADragEndsAndClosesOnASecondPress)
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

    QTest::mouseClick(strip, Qt::LeftButton, {}, center);
    QTest::mouseClick(strip, Qt::LeftButton, {}, center);
    QTest::qWait(0);
    EXPECT_FALSE(popUp.menu().isVisible());
    EXPECT_EQ(delegate.taken(), QStringList());
}

TEST_F(GraphConfig, SettersTellNobodyAndMoveTheMark)
{
    panel.setStrokeColor(Qt::blue);
    panel.setStrokeColor(QColor());
    panel.setFillColor(Qt::green);
    panel.setIsLocked(true);
    panel.setEnabledConfigs(90);
    EXPECT_EQ(panel.strokeColor(), QColor(Qt::blue));
    EXPECT_EQ(panel.fillColor(), QColor(Qt::green));
    EXPECT_TRUE(panel.isLocked());

    struct Width {
        double set = 0;
        double kept = 0;
        QList<int> tags;
    };
    const double huge = std::numeric_limits<double>::max();
    for (const Width& row : {Width{2.6, 3, {2}},
                             {2.4, 2, {1}},
                             {10, 10, {9}},
                             {11, 11, {}},
                             {25, 25, {}},
                             {1, 1, {0}},
                             {0, 1, {}},
                             {-3, 1, {}},
                             {1, 1, {0}},
                             {std::nan(""), 1, {}},
                             {huge, 1000, {}}}) {
        SCOPED_TRACE(row.set);
        panel.setLineWidth(row.set);
        EXPECT_EQ(panel.lineWidth(), row.kept);
        EXPECT_EQ(marked("popLineWidth"), row.tags);
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
    const std::array<std::pair<const char*, std::function<void()>>, 4> ways{{
        {"closed", [&] { panel.window().close(); }},
        {"hidden", [&] { panel.window().hide(); }},
        {"chart window closed", [&] { chart.close(); }},
        {"its control is hidden", [&] { panel.setEnabledConfigs(64); }},
    }};
    for (const auto& [name, leave] : ways) {
        SCOPED_TRACE(name);
        chart.show();
        panel.window().addToWindowOf(chart);
        click("cwStrokeColor");
        ASSERT_NE(picker(), nullptr);
        leave();
        EXPECT_EQ(picker(), nullptr);
        EXPECT_FALSE(control<QZPaintGraphConfigColorWell>("cwStrokeColor").isActive());
    }
    EXPECT_TRUE(chart.geometry().contains(panel.window().pos())) << "a strip not moved before appears over the chart";
}

TEST_F(GraphConfig, FollowsTheTheme)
{
    const auto isDark = [](const QColor& color) { return color.lightnessF() < 0.5F; };
    QWidget& grip = control("titleView");
    auto& type = control<QZPopUpButton>("popLineType");
    for (const bool dark : {true, false}) {
        SCOPED_TRACE(dark);
        QZGlobalEnv::getShareInstance().setTheme(dark ? QStringLiteral("dark") : QStringLiteral("light"));
        EXPECT_EQ(isDark(pixel(panel.window(), grip.rect().bottomLeft())), dark);
        // The solid line stands on the middle rows of the face, 26 px wide.
        int linePixels = 0;
        for (int y = 13; y < 18; ++y)
            linePixels += isDark(pixel(type, QPoint(20, y))) != dark ? 1 : 0;
        EXPECT_GT(linePixels, 0);
        QWidget& chosen = *type.itemWithTag(0)->defaultWidget();
        EXPECT_EQ(pixel(chosen, QPoint(2, 2)), chosen.palette().color(QPalette::Highlight));
        EXPECT_EQ(isDark(pixel(*type.itemWithTag(1)->defaultWidget(), QPoint(2, 2))), dark);
    }
    panel.setStrokeColor(Qt::blue);
    EXPECT_EQ(pixel(control("cwStrokeColor"), QPoint(15, 15)), QColor(Qt::blue));
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

TEST_F(GraphConfig, ForgetsADelegateThatDies)
{
    {
        Recorder shortLived;
        panel.setDelegate(&shortLived);
    }
    EXPECT_EQ(panel.delegate(), nullptr);
    click("btnDelete");
}

TEST(GraphConfigFile, ItemsWithoutAPictureAreDrawnAndUnusableTagsLeftOut)
{
    LogSpy log;
    QZPopUpButton popUp;
    popUp.setItemTags({QStringLiteral("11"), QStringLiteral("x"), QStringLiteral("-1"), {}});
    EXPECT_EQ(popUp.itemTags(), QStringList(QStringLiteral("11")));
    EXPECT_EQ(log.lines.size(), 3);
    popUp.itemWithTag(11)->setSamplePen(QPen(Qt::red, 12));
    popUp.itemWithTag(11)->setHighlightImageName(QStringLiteral("no such picture"));
    popUp.itemWithTag(11)->loadImages();
    popUp.selectItemWithTag(11);
    popUp.resize(52, 30);
    EXPECT_EQ(pixel(popUp, QPoint(26, 15)), popUp.palette().color(QPalette::ButtonText));
    EXPECT_EQ(pixel(popUp, QPoint(26, 24)), popUp.palette().color(QPalette::Window));
}

TEST(GraphConfigFile, AHostsFileMayLeaveControlsOutOrBeUnusable)
{
    struct Row {
        const char* name;
        QByteArray file;
        int width;
        int logLines; // a missing control each, or the file
    };
    const QByteArray part = "<ui version='4.0'><widget class='QWidget' name='w'><widget class='QPushButton' "
                            "name='btnDelete'><property name='geometry'><rect><x>0</x><y>0</y><width>44</width>"
                            "<height>20</height></rect></property></widget></widget></ui>";
    LogSpy log;
    for (const Row& row : {Row{"one control", part, 45, 8}, {"no panel of that name", {}, 1, 1}}) {
        SCOPED_TRACE(row.name);
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("HostStrip.ui")));
        ASSERT_TRUE(row.file.isEmpty() || (file.open(QIODevice::WriteOnly) && file.write(row.file) > 0));
        file.close();
        QZInterfaceLoader::setHostFolder(folder.path());
        log.lines.clear();
        QZPaintGraphConfigWC panel(QStringLiteral("HostStrip"));
        EXPECT_EQ(log.lines.size(), row.logLines) << log.lines.join(u'\n').toStdString();
        panel.setEnabledConfigs(64);
        EXPECT_EQ(panel.window().width(), row.width);
        panel.setFillColor(Qt::red);
        panel.setLineWidth(7);
        panel.setIsLocked(true);
        EXPECT_EQ(panel.fillColor(), QColor(Qt::red));
        EXPECT_EQ(panel.lineWidth(), 7.0);
        EXPECT_TRUE(panel.isLocked());
    }
    QZInterfaceLoader::setHostFolder({});
}
