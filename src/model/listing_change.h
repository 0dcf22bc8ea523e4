// SPDX-License-Identifier: GPL-3.0-or-later
// What has changed in an app's listing between two looks at it.
#pragma once

#include "model/date.h"

#include <QString>

#include <optional>
#include <vector>

namespace veltrix
{

/// What a look at a listing keeps to compare the next one with. Absent: the record did not say.
struct ListingFacts {
    std::optional<QString> name;
    std::optional<QString> version;
    /// As the storefront writes it: "Free", "$1.99".
    std::optional<QString> price;
    /// The icon's address.
    std::optional<QString> icon;

    bool operator==(const ListingFacts &) const = default;
};

enum class ListingChangeKind { Name, Version, Price, Icon };

/// One fact that became another.
struct ListingChange {
    ListingChangeKind kind = ListingChangeKind::Name;
    /// Of the measurement whose results showed it first.
    Date seenAt;
    /// Upper-cased code of the storefront in which it was seen.
    QString storefront;
    /// As ListingFacts has them.
    QString earlier;
    QString later;

    bool operator==(const ListingChange &) const = default;
};

/// What is known of an app's listing over time.
struct ListingHistory {
    /// When it began to be watched; absent before its first measurement.
    std::optional<Date> since;
    /// Oldest first.
    std::vector<ListingChange> changes;

    bool operator==(const ListingHistory &) const = default;
};

} // namespace veltrix
