// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/data_locations.h"

#include <QDir>
#include <QStandardPaths>

namespace veltrix
{

namespace
{

bool isRelative(const char *variable)
{
    const QByteArray value = qgetenv(variable);
    return !value.isEmpty() && !value.startsWith('/');
}

/// The per-user directory of a kind; `usual` is what it is below the home directory unless the
/// variable says otherwise.
QString userFolder(QStandardPaths::StandardLocation kind, const char *variable, const char *usual)
{
    const QString folder = isRelative(variable) ? QDir::homePath() + QString::fromLatin1(usual)
                                                : QStandardPaths::writableLocation(kind);
    return folder.isEmpty() ? QDir::tempPath() : folder;
}

} // namespace

void dropRelativeFolders()
{
    for (const char *variable : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME",
                                 "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
        if (isRelative(variable))
            qunsetenv(variable);
    }
}

QString dataFolder()
{
    const QString folder =
        userFolder(QStandardPaths::GenericDataLocation, "XDG_DATA_HOME", "/.local/share") +
        QStringLiteral("/Veltrix");
    QDir().mkpath(folder);
    return folder;
}

QString cacheFolder()
{
    return userFolder(QStandardPaths::GenericCacheLocation, "XDG_CACHE_HOME", "/.cache") +
           QStringLiteral("/Veltrix");
}

QString preferencesPath()
{
    return userFolder(QStandardPaths::GenericConfigLocation, "XDG_CONFIG_HOME", "/.config") +
           QStringLiteral("/Veltrix/Veltrix.conf");
}

QString runtimeFolder()
{
    // The rules name no other place for it.
    return isRelative("XDG_RUNTIME_DIR")
               ? QDir::tempPath()
               : QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

} // namespace veltrix
