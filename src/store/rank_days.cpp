// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/rank_days.h"

#include <algorithm>
#include <iterator>

namespace veltrix
{

RankDays::Packed RankDays::packed(std::optional<std::int64_t> rank)
{
    return rank ? Packed(std::clamp<std::int64_t>(*rank, 1, lowestRank)) : notRanked;
}

std::optional<RankCheck> RankDays::unpacked(PackedCheck check)
{
    if (check.rank == notChecked)
        return std::nullopt;
    return RankCheck{check.day, check.rank == notRanked ? std::nullopt
                                                        : std::optional<std::int64_t>(check.rank)};
}

void RankDays::add(const RankCheck &check)
{
    const PackedCheck made{std::int32_t(check.day), packed(check.rank)};
    const std::int64_t ago = m_today - check.day;
    if (ago >= 0 && ago < std::int64_t(m_ranks.size()))
        m_ranks[size_t(ago)] = made.rank;

    const auto isNewerThan = [&](const PackedCheck &known) {
        return known.rank == notChecked || made.day > known.day;
    };
    if (isNewerThan(m_latest)) {
        m_before = m_latest;
        m_latest = made;
    } else if (isNewerThan(m_before)) {
        m_before = made;
    }

    if (made.rank == notRanked)
        return;
    if (m_best.rank == notChecked || made.rank < m_best.rank ||
        (made.rank == m_best.rank && made.day < m_best.day))
        m_best = made;
}

bool RankDays::forget(std::int64_t day)
{
    const std::int64_t ago = m_today - day;
    if (ago >= 0 && ago < std::int64_t(m_ranks.size()))
        m_ranks[size_t(ago)] = notChecked;

    const auto isOfThatDay = [=](const PackedCheck &known) {
        return known.rank != notChecked && known.day == day;
    };
    bool isKnownStill = true;
    if (isOfThatDay(m_latest)) {
        m_latest = std::exchange(m_before, {});
        isKnownStill = false;
    } else if (isOfThatDay(m_before)) {
        m_before = {};
        isKnownStill = false;
    }
    if (isOfThatDay(m_best)) {
        m_best = {};
        isKnownStill = false;
    }
    m_isWhole = m_isWhole && isKnownStill;
    return isKnownStill;
}

void RankDays::moveTo(std::int64_t today)
{
    const std::int64_t passed = std::clamp<std::int64_t>(today - m_today, 0, std::ssize(m_ranks));
    std::shift_right(m_ranks.begin(), m_ranks.end(), passed);
    std::fill_n(m_ranks.begin(), passed, notChecked);
    m_today = std::int32_t(today);
    // A check of a little ahead may be of a day that has come.
    for (const PackedCheck &check : {m_latest, m_before}) {
        const std::int64_t ago = today - check.day;
        if (check.rank != notChecked && ago >= 0 && ago < std::int64_t(m_ranks.size()))
            m_ranks[size_t(ago)] = check.rank;
    }
}

bool RankDays::isCheckedToday() const
{
    return m_latest.rank != notChecked && m_latest.day >= m_today;
}

std::optional<RankCheck> RankDays::onDay(int daysAgo) const
{
    return unpacked({std::int32_t(m_today - daysAgo), m_ranks[size_t(daysAgo)]});
}

std::optional<RankCheck> RankDays::daysAgo(int days) const
{
    for (int ago = days; ago <= days + mostDaysEarlier; ++ago) {
        if (const auto check = onDay(ago))
            return check;
    }
    return std::nullopt;
}

bool RankDays::isNewBest() const
{
    // The first day of a rank is the one that counts, so no day before had it.
    return m_isWhole && m_best.rank != notChecked && m_best == m_latest &&
           m_before.rank != notChecked && m_before.rank != notRanked;
}

std::optional<RankMovement> RankDays::movement() const
{
    const auto current = latest();
    if (!current)
        return std::nullopt;
    const auto previous = before();
    return previous ? RankMovement::between(previous->rank, current->rank) : RankMovement::first();
}

std::optional<RankMovement> RankDays::movementSince(int days) const
{
    const auto current = latest();
    const auto previous = daysAgo(days);
    if (!previous || current->day <= m_today - days)
        return std::nullopt;
    return RankMovement::between(previous->rank, current->rank);
}

} // namespace veltrix
