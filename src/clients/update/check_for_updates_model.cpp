// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/check_for_updates_model.h"

namespace veltrix
{

CheckForUpdatesModel::CheckForUpdatesModel(const Updater &updater, QObject *parent)
    : QObject(parent), m_canCheckForUpdates(updater.canCheckForUpdates())
{
    connect(&updater, &Updater::canCheckForUpdatesChanged, this,
            &CheckForUpdatesModel::setCanCheckForUpdates);
    // Without its updater nothing can be checked.
    connect(&updater, &QObject::destroyed, this, [this] { setCanCheckForUpdates(false); });
}

void CheckForUpdatesModel::setCanCheckForUpdates(bool canCheck)
{
    if (canCheck == m_canCheckForUpdates)
        return;
    m_canCheckForUpdates = canCheck;
    Q_EMIT canCheckForUpdatesChanged(canCheck);
}

} // namespace veltrix
