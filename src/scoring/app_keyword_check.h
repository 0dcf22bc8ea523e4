// SPDX-License-Identifier: GPL-3.0-or-later
// Which keyword phrases an app's own listing targets, and the row that shows how it fares for one.
#pragma once

#include "model/itunes_app_result.h"

#include <optional>

namespace veltrix
{

/// One phrase of a researched app's listing. Its keyword is its identity.
struct AppKeywordCheck {
    QString keyword;
    /// 1-based rank of the researched app for the phrase.
    std::optional<std::int64_t> position;
    /// 1-based rank of the user's own app for the phrase.
    std::optional<std::int64_t> ownPosition;
    /// 5 to 100; absent until measured.
    std::optional<std::int64_t> popularity;
    /// 0 to 100; absent until measured.
    std::optional<std::int64_t> difficulty;

    bool operator==(const AppKeywordCheck &) const = default;
};

/// Most phrases that are taken from a listing.
inline constexpr qsizetype keywordPhraseLimit = 30;

/// The keyword phrases of an app's listing, lower-cased, each once, at most thirty.
///
/// Name, subtitle and primary genre are read in this order, segment by segment: a phrase never
/// crosses punctuation. Of each segment come the phrases of two words, then single words, then
/// those of three. A phrase neither begins nor ends with a stop word, has 3 to 100 characters and
/// at least one letter. Texts that are missing are skipped; an app without any has no phrases.
QStringList keywordPhrases(const ITunesAppResult &app);

} // namespace veltrix
