// SPDX-License-Identifier: GPL-3.0-or-later
// Measurements that follow from their number, for the process that is killed while it moves them
// and the one that looks whether all are there.
#pragma once

#include "store/persisted_state.h"

#include <atomic>
#include <cstdint>

namespace veltrix
{

/// How far the process that is killed has come; in memory that both share.
struct MeasuringProgress {
    /// The last measurement that was handed over, and the last that was saved.
    std::atomic<std::int64_t> begun;
    std::atomic<std::int64_t> done;
};

/// Each keyword is measured so often and then removed.
inline constexpr std::int64_t measurementsPerKeyword = 150;

inline QUuid numberedKeyword(std::int64_t measurement)
{
    const auto number = uint(measurement / measurementsPerKeyword);
    return {number, 1, 0, 0, 0, 0, 0, 0, 0, 0, 1};
}

inline Date numberedDate(std::int64_t measurement)
{
    return startOfUtcDay(9'000 + measurement) + Seconds(30'000);
}

inline SharedSnapshot numberedMeasurement(std::int64_t number)
{
    auto snapshot = std::make_shared<KeywordSnapshot>();
    snapshot->id = QUuid(uint(number), 2, 0, 0, 0, 0, 0, 0, 0, 0, 2);
    snapshot->trackedKeywordId = numberedKeyword(number);
    snapshot->keyword = QStringLiteral("keyword");
    snapshot->country = QStringLiteral("US");
    snapshot->fetchedAt = numberedDate(number);
    snapshot->position = number;
    return snapshot;
}

inline PersistedState stateOfKeyword(const QUuid &keywordId)
{
    PersistedState state;
    state.apps.append(AppProfile{});
    TrackedKeyword keyword;
    keyword.id = keywordId;
    state.trackedKeywords.append(keyword);
    return state;
}

} // namespace veltrix
