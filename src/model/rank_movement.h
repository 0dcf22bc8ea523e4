// SPDX-License-Identifier: GPL-3.0-or-later
// How a rank moved from one observation to the next.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace veltrix
{

/// The movement of an app's rank between two consecutive observations of a keyword. Ranks count
/// from the top, so from 7 to 4 is an improvement by 3.
class RankMovement
{
public:
    /// What became of the position since the observation before.
    enum class Kind {
        /// Ranked higher than before, by places().
        Improved,
        /// Ranked lower than before, by places().
        Declined,
        /// There is no observation before this one.
        First,
        Unchanged,
        /// Ranked now, not ranked before.
        Entered,
        /// Not ranked now, ranked before.
        Left,
        StillUnranked,
    };

    /// `places` is positive.
    static constexpr RankMovement improved(std::int64_t places) { return {Kind::Improved, places}; }
    static constexpr RankMovement declined(std::int64_t places) { return {Kind::Declined, places}; }
    static constexpr RankMovement first() { return {Kind::First, 0}; }
    static constexpr RankMovement unchanged() { return {Kind::Unchanged, 0}; }
    static constexpr RankMovement entered() { return {Kind::Entered, 0}; }
    static constexpr RankMovement left() { return {Kind::Left, 0}; }
    static constexpr RankMovement stillUnranked() { return {Kind::StillUnranked, 0}; }

    /// The movement from one position to the next; no position is "looked for and not ranked".
    static RankMovement between(std::optional<std::int64_t> previous,
                                std::optional<std::int64_t> current);

    [[nodiscard]] constexpr Kind kind() const { return m_kind; }
    /// Places gained or lost, positive; 0 for every other kind.
    [[nodiscard]] constexpr std::int64_t places() const { return m_places; }
    /// "↑ 3", "↓ 2", "First observation", "No change", "Entered results", "Left results" or "Still
    /// not ranked".
    [[nodiscard]] QString label() const;

    bool operator==(const RankMovement &) const = default;

private:
    constexpr RankMovement(Kind kind, std::int64_t places) : m_kind(kind), m_places(places) {}

    Kind m_kind;
    std::int64_t m_places;
};

} // namespace veltrix
