#pragma once

#include <QString>

/// Where the application keeps its files, under one root folder:
///
///     root/accounts/<login user>/   files of one user
///     root/storage/                 files that the host ships or replaces for all users
class QZFrameComFun {
public:
    /// Storage kind of the application's own, read-only files.
    static constexpr int applicationStorage = 1;

    /// Full path of `fileName` in the login user's folder. The user's name is escaped: no name leads out of the
    /// accounts folder, and two names never share a folder, not even on a file system that ignores case. With
    /// `isNeedWrite` the folder is created; when that fails the log says so and the path is returned all the same.
    static QString getUserAccountFilePath(const QString& fileName, bool isNeedWrite);

    /// Full path of a file of `storageKind` (only applicationStorage is known; null with a line in the log otherwise).
    /// For reading: the file below root/storage if it exists there, else the one that the library brings along,
    /// ":/qz/storage/<fileName>". With `isNeedWrite` always the one below root/storage, its folder created.
    static QString getStorageFilePath(int storageKind, const QString& subFolderPath, const QString& fileName,
                                      bool isNeedWrite);

    /// Sets the root folder and returns the one set before; an empty text stands for QStandardPaths::AppDataLocation.
    static QString setRootFolder(const QString& folder);
};
