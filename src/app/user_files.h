// SPDX-License-Identifier: GPL-3.0-or-later
// The user's own files, as every way of starting takes them up.
#pragma once

#include <QString>

#include <memory>

namespace veltrix
{

class SettingsFile;

/// The preferences.
std::shared_ptr<SettingsFile> storedSettings();

/// Clears what interrupted writes have left. To be called by whoever holds the data folder.
void clearLeftovers(const QString &dataFolder, const QString &cacheFolder);

} // namespace veltrix
