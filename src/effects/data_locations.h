// SPDX-License-Identifier: GPL-3.0-or-later
// Where Veltrix keeps the user's data.
#pragma once

#include <QString>

namespace veltrix
{

/// The data folder: "Veltrix" in the per-user data directory of the desktop (XDG_DATA_HOME), or in
/// the temporary directory when there is none. It is created with any missing parents; a failure to
/// create it is ignored here and shows when the state is read or saved.
///
/// In this and the following, a variable that holds a relative path is ignored, as the desktop's
/// rules demand: it would mean another folder at every start.
QString dataFolder();

/// Takes those variables out of the environment, so that no library makes such folders either. To
/// be called before anything else asks for one.
void dropRelativeFolders();

/// What can be made again: "Veltrix" in the per-user cache directory (XDG_CACHE_HOME).
QString cacheFolder();

/// The file of the preferences, below the per-user configuration directory (XDG_CONFIG_HOME).
QString preferencesPath();

/// For sockets: XDG_RUNTIME_DIR, or the temporary directory.
QString runtimeFolder();

} // namespace veltrix
