#include "platform/QZFrameComFun.h"

#include "platform/QZGlobalEnv.h"
#include "platform/QZLog.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <utility>

namespace {

constexpr qsizetype maxFolderName = 120; // characters; file systems stop at 255 bytes or a little earlier
constexpr qsizetype keptOfLongName = 40;

QString& customRoot()
{
    static QString folder;
    return folder;
}

QString rootFolder()
{
    return customRoot().isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) : customRoot();
}

QString percent(char byte)
{
    return QStringLiteral("%%1").arg(static_cast<uint>(static_cast<uchar>(byte)), 2, 16, QLatin1Char('0'));
}

bool isPlain(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte == '_' || byte == '-';
}

/// A folder name of the user's own. Small letters, digits, "_" and "-" stand for themselves, everything else is
/// percent-encoded: capitals too, which keeps "Bob" apart from "bob" where case is ignored. A "%" that two
/// hexadecimal digits do not follow never comes from a name, so it marks the forms that are not an encoding.
QString accountFolderName(const QString& user)
{
    if (user.isEmpty())
        return QStringLiteral("%none");
    static const QRegularExpression deviceName(QStringLiteral("^(con|prn|aux|nul|com[0-9]|lpt[0-9])$"));
    const bool isDeviceName = deviceName.match(user).hasMatch();
    QString name;
    for (const char byte : user.toUtf8()) {
        const bool plain = isPlain(byte) && !(isDeviceName && name.isEmpty());
        name += plain ? QString(QLatin1Char(byte)) : percent(byte);
    }
    // UTF-8 has no form for half a surrogate pair, so such names too are told apart by their hash.
    if (name.size() > maxFolderName || !user.isValidUtf16()) {
        const auto text = QByteArrayView(reinterpret_cast<const char*>(user.utf16()), user.size() * qsizetype(2));
        const QByteArray hash = QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex();
        name = name.left(keptOfLongName) + QStringLiteral("%~") + QLatin1String(hash);
    }
    return name;
}

QString withFolder(const QString& path, bool isNeedWrite)
{
    const QString folder = QFileInfo(path).path();
    if (isNeedWrite && !QDir().mkpath(folder))
        writeBusCommonLog(QStringLiteral("Create folder failed! %1").arg(folder));
    return path;
}

} // namespace

QString QZFrameComFun::getUserAccountFilePath(const QString& fileName, bool isNeedWrite)
{
    const QString user = accountFolderName(QZGlobalEnv::getShareInstance().loginUser());
    return withFolder(QStringLiteral("%1/accounts/%2/%3").arg(rootFolder(), user, fileName), isNeedWrite);
}

QString QZFrameComFun::getStorageFilePath(int storageKind, const QString& subFolderPath, const QString& fileName,
                                          bool isNeedWrite)
{
    if (storageKind != applicationStorage) {
        writeBusCommonLog(QStringLiteral("Unknown storage kind %1 for %2").arg(storageKind).arg(fileName));
        return {};
    }
    const QString path = QDir::cleanPath(QStringLiteral("%1/storage/%2/%3").arg(rootFolder(), subFolderPath, fileName));
    if (isNeedWrite || QFileInfo::exists(path))
        return withFolder(path, isNeedWrite);
    return QStringLiteral(":/qz/storage/%1").arg(fileName);
}

QString QZFrameComFun::setRootFolder(const QString& folder)
{
    return std::exchange(customRoot(), folder);
}
