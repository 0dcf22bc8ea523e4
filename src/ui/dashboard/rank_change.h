// SPDX-License-Identifier: GPL-3.0-or-later
// How a keyword's rank has changed over days, and its best rank: what the columns beside the
// ranking show, copy and read out.
#pragma once

#include "store/rank_days.h"
#include "ui_kit/table/column.h"

namespace veltrix
{

/// What the table knows of a keyword's ranks over time.
struct RankChanges {
    /// To the newest check from the one that stood so many days ago; absent when there was none.
    std::optional<RankMovement> in7Days;
    std::optional<RankMovement> in30Days;
    /// The best rank ever and its day; absent when there is none, and while it is not known.
    std::optional<RankCheck> best;
    /// The UTC day that this was seen on.
    std::int64_t today = 0;
    /// False while older measurements have not been read: what is absent may be in them.
    bool isWhole = true;

    static RankChanges of(const RankDays &days);

    bool operator==(const RankChanges &) const = default;
};

/// "↑ 6", "↓ 4", "0", "Entered", "Left", or "—" without an earlier check.
QString changeText(const std::optional<RankMovement> &change);
/// For copies and files: "6", "-4", "0", "Entered", "Left", or nothing.
QString changeValue(const std::optional<RankMovement> &change);
/// By places won; entering the results is the most, leaving them the least.
ColumnSortKey changeKey(const std::optional<RankMovement> &change);
/// "up 6 in 7 days"; "no check 7 days ago" without one.
QString changeSentence(const std::optional<RankMovement> &change, int days);

/// "Nov 22", with the year when it is not that of `today`.
QString bestDayText(const RankCheck &best, std::int64_t today);
/// "best rank 9 on Nov 22"; "no rank yet" without one.
QString bestSentence(const RankChanges &changes);

/// For copies and files: "9", or nothing; and its UTC day, which spreadsheets take for a date.
QString bestValue(const RankChanges &changes);
QString bestDateValue(const RankChanges &changes);

/// What a screen reader says of all of them that are known.
QStringList changeSentences(const RankChanges &changes);
/// Why something is missing; empty when it isn't, or there is nothing to be said of it.
QString changeHint(const RankChanges &changes);

void paintChangeCell(const CellPainting &cell, const std::optional<RankMovement> &change);
/// The rank, and its day below it.
void paintBestCell(const CellPainting &cell, const RankChanges &changes);

} // namespace veltrix
