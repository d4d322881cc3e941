#pragma once

#include <QHash>
#include <QString>

#include <cstdint>

/// The palette's profiles of enabled tools, by key, read from a property list: a dictionary of profiles, each one a
/// dictionary from shape type names to booleans, in which only what is false has an effect. A number is false if it is
/// 0.
///
/// Reading never fails. What cannot be used is left out, with a line in the log that names the file and the reason.
class QZPaintControlProfiles {
public:
    /// Largest file that is read (bytes); a larger one is no profile file.
    static constexpr qint64 maxFileSize = 256 * 1024;

    /// Reads an XML property list; the binary form is refused.
    static QZPaintControlProfiles readFile(const QString& path);

    /// The tools that the profile leaves, an OR of QZShapeType; all of QZAllEnabledTypes when there is no such profile.
    [[nodiscard]] std::uint64_t enableTypes(const QString& key) const;

private:
    QHash<QString, std::uint64_t> masks_;
};
