#include "platform/QZGlobalEnv.h"

#include "platform/QZLog.h"
#include "platform/QZNotificationCenter.h"

namespace {

QString shippedThemePath(const QString& name)
{
    return QStringLiteral(":/qz/themes/%1.json").arg(name);
}

} // namespace

QZGlobalEnv::QZGlobalEnv()
{
    loadTheme(shippedThemePath(QStringLiteral("light")));
}

QZGlobalEnv& QZGlobalEnv::getShareInstance()
{
    static QZGlobalEnv environment;
    return environment;
}

void QZGlobalEnv::setGlobalContext(const QString& key, const QString& subKey, const QVariant& contextData)
{
    if (contextData.isValid()) {
        context_.insert({key, subKey}, contextData);
    } else {
        context_.remove({key, subKey});
    }
}

QVariant QZGlobalEnv::globalContext(const QString& key, const QString& subKey) const
{
    return context_.value({key, subKey});
}

void QZGlobalEnv::setLoginUser(const QString& user)
{
    if (user == loginUser_)
        return;
    QZNotificationCenter::defaultCenter().post(QZLoginUserWillChangeNotification);
    loginUser_ = user;
    QZNotificationCenter::defaultCenter().post(QZUserNameChangedNotification);
}

bool QZGlobalEnv::setTheme(const QString& name)
{
    return setThemeFile(shippedThemePath(name));
}

bool QZGlobalEnv::setThemeFile(const QString& jsonPath)
{
    if (!loadTheme(jsonPath))
        return false;
    QZNotificationCenter::defaultCenter().post(QZUIOverallStyleDidChangeNotification);
    return true;
}

bool QZGlobalEnv::loadTheme(const QString& jsonPath)
{
    QString error;
    if (!palette_.loadTheme(jsonPath, &error)) {
        writeBusCommonLog(QStringLiteral("Load theme failed! %1").arg(error));
        return false;
    }
    return true;
}
