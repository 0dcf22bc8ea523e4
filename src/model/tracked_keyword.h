// SPDX-License-Identifier: GPL-3.0-or-later
// A keyword that is watched for one app in one storefront.
#pragma once

#include "model/date.h"
#include "model/field_list.h"

#include <QUuid>

namespace veltrix
{

/// A search term whose ranking is followed. Several may have one text, in different storefronts.
struct TrackedKeyword {
    /// Identity; snapshots refer to it.
    QUuid id;
    /// The AppProfile it belongs to.
    QUuid appId;
    /// The search term as entered, its case kept.
    QString keyword;
    /// Upper-cased storefront code.
    QString country;
    Date createdAt;

    bool operator==(const TrackedKeyword &) const = default;
};

template <>
inline constexpr auto fieldsOf<TrackedKeyword> = std::tuple{
    field("id", &TrackedKeyword::id),
    field("appId", &TrackedKeyword::appId),
    field("keyword", &TrackedKeyword::keyword),
    field("country", &TrackedKeyword::country),
    field("createdAt", &TrackedKeyword::createdAt),
};

} // namespace veltrix
