// SPDX-License-Identifier: GPL-3.0-or-later
// A compared history in words: its days, and its legend. Pure.
#pragma once

#include "ui/history/compared_history.h"

namespace veltrix
{

/// What stands below the chart: what inspectionText() says of the own line, and the marks of the
/// day: "Oct 26: rank 12 · New subtitle".
QString comparedInspection(const ComparedChart &chart, std::optional<size_t> day,
                           const QLocale &locale = wordLocale());

/// What a screen reader says of a day: "Oct 26: Lumen Photo Editor rank 12, Foxglove Film Camera
/// rank 5, note: New subtitle". As inspectionText() has it where there is the own line alone.
QString spokenDay(const ComparedChart &chart, std::optional<size_t> day,
                  const QLocale &locale = wordLocale());

/// An entry of the legend.
struct LegendEntry {
    std::int64_t key = 0;
    QString name;
    LineLook look;
    bool isOn = false;
    /// "# 12"; "—" without a check; "Not ranked in these 90 days" of one that never was. Empty
    /// while the line is off.
    QString rank;
    /// It is a sentence and no rank.
    bool isSentence = false;
    /// "Foxglove Film Camera, orange squares, rank 5"
    QString spoken;
    /// "Tracked since Oct 9", where the line begins later.
    QString detail;

    bool operator==(const LegendEntry &) const = default;
};

/// The own line first.
std::vector<LegendEntry> legendEntries(const ComparedChart &chart, std::optional<size_t> day,
                                       const QLocale &locale = wordLocale());

/// "Ranks on Oct 26", or without a day "Ranks of the latest check · Nov 22"; empty without checks.
QString legendCaption(const ComparedChart &chart, std::optional<size_t> day,
                      const QLocale &locale = wordLocale());

} // namespace veltrix
