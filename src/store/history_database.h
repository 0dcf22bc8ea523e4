// SPDX-License-Identifier: GPL-3.0-or-later
// The days that are no longer in the state file, and what the state file has no place for.
#pragma once

#include "effects/sqlite_database.h"
#include "model/keyword_snapshot.h"
#include "store/history_edit.h"
#include "store/history_record.h"
#include "store/ranking_timeline.h"

#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <vector>

namespace veltrix
{

/// Measurements by keyword and date in a database beside the state file. A keyword has one
/// measurement a UTC day here; where the state file has one of the same day, that one counts.
/// Where others stood in a measurement, what has changed in listings, notes and tags are here
/// alone.
///
/// An older form is brought to the newest when it is opened, and a copy of it kept.
///
/// Every function throws DatabaseError, or DecodingError for a record that is damaged. What changes
/// the database does so as a whole and lasts when it returns.
class HistoryDatabase
{
public:
    static constexpr std::int64_t earliestDay = std::numeric_limits<std::int64_t>::min();
    static constexpr size_t everything = std::numeric_limits<std::int64_t>::max();

    /// The database at the path; none when there is no file. One that is empty, cut off, something
    /// else or a later version's is left as it is and throws.
    static std::optional<HistoryDatabase> open(const QString &path);
    /// The same; a missing one is made, and is there as a whole or not at all.
    static HistoryDatabase openOrCreate(const QString &path);

    /// Whether it has this very measurement.
    [[nodiscard]] bool contains(const KeywordSnapshot &snapshot);
    /// Adds measurements in the place of all others of the same keywords and days.
    void insert(std::span<const SharedSnapshot> snapshots);

    /// The ranks of a keyword, oldest first.
    [[nodiscard]] std::vector<RankingTimeline::Observation> observations(const QUuid &keywordId);
    /// Tells each rank of these keywords, with the keyword's place in the list; a keyword's oldest
    /// first, in the order of the list.
    void eachRank(std::span<const QUuid> keywordIds,
                  const std::function<void(size_t place, Date date,
                                           std::optional<std::int64_t> position)> &use);
    /// The whole measurements of a keyword from a UTC day on, oldest first, and no more than
    /// `most`.
    [[nodiscard]] std::vector<SharedSnapshot>
    records(const QUuid &keywordId, std::int64_t firstDay = earliestDay, size_t most = everything);

    /// Does what the edits say, in their order.
    AppliedEdits apply(std::span<const HistoryEdit> edits);
    /// Where others stood, of all days that were kept, oldest first.
    [[nodiscard]] std::vector<KeywordStandings> standings(const QUuid &keywordId);
    /// The newest of each of these keywords that is not later than `latest`.
    [[nodiscard]] std::vector<KeywordStandings> newestStandings(std::span<const QUuid> keywordIds,
                                                                Date latest);
    /// Of an own app or a competitor.
    [[nodiscard]] ListingHistory listingHistory(const QUuid &appId);
    [[nodiscard]] WrittenNotes writtenNotes();

    // By the ids of keywords, own apps and competitors.
    /// Notes that they are being removed: what they have here stays until remove().
    void noteRemoval(std::span<const QUuid> ids);
    /// Takes such notes back.
    void dropRemovalNotes(std::span<const QUuid> ids);
    [[nodiscard]] std::vector<QUuid> removalNotes();
    /// Removes all that there is of one, the note as well.
    void remove(const QUuid &id);
    /// Gives what one has to another, and of a day that both have, the newer; takes the note of its
    /// removal back.
    void join(const QUuid &from, const QUuid &to);

private:
    explicit HistoryDatabase(const QString &path);
    void forgetRemoval(const QUuid &id);

    SqliteDatabase m_database;
    /// contains() is asked for thousands.
    std::optional<SqliteStatement> m_find;
    HistoryRecords m_records;
};

} // namespace veltrix
