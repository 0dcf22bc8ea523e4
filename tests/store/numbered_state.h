// SPDX-License-Identifier: GPL-3.0-or-later
// States that say which save they belong to, for the process that is killed and the one that looks.
#pragma once

#include "store/persisted_state.h"

#include <atomic>
#include <cstdint>

namespace veltrix
{

/// A state of some 200 kB, every record of which follows from the number.
inline PersistedState numberedState(std::int64_t number)
{
    PersistedState state;
    AppProfile app;
    app.trackId = number;
    app.appName = QStringLiteral("State %1").arg(number);
    state.apps.append(app);
    for (int i = 0; i < 40; ++i) {
        auto snapshot = std::make_shared<KeywordSnapshot>();
        snapshot->trackedKeywordId = QUuid(uint(i), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        snapshot->keyword = QStringLiteral("keyword %1 of state %2").arg(i).arg(number);
        snapshot->popularityStatus = QString(4500, QChar(u'a' + char16_t((number + i) % 26)));
        snapshot->fetchedAt = dateFromReferenceSeconds(double(number) + i);
        state.snapshots.push_back(std::move(snapshot));
    }
    return state;
}

/// How far the saving process is; in memory that both share.
struct SaveProgress {
    /// Number of the last state whose save has begun, and of the last that is done.
    std::atomic<std::int64_t> begun{0};
    std::atomic<std::int64_t> done{0};
};

} // namespace veltrix
