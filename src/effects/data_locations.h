// SPDX-License-Identifier: GPL-3.0-or-later
// Where Veltrix keeps the user's data.
#pragma once

#include <QString>

namespace veltrix
{

/// The data folder: "Veltrix" in the per-user data directory of the desktop (XDG_DATA_HOME), or in
/// the temporary directory when there is none. It is created with any missing parents; a failure to
/// create it is ignored here and shows when a file is saved.
QString dataFolder();

/// "aso_store_state.json" in the data folder.
QString defaultStatePath();

/// The cache of ranked apps, beside the given state file.
QString rankedAppsCachePath(const QString &statePath);

} // namespace veltrix
