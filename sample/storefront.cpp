// SPDX-License-Identifier: GPL-3.0-or-later
// The countries of the made-up App Store.
#include "sample/storefront.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veltrix::sample
{

namespace
{

constexpr Currency usDollar{u"USD", u"$%1", u'.', u',', 1, false, 2};
constexpr Currency pound{u"GBP", u"£%1", u'.', u',', 1, false, 2};
constexpr Currency euro{u"EUR", u"%1 €", u',', u'.', 1, false, 2};
constexpr Currency yen{u"JPY", u"¥%1", u'.', u',', 150, true, 0};
constexpr Currency won{u"KRW", u"￦%1", u'.', u',', 1400, true, 0};
constexpr Currency baht{u"THB", u"฿%1", u'.', u',', 35, true, 2};
constexpr Currency dirham{u"AED", u"AED %1", u'.', u',', 4, false, 2};
constexpr Currency riyal{u"SAR", u"SAR %1", u'.', u',', 4, false, 2};
constexpr Currency rouble{u"RUB", u"%1 ₽", u',', u' ', 90, true, 2};
constexpr Currency real{u"BRL", u"R$ %1", u',', u'.', 5, false, 2};
constexpr Currency mexicanPeso{u"MXN", u"$%1", u'.', u',', 19, true, 2};
constexpr Currency australianDollar{u"AUD", u"$%1", u'.', u',', 1.5, false, 2};
constexpr Currency canadianDollar{u"CAD", u"$%1", u'.', u',', 1.4, false, 2};
constexpr Currency swissFranc{u"CHF", u"CHF %1", u'.', u'’', 1, false, 2};
constexpr Currency rupee{u"INR", u"₹ %1", u'.', u',', 90, true, 0};
constexpr Currency yuan{u"CNY", u"¥%1", u'.', u',', 7, true, 2};
constexpr Currency krona{u"SEK", u"%1 kr", u',', u' ', 11, true, 2};

using enum Language;

/// Every country of Veltrix's pickers, and Russia.
constexpr std::array table{
    Storefront{u"US", English, &usDollar, 1.0, 143441},
    Storefront{u"GB", English, &pound, 0.16, 143444},
    Storefront{u"CA", English, &canadianDollar, 0.11, 143455},
    Storefront{u"AU", English, &australianDollar, 0.07, 143460},
    Storefront{u"DE", German, &euro, 0.12, 143443},
    Storefront{u"FR", French, &euro, 0.11, 143442},
    Storefront{u"IT", English, &euro, 0.06, 143450},
    Storefront{u"ES", Spanish, &euro, 0.06, 143454},
    Storefront{u"NL", English, &euro, 0.03, 143452},
    Storefront{u"SE", English, &krona, 0.02, 143456},
    Storefront{u"NO", English, &krona, 0.012, 143457},
    Storefront{u"DK", English, &krona, 0.012, 143458},
    Storefront{u"FI", English, &euro, 0.009, 143447},
    Storefront{u"IE", English, &euro, 0.012, 143449},
    Storefront{u"CH", German, &swissFranc, 0.02, 143459},
    Storefront{u"AT", German, &euro, 0.018, 143445},
    Storefront{u"BE", French, &euro, 0.015, 143446},
    Storefront{u"PT", Portuguese, &euro, 0.01, 143453},
    Storefront{u"PL", English, &usDollar, 0.02, 143478},
    Storefront{u"CZ", English, &usDollar, 0.008, 143489},
    Storefront{u"HU", English, &usDollar, 0.006, 143482},
    Storefront{u"RO", English, &usDollar, 0.007, 143487},
    Storefront{u"GR", English, &euro, 0.006, 143448},
    Storefront{u"TR", English, &usDollar, 0.04, 143480},
    Storefront{u"BR", Portuguese, &real, 0.13, 143503},
    Storefront{u"MX", Spanish, &mexicanPeso, 0.07, 143468},
    Storefront{u"AR", Spanish, &usDollar, 0.02, 143505},
    Storefront{u"CL", Spanish, &usDollar, 0.015, 143483},
    Storefront{u"CO", Spanish, &usDollar, 0.015, 143501},
    Storefront{u"PE", Spanish, &usDollar, 0.008, 143507},
    Storefront{u"JP", Japanese, &yen, 0.14, 143462},
    Storefront{u"KR", Korean, &won, 0.08, 143466},
    Storefront{u"CN", English, &yuan, 0.2, 143465},
    Storefront{u"HK", English, &usDollar, 0.015, 143463},
    Storefront{u"TW", English, &usDollar, 0.03, 143470},
    Storefront{u"SG", English, &usDollar, 0.01, 143464},
    Storefront{u"MY", English, &usDollar, 0.012, 143473},
    Storefront{u"TH", Thai, &baht, 0.04, 143475},
    Storefront{u"PH", English, &usDollar, 0.02, 143474},
    Storefront{u"VN", English, &usDollar, 0.03, 143471},
    Storefront{u"ID", English, &usDollar, 0.03, 143476},
    Storefront{u"IN", English, &rupee, 0.06, 143467},
    Storefront{u"AE", Arabic, &dirham, 0.02, 143481},
    Storefront{u"SA", Arabic, &riyal, 0.03, 143479},
    Storefront{u"IL", English, &usDollar, 0.012, 143491},
    Storefront{u"ZA", English, &usDollar, 0.01, 143472},
    Storefront{u"NZ", English, &australianDollar, 0.012, 143461},
    Storefront{u"RU", Russian, &rouble, 0.1, 143469},
};

QStringView wordForFree(Language language)
{
    switch (language) {
    case English:
        return u"Free";
    case German:
    case Spanish:
        return u"Gratis";
    case French:
        return u"Gratuit";
    case Portuguese:
        return u"Grátis";
    case Japanese:
        return u"無料";
    case Korean:
        return u"무료";
    case Thai:
        return u"ฟรี";
    case Arabic:
        return u"مجانًا";
    case Russian:
        return u"Бесплатно";
    }
    return {};
}

/// Whole amounts end like a price tag: 160, 1,500, 99.
double roundedToTag(double amount)
{
    const double step = amount >= 1000 ? 100 : 10;
    return std::max(step, std::round(amount / step) * step);
}

QString grouped(qint64 amount, char16_t groupMark)
{
    QString digits = QString::number(amount);
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3)
        digits.insert(at, QChar(groupMark));
    return digits;
}

} // namespace

std::span<const Storefront> storefronts()
{
    return table;
}

const Storefront *findStorefront(QStringView country)
{
    const auto found = std::ranges::find_if(table, [country](const Storefront &storefront) {
        return country.compare(storefront.country, Qt::CaseInsensitive) == 0;
    });
    return found == table.end() ? nullptr : &*found;
}

const Storefront *findStorefrontByHintsId(int hintsId)
{
    const auto found = std::ranges::find(table, hintsId, &Storefront::hintsId);
    return found == table.end() ? nullptr : &*found;
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
        return wordForFree(storefront.language).toString();
    const Currency &currency = *storefront.currency;
    const auto hundredths = static_cast<qint64>(std::llround(price * 100));
    QString amount = grouped(hundredths / 100, currency.groupMark);
    if (currency.decimals > 0)
        amount += QStringLiteral("%1%2")
                      .arg(QChar(currency.decimalMark))
                      .arg(hundredths % 100, currency.decimals, 10, QLatin1Char('0'));
    return currency.pattern.toString().arg(amount);
}

} // namespace veltrix::sample
