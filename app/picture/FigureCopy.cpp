#include "app/picture/FigureCopy.h"

#include "model/QZDrawingTypes.h"
#include "platform/QZFrameComFun.h"
#include "surface/QZGraphDatabase.h"

#include <QFileInfo>

namespace {

constexpr int readOnly = 1; // SQLite's flag

} // namespace

FigureCopy::~FigureCopy()
{
    if (isInPlace_)
        QZFrameComFun::setRootFolder(rootBefore_);
}

QString FigureCopy::take()
{
    if (!folder_.isValid())
        return folder_.errorString();
    const QString original = QZFrameComFun::getUserAccountFilePath(databaseFileName, false);
    rootBefore_ = QZFrameComFun::setRootFolder(folder_.path());
    isInPlace_ = true;
    if (!QFileInfo::exists(original))
        return {};
    // The file may be in use: its bytes alone could be those of half a transaction.
    const auto database = QZGraphDatabase::databaseWithPath(original);
    const QString copy = QZFrameComFun::getUserAccountFilePath(databaseFileName, true);
    hasFigures_ = database->openWithFlags(readOnly) && database->executeUpdate("VACUUM INTO ?", {copy.toStdString()});
    return hasFigures_ ? QString() : QStringLiteral("%1: %2").arg(original, database->lastErrorMessage());
}
