// SPDX-License-Identifier: GPL-3.0-or-later
// Names and phrases of apps, put together from the texts of themes and languages.
#pragma once

#include "sample/dice.h"
#include "sample/sample_app.h"

#include <QString>

namespace veltrix::sample
{

/// A name as part of an address: Latin letters, digits, hyphens.
QString slugOf(const QString &name);

/// "Brand: naming" with the theme's naming of that number, counted round, and all its phrases.
Listing translatedListing(const QString &brand, const Theme &theme, const LanguageTexts &texts,
                          int naming);

/// Fills the listings of an app made for the world: some translated, some left in English.
void writeWorldListings(SampleApp &app, const QString &brand, const QString &englishName,
                        Dice &dice);

} // namespace veltrix::sample
