// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/storefront_markets.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

namespace veltrix
{
namespace
{

TEST(StorefrontMarkets, AreOneHundredAndSeventyFiveDifferentOnes)
{
    std::set<std::string> codes;
    long long tenThousandths = 0;
    for (const StorefrontMarket &market : storefrontMarkets()) {
        EXPECT_EQ(market.code.size(), 2U);
        EXPECT_GT(market.factor, 0);
        EXPECT_LE(market.factor, 1);
        codes.emplace(market.code);
        tenThousandths += std::llround(market.factor * 10'000);
    }
    EXPECT_EQ(codes.size(), 175U);
    // A checksum over the whole table.
    EXPECT_EQ(tenThousandths, 61'041);
}

TEST(StorefrontMarkets, EveryOneIsFoundByItsCode)
{
    for (const StorefrontMarket &market : storefrontMarkets()) {
        const QString code = QString::fromLatin1(market.code.data(), 2);
        EXPECT_EQ(storefrontMarketFactor(code), market.factor) << code.toStdString();
        EXPECT_EQ(storefrontMarketFactor(code.toLower()), market.factor) << code.toStdString();
    }
}

TEST(StorefrontMarkets, AreRelativeToTheUnitedStates)
{
    EXPECT_EQ(storefrontMarketFactor(u"US"), 1.0);
    EXPECT_EQ(storefrontMarketFactor(u"us"), 1.0);
    EXPECT_EQ(storefrontMarketFactor(u"CN"), 0.45);
    EXPECT_EQ(storefrontMarketFactor(u"DE"), 0.25);
    EXPECT_EQ(storefrontMarketFactor(u"VN"), 0.1349);
    EXPECT_EQ(storefrontMarketFactor(u"AI"), 0.0001);
    EXPECT_EQ(storefrontMarketFactor(u"VU"), 0.0002);
}

TEST(StorefrontMarkets, UnknownCodesHaveNone)
{
    for (const QStringView code : {u"XX", u"", u"U", u"USA", u" US", u"1A", u"日本"})
        EXPECT_EQ(storefrontMarketFactor(code), std::nullopt) << code.toString().toStdString();
}

} // namespace
} // namespace veltrix
