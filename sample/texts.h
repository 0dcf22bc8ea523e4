// SPDX-License-Identifier: GPL-3.0-or-later
// Everything of the made-up App Store that is written in one language.
#pragma once

#include "sample/theme.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace veltrix::sample
{

enum class Language {
    English,
    German,
    French,
    Spanish,
    Portuguese,
    Japanese,
    Korean,
    Thai,
    Arabic,
    Russian,
};
inline constexpr int languageCount = 10;

/// A value for each language.
template <typename Value>
class ByLanguage
{
public:
    Value &operator[](Language language) { return m_values[static_cast<std::size_t>(language)]; }
    const Value &operator[](Language language) const
    {
        return m_values[static_cast<std::size_t>(language)];
    }
    void fill(const Value &value) { m_values.fill(value); }

private:
    std::array<Value, languageCount> m_values;
};

/// A theme in one language.
struct LocalTheme {
    /// What follows the brand in a translated name; none in English.
    QStringList namings;
    /// Phrases that apps are found by.
    QStringList phrases;
};

/// An app made for the speakers of one language; the name stands as it is.
struct LocalApp {
    const Theme *theme;
    QString name;
};

struct LanguageTexts {
    QString name;
    Language language;
    /// Two upper-case letters.
    QString code;
    /// The country in which apps of this language are at home; those for the world count as
    /// English.
    QString homeCountry;
    /// The price of an app that costs nothing.
    QString free;
    /// By the name of the genre.
    QHash<QString, QString> genres;
    /// Words of search terms, folded, that say nothing about what is searched for.
    QStringList stopWords;
    /// Sentences of descriptions; "%1" stands for the app's name, "%2" for a phrase.
    QStringList sentences;
    /// By Theme::number.
    std::vector<LocalTheme> themes;
    /// None in English.
    std::vector<LocalApp> apps;
    /// Who makes the local apps.
    QStringList publishers;

    [[nodiscard]] const LocalTheme &of(const Theme &theme) const
    {
        return themes[static_cast<std::size_t>(theme.number)];
    }
};

/// In the order of Language.
const std::vector<LanguageTexts> &languages();
const LanguageTexts &textsOf(Language language);

} // namespace veltrix::sample
