// SPDX-License-Identifier: GPL-3.0-or-later
// Notices what changes in listings, from the results of measurements.
#pragma once

#include "model/itunes_app_result.h"
#include "model/listing_change.h"

#include <QHash>

#include <vector>

namespace veltrix
{

/// What the record says of the facts that are watched.
ListingFacts listingFacts(const ITunesAppResult &result);

/// One app as it was seen, storefront by storefront, and what changed.
///
/// The services answer from many machines, and for a day or two some still send the old listing:
/// a fact that falls back to what it was within that time is an old answer and no change. Name,
/// version and icon are told once, in whichever storefront they show first; prices are each
/// storefront's own. An icon is the same on another server and in another size.
class ListingWatch
{
public:
    /// How long after a change the earlier fact is still taken for an old answer.
    static constexpr Seconds staleAnswers{2.0 * 86'400.0};

    ListingWatch() = default;
    /// As it was before: what was seen last by storefront, and the changes, oldest first.
    ListingWatch(QHash<QString, ListingFacts> seen, std::vector<ListingChange> changes);

    /// Compares what is seen now in a storefront, and returns what changed. The first look at a
    /// storefront, and a fact that was not known before, are no change.
    std::vector<ListingChange> see(const ListingFacts &facts, const QString &storefront, Date now);

    [[nodiscard]] const QHash<QString, ListingFacts> &seen() const { return m_seen; }
    /// Oldest first.
    [[nodiscard]] const std::vector<ListingChange> &changes() const { return m_changes; }

private:
    [[nodiscard]] bool isOldAnswer(const ListingChange &change) const;
    [[nodiscard]] bool isToldAlready(const ListingChange &change) const;

    QHash<QString, ListingFacts> m_seen;
    std::vector<ListingChange> m_changes;
};

} // namespace veltrix
