// SPDX-License-Identifier: GPL-3.0-or-later
// A small but whole Debian package, for trying updates on.
#pragma once

#include <QByteArray>
#include <QString>

namespace veltrix::sample
{

/// The bytes of a package "veltrix-sample-update" of that version. It holds one text file, so
/// installing it does no harm. The same version gives the same bytes.
QByteArray debianPackage(const QString &version);

} // namespace veltrix::sample
