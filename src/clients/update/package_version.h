// SPDX-License-Identifier: GPL-3.0-or-later
// Which version a package really holds, whatever the feed says about it.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace veltrix
{

/// What a package must agree with. Both are machine versions.
struct ExpectedVersion {
    /// What the feed said that the package holds.
    QString announced;
    QString installed;
};

/// The version of a Debian package: the field "Version" of its control file. Only the control file
/// is unpacked, and only so much of it: an archive that would grow beyond a few megabytes is
/// refused. Throws UpdateError for anything that is not a whole Debian package with one version.
QString debianPackageVersion(QByteArrayView package);

/// Throws UpdateError unless `package` is a Debian package of exactly the announced version, and
/// that is newer than the installed one. A signature alone does not say so: it also fits an old
/// package that is offered again under a new number.
void requirePackageVersion(QByteArrayView package, const ExpectedVersion &expected);

} // namespace veltrix
