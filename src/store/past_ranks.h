// SPDX-License-Identifier: GPL-3.0-or-later
// The ranks that the history has of many keywords.
#pragma once

#include "model/date.h"
#include "store/rank_days.h"

#include <QUuid>

#include <optional>
#include <vector>

namespace veltrix
{

class HistoryDatabase;

/// What the history knows of keywords beside the state file.
struct PastRanks {
    struct Keyword {
        QUuid id;
        /// UTC days of the state file, ascending; the history's checks of them do not count.
        std::vector<std::int64_t> hiddenDays;
    };
    struct Question {
        std::vector<Keyword> keywords;
        /// Checks that lie ahead of it do not count.
        Date now;
    };

    /// In the order of the question.
    std::vector<RankDays> ofKeywords;
    /// The earliest check that lies ahead.
    std::optional<Date> firstAhead;

    /// Reads all checks of the keywords. Throws DatabaseError.
    static PastRanks read(HistoryDatabase &history, const Question &question);
};

/// One check a UTC day, as RankingTimeline keeps it, made of checks that come oldest first.
class DailyChecks
{
public:
    /// Dates that no calendar has are left out.
    void add(Date date, std::optional<std::int64_t> rank);
    [[nodiscard]] const std::vector<RankCheck> &all() const { return m_checks; }
    void clear() { m_checks.clear(); }

private:
    std::vector<RankCheck> m_checks;
    Date m_last;
};

} // namespace veltrix
