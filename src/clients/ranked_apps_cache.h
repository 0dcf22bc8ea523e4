// SPDX-License-Identifier: GPL-3.0-or-later
// Ranked results of keyword searches, kept from one start of the program to the next.
#pragma once

#include "model/saved_results.h"

#include <map>

namespace veltrix
{

/// By rankedAppsKey().
using RankedAppsCache = std::map<QString, SavedResults>;

/// The storefront code in upper case, a colon, and the keyword trimmed and in lower case.
QString rankedAppsKey(const QString &keyword, const QString &country);

/// Results of that age and older are not taken over from the file: seven days.
inline constexpr Seconds rankedAppsLifetime{604'800};
/// The most entries that the file holds.
inline constexpr qsizetype mostSavedRankedApps = 100;

/// The entries of the cache file that are younger than rankedAppsLifetime. A file that is missing
/// or cannot be read is an empty cache.
RankedAppsCache loadRankedAppsCache(const QString &path, Date now);

/// Writes the newest entries, at most mostSavedRankedApps, creating the folder when it is missing.
/// A failure leaves the old file and is ignored.
void saveRankedAppsCache(const QString &path, const RankedAppsCache &cache);

} // namespace veltrix
