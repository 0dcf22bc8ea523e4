// SPDX-License-Identifier: GPL-3.0-or-later
// Listings as they were seen, as the history keeps them.
#pragma once

#include "effects/sqlite_database.h"
#include "model/listing_change.h"

#include <cstdint>

namespace veltrix
{

/// The tables "listing" (what was seen last, a row a storefront) and "listing_change", and since
/// when an app of the table "app" is watched. Every function throws DatabaseError, or DecodingError
/// for a row that is damaged; what changes something belongs into a transaction.
class ListingRecords
{
public:
    explicit ListingRecords(SqliteDatabase &database);

    /// An app is watched from this moment on, unless it was before. True when it was not.
    bool begin(std::int64_t app, Date since);
    /// Compares what is seen now with what was seen before, by the rules of a ListingWatch. True
    /// when something has changed.
    bool see(std::int64_t app, const ListingFacts &facts, const QString &storefront, Date now);
    [[nodiscard]] ListingHistory of(std::int64_t app);

    void remove(std::int64_t app);
    /// What both have seen of a storefront, the second has.
    void join(std::int64_t from, std::int64_t to);

private:
    [[nodiscard]] std::optional<Date> sinceOf(std::int64_t app);
    [[nodiscard]] std::vector<ListingChange> changesOf(std::int64_t app);
    void keep(std::int64_t app, const ListingFacts &facts, const QString &storefront);

    SqliteDatabase &m_database;
    SqliteStatement m_seen;
    SqliteStatement m_since;
};

} // namespace veltrix
