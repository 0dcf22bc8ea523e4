// SPDX-License-Identifier: GPL-3.0-or-later
// Puts themes and languages in the order of their enumerations.
#include "sample/theme.h"

#include "sample/texts.h"
#include "sample/themes_english.h"

#include <array>
#include <cstddef>

namespace veltrix::sample
{

std::span<const Theme> themes()
{
    static const std::array<Theme, themeCount> all{
        photoTheme(),      videoTheme(),          journalTheme(), budgetTheme(),  tradingTheme(),
        meditationTheme(), privateNetworkTheme(), recipesTheme(), runningTheme(), languagesTheme(),
        calendarTheme(),   notesTheme(),          weatherTheme(), puzzlesTheme(), kidsGamesTheme(),
        socialTheme(),     travelTheme(),         musicTheme()};
    return all;
}

const Theme &themeOf(ThemeId id)
{
    return themes()[static_cast<std::size_t>(id)];
}

const LanguageTexts &textsOf(Language language)
{
    switch (language) {
    case Language::English:
        return englishTexts();
    case Language::German:
        return germanTexts();
    case Language::French:
        return frenchTexts();
    case Language::Spanish:
        return spanishTexts();
    case Language::Portuguese:
        return portugueseTexts();
    case Language::Japanese:
        return japaneseTexts();
    case Language::Korean:
        return koreanTexts();
    case Language::Thai:
        return thaiTexts();
    case Language::Arabic:
        return arabicTexts();
    case Language::Russian:
        return russianTexts();
    }
    return englishTexts();
}

} // namespace veltrix::sample
