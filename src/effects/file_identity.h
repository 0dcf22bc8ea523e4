// SPDX-License-Identifier: GPL-3.0-or-later
// Which file lies at a path, and whether that can be told at all.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <variant>

namespace veltrix
{

/// One content of one file: another file in its place, and a change of its content, make another
/// identity. The time of the last change of its names and rights is left out on purpose: a backup
/// that gives the file a second name changes nothing.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    /// Bytes.
    std::int64_t size = 0;
    /// When its content was changed last: seconds since 1970 and nanoseconds.
    std::int64_t modifiedSeconds = 0;
    std::int64_t modifiedNanoseconds = 0;

    bool operator==(const FileIdentity &) const = default;
};

/// The folder is there and has no such file.
struct NoFile {
    bool operator==(const NoFile &) const = default;
};

/// Whether there is a file cannot be told: the folder is missing or closed, the disk does not
/// answer, the file is a link to nothing.
struct UnknownFile {
    QString reason;
    bool operator==(const UnknownFile &) const = default;
};

/// What a look at a path has found.
using FileLook = std::variant<NoFile, FileIdentity, UnknownFile>;

/// What lies at the path; links are followed.
FileLook lookAtFile(const QString &path);

/// A folder, whatever its name is.
struct FolderIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool operator==(const FolderIdentity &) const = default;
};

/// None when the folder cannot be reached.
std::optional<FolderIdentity> identityOfFolder(const QString &path);

/// The path behind all symbolic links at the end of `path`, whether a file is there or not. Throws
/// FileError when a link cannot be read or they lead in a circle.
QString resolveLinks(const QString &path);

} // namespace veltrix
