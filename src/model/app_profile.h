// SPDX-License-Identifier: GPL-3.0-or-later
// An app of the user's that is tracked.
#pragma once

#include "model/field_list.h"
#include "model/url.h"

#include <QUuid>

namespace veltrix
{

/// The user's own app, for which keywords are watched.
struct AppProfile {
    /// Identity inside this program; fresh when the app is added.
    QUuid id;
    /// The App Store's numeric app id.
    std::int64_t trackId = 0;
    /// "Unknown App" when the store record had no name.
    QString appName;
    /// Always "iPhone" for apps added by this program.
    QString platform;
    std::optional<Url> iconURL;
    /// Upper-cased storefront code in which the app was looked up.
    QString country;
    /// Position in the user's list, from 0. The store renumbers it on load.
    std::int64_t sortOrder = 0;

    bool operator==(const AppProfile &) const = default;
};

template <>
inline constexpr auto fieldsOf<AppProfile> = std::tuple{
    field("id", &AppProfile::id),
    field("trackId", &AppProfile::trackId),
    field("appName", &AppProfile::appName),
    field("platform", &AppProfile::platform),
    field("iconURL", &AppProfile::iconURL),
    field("country", &AppProfile::country),
    field("sortOrder", &AppProfile::sortOrder, Presence::Lenient),
};

} // namespace veltrix
