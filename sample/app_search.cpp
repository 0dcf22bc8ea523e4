// SPDX-License-Identifier: GPL-3.0-or-later
// Finds and ranks apps for a search term.
#include "sample/app_search.h"

#include "sample/dice.h"
#include "sample/market.h"
#include "sample/text_folding.h"

#include <algorithm>
#include <cmath>

namespace veltrix::sample
{

namespace
{

const QString space = u" "_qs;

/// Words of any language that say nothing about what is searched for.
bool isStopWord(const QString &word)
{
    return std::ranges::any_of(languages(), [&word](const LanguageTexts &texts) {
        return texts.stopWords.contains(word);
    });
}

/// One form for "filter" and "filters".
QString withoutPlural(const QString &word)
{
    const bool plural =
        word.size() > 3 && word.endsWith(QLatin1Char('s')) && !word.endsWith(QStringLiteral("ss"));
    return plural ? word.chopped(1) : word;
}

/// One form for the Arabic word with and without its article.
QString withoutArticle(const QString &word)
{
    const bool article = word.size() > 4 && word.startsWith(QStringLiteral("ال"));
    return article ? word.mid(2) : word;
}

QStringList comparableWords(QStringView text)
{
    QStringList words = foldedWords(text);
    for (QString &word : words)
        word = withoutArticle(withoutPlural(word));
    return words;
}

/// Every word of a theme's topics in a language.
QStringList topicWords(const LocalTheme &theme)
{
    QStringList words;
    for (const QString &phrase : theme.phrases)
        words += comparableWords(phrase);
    words.removeDuplicates();
    return words;
}

/// How well a word is found among others: 1 whole, 0.6 as the beginning of one, 0 not at all.
double found(const QString &word, const QStringList &among)
{
    if (among.contains(word))
        return 1;
    const bool byParts = isSearchedByParts(word);
    const bool isPart = std::ranges::any_of(among, [&](const QString &other) {
        return byParts ? other.contains(word) : word.size() >= 3 && other.startsWith(word);
    });
    return isPart ? (byParts ? 1.0 : 0.6) : 0.0;
}

/// From −1 to 1; moves in straight lines between values that are nine days apart.
double slowNoise(std::uint64_t seed, qint64 day)
{
    constexpr qint64 step = 9;
    const qint64 knot = day / step;
    const double before = unitFromHash(stableHash(seed, knot));
    const double after = unitFromHash(stableHash(seed, knot + 1));
    const double between = static_cast<double>(day % step) / static_cast<double>(step);
    return 2 * (before + (after - before) * between) - 1;
}

double drift(const SampleApp &app, const QStringList &words, QDate day)
{
    const std::uint64_t seed = stableHash(app.trackId, stableTextHash(words.join(space).toUtf8()));
    const double daily = 2 * unitFromHash(stableHash(seed, day.toJulianDay(), 1)) - 1;
    return 1 + 0.08 * slowNoise(seed, day.toJulianDay()) + 0.025 * daily;
}

double standing(const SampleApp &app, const Storefront &storefront, QDate day)
{
    const auto ratings = static_cast<double>(ratingCount(app, storefront, day));
    return (0.3 + std::log10(1 + ratings) / 6.5) * (0.8 + averageStars(app, storefront, day) / 25);
}

struct Ranked {
    const SampleApp *app;
    double score;
};

bool ranksBefore(const Ranked &left, const Ranked &right)
{
    return left.score != right.score ? left.score > right.score
                                     : left.app->trackId < right.app->trackId;
}

} // namespace

AppSearch::AppSearch(const SampleCatalog &catalog)
{
    for (const LanguageTexts &texts : languages()) {
        auto &entries = m_entries[texts.language];
        QStringList &parts = m_knownParts[texts.language];
        for (const LocalTheme &theme : texts.themes)
            m_themeWords[texts.language].push_back(topicWords(theme));
        for (const SampleApp &app : catalog.apps()) {
            entries.push_back(entryFor(app, texts));
            for (const QString &word : entries.back().phraseWords)
                if (isSearchedByParts(word))
                    parts += word;
        }
        parts.removeDuplicates();
        std::ranges::stable_sort(parts, std::ranges::greater(), &QString::size);
    }
}

AppSearch::Entry AppSearch::entryFor(const SampleApp &app, const LanguageTexts &texts) const
{
    const Listing &listing = app.listing(texts.language);
    Entry entry;
    entry.app = &app;
    entry.nameWords = comparableWords(listing.name);
    entry.name = space + entry.nameWords.join(space) + space;
    entry.joinedName = entry.nameWords.join(QString());
    entry.themeWords = &m_themeWords[texts.language][static_cast<std::size_t>(app.theme->number)];
    for (const QString &phrase : listing.phrases) {
        const QStringList words = comparableWords(phrase);
        entry.phrases += words.join(space);
        entry.phraseWords += words;
    }
    entry.phraseWords.removeDuplicates();
    entry.otherWords = comparableWords(app.publisher.name) +
                       comparableWords(texts.genres[app.theme->primary.name]);
    return entry;
}

double AppSearch::wordWeight(const Entry &entry, const QString &word)
{
    return std::max({found(word, entry.nameWords), 0.6 * found(word, entry.phraseWords),
                     0.3 * found(word, entry.otherWords), 0.15 * found(word, *entry.themeWords)});
}

double AppSearch::relevance(const Entry &entry, const QStringList &words)
{
    const QString phrase = words.join(space);
    if (isSearchedByParts(phrase) ? entry.joinedName.contains(words.join(QString()))
                                  : entry.name.contains(space + phrase + space))
        return 1;
    double total = 0;
    qsizetype matched = 0;
    bool allInName = true;
    for (const QString &word : words) {
        const double weight = wordWeight(entry, word);
        total += weight;
        matched += weight > 0 ? 1 : 0;
        allInName = allInName && weight >= 1;
    }
    if (allInName)
        return 0.93;
    if (entry.phrases.contains(phrase))
        return 0.85;
    if (2 * matched < words.size())
        return 0;
    return 0.8 * total / static_cast<double>(words.size());
}

QStringList AppSearch::searchWords(const QString &term, Language language) const
{
    QStringList words;
    const QStringList &parts = m_knownParts[language];
    for (QString word : comparableWords(term)) {
        // 写真編集アプリ is cut into the known 写真編集 and what is left of it.
        while (isSearchedByParts(word)) {
            const auto part = std::ranges::find_if(
                parts, [&word](const QString &known) { return word.startsWith(known); });
            if (part == parts.end() || part->size() == word.size())
                break;
            words += *part;
            word = word.mid(part->size());
        }
        words += word;
    }
    QStringList telling;
    std::ranges::remove_copy_if(words, std::back_inserter(telling), isStopWord);
    return telling.isEmpty() ? words : telling;
}

std::vector<const SampleApp *> AppSearch::find(const QString &term, const Storefront &storefront,
                                               QDate day) const
{
    const QStringList words = searchWords(term, storefront.language);
    if (words.isEmpty())
        return {};
    std::vector<Ranked> ranked;
    for (const Entry &entry : m_entries[storefront.language]) {
        const double match = relevance(entry, words);
        if (match > 0 && isSold(*entry.app, storefront, day))
            ranked.push_back({entry.app, match * match * standing(*entry.app, storefront, day) *
                                             drift(*entry.app, words, day)});
    }
    std::ranges::sort(ranked, ranksBefore);
    std::vector<const SampleApp *> apps;
    std::ranges::transform(ranked, std::back_inserter(apps), &Ranked::app);
    return apps;
}

} // namespace veltrix::sample
