// SPDX-License-Identifier: GPL-3.0-or-later
// The categories of the App Store that the made-up apps are in, with their numbers and names.
#pragma once

#include "sample/storefront.h"

#include <QStringView>

namespace veltrix::sample
{

enum class Genre {
    Business,
    Education,
    Finance,
    FoodAndDrink,
    Games,
    HealthAndFitness,
    Lifestyle,
    Music,
    PhotoAndVideo,
    Productivity,
    SocialNetworking,
    Travel,
    Utilities,
    Weather,
};
inline constexpr int genreCount = 14;

/// The number that records carry, such as 6008 for Photo & Video.
int genreId(Genre genre);

QStringView genreName(Genre genre, Language language);

} // namespace veltrix::sample
