// SPDX-License-Identifier: GPL-3.0-or-later
// What the made-up apps are about: how the apps of a theme are called, found, rated and drawn.
#pragma once

#include "sample/genre.h"

#include <QStringView>

#include <span>

namespace veltrix::sample
{

enum class ThemeId {
    Photo,
    Video,
    Journal,
    Budget,
    Trading,
    Meditation,
    PrivateNetwork,
    Recipes,
    Running,
    Languages,
    Calendar,
    Notes,
    Weather,
    Puzzles,
    KidsGames,
    Social,
    Travel,
    Music,
};
inline constexpr int themeCount = 18;

/// The drawing on an app's icon.
enum class Glyph {
    Aperture,
    Play,
    Book,
    Coin,
    Candles,
    Lotus,
    Shield,
    Pot,
    Stride,
    Speech,
    Grid,
    Page,
    Sun,
    Jigsaw,
    Balloon,
    Ring,
    Compass,
    Note,
};

/// A theme in English, the language in which apps for the whole world are made.
struct Theme {
    ThemeId id;
    Genre primary;
    Genre secondary;
    Glyph glyph;
    /// log10 of the rating count of the theme's largest app in the United States.
    double topRatings;
    /// Powers of ten by which rating counts fall from the first app of the theme to the last.
    double ratingsFall = 4.7;
    /// Share of the apps that cost money.
    double paidShare;
    /// App names in the order of their prominence; "{}" stands for the app's brand.
    std::span<const QStringView> names;
    /// Phrases that apps are found by without showing them; each entry is one topic, its phrases
    /// parted by commas. An app takes the topics that its name speaks of and a few others.
    std::span<const QStringView> topics;
};

/// All themes in the order of ThemeId.
std::span<const Theme> themes();
const Theme &themeOf(ThemeId id);

/// A theme in another language.
struct LocalTheme {
    ThemeId id;
    /// What follows the brand in a translated name; the choices are parted by "|".
    QStringView namings;
    /// Phrases that apps are found by, parted by commas.
    QStringView phrases;
};

/// An app made for the speakers of one language; the name stands as it is.
struct LocalApp {
    ThemeId theme;
    QStringView name;
};

/// Everything of the made-up App Store that is written in one language.
struct LanguageTexts {
    Language language;
    /// The country in which the local apps are at home.
    QStringView homeCountry;
    /// In the order of ThemeId, or empty for English, whose themes are themes().
    std::span<const LocalTheme> themes;
    std::span<const LocalApp> apps;
    std::span<const QStringView> publishers;
    /// Sentences of descriptions; "%1" stands for the app's name, "%2" for a phrase.
    std::span<const QStringView> sentences;
};

const LanguageTexts &textsOf(Language language);

} // namespace veltrix::sample
