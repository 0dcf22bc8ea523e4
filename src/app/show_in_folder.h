// SPDX-License-Identifier: GPL-3.0-or-later
// Shows where a file is.
#pragma once

#include <QDBusConnection>
#include <QString>
#include <QUrl>

#include <functional>

namespace veltrix
{

/// Asks the desktop's file manager on `bus` (org.freedesktop.FileManager1) to show the file,
/// selected, in its folder. Where there is no file manager that can, `openFolder` gets the folder's
/// address.
void showInFolder(QDBusConnection bus, const QString &path,
                  std::function<void(const QUrl &)> openFolder);

} // namespace veltrix
