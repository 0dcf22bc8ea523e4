// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/overview/app_standing.h"

#include <QCoreApplication>

#include <algorithm>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Overview)
};

} // namespace

int daysOf(Period period)
{
    switch (period) {
    case Period::Yesterday:
        return 1;
    case Period::Week:
        return 7;
    case Period::Month:
        return 30;
    }
    Q_UNREACHABLE();
}

QString sentenceOf(Period period)
{
    return period == Period::Yesterday ? Texts::tr("since yesterday")
                                       : Texts::tr("in %1 days").arg(daysOf(period));
}

bool isRise(const RankMovement &movement)
{
    return movement.kind() == RankMovement::Kind::Improved ||
           movement.kind() == RankMovement::Kind::Entered;
}

bool isFall(const RankMovement &movement)
{
    return movement.kind() == RankMovement::Kind::Declined ||
           movement.kind() == RankMovement::Kind::Left;
}

SmallLine smallLineOf(const RankDays &ranks)
{
    SmallLine line;
    line.days = RankDays::daysShown;
    for (int ago = RankDays::daysShown - 1; ago >= 0; --ago) {
        const auto check = ranks.onDay(ago);
        if (!check)
            continue;
        line.checks.push_back({RankDays::daysShown - 1 - ago,
                               check->rank ? std::optional(double(*check->rank)) : std::nullopt});
    }
    return line;
}

void AppStanding::add(const Keyword &keyword)
{
    ++keywords;
    const RankDays &ranks = keyword.ranks;
    if (keyword.canBeMeasured) {
        ++measurable;
        if (!ranks.isCheckedToday())
            ++missingToday;
    }
    if (keyword.measuredAt)
        measuredAt = std::max(measuredAt.value_or(*keyword.measuredAt), *keyword.measuredAt);
    const auto latest = ranks.latest();
    for (size_t i = 0; latest && latest->rank && i < tops.size(); ++i) {
        if (*latest->rank <= tops[i])
            ++inTop[i];
    }
    for (const Period period : periods) {
        const auto movement = ranks.movementSince(daysOf(period));
        if (!movement)
            continue;
        Moves &counts = moves[size_t(period)];
        ++counts.compared;
        if (isRise(*movement))
            ++counts.risen;
        else if (isFall(*movement))
            ++counts.fallen;
    }
    for (int ago = 0; ago < RankDays::daysShown; ++ago) {
        // Now is what is known last, as in the other figures.
        const auto check = ago == 0 ? latest : ranks.daysAgo(ago);
        if (!check)
            continue;
        m_isKnown[size_t(ago)] = true;
        if (!check->rank)
            continue;
        m_sums[size_t(ago)].ranks += double(*check->rank);
        ++m_sums[size_t(ago)].count;
    }
}

void AppStanding::finish()
{
    averages = {};
    averages.days = RankDays::daysShown;
    averages.leastSpan = 4;
    for (int ago = RankDays::daysShown - 1; ago >= 0; --ago) {
        if (!m_isKnown[size_t(ago)])
            continue;
        const Sum &sum = m_sums[size_t(ago)];
        averages.checks.push_back(
            {RankDays::daysShown - 1 - ago,
             sum.count > 0 ? std::optional(sum.ranks / sum.count) : std::nullopt});
    }
    averageRank =
        m_sums[0].count > 0 ? std::optional(m_sums[0].ranks / m_sums[0].count) : std::nullopt;
}

} // namespace veltrix
