#include "panels/QZPaintTextConfigWC.h"
#include "platform/QZFont.h"
#include "support/widgets/Keyboard.h"

#include <QColorDialog>
#include <QInputMethodEvent>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <utility>

namespace {

struct Recorder final : QZPaintTextConfigWCDelegate {
    using Panel = QZPaintTextConfigWC;
    QStringList messages;
    int fieldHeight = 0; ///< when the size was told

    void paintTextConfigTextDidChange(Panel&, const QString& t) override { messages << QStringLiteral("text ") + t; }
    void paintTextConfigColorDidChange(Panel&, const QColor& c) override
    {
        messages << QStringLiteral("color ") + c.name();
    }
    void paintTextConfigSizeDidChange(Panel& panel, std::int64_t size) override
    {
        messages << QStringLiteral("size %1").arg(size);
        fieldHeight = panel.window().findChild<QZPaintTextField*>()->height();
    }

    QStringList taken() { return std::exchange(messages, {}); }
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

    QWidget chart;
    Recorder delegate;
    QZPaintTextConfigWC editor{QStringLiteral("QZPaintTextConfigWC")};
    QZPaintTextField& field = *editor.window().findChild<QZPaintTextField*>(QStringLiteral("txtText"));
    QComboBox& sizes = *editor.window().findChild<QComboBox*>(QStringLiteral("popSize"));
};

} // namespace

TEST_F(TextConfig, ShowsANoteWithoutTellingAnybody)
{
    EXPECT_EQ(editor.text(), QStringLiteral("新建"));
    EXPECT_EQ(editor.window().pos(), QPoint(30, 40));
    EXPECT_TRUE(field.hasFocus());
    editor.setText(QStringLiteral("top\nof the wave"));
    editor.setColor(Qt::red);
    editor.setSize(20);
    EXPECT_EQ(editor.text(), QStringLiteral("top\nof the wave"));
    EXPECT_EQ(editor.color(), QColor(Qt::red));
    EXPECT_EQ(field.palette().color(QPalette::Text), QColor(Qt::red));
    EXPECT_EQ(editor.size(), 20);
    EXPECT_EQ(field.font().pixelSize(), 20);
    editor.setSize(13);
    EXPECT_EQ(editor.size(), 0) << "not on the menu";
    EXPECT_EQ(field.font().pixelSize(), 13);
    EXPECT_EQ(delegate.taken(), QStringList());
    EXPECT_EQ(sizes.itemText(0), QStringLiteral("8"));
    EXPECT_EQ(sizes.itemText(sizes.count() - 1), QStringLiteral("72"));
    EXPECT_GE(sizes.findData(12), 0);
}

TEST_F(TextConfig, TellsEveryKeystrokeAndGrowsWithItsLines)
{
    field.selectAll();
    QTest::keyClicks(&field, QStringLiteral("ab"));
    EXPECT_EQ(delegate.taken(), (QStringList{QStringLiteral("text a"), QStringLiteral("text ab")}));
    const int oneLine = field.height();
    const int window = editor.window().height();
    QTest::keyClick(&field, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(delegate.taken(), QStringList{QStringLiteral("text ab\n")});
    const int lineHeight = qRound(measureText(QStringLiteral("a"), field.font()).height);
    EXPECT_NEAR(field.height(), oneLine + lineHeight, 1);
    EXPECT_EQ(editor.window().height() - window, field.height() - oneLine);
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(field.height(), oneLine);

    // What an input method composes is told when it is committed.
    delegate.messages.clear();
    QInputMethodEvent composing(QStringLiteral("zhang"), {});
    QCoreApplication::sendEvent(&field, &composing);
    EXPECT_EQ(delegate.taken(), QStringList());
    QInputMethodEvent committed;
    committed.setCommitString(QStringLiteral("涨📈"));
    QCoreApplication::sendEvent(&field, &committed);
    EXPECT_EQ(delegate.taken(), QStringList{QStringLiteral("text ab涨📈")});
}

TEST_F(TextConfig, ReturnAndEscapeEndTheEdit)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        editor.orderFront(chart, {30, 40});
        ASSERT_TRUE(getsKeyboard(&editor.window()));
        QTest::keyClick(&field, key);
        EXPECT_FALSE(editor.window().isVisible());
        EXPECT_TRUE(getsKeyboard(&chart)) << key;
    }
    EXPECT_EQ(delegate.taken(), QStringList());
}

TEST_F(TextConfig, ColourAndSizeAreToldAndShown)
{
    const int height = field.height();
    sizes.setCurrentIndex(sizes.findData(48));
    Q_EMIT sizes.activated(sizes.currentIndex());
    EXPECT_EQ(delegate.taken(), QStringList{QStringLiteral("size 48")});
    EXPECT_EQ(delegate.fieldHeight, height) << "told before the field grows";
    EXPECT_GT(field.height(), height);
    EXPECT_EQ(field.font().pixelSize(), 48);

    QTest::mouseClick(editor.window().findChild<QAbstractButton*>(QStringLiteral("cwColor")), Qt::LeftButton);
    auto* picker = editor.window().findChild<QColorDialog*>();
    ASSERT_NE(picker, nullptr);
    picker->setCurrentColor(Qt::blue);
    EXPECT_EQ(delegate.taken(), QStringList{QStringLiteral("color #0000ff")});
    EXPECT_EQ(field.palette().color(QPalette::Text), QColor(Qt::blue));
    editor.window().close();
    EXPECT_FALSE(picker->isVisible()) << "goes with the editor";
}

TEST_F(TextConfig, ForgetsADelegateThatDies)
{
    {
        Recorder brief;
        editor.setDelegate(&brief);
    }
    EXPECT_EQ(editor.delegate(), nullptr);
    QTest::keyClicks(&field, QStringLiteral("x"));
}
