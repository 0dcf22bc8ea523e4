// SPDX-License-Identifier: GPL-3.0-or-later
// What the user did for an app on a day.
#pragma once

#include "model/date.h"

#include <QString>
#include <QUuid>

namespace veltrix
{

/// A note on a day of one of the user's apps, such as "New subtitle".
struct AppNote {
    QUuid id;
    /// The user's AppProfile.
    QUuid appId;
    /// A UTC day, as utcDay() counts them.
    std::int64_t day = 0;
    QString text;
    Date writtenAt;

    bool operator==(const AppNote &) const = default;
};

} // namespace veltrix
