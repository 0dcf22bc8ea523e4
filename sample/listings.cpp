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

const LocalTheme &localTheme(ThemeId theme, Language language)
{
    return textsOf(language).themes[static_cast<std::size_t>(theme)];
}

/// Whether a topic shares a word with a name that is not the theme's own first word:
/// "photo" is in nearly every name of the theme and tells nothing.
bool speaksOf(const QStringList &nameWords, const QStringList &topicWords,
              const QString &commonWord)
{
    return std::ranges::any_of(topicWords, [&](const QString &word) {
        return word.size() >= tellingWordLength && word != commonWord && nameWords.contains(word);
    });
}

} // namespace

QStringList split(QStringView texts, char16_t separator)
{
    QStringList parts;
    for (const QStringView part : texts.split(QChar(separator)))
        parts += part.trimmed().toString();
    return parts;
}

QStringList phrasesIn(ThemeId theme, Language language)
{
    return split(localTheme(theme, language).phrases, u',');
}

QString translatedName(const QString &brand, ThemeId theme, Language language, int naming)
{
    const QStringList namings = split(localTheme(theme, language).namings, u'|');
    return QStringLiteral("%1: %2").arg(brand, namings[naming % namings.size()]);
}

QStringList phrasesForName(const Theme &theme, const QString &name, int further, Dice &dice)
{
    const QStringList nameWords = foldedWords(name);
    const QString commonWord = foldedWords(theme.topics.front()).front();
    QStringList phrases;
    QList<QStringView> others;
    for (const QStringView topic : theme.topics) {
        if (speaksOf(nameWords, foldedWords(topic), commonWord))
            phrases += split(topic, u',');
        else
            others += topic;
    }
    for (int count = 0; count < further && !others.isEmpty(); ++count)
        phrases += split(others.takeAt(dice.below(static_cast<int>(others.size()))), u',');
    return phrases;
}

void writeWorldListings(SampleApp &app, const QString &brand, const QString &englishName,
                        Dice &dice)
{
    const Listing english{englishName,
                          phrasesForName(themeOf(app.theme), englishName, 1 + dice.below(2), dice)};
    app.listings.fill(english);
    for (int index = 1; index < languageCount; ++index) {
        const auto language = static_cast<Language>(index);
        const int naming = dice.below(12);
        QStringList phrases = phrasesIn(app.theme, language);
        // Every app leaves out some phrases, so that not all of a theme answer to all of them.
        while (phrases.size() > 3 && dice.chance(0.75))
            phrases.removeAt(dice.below(static_cast<int>(phrases.size())));
        if (dice.chance(translatedShare))
            app.listings[static_cast<std::size_t>(index)] = {
                translatedName(brand, app.theme, language, naming), phrases};
    }
}

void writeLocalListings(SampleApp &app, const QString &name)
{
    app.listings.fill({name, phrasesIn(app.theme, *app.onlyLanguage)});
}

} // namespace veltrix::sample
