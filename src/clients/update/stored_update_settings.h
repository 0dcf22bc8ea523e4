// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the settings of update checks among the user's preferences.
#pragma once

#include "clients/update/update_settings.h"
#include "effects/settings_file.h"

#include <memory>

namespace veltrix
{

/// The keys are "automaticallyChecksForUpdates" (a boolean), "lastUpdateCheck" (an internet
/// date-time) and "updateRolloutGroup" (a number). A value that cannot be read counts as absent.
class StoredUpdateSettings final : public UpdateSettings
{
public:
    explicit StoredUpdateSettings(std::shared_ptr<SettingsFile> preferences);

    [[nodiscard]] bool automaticallyChecksForUpdates() const override;
    void setAutomaticallyChecksForUpdates(bool isOn) override;
    [[nodiscard]] std::optional<Date> lastCheck() const override;
    void setLastCheck(Date date) override;
    [[nodiscard]] std::optional<int> rolloutGroup() const override;
    void setRolloutGroup(int group) override;

private:
    std::shared_ptr<SettingsFile> m_preferences;
};

} // namespace veltrix
