// SPDX-License-Identifier: GPL-3.0-or-later
// What is told of measuring: how far it is, what it failed at, how it ended.
#pragma once

#include "model/tracked_keyword.h"

#include <QString>

#include <optional>

namespace veltrix
{

/// How far measuring is: the background queue, the refresh of all rankings and the refresh of
/// single rows counted together, a keyword that several of them wait for once.
struct RefreshProgress {
    /// Keywords measured since nothing was to be measured.
    int done = 0;
    /// Keywords that still wait, the one being measured not counted.
    int waiting = 0;
    /// The keyword that is being measured now; of several, one that the user asked for.
    std::optional<TrackedKeyword> current;

    [[nodiscard]] bool isIdle() const { return !current && waiting == 0; }
    [[nodiscard]] int total() const { return done + waiting + (current ? 1 : 0); }
    bool operator==(const RefreshProgress &) const = default;
};

/// What a refresh ended at.
struct RefreshFailure {
    TrackedKeyword keyword;
    /// In words for the user.
    QString reason;
    bool operator==(const RefreshFailure &) const = default;
};

/// How a refresh of all rankings ended.
struct HistoryRefresh {
    /// Keywords that were measured; none when nothing was stale.
    int measured = 0;
    /// What ended it before its time.
    std::optional<RefreshFailure> failure;
    /// When it ended in its time: when the next ranking becomes stale.
    std::optional<Date> nextStale;
};

} // namespace veltrix
