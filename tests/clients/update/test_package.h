// SPDX-License-Identifier: GPL-3.0-or-later
// Packages for tests, made from short texts.
#pragma once

#include <QByteArray>
#include <QList>

#include <utility>

namespace veltrix
{

enum class TestCompression { None, Gzip, Xz, Zstd };

/// Names and contents of the members of an archive, in their order.
using TestMembers = QList<std::pair<QByteArray, QByteArray>>;

QByteArray tarOf(const TestMembers &members, TestCompression compression = TestCompression::Gzip);
QByteArray arOf(const TestMembers &members);

/// "Package: veltrix", "Version: …" and what else a control file has.
QByteArray controlOf(const QByteArray &version);

/// A Debian package with that control file.
QByteArray packageWith(const QByteArray &control,
                       TestCompression compression = TestCompression::Gzip);

/// A Debian package of that version; with `payload` bytes in it, it is larger than those.
QByteArray packageOf(const QByteArray &version, qsizetype payload = 0);

} // namespace veltrix
