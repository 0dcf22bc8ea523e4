// SPDX-License-Identifier: GPL-3.0-or-later
// Prices as each storefront writes them.
#include "sample_printers.h"

#include <gtest/gtest.h>

namespace veltrix::sample
{
namespace
{

QString price(const char *country, double dollars)
{
    return priceText(storefront(country), dollars);
}

TEST(Storefront, IsFoundInAnyCase)
{
    ASSERT_NE(findStorefront(u"de"), nullptr);
    EXPECT_EQ(findStorefront(u"de"), findStorefront(u"DE"));
    EXPECT_EQ(findStorefront(u"XX"), nullptr);
    EXPECT_EQ(findStorefront(u""), nullptr);
}

TEST(Storefront, IsFoundByTheNumberOfTheHintsService)
{
    ASSERT_NE(findStorefrontByHintsId(143441), nullptr);
    EXPECT_EQ(findStorefrontByHintsId(143441)->country, u"US");
    EXPECT_EQ(findStorefrontByHintsId(0), nullptr);
}

TEST(Storefront, WritesFreeInItsLanguage)
{
    EXPECT_EQ(price("US", 0), u"Free");
    EXPECT_EQ(price("DE", 0), u"Gratis");
    EXPECT_EQ(price("FR", 0), u"Gratuit");
    EXPECT_EQ(price("KR", 0), u"무료");
    EXPECT_EQ(price("JP", 0), u"無料");
    EXPECT_EQ(price("TH", 0), u"ฟรี");
    EXPECT_EQ(price("SA", 0), u"مجانًا");
    EXPECT_EQ(price("RU", 0), u"Бесплатно");
}

TEST(Storefront, WritesPricesInItsCurrency)
{
    EXPECT_EQ(price("US", 4.99), u"$4.99");
    EXPECT_EQ(price("GB", 4.99), u"£4.99");
    EXPECT_EQ(price("DE", 4.99), u"4,99 €");
    EXPECT_EQ(price("JP", 4.99), u"¥750");
    EXPECT_EQ(price("KR", 4.99), u"￦7,000");
    EXPECT_EQ(price("TH", 0.99), u"฿30.00");
    EXPECT_EQ(price("BR", 9.99), u"R$ 49,99");
    EXPECT_EQ(price("RU", 14.99), u"1 300,00 ₽");
}

} // namespace
} // namespace veltrix::sample
