// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/snapshot_index.h"

#include <algorithm>

namespace veltrix
{

SnapshotIndex::SnapshotIndex(const std::vector<SharedSnapshot> &inFileOrder)
{
    m_slots.reserve(inFileOrder.size());
    for (const SharedSnapshot &snapshot : inFileOrder) {
        m_byKeyword[snapshot->trackedKeywordId].push_back(
            {snapshot->fetchedAt, m_nextTicket, snapshot});
        m_slots.push_back({m_nextTicket++, snapshot});
    }
    for (DatedList &list : m_byKeyword)
        std::ranges::stable_sort(list, {}, &Dated::date);
}

void SnapshotIndex::store(SharedSnapshot snapshot)
{
    DatedList &list = m_byKeyword[snapshot->trackedKeywordId];
    const Date date = snapshot->fetchedAt;
    const auto sameDay = std::ranges::equal_range(
        list, utcDay(date), {}, [](const Dated &dated) { return utcDay(dated.date); });
    for (const Dated &replaced : sameDay)
        emptySlot(replaced.ticket);
    const auto place = list.erase(sameDay.begin(), sameDay.end());
    list.insert(place, {date, m_nextTicket, snapshot});
    m_slots.push_back({m_nextTicket++, std::move(snapshot)});
    dropEmptySlots();
}

std::vector<FiledSnapshot> SnapshotIndex::takeKeyword(const QUuid &keywordId)
{
    std::vector<FiledSnapshot> taken;
    for (Dated &dated : m_byKeyword.take(keywordId)) {
        emptySlot(dated.ticket);
        taken.push_back({dated.ticket, std::move(dated.snapshot)});
    }
    dropEmptySlots();
    return taken;
}

void SnapshotIndex::putBack(std::vector<FiledSnapshot> taken)
{
    std::ranges::sort(taken, {}, &FiledSnapshot::ticket);
    QHash<QUuid, DatedList> byKeyword;
    for (const auto &[ticket, snapshot] : taken)
        byKeyword[snapshot->trackedKeywordId].push_back({snapshot->fetchedAt, ticket, snapshot});
    std::vector<Slot> filled;
    for (auto entry = byKeyword.begin(); entry != byKeyword.end(); ++entry) {
        DatedList &list = entry.value();
        DatedList &present = m_byKeyword[entry.key()];
        std::ranges::stable_sort(list, {}, &Dated::date);
        if (present.empty()) {
            present = list;
        } else {
            list = newestOfDays(list);
            std::erase_if(list, [&](const Dated &dated) { return !putBackNewer(present, dated); });
        }
        for (const Dated &dated : list)
            filled.push_back({dated.ticket, dated.snapshot});
    }
    fillSlots(std::move(filled));
}

SnapshotIndex::DatedList SnapshotIndex::newestOfDays(const DatedList &list)
{
    DatedList newest;
    for (const Dated &dated : list) {
        if (!newest.empty() && utcDay(newest.back().date) == utcDay(dated.date))
            newest.pop_back();
        newest.push_back(dated);
    }
    return newest;
}

bool SnapshotIndex::putBackNewer(DatedList &present, const Dated &taken)
{
    const auto sameDay = std::ranges::equal_range(
        present, utcDay(taken.date), {}, [](const Dated &dated) { return utcDay(dated.date); });
    if (!sameDay.empty() && sameDay.back().date >= taken.date)
        return false;
    for (const Dated &replaced : sameDay)
        emptySlot(replaced.ticket);
    present.insert(present.erase(sameDay.begin(), sameDay.end()), taken);
    return true;
}

void SnapshotIndex::fillSlots(std::vector<Slot> filled)
{
    std::ranges::sort(filled, {}, &Slot::ticket);
    std::erase_if(m_slots, [](const Slot &slot) { return !slot.snapshot; });
    m_emptySlots = 0;
    std::vector<Slot> whole;
    whole.reserve(m_slots.size() + filled.size());
    std::ranges::merge(m_slots, filled, std::back_inserter(whole), {}, &Slot::ticket,
                       &Slot::ticket);
    m_slots = std::move(whole);
}

std::vector<SharedSnapshot> SnapshotIndex::forget(const QSet<const KeywordSnapshot *> &gone)
{
    std::vector<SharedSnapshot> dropped;
    dropped.reserve(2 * size_t(gone.size()));
    // The set is asked once for each, and nothing of a snapshot itself is touched.
    const std::uint64_t first = m_slots.empty() ? 0 : m_slots.front().ticket;
    std::vector<bool> isGone(size_t(m_nextTicket - first));
    for (DatedList &list : m_byKeyword) {
        for (const Dated &dated : list)
            isGone[size_t(dated.ticket - first)] = gone.contains(dated.snapshot.get());
        takeOut(list, isGone, first, dropped);
    }
    takeOut(m_slots, isGone, first, dropped);
    return dropped;
}

template <class Entry>
void SnapshotIndex::takeOut(std::vector<Entry> &entries, const std::vector<bool> &isGone,
                            std::uint64_t firstTicket, std::vector<SharedSnapshot> &dropped)
{
    auto kept = entries.begin();
    for (Entry &entry : entries) {
        if (isGone[size_t(entry.ticket - firstTicket)])
            dropped.push_back(std::move(entry.snapshot));
        else if (&*kept == &entry)
            ++kept;
        else
            *kept++ = std::move(entry);
    }
    entries.erase(kept, entries.end());
}

SharedSnapshot SnapshotIndex::newest(const QUuid &keywordId, Date now) const
{
    const auto entry = m_byKeyword.constFind(keywordId);
    if (entry == m_byKeyword.cend())
        return nullptr;
    const auto ahead = std::ranges::partition_point(
        *entry, [=](const Dated &dated) { return !liesAhead(dated.date, now); });
    if (ahead == entry->cbegin())
        return nullptr;
    auto newest = ahead - 1;
    while (newest != entry->cbegin() && (newest - 1)->date == newest->date)
        --newest;
    return newest->snapshot;
}

std::vector<SharedSnapshot> SnapshotIndex::ofKeyword(const QUuid &keywordId) const
{
    std::vector<SharedSnapshot> result;
    const auto entry = m_byKeyword.constFind(keywordId);
    if (entry == m_byKeyword.cend())
        return result;
    result.reserve(entry->size());
    for (const Dated &dated : *entry)
        result.push_back(dated.snapshot);
    return result;
}

std::vector<SharedSnapshot> SnapshotIndex::inFileOrder() const
{
    std::vector<SharedSnapshot> result;
    result.reserve(size());
    for (const Slot &slot : m_slots) {
        if (slot.snapshot)
            result.push_back(slot.snapshot);
    }
    return result;
}

void SnapshotIndex::emptySlot(std::uint64_t ticket)
{
    std::ranges::lower_bound(m_slots, ticket, {}, &Slot::ticket)->snapshot.reset();
    ++m_emptySlots;
}

void SnapshotIndex::dropEmptySlots()
{
    if (m_emptySlots * 2 <= m_slots.size())
        return;
    std::erase_if(m_slots, [](const Slot &slot) { return !slot.snapshot; });
    m_emptySlots = 0;
}

} // namespace veltrix
