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

void SnapshotIndex::removeKeyword(const QUuid &keywordId)
{
    for (const Dated &removed : m_byKeyword.take(keywordId))
        emptySlot(removed.ticket);
    dropEmptySlots();
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
