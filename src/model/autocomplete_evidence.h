// SPDX-License-Identifier: GPL-3.0-or-later
// What the App Store's search suggestions showed for a keyword.
#pragma once

#include "model/date.h"
#include "model/field_list.h"

#include <QStringList>

namespace veltrix
{

/// One search-hints request.
struct AutocompleteProbe {
    /// What was typed.
    QString prefix;
    /// Suggestions in the service's order, best first.
    QStringList suggestions;
    Date fetchedAt;
    /// 1-based position of the keyword itself; absent when it was not suggested.
    std::optional<std::int64_t> exactRank;

    bool operator==(const AutocompleteProbe &) const = default;
};

template <>
inline constexpr auto fieldsOf<AutocompleteProbe> = std::tuple{
    field("prefix", &AutocompleteProbe::prefix),
    field("suggestions", &AutocompleteProbe::suggestions),
    field("fetchedAt", &AutocompleteProbe::fetchedAt),
    field("exactRank", &AutocompleteProbe::exactRank),
};

/// The probes for one keyword and the score of the days on which it was observed.
struct AutocompleteEvidence {
    QString keyword;
    QString country;
    /// Storefront identifier that was sent.
    QString storefront;
    /// Language that was sent.
    QString language;
    QList<AutocompleteProbe> probes;
    std::int64_t plannedProbes = 0;
    /// Distinct UTC days with an observation.
    std::int64_t observedDays = 0;
    /// The reported score: today's, or the seven-day median from the third observed day on.
    std::optional<std::int64_t> dailyScore;
    /// Highest less lowest daily score in the last seven days.
    std::optional<std::int64_t> scoreSpread;
    /// The keyword looks like a brand name.
    bool possibleBrand = false;

    bool operator==(const AutocompleteEvidence &) const = default;
};

template <>
inline constexpr auto fieldsOf<AutocompleteEvidence> = std::tuple{
    field("keyword", &AutocompleteEvidence::keyword),
    field("country", &AutocompleteEvidence::country),
    field("storefront", &AutocompleteEvidence::storefront),
    field("language", &AutocompleteEvidence::language),
    field("probes", &AutocompleteEvidence::probes),
    field("plannedProbes", &AutocompleteEvidence::plannedProbes),
    field("observedDays", &AutocompleteEvidence::observedDays),
    field("dailyScore", &AutocompleteEvidence::dailyScore),
    field("scoreSpread", &AutocompleteEvidence::scoreSpread),
    field("possibleBrand", &AutocompleteEvidence::possibleBrand),
};

} // namespace veltrix
