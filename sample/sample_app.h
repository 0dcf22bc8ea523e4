// SPDX-License-Identifier: GPL-3.0-or-later
// One app of the made-up App Store.
#pragma once

#include "sample/storefront.h"
#include "sample/texts.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace veltrix::sample
{

/// How an app presents itself in one language.
struct Listing {
    QString name;
    /// What the app is found by without showing it.
    QStringList phrases;
};

struct Publisher {
    QString name;
    /// The name as part of an address: Latin letters, digits, hyphens.
    QString slug;
    std::int64_t artistId = 0;

    bool operator==(const Publisher &) const = default;
};

struct SampleApp {
    /// 64 bits: newer apps have numbers above 2^32.
    std::int64_t trackId = 0;
    const Theme *theme = nullptr;
    /// The one language that a local app speaks; none for an app made for the world.
    std::optional<Language> onlyLanguage;
    /// Where the app gathers `homeRatings`.
    const Storefront *home = nullptr;
    QString slug;
    Publisher publisher;
    ByLanguage<Listing> listings;
    /// UTC.
    QDateTime released;
    /// Ratings in the home storefront on the reference day of market.h.
    double homeRatings = 0;
    /// Mean stars, 1 to 5.
    double stars = 0;
    /// US dollars, 0 for a free app.
    double dollars = 0;
    /// Days between two versions.
    int updateCycle = 30;
    /// Its place in hues().
    int hue = 0;
    /// One of the few apps that stand at a known place; it is sold everywhere.
    bool isFixture = false;

    [[nodiscard]] const Listing &listing(Language language) const { return listings[language]; }
};

} // namespace veltrix::sample
