// SPDX-License-Identifier: GPL-3.0-or-later
// What is remembered about update checks from one start to the next.
#pragma once

#include "model/date.h"

#include <optional>

namespace veltrix
{

/// The settings of update checks, wherever they are kept.
class UpdateSettings
{
public:
    UpdateSettings() = default;
    virtual ~UpdateSettings() = default;
    UpdateSettings(const UpdateSettings &) = delete;
    UpdateSettings &operator=(const UpdateSettings &) = delete;

    /// Whether Veltrix looks for updates by itself. Off until the user turns it on.
    [[nodiscard]] virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool isOn) = 0;

    /// When a check last succeeded: the feed was there and could be read.
    [[nodiscard]] virtual std::optional<Date> lastCheck() const = 0;
    virtual void setLastCheck(Date date) = 0;

    /// When this installation gets its turn in a release in steps: 0 to rolloutGroups - 1.
    [[nodiscard]] virtual std::optional<int> rolloutGroup() const = 0;
    virtual void setRolloutGroup(int group) = 0;
};

} // namespace veltrix
