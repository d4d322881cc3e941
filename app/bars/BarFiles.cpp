#include "app/bars/BarFiles.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSet>

#include <algorithm>

QStringList barFilePatterns()
{
    return {QStringLiteral("*.csv"), QStringLiteral("*.tsv"), QStringLiteral("*.txt")};
}

QStringList barFiles(const QStringList& paths)
{
    // The C locale has no collation.
    QCollator byName(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale());
    byName.setNumericMode(true);
    QStringList files;
    QSet<QString> seen;
    const auto add = [&](const QString& file) {
        const QString place = QFileInfo(file).canonicalFilePath(); // empty where there is none
        if (!place.isEmpty() && seen.contains(place))
            return;
        seen.insert(place);
        files << file;
    };
    for (const QString& path : paths) {
        if (!QFileInfo(path).isDir()) {
            add(path);
            continue;
        }
        const QDir folder(path);
        QStringList names = folder.entryList(barFilePatterns(), QDir::Files);
        std::ranges::sort(
            names, [&byName](const QString& left, const QString& right) { return byName.compare(left, right) < 0; });
        for (const QString& name : names)
            add(folder.filePath(name));
    }
    return files;
}
