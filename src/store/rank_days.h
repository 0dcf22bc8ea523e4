// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of a keyword's ranks without reading its measurements.
#pragma once

#include "model/rank_movement.h"

#include <array>
#include <cstdint>
#include <optional>

namespace veltrix
{

/// A UTC day's last check of a keyword's rank.
struct RankCheck {
    /// utcDay() of it.
    std::int64_t day = 0;
    /// 1-based; absent when the app was looked for and not ranked.
    std::optional<std::int64_t> rank;

    bool operator==(const RankCheck &) const = default;
};

/// The ranks of one keyword on the last days, its newest two checks and the best of all, seen on
/// one UTC day. Some 120 bytes, however long the history is. Ranks beyond 1 to lowestRank, which
/// only a damaged file has, count as the nearest of these.
///
/// What stood n days ago is the check of that day; when there was none, the nearest one of the
/// mostDaysEarlier days before it; without that, nothing is known of it.
class RankDays
{
public:
    /// Today and the thirty days before it.
    static constexpr int daysShown = 31;
    static constexpr int mostDaysEarlier = 7;
    static constexpr std::int64_t lowestRank = 65'534;

    RankDays() = default;
    explicit RankDays(std::int64_t today) : m_today(std::int32_t(today)) {}

    /// Adds the check of a day, in any order of days and one a day; the day may lie ahead of today,
    /// as clocks are not exact.
    void add(const RankCheck &check);
    /// Forgets the check of a day. False when what it was known for (the best, one of the newest)
    /// can only be found by reading all checks again; then isWhole() is false.
    bool forget(std::int64_t day);
    /// The same checks, seen from a later day.
    void moveTo(std::int64_t today);
    void setWhole(bool isWhole) { m_isWhole = isWhole; }

    /// The day on which this is seen.
    [[nodiscard]] std::int64_t today() const { return m_today; }
    /// Whether all checks ever made are in it. False while the history has not been read and when
    /// it could not be: then best() is the best of those that the state file has, and what is
    /// missing here may be in the history.
    [[nodiscard]] bool isWhole() const { return m_isWhole; }

    /// The newest check, however old it is; absent when there is none.
    [[nodiscard]] std::optional<RankCheck> latest() const { return unpacked(m_latest); }
    /// The newest but one.
    [[nodiscard]] std::optional<RankCheck> before() const { return unpacked(m_before); }
    [[nodiscard]] bool isCheckedToday() const;
    /// The check of that very day, 0 to daysShown - 1 days ago; absent when there was none.
    [[nodiscard]] std::optional<RankCheck> onDay(int daysAgo) const;
    /// The check that stood then, by the rule above; 0 to daysShown - 1.
    [[nodiscard]] std::optional<RankCheck> daysAgo(int days) const;
    /// The best rank ever and the first day that had it; absent when there is none.
    [[nodiscard]] std::optional<RankCheck> best() const { return unpacked(m_best); }
    /// Whether the newest check is better than all before it, and that is known.
    [[nodiscard]] bool isNewBest() const;

    /// The movement to the newest check from the one before; absent when there is none.
    [[nodiscard]] std::optional<RankMovement> movement() const;
    /// The movement to the newest check from the one that stood so many days ago. Absent when
    /// nothing is known of that day, or nothing was checked since.
    [[nodiscard]] std::optional<RankMovement> movementSince(int days) const;

    bool operator==(const RankDays &) const = default;

private:
    using Packed = std::uint16_t;
    static constexpr Packed notChecked = 0;
    static constexpr Packed notRanked = 0xFFFF;

    struct PackedCheck {
        std::int32_t day = 0;
        Packed rank = notChecked;

        bool operator==(const PackedCheck &) const = default;
    };

    static Packed packed(std::optional<std::int64_t> rank);
    static std::optional<RankCheck> unpacked(PackedCheck check);

    /// By days ago.
    std::array<Packed, daysShown + mostDaysEarlier> m_ranks{};
    std::int32_t m_today = 0;
    PackedCheck m_latest;
    PackedCheck m_before;
    PackedCheck m_best;
    bool m_isWhole = true;
};

} // namespace veltrix
