// SPDX-License-Identifier: GPL-3.0-or-later
// Which measurements leave the state file when it becomes too large.
#pragma once

#include "model/keyword_snapshot.h"

#include <QSet>

#include <vector>

namespace veltrix
{

/// How far the moving of days has come.
struct HistoryMove {
    qsizetype done = 0;
    /// 0 while it is not known.
    qsizetype total = 0;

    bool operator==(const HistoryMove &) const = default;
};

/// What has left the state file.
struct MovedDays {
    std::vector<SharedSnapshot> snapshots;
    /// The same, to be looked up.
    QSet<const KeywordSnapshot *> all;
};

/// What a move takes out.
struct OldestDays {
    /// Day by day, the oldest first.
    std::vector<SharedSnapshot> snapshots;
    /// Of their JSON in the state file; of thousands, by samples.
    qint64 bytes = 0;
};

/// The oldest UTC days that make up `bytes` of the state file, or all that may leave it. A
/// keyword's newest two days stay, so that its row and the movement in it need nothing else; what
/// lies ahead of `now` stays and is not taken for the newest. A day of which a keyword has several
/// measurements, as old files may, stays as well.
OldestDays oldestDays(const std::vector<SharedSnapshot> &snapshots, Date now, qint64 bytes);

} // namespace veltrix
