// SPDX-License-Identifier: GPL-3.0-or-later
// A competitor app that is watched for one of the user's apps.
#pragma once

#include "model/field_list.h"
#include "model/url.h"

#include <QUuid>

namespace veltrix
{

/// An app whose listing the user watches beside an app of their own.
struct TrackedCompetitor {
    QUuid id;
    /// The user's AppProfile it competes with.
    QUuid appId;
    /// The App Store's numeric app id of the competitor.
    std::int64_t trackId = 0;
    QString name;
    std::optional<Url> iconURL;
    /// Upper-cased storefront code.
    QString country;
    /// Developer name, trimmed; absent until it is known.
    std::optional<QString> sellerName;

    /// Whether both are one App Store app in one storefront, for one of the user's apps.
    [[nodiscard]] bool isSameRivalAs(const TrackedCompetitor &other) const
    {
        return trackId == other.trackId && appId == other.appId && country == other.country;
    }

    bool operator==(const TrackedCompetitor &) const = default;
};

template <>
inline constexpr auto fieldsOf<TrackedCompetitor> = std::tuple{
    field("id", &TrackedCompetitor::id),
    field("appId", &TrackedCompetitor::appId),
    field("trackId", &TrackedCompetitor::trackId),
    field("name", &TrackedCompetitor::name),
    field("iconURL", &TrackedCompetitor::iconURL),
    field("country", &TrackedCompetitor::country),
    field("sellerName", &TrackedCompetitor::sellerName),
};

} // namespace veltrix
