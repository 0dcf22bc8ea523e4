// SPDX-License-Identifier: GPL-3.0-or-later
// Files whose content must not be lost, whoever wrote it.
#pragma once

#include "effects/atomic_file.h"
#include "model/date.h"

namespace veltrix
{

/// Gives the content of a file a second name, beside it, and returns that path: "state.json"
/// becomes "state.<label>-2026-11-21T12-00-00Z.json", or "…Z-2.json" when that name is taken. The
/// name outlasts a power cut when this returns; throws FileError when it cannot be made to.
///
/// The two names share the content until a new file gets the old name, so this needs neither room
/// on the disk nor the right to read; where a file system has no such links, the content is copied.
QString keepUnderDatedName(const QString &path, QStringView label, Date now);

/// Remembers which content of a file may be overwritten: what was read from it or written to it
/// last, and no other.
class OverwriteGuard
{
public:
    explicit OverwriteGuard(QString path) : m_path(std::move(path)) {}

    /// What lies at the path.
    enum class Found {
        /// No file, and none was known.
        Nothing,
        /// The content that is known.
        Known,
        /// The file that was known is there no longer.
        Gone,
        /// A content that was neither read nor written here.
        Foreign,
    };

    /// What lies at the path now. Throws FileError when that cannot be told.
    [[nodiscard]] Found look() const;

    /// That content has been read and may be overwritten.
    void know(const FileIdentity &identity) { m_known = identity; }
    /// What was read or written last; none when whatever is there must be kept.
    [[nodiscard]] const std::optional<FileIdentity> &known() const { return m_known; }
    /// Whatever is there must be kept.
    void forget() { m_known.reset(); }

    /// Keeps what is there now under a dated name, as keepUnderDatedName() does; then it may be
    /// overwritten.
    QString keep(QStringView label, Date now);

    /// Puts the new version in place. Throws FileError when something foreign is there.
    void replace(AtomicFileWriter &file);

private:
    QString m_path;
    std::optional<FileIdentity> m_known;
};

} // namespace veltrix
