// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/history_move.h"

#include "json/json_writer.h"
#include "store/snapshot_index.h"

#include <algorithm>
#include <limits>

namespace veltrix
{

namespace
{

/// Of more candidates than this, not the size of each is made out, which takes 20 µs: their
/// neighbours' are like theirs.
constexpr size_t mostSized = 2'000;
constexpr std::int64_t never = std::numeric_limits<std::int64_t>::min();

/// The newest days of a keyword.
struct Newest {
    std::int64_t first = never;
    std::int64_t second = never;

    void see(std::int64_t day)
    {
        if (day > first)
            second = std::exchange(first, day);
        else if (day > second && day < first)
            second = day;
    }
};

bool hasCome(const KeywordSnapshot &snapshot, Date now)
{
    return isCalendarDate(snapshot.fetchedAt) && !SnapshotIndex::liesAhead(snapshot.fetchedAt, now);
}

} // namespace

OldestDays oldestDays(const std::vector<SharedSnapshot> &snapshots, Date now, qint64 bytes)
{
    QHash<QUuid, Newest> newest;
    for (const SharedSnapshot &snapshot : snapshots) {
        if (hasCome(*snapshot, now))
            newest[snapshot->trackedKeywordId].see(utcDay(snapshot->fetchedAt));
    }
    struct Candidate {
        std::int64_t day;
        const SharedSnapshot *snapshot;
    };
    std::vector<Candidate> candidates;
    for (const SharedSnapshot &snapshot : snapshots) {
        const std::int64_t day = utcDay(snapshot->fetchedAt);
        if (hasCome(*snapshot, now) && day < newest[snapshot->trackedKeywordId].second)
            candidates.push_back({day, &snapshot});
    }
    const auto order = [](const Candidate &candidate) {
        return std::tuple(candidate.day, (*candidate.snapshot)->trackedKeywordId);
    };
    std::ranges::stable_sort(candidates, {}, order);
    OldestDays result;
    const size_t step = candidates.size() / mostSized + 1;
    qint64 size = 0;
    for (auto next = candidates.begin(); next != candidates.end();) {
        if (result.bytes >= bytes && next->day != utcDay(result.snapshots.back()->fetchedAt))
            break;
        const auto behind = std::find_if(next, candidates.end(), [&](const Candidate &other) {
            return order(other) != order(*next);
        });
        if (behind - next == 1) {
            // With its comma.
            if (result.snapshots.size() % step == 0)
                size = toJson(**next->snapshot).size() + 1;
            result.snapshots.push_back(*next->snapshot);
            result.bytes += size;
        }
        next = behind;
    }
    return result;
}

} // namespace veltrix
