#include "panels/QZMessageBoxAlert.h"
#include "platform/QZAlert.h"
#include "support/widgets/Keyboard.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

TEST(MessageBox, AnswersWithThePressedButtonElseWithTheHarmlessOne)
{
    const QZAlert::Runner before = QZAlert::setRunner({});
    installMessageBoxAlert();
    for (const auto& [act, answer] :
         {std::pair{"yes", 1001}, {"no", 1000}, {"Return", 1000}, {"Escape", 1000}, {"close", 1000}}) {
        SCOPED_TRACE(act);
        QPointer<QWidget> window = new QWidget;
        window->show();
        window->activateWindow();
        ASSERT_TRUE(getsKeyboard(window));
        bool asked = false;
        QTimer::singleShot(0, window, [name = QLatin1String(act), &window, &asked] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            asked = box->text() == QStringLiteral("Really?") && box->icon() == QMessageBox::Warning;
            const auto buttons = box->buttons();
            const auto named =
                std::ranges::find_if(buttons, [name](const auto* button) { return button->text() == name; });
            if (named != buttons.end())
                (*named)->click();
            else if (name == QLatin1String("close"))
                delete window; // the box's own window
            else
                QTest::keyClick(box, name == QLatin1String("Return") ? Qt::Key_Return : Qt::Key_Escape);
        });
        EXPECT_EQ(QZAlert::run({QStringLiteral("Really?"), {QStringLiteral("no"), QStringLiteral("yes")}}), answer);
        EXPECT_TRUE(asked);
        delete window;
    }
    QZAlert::setRunner(before);
}
