// SPDX-License-Identifier: GPL-3.0-or-later
// Reads data/storefronts.json, and writes prices.
#include "sample/storefront.h"

#include "sample/data_file.h"

#include <algorithm>
#include <cmath>

namespace veltrix::sample
{

namespace
{

DataObject storefrontsFile()
{
    return DataObject::ofFile(QStringLiteral("storefronts.json"));
}

std::vector<Currency> readCurrencies()
{
    std::vector<Currency> currencies;
    for (const DataObject &data : storefrontsFile().objects(u"currencies"))
        currencies.push_back({.code = data.text(u"code"),
                              .pattern = data.text(u"pattern"),
                              .decimalMark = data.text(u"decimalMark"),
                              .groupMark = data.text(u"groupMark"),
                              .perDollar = data.number(u"perDollar"),
                              .whole = data.truth(u"wholeAmounts"),
                              .decimals = static_cast<int>(data.number(u"decimals"))});
    return currencies;
}

std::vector<Storefront> readStorefronts()
{
    static const std::vector<Currency> currencies = readCurrencies();
    std::vector<Storefront> storefronts;
    for (const DataObject &data : storefrontsFile().objects(u"storefronts"))
        storefronts.push_back(
            {.country = data.text(u"country"),
             .language = data.oneOf(u"language", languages(), &LanguageTexts::name).language,
             .currency = &data.oneOf(u"currency", currencies, &Currency::code),
             .ratingsShare = data.number(u"ratingsShare"),
             .hintsId = static_cast<int>(data.number(u"hintsId"))});
    return storefronts;
}

/// Whole amounts end like a price tag: 160, 1,500, 99.
double roundedToTag(double amount)
{
    const double step = amount >= 1000 ? 100 : 10;
    return std::max(step, std::round(amount / step) * step);
}

QString grouped(qint64 amount, const QString &groupMark)
{
    QString digits = QString::number(amount);
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3)
        digits.insert(at, groupMark);
    return digits;
}

} // namespace

const std::vector<Storefront> &storefronts()
{
    static const std::vector<Storefront> all = readStorefronts();
    return all;
}

const Storefront *findStorefront(QStringView country)
{
    const auto found = std::ranges::find_if(storefronts(), [country](const Storefront &storefront) {
        return country.compare(storefront.country, Qt::CaseInsensitive) == 0;
    });
    return found == storefronts().end() ? nullptr : &*found;
}

const Storefront *findStorefrontByHintsId(int hintsId)
{
    const auto found = std::ranges::find(storefronts(), hintsId, &Storefront::hintsId);
    return found == storefronts().end() ? nullptr : &*found;
}

bool hasAppStore(const QString &country)
{
    static const QStringList countries = storefrontsFile().texts(u"appStoreCountries");
    return countries.contains(country);
}

double localPrice(const Storefront &storefront, double dollars)
{
    if (dollars <= 0)
        return 0;
    const Currency &currency = *storefront.currency;
    if (currency.whole)
        return roundedToTag(dollars * currency.perDollar);
    return std::floor(dollars * currency.perDollar) + 0.99;
}

QString priceText(const Storefront &storefront, double dollars)
{
    const double price = localPrice(storefront, dollars);
    if (price <= 0)
        return textsOf(storefront.language).free;
    const Currency &currency = *storefront.currency;
    const auto hundredths = static_cast<qint64>(std::llround(price * 100));
    QString amount = grouped(hundredths / 100, currency.groupMark);
    if (currency.decimals > 0)
        amount += QStringLiteral("%1%2")
                      .arg(currency.decimalMark)
                      .arg(hundredths % 100, currency.decimals, 10, QLatin1Char('0'));
    return currency.pattern.arg(amount);
}

} // namespace veltrix::sample
