// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/data_locations.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace veltrix
{

QString dataFolder()
{
    QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty())
        base = QDir::tempPath();
    const QString folder = base + QStringLiteral("/Veltrix");
    QDir().mkpath(folder);
    return folder;
}

QString defaultStatePath()
{
    return dataFolder() + QStringLiteral("/aso_store_state.json");
}

QString rankedAppsCachePath(const QString &statePath)
{
    return QFileInfo(statePath).path() + QStringLiteral("/ranked_apps_cache_v1.json");
}

} // namespace veltrix
