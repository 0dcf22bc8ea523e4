// SPDX-License-Identifier: GPL-3.0-or-later
// What changed in a competitor's listing, in words.
#pragma once

#include "model/listing_change.h"
#include "model/url.h"
#include "ui_kit/text/figures.h"

#include <QLocale>
#include <QStringList>

namespace veltrix
{

/// One line of a change log. A pure value.
struct ChangeLogEntry {
    /// The name of its symbol.
    QString symbol;
    /// "New version"
    QString title;
    /// "5.1.3 → 5.2"; empty where pictures say it.
    QString detail;
    /// The icons before and after.
    struct Pictures {
        std::optional<Url> earlier;
        std::optional<Url> later;
        bool operator==(const Pictures &) const = default;
    };
    std::optional<Pictures> pictures;
    /// "Nov 4", of another year "Nov 4, 2025"; empty where the day is not known.
    QString day;
    /// "Nov 4, new price, $1.99 to Free"
    QString sentence;

    bool operator==(const ChangeLogEntry &) const = default;
};

/// What an app's listing went through, by all the storefronts in which it is tracked.
struct ListingPast {
    /// One of each TrackedCompetitor.
    std::vector<ListingHistory> histories;
    /// Upper-cased codes of the storefronts in which it is tracked.
    QStringList storefronts;

    bool operator==(const ListingPast &) const = default;
};

/// Newest first, down to the day of tracking. A change that was noticed for several storefronts is
/// told once. A price names its storefront unless there is only the one.
std::vector<ChangeLogEntry> changeLog(const ListingPast &past, Date now,
                                      const QLocale &locale = wordLocale());

} // namespace veltrix
