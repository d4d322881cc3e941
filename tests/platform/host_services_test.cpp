#include "platform/QZAlert.h"
#include "platform/QZFrameComFun.h"
#include "platform/QZGetFixData.h"
#include "platform/QZGlobalEnv.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

TEST(GetFixData, WritesCompactNumbers)
{
    struct Row {
        double value;
        int option;
        const char16_t* text;
    };
    for (const Row& row :
         {Row{1234.5, 0, u"1234.50"}, Row{-0.001, 0, u"0.00"}, Row{1e4, 0, u"1.00万"}, Row{9999.996, 0, u"1.00万"},
          Row{9999.994, 0, u"9999.99"}, Row{-2.5e6, 0, u"-250.00万"}, Row{99999999, 0, u"1.00亿"},
          Row{1.5e13, 0, u"150000.00亿"}, Row{12345, 1, u"1.2万"}, Row{9999.96, 1, u"1.0万"}, Row{12345, -3, u"1.23万"},
          Row{-std::numeric_limits<double>::infinity(), 0, u"--"}, Row{std::nan(""), 0, u"--"}})
        EXPECT_EQ(QZGetFixData(row.value, row.option), QString::fromUtf16(row.text)) << row.value;
}

class Files : public testing::Test {
protected:
    void SetUp() override { QZFrameComFun::setRootFolder(root_.path()); }
    void TearDown() override
    {
        QZGlobalEnv::getShareInstance().setLoginUser({});
        QZFrameComFun::setRootFolder({});
    }

    static QString pathFor(const QString& user, bool isNeedWrite)
    {
        QZGlobalEnv::getShareInstance().setLoginUser(user);
        return QZFrameComFun::getUserAccountFilePath(QStringLiteral("f.db"), isNeedWrite);
    }

    QTemporaryDir root_;
};

TEST_F(Files, EveryUserHasAFolderOfHisOwnInsideTheAccountsFolder)
{
    const QString accounts = root_.filePath(QStringLiteral("accounts"));
    EXPECT_EQ(pathFor(QStringLiteral("ann_b-2"), false), accounts + QStringLiteral("/ann_b-2/f.db"));
    EXPECT_FALSE(QDir(accounts).exists()) << "reading creates nothing";
    QStringList users = QStringLiteral("%none,.,..,../../x,/etc,a/b,a\\b,a b,bob,Bob,%42ob,用户,con,").split(u',');
    users << QString(QChar(0xd800)) << QString(QChar(0xd801)) << QString(QChar(u'\0')) << QString(300, u'户')
          << QString(500, u'x') << QString(501, u'x');
    QSet<QString> folders;
    for (const QString& user : users) {
        SCOPED_TRACE(user.toStdString());
        const QString folder = QFileInfo(pathFor(user, true)).path();
        EXPECT_EQ(QFileInfo(QDir::cleanPath(folder)).path(), accounts);
        EXPECT_TRUE(QDir(folder).exists());
        folders.insert(folder.toLower());
    }
    EXPECT_EQ(folders.size(), users.size());
}

TEST_F(Files, AStorageFileOfTheHostComesBeforeTheLibrarys)
{
    const auto path = [](bool write) { return QZFrameComFun::getStorageFilePath(1, {}, QStringLiteral("p"), write); };
    EXPECT_EQ(path(false), QStringLiteral(":/qz/storage/p"));
    QFile file(path(true));
    EXPECT_EQ(file.fileName(), root_.filePath(QStringLiteral("storage/p")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(path(false), file.fileName());
}

TEST(Alert, AnswersAButtonOfTheRequest)
{
    const QZAlertRequest request{QStringLiteral("Delete all?"), {QStringLiteral("No"), QStringLiteral("Yes")}};
    int answer = 1001;
    const QZAlert::Runner previous = QZAlert::setRunner([&](const QZAlertRequest&) { return answer; });
    EXPECT_EQ(QZAlert::run(request), 1001);
    answer = 1002;
    EXPECT_EQ(QZAlert::run(request), 1000);
    QZAlert::setRunner(previous);
}
