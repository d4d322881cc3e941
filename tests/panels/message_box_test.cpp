#include "panels/QZMessageBoxAlert.h"
#include "platform/QZAlert.h"
#include "support/widgets/Keyboard.h"

#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

TEST(MessageBox, AnswersWithThePressedButtonElseWithTheHarmlessOne)
{
    const QZAlert::Runner before = QZAlert::setRunner({});
    installMessageBoxAlert();
    for (const auto& [keys, answer] : {std::pair{QList{Qt::Key_Tab, Qt::Key_Space}, 1001},
                                       {{Qt::Key_Return}, 1000},
                                       {{Qt::Key_Escape}, 1000},
                                       {{}, 1000}}) { // the box goes with its window
        auto window = std::make_unique<QWidget>();
        window->show();
        window->activateWindow();
        ASSERT_TRUE(getsKeyboard(window.get()));
        QString asked;
        QTimer timer;
        timer.setSingleShot(true);
        timer.callOnTimeout([&, pressed = keys] {
            const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            asked = box->text() + QString::number(box->icon());
            for (const Qt::Key key : pressed)
                QTest::keyClick(box->windowHandle(), key);
            if (pressed.isEmpty())
                window.reset();
        });
        timer.start(0);
        EXPECT_EQ(QZAlert::run({u"Really?"_s, {u"no"_s, u"yes"_s}}), answer);
        EXPECT_EQ(asked, u"Really?%1"_s.arg(QMessageBox::Warning));
    }
    QZAlert::setRunner(before);
}
