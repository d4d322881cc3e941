#include "platform/QZNotificationCenter.h"

#include <gtest/gtest.h>
#include <memory>

TEST(NotificationCenter, KeepsItsPromisesWhileAPostIsUnderWay)
{
    QZNotificationCenter center;
    QString heard;
    QZObservation self;
    QZObservation victim;
    QZObservation late;
    const auto shared = std::make_shared<QString>(QStringLiteral("a"));
    self = center.observe(QStringLiteral("topic"), [&, shared](const QZNotification&) {
        self.reset(); // the handler goes on living until it returns
        victim.reset();
        late = center.observe(QStringLiteral("topic"), [&](const QZNotification&) { heard += u'l'; });
        heard += *shared;
    });
    victim = center.observe(QStringLiteral("topic"), [&](const QZNotification&) { heard += u'v'; });
    center.post(QStringLiteral("topic"));
    EXPECT_EQ(heard, QStringLiteral("a")) << "a removed observer is not called, nor one added meanwhile";
    EXPECT_EQ(shared.use_count(), 1) << "a dropped handler must let go of what it captured";
    center.post(QStringLiteral("topic"));
    EXPECT_EQ(heard, QStringLiteral("al"));
}
