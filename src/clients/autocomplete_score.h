// SPDX-License-Identifier: GPL-3.0-or-later
// The arithmetic of autocomplete visibility: which prefixes to type, and what their answers count.
#pragma once

#include "clients/autocomplete_state.h"
#include "model/autocomplete_evidence.h"

namespace veltrix
{

/// The most prefixes that are probed for a keyword.
inline constexpr int mostAutocompleteProbes = 5;
/// From so many observed days on, the median is reported.
inline constexpr std::int64_t daysForMedian = 3;
/// Calendar days over which median and spread are taken, today included.
inline constexpr std::int64_t medianWindowDays = 7;

/// UTC days since 1970-01-01.
std::int64_t autocompleteDay(Date date);

/// The prefixes to type for a keyword, shortest first: up to five, from two characters on at evenly
/// spaced lengths, the whole keyword last. A keyword of one or two characters has only itself.
QStringList autocompletePrefixes(const QString &keyword);

/// 1-based position of the first suggestion that is the keyword, without surrounding space and as
/// foldedForSearch() compares; nothing when none is.
std::optional<std::int64_t> rankAmong(const QStringList &suggestions, const QString &keyword);

/// Visibility from 0 to 100, rounded half away from zero: 100 × Σ w ÷ log₂(1 + rank) ÷ Σ w over the
/// prefixes that are shorter than the keyword, w = 1 − length ÷ full length; a prefix without the
/// keyword adds nothing to the first sum. Nothing when no prefix is shorter.
std::optional<std::int64_t> visibilityScore(const QList<AutocompleteProbe> &probes,
                                            const QString &keyword);

/// What the history of a keyword says on a day.
struct VisibilityReport {
    /// Distinct days of the last seven that have a score.
    std::int64_t observedDays = 0;
    /// The score of that day; from three observed days on, the median of the last seven days, an
    /// even number of them rounded half away from zero.
    std::optional<std::int64_t> score;
    /// Highest less lowest score of the last seven days.
    std::optional<std::int64_t> spread;

    bool operator==(const VisibilityReport &) const = default;
};

/// What `history` says on `today`, a day as autocompleteDay() counts; later days play no part.
VisibilityReport reportVisibility(const QList<AutocompleteDailyScore> &history, std::int64_t today);

/// Drops the days that reportVisibility() reads neither on `today` nor later, and the keywords that
/// have no other.
void dropUnreadScores(std::map<QString, QList<AutocompleteDailyScore>> &history,
                      std::int64_t today);

} // namespace veltrix
