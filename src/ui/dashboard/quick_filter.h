// SPDX-License-Identifier: GPL-3.0-or-later
// The questions that are asked of an app's keywords most often, each one press away.
#pragma once

#include <QString>

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>

namespace veltrix
{

struct KeywordEntry;

/// Which keywords are shown, beside what search and storefront filter leave.
enum class QuickFilter {
    All,
    /// On rank 1 to 10.
    Top10,
    /// Ranked higher than at the check before, or come into the results since.
    Risen,
    /// Ranked lower than at the check before, or gone from the results since.
    Fallen,
    /// Measured, and not among the results.
    NotRanked,
    /// Without a measurement on the current UTC day.
    NotMeasuredToday,
};

/// All of them in the order in which they are offered; the value is the place.
inline constexpr std::array quickFilters{QuickFilter::All,       QuickFilter::Top10,
                                         QuickFilter::Risen,     QuickFilter::Fallen,
                                         QuickFilter::NotRanked, QuickFilter::NotMeasuredToday};

/// A bit for each filter that shows a keyword, at the filter's place.
using QuickFilterMatches = std::bitset<quickFilters.size()>;
/// How many keywords each filter shows, at the filter's place.
using QuickFilterCounts = std::array<int, quickFilters.size()>;

/// `today` is the current UTC day.
QuickFilterMatches quickFilterMatches(const KeywordEntry &entry, std::int64_t today);

/// "Top 10".
QString quickFilterTitle(QuickFilter filter);
/// What is said when no keyword passes: a heading, and a sentence. Not for QuickFilter::All.
QString nothingPassedTitle(QuickFilter filter);
QString nothingPassedText(QuickFilter filter);

/// Stable name for saved layouts.
const char *quickFilterId(QuickFilter filter);
/// The filter of an id, or nothing.
std::optional<QuickFilter> quickFilterOf(const QString &id);

} // namespace veltrix
