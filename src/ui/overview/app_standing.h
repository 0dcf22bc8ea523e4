// SPDX-License-Identifier: GPL-3.0-or-later
// How an app stands with all of its keywords.
#pragma once

#include "model/date.h"
#include "model/url.h"
#include "store/rank_days.h"
#include "ui_kit/widgets/small_line.h"

#include <QString>
#include <QUuid>

#include <array>
#include <optional>
#include <vector>

namespace veltrix
{

/// What today is compared with.
enum class Period { Yesterday, Week, Month };

inline constexpr std::array periods{Period::Yesterday, Period::Week, Period::Month};
/// 1, 7 or 30.
int daysOf(Period period);
/// "since yesterday", "in 7 days", "in 30 days".
QString sentenceOf(Period period);

/// Whether the keyword came closer to the top, or away from it; entering the results and leaving
/// them are such moves, too.
bool isRise(const RankMovement &movement);
bool isFall(const RankMovement &movement);

/// The ranks of one keyword as a small line of thirty days.
SmallLine smallLineOf(const RankDays &ranks);

/// The figures of an app's card. A pure value.
struct AppStanding {
    /// Ranks 1 to this, by place in `inTop`.
    static constexpr std::array<int, 4> tops{1, 3, 10, 50};

    QUuid appId;
    QString name;
    std::optional<Url> icon;
    int keywords = 0;
    std::array<int, tops.size()> inTop{};
    /// Of the keywords that rank; absent when none does.
    std::optional<double> averageRank;
    /// The average of each of the last thirty days and of now.
    SmallLine averages;
    struct Moves {
        /// Keywords of which it is known whether they have moved.
        int compared = 0;
        int risen = 0;
        int fallen = 0;
        bool operator==(const Moves &) const = default;
    };
    /// By period.
    std::array<Moves, periods.size()> moves{};
    /// The newest measurement of all; absent before the first.
    std::optional<Date> measuredAt;
    /// Keywords that can be measured, and those of them without a check on the current UTC day.
    int measurable = 0;
    int missingToday = 0;

    [[nodiscard]] const Moves &movesIn(Period period) const { return moves[size_t(period)]; }
    bool operator==(const AppStanding &) const = default;

    /// What is known of one of the app's keywords.
    struct Keyword {
        const RankDays &ranks;
        std::optional<Date> measuredAt;
        bool canBeMeasured = true;
    };
    /// Counts a keyword in.
    void add(const Keyword &keyword);
    /// To be called when all keywords are in.
    void finish();

private:
    struct Sum {
        double ranks = 0;
        int count = 0;
        bool operator==(const Sum &) const = default;
    };
    std::array<Sum, RankDays::daysShown> m_sums{};
    /// Days on which something is known, ranked or not.
    std::array<bool, RankDays::daysShown> m_isKnown{};
};

} // namespace veltrix
