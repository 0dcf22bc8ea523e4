// SPDX-License-Identifier: GPL-3.0-or-later
// Shows where a file is.
#pragma once

#include <QString>
#include <QUrl>

#include <functional>

namespace veltrix
{

/// Asks the desktop's file manager to show the file, selected, in its folder. Where there is no
/// file manager that can, `openFolder` gets the folder's address. The file manager is asked on the
/// D-Bus connection of that name; on the session bus without a name.
void showInFolder(const QString &path, std::function<void(const QUrl &)> openFolder,
                  const QString &busName = QString());

} // namespace veltrix
