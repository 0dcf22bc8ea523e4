// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/stored_update_settings.h"

#include "clients/update/update_selection.h"

namespace veltrix
{

namespace
{

const QString automaticKey = QStringLiteral("automaticallyChecksForUpdates");
const QString lastCheckKey = QStringLiteral("lastUpdateCheck");
const QString groupKey = QStringLiteral("updateRolloutGroup");

} // namespace

StoredUpdateSettings::StoredUpdateSettings(std::shared_ptr<SettingsFile> preferences)
    : m_preferences(std::move(preferences))
{
}

bool StoredUpdateSettings::automaticallyChecksForUpdates() const
{
    // Read as text: any other text would count as true.
    return m_preferences->value(automaticKey).toString() == u"true";
}

void StoredUpdateSettings::setAutomaticallyChecksForUpdates(bool isOn)
{
    m_preferences->setValue(automaticKey, isOn);
}

std::optional<Date> StoredUpdateSettings::lastCheck() const
{
    return parseInternetDateTime(m_preferences->value(lastCheckKey).toString(),
                                 FractionalSeconds::Required);
}

void StoredUpdateSettings::setLastCheck(Date date)
{
    m_preferences->setValue(lastCheckKey, formatInternetDateTime(date));
}

std::optional<int> StoredUpdateSettings::rolloutGroup() const
{
    bool isNumber = false;
    const int group = m_preferences->value(groupKey).toInt(&isNumber);
    const bool isGroup = isNumber && group >= 0 && group < rolloutGroups;
    return isGroup ? std::optional(group) : std::nullopt;
}

void StoredUpdateSettings::setRolloutGroup(int group)
{
    m_preferences->setValue(groupKey, group);
}

} // namespace veltrix
