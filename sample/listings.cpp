// SPDX-License-Identifier: GPL-3.0-or-later
// Names and phrases of apps, put together from the texts of themes and languages.
#include "sample/listings.h"

#include "sample/text_folding.h"

#include <algorithm>

namespace veltrix::sample
{

namespace
{

constexpr double translatedShare = 0.62;
/// Words shorter than this, such as "for", say nothing about the topic of a name.
constexpr qsizetype tellingWordLength = 4;

/// Whether a topic shares a word with a name that is not the theme's own first word:
/// "photo" is in nearly every name of the theme and tells nothing.
bool speaksOf(const QStringList &nameWords, const QStringList &topicWords,
              const QString &commonWord)
{
    return std::ranges::any_of(topicWords, [&](const QString &word) {
        return word.size() >= tellingWordLength && word != commonWord && nameWords.contains(word);
    });
}

/// The topics that an English name speaks of, and up to `further` others by chance.
QStringList phrasesForName(const Theme &theme, const QString &name, int further, Dice &dice)
{
    const QStringList nameWords = foldedWords(name);
    const QString commonWord = foldedWords(theme.topics.front().front()).front();
    QStringList phrases;
    QList<QStringList> others;
    for (const QStringList &topic : theme.topics) {
        if (speaksOf(nameWords, foldedWords(topic.join(u' ')), commonWord))
            phrases += topic;
        else
            others += topic;
    }
    for (int count = 0; count < further && !others.isEmpty(); ++count)
        phrases += others.takeAt(dice.below(static_cast<int>(others.size())));
    return phrases;
}

} // namespace

QString slugOf(const QString &name)
{
    QString slug;
    for (const QChar character : name.toLower()) {
        if (character.unicode() < 128 && character.isLetterOrNumber())
            slug += character;
        else if (!slug.isEmpty() && !slug.endsWith(QLatin1Char('-')))
            slug += QLatin1Char('-');
    }
    while (slug.endsWith(QLatin1Char('-')))
        slug.chop(1);
    return slug.isEmpty() ? QStringLiteral("app") : slug;
}

Listing translatedListing(const QString &brand, const Theme &theme, const LanguageTexts &texts,
                          int naming)
{
    const auto &[namings, phrases] = texts.of(theme);
    return {QStringLiteral("%1: %2").arg(brand, namings[naming % namings.size()]), phrases};
}

void writeWorldListings(SampleApp &app, const QString &brand, const QString &englishName,
                        Dice &dice)
{
    app.listings.fill(
        {englishName, phrasesForName(*app.theme, englishName, 1 + dice.below(2), dice)});
    for (const LanguageTexts &texts : languages()) {
        if (texts.language == Language::English)
            continue;
        Listing local = translatedListing(brand, *app.theme, texts, dice.below(12));
        // Every app leaves out some phrases, so that not all of a theme answer to all of them.
        while (local.phrases.size() > 3 && dice.chance(0.75))
            local.phrases.removeAt(dice.below(static_cast<int>(local.phrases.size())));
        if (dice.chance(translatedShare))
            app.listings[texts.language] = local;
    }
}

} // namespace veltrix::sample
