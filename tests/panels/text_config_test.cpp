#include "panels/QZPaintTextConfigWC.h"
#include "platform/QZFont.h"
#include "support/widgets/Keyboard.h"

#include <QColorDialog>
#include <QInputMethodEvent>
#include <QScrollBar>

#include <gtest/gtest.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct Recorder final : QZPaintTextConfigWCDelegate {
    using Panel = QZPaintTextConfigWC;
    QStringList messages;

    void paintTextConfigTextDidChange(Panel&, const QString& t) override { messages << u"text "_s + t; }
    void paintTextConfigColorDidChange(Panel&, const QColor& c) override { messages << u"color "_s + c.name(); }
    void paintTextConfigSizeDidChange(Panel& panel, std::int64_t size) override
    {
        const int height = panel.window().findChild<QZPaintTextField*>()->height();
        messages << u"size %1 in %2"_s.arg(size).arg(height);
    }

    QString taken() { return std::exchange(messages, {}).join(u'|'); }
};

class TextConfig : public ::testing::Test {
protected:
    void SetUp() override
    {
        editor.setDelegate(&delegate);
        chart.show();
        editor.orderFront(chart, {30, 40});
        ASSERT_TRUE(getsKeyboard(&editor.window()));
    }

    QString shown()
    {
        const QString color = field.palette().color(QPalette::Text).name();
        return u"%1, %2, %3, %4 px"_s.arg(editor.text(), color).arg(editor.size()).arg(field.font().pixelSize());
    }

    QWidget chart;
    Recorder delegate;
    QZPaintTextConfigWC editor{u"QZPaintTextConfigWC"_s};
    QZPaintTextField& field = *editor.window().findChild<QZPaintTextField*>(u"txtText"_s);
    QComboBox& sizes = *editor.window().findChild<QComboBox*>(u"popSize"_s);
};

} // namespace

TEST_F(TextConfig, ShowsANoteWithoutTellingAnybody)
{
    EXPECT_TRUE(shown().startsWith(u"新建, ") && shown().endsWith(u", 12, 12 px"));
    EXPECT_EQ(editor.window().pos(), QPoint(30, 40));
    EXPECT_TRUE(field.hasFocus());
    editor.setText(u"top\nof the wave"_s);
    editor.setColor(Qt::red);
    editor.setSize(20);
    EXPECT_EQ(shown(), u"top\nof the wave, #ff0000, 20, 20 px"_s);
    editor.setSize(13);
    EXPECT_EQ(shown(), u"top\nof the wave, #ff0000, 0, 13 px"_s) << "not on the menu";
    EXPECT_EQ(editor.color(), QColor(Qt::red));
    EXPECT_EQ(delegate.taken(), QString());
    EXPECT_EQ(sizes.itemText(0) + u" to "_s + sizes.itemText(sizes.count() - 1), u"8 to 72"_s);
}

TEST_F(TextConfig, TellsEveryKeystrokeGrowsWithItsLinesAndEndsTheEdit)
{
    field.selectAll();
    QTest::keyClicks(&field, u"ab"_s);
    EXPECT_EQ(delegate.taken(), u"text a|text ab"_s);
    const int oneLine = field.height();
    const int window = editor.window().height();
    QTest::keyClick(&field, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(delegate.taken(), u"text ab\n"_s);
    const int lineHeight = qRound(measureText(u"a"_s, field.font()).height);
    EXPECT_NEAR(field.height(), oneLine + lineHeight, 1);
    EXPECT_EQ(field.verticalScrollBar()->maximum(), 0) << "all of it shows";
    EXPECT_EQ(editor.window().height() - window, field.height() - oneLine);
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(field.height(), oneLine);
    QInputMethodEvent composing(u"zhang"_s, {});
    QCoreApplication::sendEvent(&field, &composing);
    EXPECT_EQ(delegate.taken(), u"text ab"_s) << "not what is still being composed";
    QInputMethodEvent committed;
    committed.setCommitString(u"涨📈"_s);
    QCoreApplication::sendEvent(&field, &committed);
    EXPECT_EQ(delegate.taken(), u"text ab涨📈"_s);

    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        editor.orderFront(chart, {30, 40});
        ASSERT_TRUE(getsKeyboard(&editor.window()));
        QTest::keyClick(&field, key);
        EXPECT_FALSE(editor.window().isVisible());
        EXPECT_TRUE(getsKeyboard(&chart)) << key;
    }
    EXPECT_EQ(delegate.taken(), QString());
}

TEST_F(TextConfig, ColourAndSizeAreToldAndShownUntilTheDelegateDies)
{
    const int height = field.height();
    sizes.setCurrentIndex(sizes.findData(48));
    Q_EMIT sizes.activated(sizes.currentIndex());
    EXPECT_EQ(delegate.taken(), u"size 48 in %1"_s.arg(height)) << "told before the field grows";
    EXPECT_GT(field.height(), height);
    QTest::mouseClick(editor.window().findChild<QAbstractButton*>(u"cwColor"_s), Qt::LeftButton);
    auto* picker = editor.window().findChild<QColorDialog*>();
    ASSERT_NE(picker, nullptr);
    picker->setCurrentColor(Qt::blue);
    EXPECT_EQ(delegate.taken(), u"color #0000ff"_s);
    EXPECT_EQ(shown(), u"新建, #0000ff, 48, 48 px"_s);
    editor.window().resize(editor.window().size() + QSize(0, 10));
    EXPECT_TRUE(picker->isVisible());
    editor.window().close();
    EXPECT_FALSE(picker->isVisible()) << "goes with the editor";

    {
        Recorder brief;
        editor.setDelegate(&brief);
    }
    EXPECT_EQ(editor.delegate(), nullptr);
    QTest::keyClicks(&field, u"x"_s);
}
