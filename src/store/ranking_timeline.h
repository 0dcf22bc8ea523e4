// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking history of one keyword, day by day.
#pragma once

#include "model/date.h"
#include "model/rank_movement.h"

#include <QUuid>

#include <optional>
#include <vector>

namespace veltrix
{

/// Turns single checks of a keyword's rank into a history of UTC days. A pure value.
struct RankingTimeline {
    /// One check of the rank.
    struct Observation {
        /// The snapshot's id.
        QUuid id;
        /// When it was measured.
        Date date;
        /// 1-based; absent when the app was looked for and not ranked.
        std::optional<std::int64_t> position;

        bool operator==(const Observation &) const = default;
    };

    /// One UTC day of the history.
    struct Day {
        /// Start of the day.
        Date date;
        /// The day's last check; absent on a day without one, which says nothing about the rank.
        std::optional<Observation> observation;
        /// Movement since the observation before, on whatever day that was; absent exactly when
        /// there is no observation.
        std::optional<RankMovement> movement;

        bool operator==(const Day &) const = default;
    };

    /// The most days that days() lists.
    static constexpr std::int64_t longestRange = 14;

    RankingTimeline() = default;
    /// Keeps the last check of each UTC day (of two at the same instant, the one given first).
    /// `fallbackStart` is when tracking began, used when there is no observation.
    RankingTimeline(std::vector<Observation> allObservations, Date fallbackStart);

    /// At most one a UTC day, oldest first.
    std::vector<Observation> observations;
    /// The earliest date of all observations given.
    Date startedAt;

    /// The last `count` days up to and with the day of `now`, oldest first, without the days before
    /// `startedAt`. A count above longestRange is longestRange; none for a count below 1 or a start
    /// after today.
    [[nodiscard]] std::vector<Day> days(std::int64_t count, Date now) const;

    /// The movement to the newest observation; absent when there is none.
    [[nodiscard]] std::optional<RankMovement> latestMovement() const;

    bool operator==(const RankingTimeline &) const = default;

private:
    [[nodiscard]] RankMovement movementTo(size_t index) const;
};

} // namespace veltrix
