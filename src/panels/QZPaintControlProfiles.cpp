#include "panels/QZPaintControlProfiles.h"

#include "model/QZDrawingTypes.h"
#include "platform/QZLog.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <memory>
#include <optional>
#include <plist/plist++.h>
#include <string>

namespace {

// A profile file needs one and one more for each profile. libplist walks nested ones recursively, so that their number
// bounds the stack that it takes.
constexpr qsizetype maxContainers = 256;

/// Some editors put it in front of UTF-8; the parser takes it for text outside the document.
constexpr QByteArrayView byteOrderMark("\xef\xbb\xbf");

void logUnusable(const QString& path, const QString& reason)
{
    writeBusCommonLog(QStringLiteral("Read tool profiles %1 failed: %2").arg(path, reason));
}

/// The file's bytes; null, with the reason in `problem`, when it is not to be read.
QByteArray readSmallFile(const QString& path, QString& problem)
{
    const QFileInfo info(path);
    QFile file(path);
    if (!info.exists())
        problem = QStringLiteral("there is no such file");
    else if (!info.isFile())
        problem = QStringLiteral("it is not a file");
    else if (info.size() > QZPaintControlProfiles::maxFileSize)
        problem = QStringLiteral("it is larger than %1 bytes").arg(QZPaintControlProfiles::maxFileSize);
    else if (!file.open(QIODevice::ReadOnly))
        problem = file.errorString();
    return problem.isEmpty() ? file.read(QZPaintControlProfiles::maxFileSize) : QByteArray();
}

/// Whether the first element of the document, the plist element apart, is a dictionary.
bool hasDictionaryRoot(const QByteArray& xml)
{
    qsizetype at = xml.indexOf('<');
    while (at >= 0) {
        const auto tag = QByteArrayView(xml).sliced(at);
        if (!tag.startsWith("<?") && !tag.startsWith("<!") && !tag.startsWith("<plist"))
            return tag.startsWith("<dict");
        const qsizetype end = tag.startsWith("<!--") ? xml.indexOf("-->", at) : xml.indexOf('>', at);
        at = end < 0 ? end : xml.indexOf('<', end);
    }
    return false;
}

/// Null, with the reason in `problem`, when the bytes are no property list of a dictionary.
std::unique_ptr<PList::Structure> parse(const QByteArray& bytes, QString& problem)
{
    if (bytes.startsWith("bplist")) {
        problem = QStringLiteral("it is a binary property list, only XML is read");
        return nullptr;
    }
    if (bytes.count("<dict") + bytes.count("<array") > maxContainers) {
        problem = QStringLiteral("it holds more than %1 dictionaries and arrays").arg(maxContainers);
        return nullptr;
    }
    // libplist++ loses the memory of a root that is neither dictionary nor array: such a file is not given to it.
    if (!hasDictionaryRoot(bytes)) {
        problem = QStringLiteral("its root is not a dictionary");
        return nullptr;
    }
    std::unique_ptr<PList::Structure> root(PList::Structure::FromXml(bytes.toStdString()));
    if (!root)
        problem = QStringLiteral("it is not a well-formed property list");
    return root;
}

/// What a boolean or a number says, as a property list's number reads as a boolean: false for 0. Nothing for the rest.
std::optional<bool> truthOf(const PList::Node* node)
{
    if (const auto* truth = dynamic_cast<const PList::Boolean*>(node))
        return truth->GetValue();
    if (const auto* whole = dynamic_cast<const PList::Integer*>(node))
        return whole->GetValue() != 0;
    if (const auto* real = dynamic_cast<const PList::Real*>(node))
        return real->GetValue() != 0.0;
    return std::nullopt;
}

/// `profile` stays the caller's.
std::uint64_t maskOf(PList::Dictionary& profile, const QString& key, const QString& path)
{
    std::uint64_t mask = QZAllEnabledTypes;
    for (auto entry = profile.Begin(); entry != profile.End(); ++entry) {
        const QString name = QString::fromStdString(entry->first);
        const std::optional<bool> enabled = truthOf(entry->second);
        const QZShapeType type = enumQZShapeType(name);
        if (!enabled)
            logUnusable(path, QStringLiteral("%1 of %2 is neither a boolean nor a number").arg(name, key));
        else if (type == QZShapeTypeNone)
            logUnusable(path, QStringLiteral("%1 of %2 is not a tool").arg(name, key));
        else if (!*enabled)
            mask &= ~static_cast<std::uint64_t>(type);
    }
    return mask;
}

} // namespace

QZPaintControlProfiles QZPaintControlProfiles::readFile(const QString& path)
{
    QZPaintControlProfiles profiles;
    QString problem;
    QByteArray bytes = readSmallFile(path, problem);
    if (bytes.startsWith(byteOrderMark))
        bytes.remove(0, byteOrderMark.size());
    const std::unique_ptr<PList::Structure> root = problem.isEmpty() ? parse(bytes, problem) : nullptr;
    auto* rows = dynamic_cast<PList::Dictionary*>(root.get());
    if (rows == nullptr) {
        logUnusable(path, problem);
        return profiles;
    }
    for (auto row = rows->Begin(); row != rows->End(); ++row) {
        const QString key = QString::fromStdString(row->first);
        if (auto* profile = dynamic_cast<PList::Dictionary*>(row->second))
            profiles.masks_.insert(key, maskOf(*profile, key, path));
        else
            logUnusable(path, QStringLiteral("%1 is not a dictionary").arg(key));
    }
    return profiles;
}

std::uint64_t QZPaintControlProfiles::enableTypes(const QString& key) const
{
    return masks_.value(key, QZAllEnabledTypes);
}
