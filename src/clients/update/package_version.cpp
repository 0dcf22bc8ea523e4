// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/package_version.h"

#include "clients/update/update_error.h"
#include "clients/update/version_order.h"

#include <QList>

#include <archive.h>
#include <archive_entry.h>

#include <memory>
#include <optional>

namespace veltrix
{

namespace
{

/// Control files of real packages have a few kilobytes, their archives a few hundred at most.
constexpr qint64 largestControlArchive = 4LL * 1024 * 1024;
constexpr qint64 largestUnpackedControl = 16LL * 1024 * 1024;
constexpr qint64 largestControlFile = 256LL * 1024;
constexpr int mostControlEntries = 1000;

[[noreturn]] void refuse(const QString &why)
{
    throw UpdateError(QStringLiteral("The update was refused: %1.").arg(why));
}

[[noreturn]] void refuseUnreadable()
{
    refuse(QStringLiteral("it is not a Debian package that can be read"));
}

/// An archive in memory, read entry by entry.
class ArchiveReader
{
public:
    using Support = int (*)(archive *);

    /// Understands only the formats given: a format that needs another program to unpack it is
    /// none.
    ArchiveReader(QByteArrayView content, std::initializer_list<Support> formats)
        : m_archive(archive_read_new(), &archive_read_free)
    {
        if (!m_archive)
            refuseUnreadable();
        for (const Support support : formats) {
            if (support(m_archive.get()) != ARCHIVE_OK)
                refuseUnreadable();
        }
        if (archive_read_open_memory(m_archive.get(), content.data(), size_t(content.size())) !=
            ARCHIVE_OK)
            refuseUnreadable();
    }

    /// Goes to the next entry; false at the end of the archive.
    bool next()
    {
        const int result = archive_read_next_header(m_archive.get(), &m_entry);
        if (result == ARCHIVE_EOF)
            return false;
        if (result != ARCHIVE_OK)
            refuseUnreadable();
        return true;
    }

    [[nodiscard]] QByteArrayView name() const
    {
        const char *name = archive_entry_pathname(m_entry);
        return name ? QByteArrayView(name) : QByteArrayView();
    }
    /// Bytes that the entry unpacks to.
    [[nodiscard]] qint64 size() const { return archive_entry_size(m_entry); }
    [[nodiscard]] bool isFile() const { return archive_entry_filetype(m_entry) == AE_IFREG; }

    /// The whole entry, which must not be larger than `limit`.
    QByteArray content(qint64 limit)
    {
        if (size() < 0 || size() > limit)
            refuseUnreadable();
        QByteArray content(qsizetype(size()), Qt::Uninitialized);
        if (archive_read_data(m_archive.get(), content.data(), size_t(content.size())) !=
            content.size())
            refuseUnreadable();
        return content;
    }

private:
    std::unique_ptr<archive, int (*)(archive *)> m_archive;
    /// Owned by the archive.
    archive_entry *m_entry = nullptr;
};

/// The archive of the control file, the second member of a package, still compressed.
QByteArray controlArchive(QByteArrayView package)
{
    ArchiveReader members(package, {archive_read_support_format_ar});
    if (!members.next() || members.name() != "debian-binary" || !members.next() ||
        !members.name().startsWith("control.tar"))
        refuseUnreadable();
    return members.content(largestControlArchive);
}

QByteArray controlFile(QByteArrayView archiveContent)
{
    ArchiveReader files(archiveContent,
                        {archive_read_support_format_tar, archive_read_support_filter_gzip,
                         archive_read_support_filter_xz, archive_read_support_filter_zstd});
    qint64 unpacked = 0;
    for (int entry = 0; entry < mostControlEntries && files.next(); ++entry) {
        if (files.isFile() && (files.name() == "./control" || files.name() == "control"))
            return files.content(largestControlFile);
        // What is passed over is unpacked as well.
        if (files.size() < 0 || files.size() > largestUnpackedControl - unpacked)
            refuseUnreadable();
        unpacked += files.size();
    }
    refuseUnreadable();
}

/// The one value of a field of the first paragraph; nothing when there is none or more than one.
std::optional<QString> field(const QByteArray &control, const char *wanted)
{
    std::optional<QString> value;
    for (const QByteArray &line : control.split('\n')) {
        if (line.trimmed().isEmpty())
            break;
        const qsizetype colon = line.indexOf(':');
        // A line that begins with a space goes on with the field before.
        if (colon < 0 || line.first(colon).compare(wanted, Qt::CaseInsensitive) != 0)
            continue;
        if (value)
            return std::nullopt;
        value = QString::fromUtf8(line.sliced(colon + 1).trimmed());
    }
    return value;
}

} // namespace

QString debianPackageVersion(QByteArrayView package)
{
    const QByteArray archiveContent = controlArchive(package);
    const std::optional<QString> version = field(controlFile(archiveContent), "Version");
    if (!version || !isMachineVersion(*version))
        refuse(QStringLiteral("its package doesn’t say which version it is"));
    return *version;
}

void requirePackageVersion(QByteArrayView package, const ExpectedVersion &expected)
{
    const QString version = debianPackageVersion(package);
    if (compareVersions(version, expected.announced) != 0)
        refuse(QStringLiteral("its package holds version %1, not the announced %2")
                   .arg(version, expected.announced));
    if (compareVersions(version, expected.installed) <= 0)
        refuse(QStringLiteral("its package holds version %1, which is not newer than this one")
                   .arg(version));
}

} // namespace veltrix
