#include "platform/QZAlert.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGetFixData.h"
#include "platform/QZGlobalEnv.h"
#include "support/Spies.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

TEST(GetFixData, WritesCompactNumbers)
{
    QStringList texts;
    for (const double value : {1234.5, -0.001, 1e4, 9999.996, 9999.994, -2.5e6, 99999999.0, 1.5e13, std::nan("")})
        texts << QZGetFixData(value, 0);
    for (const auto& [value, option] : {std::pair{12345.0, 1}, {9999.96, 1}, {12345.0, -3}, {0.5, 9}, {0.5, 10}})
        texts << QZGetFixData(value, option);
    EXPECT_EQ(texts.join(u' '), u"1234.50 0.00 1.00万 1.00万 9999.99 -250.00万 1.00亿 150000.00亿 -- "
                                "1.2万 1.0万 1.23万 0.500000000 0.50"_s);
}

TEST(Files, LieInTheUsersOwnFolderAndInTheHostsBeforeTheLibrarys)
{
    const QTemporaryDir root;
    const QString before = QZFrameComFun::setRootFolder(root.path());
    const auto pathFor = [](const QString& user, bool isNeedWrite) {
        QZGlobalEnv::getShareInstance().setLoginUser(user);
        return QZFrameComFun::getUserAccountFilePath(u"f.db"_s, isNeedWrite);
    };
    const QString accounts = root.filePath(u"accounts"_s);
    EXPECT_EQ(pathFor(u"ann_b-2"_s, false), accounts + u"/ann_b-2/f.db"_s);
    EXPECT_FALSE(QDir(accounts).exists()) << "reading creates nothing";
    QStringList users = u"%none,.,..,../../x,/etc,a/b,a\\b,a b,bob,Bob,%42ob,用户,con,"_s.split(u',');
    for (const auto& [length, letter] :
         {std::pair{1, u'\xd800'}, {1, u'\xd801'}, {1, u'\0'}, {300, u'户'}, {500, u'x'}, {501, u'x'}})
        users << QString(length, letter);
    QSet<QString> folders;
    for (const QString& user : users) {
        SCOPED_TRACE(user.toStdString());
        const QString folder = QFileInfo(pathFor(user, true)).path();
        EXPECT_EQ(QFileInfo(QDir::cleanPath(folder)).path(), accounts);
        EXPECT_TRUE(QDir(folder).exists());
        folders.insert(folder.toLower());
    }
    EXPECT_EQ(folders.size(), users.size());
    QZGlobalEnv::getShareInstance().setLoginUser({});

    const auto path = [](bool write) { return QZFrameComFun::getStorageFilePath(1, {}, u"p"_s, write); };
    EXPECT_EQ(path(false), u":/qz/storage/p"_s);
    QFile file(path(true));
    EXPECT_EQ(file.fileName(), root.filePath(u"storage/p"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(path(false), file.fileName());
    QZFrameComFun::setRootFolder(before);
}

TEST(Alert, AnswersAButtonOfTheRequest)
{
    const QZAlertRequest request{u"Delete all?"_s, {u"No"_s, u"Yes"_s}};
    QList<int> answers;
    for (const int pressed : {1001, 1002, 999}) {
        QZAlert::setRunner([=](const QZAlertRequest&) { return pressed; });
        answers << QZAlert::run(request);
    }
    QZAlert::setRunner({});
    const LogSpy log;
    answers << QZAlert::run(request);
    EXPECT_EQ(answers, (QList<int>{1001, 1000, 1000, 1000}));
    EXPECT_EQ(log.lines.size(), 1) << "nobody could be asked";
}

TEST(NotificationCenter, KeepsItsPromisesWhileAPostIsUnderWay)
{
    QZNotificationCenter center;
    QString heard;
    QZObservation self;
    QZObservation victim;
    QZObservation late;
    const auto shared = std::make_shared<QString>(u"a"_s);
    self = center.observe(u"topic"_s, [&, shared](const QZNotification&) {
        self.reset(); // the handler goes on living until it returns
        victim.reset();
        late = center.observe(u"topic"_s, [&](const QZNotification&) { heard += u'l'; });
        heard += *shared;
    });
    victim = center.observe(u"topic"_s, [&](const QZNotification&) { heard += u'v'; });
    center.post(u"topic"_s);
    EXPECT_EQ(heard, u"a"_s) << "a removed observer is not called, nor one added meanwhile";
    EXPECT_EQ(shared.use_count(), 1) << "a dropped handler must let go of what it captured";
    center.post(u"topic"_s);
    EXPECT_EQ(heard, u"al"_s);
}
