// SPDX-License-Identifier: GPL-3.0-or-later
// Settings of update checks that last as long as the test.
#pragma once

#include "clients/update/update_settings.h"

namespace veltrix
{

class MemoryUpdateSettings final : public UpdateSettings
{
public:
    [[nodiscard]] bool automaticallyChecksForUpdates() const override { return isAutomatic; }
    void setAutomaticallyChecksForUpdates(bool isOn) override { isAutomatic = isOn; }
    [[nodiscard]] std::optional<Date> lastCheck() const override { return checked; }
    void setLastCheck(Date date) override { checked = date; }
    [[nodiscard]] std::optional<int> rolloutGroup() const override { return group; }
    void setRolloutGroup(int number) override { group = number; }

    bool isAutomatic = false;
    std::optional<Date> checked;
    std::optional<int> group;
};

} // namespace veltrix
