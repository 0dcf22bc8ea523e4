// SPDX-License-Identifier: GPL-3.0-or-later
// The terms that are suggested in each language.
#include "sample/hint_index.h"

#include "sample/text_folding.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace veltrix::sample
{

namespace
{

/// An app's name is suggested from so many ratings at home on.
constexpr double wellKnown = 20'000;
/// A term in which only a later word begins with the prefix counts this share of its weight.
constexpr double laterWordShare = 0.35;

double weightOf(const SampleApp &app)
{
    return std::log10(1 + app.homeRatings);
}

/// 1 if the term begins with the prefix, less if a later word does, else 0.
double matchOf(const QString &foldedTerm, const QString &foldedPrefix)
{
    if (foldedTerm.startsWith(foldedPrefix))
        return 1;
    const bool later = isSearchedByParts(foldedPrefix)
                           ? foldedTerm.contains(foldedPrefix)
                           : foldedTerm.contains(QLatin1Char(' ') + foldedPrefix);
    return later ? laterWordShare : 0;
}

} // namespace

HintIndex::HintIndex(const SampleCatalog &catalog)
{
    for (const LanguageTexts &texts : languages()) {
        std::map<QString, double> weights;
        for (const SampleApp &app : catalog.apps()) {
            if (app.onlyLanguage && app.onlyLanguage != texts.language)
                continue;
            const Listing &listing = app.listing(texts.language);
            for (const QString &phrase : listing.phrases)
                weights[phrase.toLower()] += weightOf(app);
            if (app.homeRatings >= wellKnown)
                weights[listing.name.toLower()] += weightOf(app);
        }
        for (const auto &[term, weight] : weights)
            m_entries[texts.language].push_back({{term, weight}, folded(term)});
    }
}

std::vector<Hint> HintIndex::hintsFor(const QString &prefix, Language language) const
{
    const QString foldedPrefix = folded(prefix);
    std::vector<Hint> hints;
    if (foldedPrefix.isEmpty())
        return hints;
    for (const Entry &entry : m_entries[language])
        if (const double match = matchOf(entry.folded, foldedPrefix); match > 0)
            hints.push_back({entry.hint.term, entry.hint.weight * match});
    std::ranges::stable_sort(hints, std::ranges::greater(), &Hint::weight);
    hints.resize(std::min(hints.size(), mostHints));
    return hints;
}

} // namespace veltrix::sample
