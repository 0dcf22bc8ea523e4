// SPDX-License-Identifier: GPL-3.0-or-later
// Phrases of competitors' listings that could be tracked, best first.
#pragma once

#include "model/itunes_app_result.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace veltrix
{

/// Where in a listing a phrase stands, the most telling place first.
enum class IdeaPlace { Title, Subtitle, Description };

/// What is known of the listing of a tracked competitor in its storefront.
struct RivalListing {
    std::int64_t trackId = 0;
    QString name;
    /// Upper-cased storefront code.
    QString country;
    ITunesAppResult listing;

    bool operator==(const RivalListing &) const = default;
};

/// A phrase in a storefront; the text is folded (foldedCase()).
struct IdeaKey {
    QString phrase;
    QString country;

    bool operator==(const IdeaKey &) const = default;
};

inline size_t qHash(const IdeaKey &key, size_t seed = 0)
{
    return qHashMulti(seed, key.phrase, key.country);
}

/// What is known of phrases beside the listings.
struct IdeaEvidence {
    /// The App Store has suggested them.
    QSet<IdeaKey> suggested;
    /// Searches whose results are kept: the names of the competitors among them.
    QHash<IdeaKey, QStringList> ranking;
};

/// A phrase that could be tracked, and why it stands where it stands.
struct KeywordIdea {
    QString phrase;
    QString country;
    /// The most telling place that it has in any of the listings.
    IdeaPlace place = IdeaPlace::Title;
    /// The competitors whose listing has it, by name; those in whose most telling place it stands
    /// first.
    QStringList rivals;
    bool isSuggested = false;
    /// The competitors that rank for it; absent where no search for it is kept.
    std::optional<QStringList> ranking;

    /// What the order is made from, an estimate without a unit: 3, 2 or 1 for the place; 2 for each
    /// further competitor, 6 at most; 3 when the App Store suggests it; 2 when a competitor ranks.
    [[nodiscard]] int points() const;
    bool operator==(const KeywordIdea &) const = default;
};

/// The ideas in those listings, `most` at most: most points first, and with as many those of the
/// listing that comes first. Phrases are those that keywordPhrases() finds in names and subtitles,
/// and what the App Store suggests and a description says; most of what else a description says is
/// no search term. What is tracked is no idea.
[[nodiscard]] QList<KeywordIdea>
keywordIdeas(const QList<RivalListing> &listings, const IdeaEvidence &evidence,
             const std::function<bool(const QString &phrase, const QString &country)> &isTracked,
             qsizetype most);

/// "In the title of Foxglove and 2 more · suggested by the App Store · Foxglove ranks for it".
[[nodiscard]] QString ideaReasons(const KeywordIdea &idea);

} // namespace veltrix
