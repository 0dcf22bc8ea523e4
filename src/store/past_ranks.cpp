// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/past_ranks.h"

#include "store/history_database.h"
#include "store/snapshot_index.h"

#include <algorithm>

namespace veltrix
{

void DailyChecks::add(Date date, std::optional<std::int64_t> rank)
{
    if (!isCalendarDate(date))
        return;
    const RankCheck check{utcDay(date), rank};
    const bool isSameDay = !m_checks.empty() && m_checks.back().day == check.day;
    // Of two at the same instant the first counts.
    if (isSameDay && date == m_last)
        return;
    if (isSameDay)
        m_checks.back() = check;
    else
        m_checks.push_back(check);
    m_last = date;
}

PastRanks PastRanks::read(HistoryDatabase &history, const Question &question)
{
    PastRanks past;
    std::vector<QUuid> ids;
    for (const Keyword &keyword : question.keywords)
        ids.push_back(keyword.id);
    const std::int64_t today = utcDay(question.now);
    past.ofKeywords.resize(ids.size(), RankDays(today));
    DailyChecks checks;
    size_t current = 0;
    const auto finish = [&] {
        for (const RankCheck &check : checks.all()) {
            if (!std::ranges::binary_search(question.keywords[current].hiddenDays, check.day))
                past.ofKeywords[current].add(check);
        }
        checks.clear();
    };
    history.eachRank(ids, [&](size_t index, Date date, std::optional<std::int64_t> rank) {
        if (SnapshotIndex::liesAhead(date, question.now)) {
            past.firstAhead = std::min(past.firstAhead.value_or(date), date);
            return;
        }
        if (index != current) {
            finish();
            current = index;
        }
        checks.add(date, rank);
    });
    if (!ids.empty())
        finish();
    return past;
}

} // namespace veltrix
