#include "platform/QZNotificationCenter.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

const QString topic = QStringLiteral("topic");

struct Sender : QZNotificationObject {};

} // namespace

TEST(NotificationCenter, TellsObserversOfThatNameInOrderUntilTheTokenGoes)
{
    QZNotificationCenter center;
    QString heard;
    Sender sender;
    const auto first = center.observe(topic, [&](const QZNotification& note) {
        EXPECT_EQ(dynamic_cast<Sender*>(note.object), &sender);
        heard += QLatin1Char('1') + note.userInfo.value(QStringLiteral("x")).toString();
    });
    const auto other = center.observe({}, [&](const QZNotification&) { heard += u'?'; });
    {
        auto second = center.observe(topic, [&](const QZNotification&) { heard += u'2'; });
        const QZObservation moved = std::move(second);
        center.post(topic, &sender, {{QStringLiteral("x"), 7}});
        EXPECT_EQ(heard, QStringLiteral("172"));
    }
    center.post(topic, &sender);
    EXPECT_EQ(heard, QStringLiteral("1721"));
}

TEST(NotificationCenter, KeepsItsPromisesWhileAPostIsUnderWay)
{
    QZNotificationCenter center;
    QString heard;
    QZObservation self;
    QZObservation victim;
    QZObservation late;
    const auto shared = std::make_shared<QString>(QStringLiteral("a"));
    self = center.observe(topic, [&, shared](const QZNotification&) {
        self.reset(); // the handler goes on living until it returns
        victim.reset();
        late = center.observe(topic, [&](const QZNotification&) { heard += u'l'; });
        heard += *shared;
    });
    victim = center.observe(topic, [&](const QZNotification&) { heard += u'v'; });
    center.post(topic);
    EXPECT_EQ(heard, QStringLiteral("a")) << "a removed observer is not called, nor one added meanwhile";
    EXPECT_EQ(shared.use_count(), 1) << "a dropped handler must let go of what it captured";
    center.post(topic);
    EXPECT_EQ(heard, QStringLiteral("al"));
}

TEST(NotificationCenter, ATokenMayBeReplacedAndMayOutliveTheCentre)
{
    QString heard;
    QZObservation token;
    {
        QZNotificationCenter center;
        token = center.observe(topic, [&](const QZNotification&) { heard += u'o'; });
        token = center.observe(topic, [&](const QZNotification&) { heard += u'n'; });
        center.post(topic);
    }
    token.reset();
    EXPECT_EQ(heard, QStringLiteral("n"));
}
