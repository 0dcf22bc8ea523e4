// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/user_files.h"

#include "effects/atomic_file.h"
#include "effects/data_locations.h"
#include "effects/settings_file.h"

namespace veltrix
{

std::shared_ptr<SettingsFile> storedSettings()
{
    return std::make_shared<SettingsFile>(preferencesPath(), std::make_shared<FileThread>());
}

void clearLeftovers(const QString &dataFolder, const QString &cacheFolder)
{
    // Nobody else writes the data; an image or a package of another's that goes with it is loaded
    // again.
    for (const QString &folder : {dataFolder, cacheFolder, cacheFolder + QStringLiteral("/artwork"),
                                  cacheFolder + QStringLiteral("/updates")})
        removeInterruptedWritesIn(folder);
}

} // namespace veltrix
