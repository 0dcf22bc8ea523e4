// SPDX-License-Identifier: GPL-3.0-or-later
// Names and phrases of apps, put together from the texts of themes and languages.
#pragma once

#include "sample/dice.h"
#include "sample/sample_app.h"

#include <QString>
#include <QStringList>

namespace veltrix::sample
{

/// Texts that are parted by a character, trimmed.
QStringList split(QStringView texts, char16_t separator);

/// All phrases of a theme in a language other than English.
QStringList phrasesIn(ThemeId theme, Language language);

/// "Brand: naming" with the theme's naming of that number, counted round.
QString translatedName(const QString &brand, ThemeId theme, Language language, int naming);

/// The topics that an English name speaks of, and up to `further` others by chance.
QStringList phrasesForName(const Theme &theme, const QString &name, int further, Dice &dice);

/// Fills the listings of an app made for the world: some translated, some left in English.
void writeWorldListings(SampleApp &app, const QString &brand, const QString &englishName,
                        Dice &dice);

/// Fills the listings of an app for one language: the same name everywhere.
void writeLocalListings(SampleApp &app, const QString &name);

} // namespace veltrix::sample
