// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/test_package.h"

#include <archive.h>
#include <archive_entry.h>

#include <memory>
#include <stdexcept>

namespace veltrix
{

namespace
{

using Setup = int (*)(archive *);

void require(int result)
{
    if (result != ARCHIVE_OK)
        throw std::runtime_error("no archive");
}

QByteArray archiveOf(const TestMembers &members, Setup format, Setup filter)
{
    size_t size = 64 * 1024;
    for (const auto &[name, content] : members)
        size += size_t(content.size()) + 4096;
    QByteArray bytes(qsizetype(size), '\0');
    size_t used = 0;
    const std::unique_ptr<archive, Setup> writer(archive_write_new(), &archive_write_free);
    require(format(writer.get()));
    require(filter(writer.get()));
    require(archive_write_set_bytes_in_last_block(writer.get(), 1));
    require(archive_write_open_memory(writer.get(), bytes.data(), size, &used));
    for (const auto &[name, content] : members) {
        const std::unique_ptr<archive_entry, void (*)(archive_entry *)> entry(archive_entry_new(),
                                                                              &archive_entry_free);
        archive_entry_set_pathname(entry.get(), name.constData());
        archive_entry_set_filetype(entry.get(), AE_IFREG);
        archive_entry_set_perm(entry.get(), 0644);
        archive_entry_set_size(entry.get(), content.size());
        require(archive_write_header(writer.get(), entry.get()));
        if (archive_write_data(writer.get(), content.constData(), size_t(content.size())) !=
            content.size())
            throw std::runtime_error("no archive");
    }
    require(archive_write_close(writer.get()));
    return bytes.first(qsizetype(used));
}

Setup filterFor(TestCompression compression)
{
    switch (compression) {
    case TestCompression::None:
        return archive_write_add_filter_none;
    case TestCompression::Gzip:
        return archive_write_add_filter_gzip;
    case TestCompression::Xz:
        return archive_write_add_filter_xz;
    case TestCompression::Zstd:
        return archive_write_add_filter_zstd;
    }
    Q_UNREACHABLE();
}

const char *endingFor(TestCompression compression)
{
    switch (compression) {
    case TestCompression::None:
        return "";
    case TestCompression::Gzip:
        return ".gz";
    case TestCompression::Xz:
        return ".xz";
    case TestCompression::Zstd:
        return ".zst";
    }
    Q_UNREACHABLE();
}

} // namespace

QByteArray tarOf(const TestMembers &members, TestCompression compression)
{
    return archiveOf(members, archive_write_set_format_ustar, filterFor(compression));
}

QByteArray arOf(const TestMembers &members)
{
    return archiveOf(members, archive_write_set_format_ar_bsd, archive_write_add_filter_none);
}

QByteArray controlOf(const QByteArray &version)
{
    return "Package: veltrix\nVersion: " + version +
           "\nArchitecture: amd64\nMaintainer: Veltrix <veltrix@example.invalid>\n"
           "Description: rankings\n Version: not a field, but a line of the description\n";
}

QByteArray packageWith(const QByteArray &control, TestCompression compression)
{
    const QByteArray ending = endingFor(compression);
    return arOf({{"debian-binary", "2.0\n"},
                 {"control.tar" + ending,
                  tarOf({{"./md5sums", "none"}, {"./control", control}}, compression)},
                 {"data.tar" + ending, tarOf({{"./usr/bin/veltrix", "program"}}, compression)}});
}

QByteArray packageOf(const QByteArray &version, qsizetype payload)
{
    return packageWith(controlOf(version)) +
           arOf({{"payload", QByteArray(payload, 'v')}}).sliced(qsizetype(sizeof("!<arch>\n") - 1));
}

} // namespace veltrix
