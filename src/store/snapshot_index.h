// SPDX-License-Identifier: GPL-3.0-or-later
// All snapshots, found by keyword and kept in the order of the state file.
#pragma once

#include "model/keyword_snapshot.h"

#include <QHash>
#include <QSet>

#include <vector>

namespace veltrix
{

/// A snapshot in file order.
struct FiledSnapshot {
    /// Its place: tickets only grow, and none is given twice.
    std::uint64_t ticket = 0;
    SharedSnapshot snapshot;
};

/// Holds every snapshot once, under two orders: the file's (in which snapshots were stored) and,
/// for each keyword, by date. No operation on one keyword looks at the snapshots of another: with n
/// snapshots in all and k of the keyword, each costs O(log n) or O(k), amortised.
class SnapshotIndex
{
public:
    SnapshotIndex() = default;
    explicit SnapshotIndex(const std::vector<SharedSnapshot> &inFileOrder);

    /// Appends a snapshot in place of all of the same keyword and UTC day.
    void store(SharedSnapshot snapshot);
    /// Takes out all snapshots of a keyword.
    std::vector<FiledSnapshot> takeKeyword(const QUuid &keywordId);
    /// Puts snapshots back where they were taken out, with n in all in O(n). Where their keyword
    /// has others by now, the newer of each UTC day stays.
    void putBack(std::vector<FiledSnapshot> taken);

    /// Takes out these very snapshots, those of them that are there. Gives back its references to
    /// them: to drop so many takes time, which another thread may have.
    std::vector<SharedSnapshot> forget(const QSet<const KeywordSnapshot *> &gone);

    /// How far ahead of the clock a snapshot may be dated: clocks are set right now and then.
    static constexpr Seconds clockTolerance{300};
    /// Whether a date lies so far ahead that a clock must have been wrong when it was written.
    [[nodiscard]] static bool liesAhead(Date date, Date now) { return date > now + clockTolerance; }

    /// The snapshot with the latest date that does not lie ahead; of several, the first in file
    /// order. Null when there is none.
    [[nodiscard]] SharedSnapshot newest(const QUuid &keywordId, Date now) const;
    /// Oldest first; snapshots of the same instant in file order.
    [[nodiscard]] std::vector<SharedSnapshot> ofKeyword(const QUuid &keywordId) const;
    [[nodiscard]] std::vector<SharedSnapshot> inFileOrder() const;
    [[nodiscard]] size_t size() const { return m_slots.size() - m_emptySlots; }

private:
    /// Sorted by their tickets; a removed snapshot leaves its slot empty until half of all are.
    using Slot = FiledSnapshot;
    /// A snapshot of a keyword. The date is kept beside it, so that searching touches no snapshot.
    struct Dated {
        Date date;
        std::uint64_t ticket;
        SharedSnapshot snapshot;
    };
    using DatedList = std::vector<Dated>;

    /// Those whose ticket is told to be gone; their references are added to `dropped`.
    template <class Entry>
    static void takeOut(std::vector<Entry> &entries, const std::vector<bool> &isGone,
                        std::uint64_t firstTicket, std::vector<SharedSnapshot> &dropped);
    void emptySlot(std::uint64_t ticket);
    void fillSlots(std::vector<Slot> filled);
    /// Of each UTC day the last; the list is sorted.
    static DatedList newestOfDays(const DatedList &list);
    /// False when there is a snapshot of that day that is as new.
    bool putBackNewer(DatedList &present, const Dated &taken);
    void dropEmptySlots();

    std::vector<Slot> m_slots;
    size_t m_emptySlots = 0;
    std::uint64_t m_nextTicket = 0;
    /// By date, oldest first.
    QHash<QUuid, DatedList> m_byKeyword;
};

} // namespace veltrix
