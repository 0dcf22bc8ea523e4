// SPDX-License-Identifier: GPL-3.0-or-later
// The countries of the made-up App Store: their language, prices, and how much they rate.
#pragma once

#include "sample/texts.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace veltrix::sample
{

/// How a country writes a price.
struct Currency {
    QString code;
    /// The price as text; "%1" stands for the amount.
    QString pattern;
    QString decimalMark;
    QString groupMark;
    /// Amount for one US dollar.
    double perDollar;
    /// Whether prices are whole amounts (¥160) and not such as 0.99.
    bool whole;
    /// Decimals that are printed.
    int decimals;
};

struct Storefront {
    /// Two upper-case letters.
    QString country;
    Language language;
    const Currency *currency;
    /// Ratings that an app gathers here for each one in the United States.
    double ratingsShare;
    /// The number that the search-hints service knows the country by; 0 if it has none.
    int hintsId;
};

const std::vector<Storefront> &storefronts();

/// The storefront of a country code in any case; none for codes that this App Store has no shop in.
const Storefront *findStorefront(QStringView country);
const Storefront *findStorefrontByHintsId(int hintsId);

/// Whether there is an App Store for a code of two upper-case letters, the made-up one or not.
bool hasAppStore(const QString &country);

/// The price of an app that costs `dollars` in the United States, in the storefront's currency.
double localPrice(const Storefront &storefront, double dollars);

/// The price as the storefront writes it; its word for "Free" for 0.
QString priceText(const Storefront &storefront, double dollars);

} // namespace veltrix::sample
