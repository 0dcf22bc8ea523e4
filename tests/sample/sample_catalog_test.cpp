// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store: the same every time, and as uneven as a real one.
#include "sample/brand_names.h"
#include "sample/fixtures.h"
#include "sample/market.h"
#include "sample_printers.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>

namespace veltrix::sample
{
namespace
{

std::vector<double> sortedHomeRatings()
{
    std::vector<double> ratings;
    for (const SampleApp &app : testCatalog().apps())
        ratings.push_back(app.homeRatings);
    std::ranges::sort(ratings);
    return ratings;
}

QChar::Script scriptOf(Language language)
{
    switch (language) {
    case Language::Japanese:
        return QChar::Script_Hiragana;
    case Language::Korean:
        return QChar::Script_Hangul;
    case Language::Thai:
        return QChar::Script_Thai;
    case Language::Arabic:
        return QChar::Script_Arabic;
    case Language::Russian:
        return QChar::Script_Cyrillic;
    default:
        return QChar::Script_Latin;
    }
}

TEST(SampleCatalog, IsTheSameEachTime)
{
    const SampleCatalog again;
    ASSERT_EQ(again.apps().size(), testCatalog().apps().size());
    for (std::size_t index = 0; index < again.apps().size(); ++index) {
        const SampleApp &one = again.apps()[index];
        const SampleApp &other = testCatalog().apps()[index];
        EXPECT_EQ(one.trackId, other.trackId);
        EXPECT_EQ(one.publisher, other.publisher);
        EXPECT_EQ(one.released, other.released);
        EXPECT_EQ(one.homeRatings, other.homeRatings);
        EXPECT_EQ(one.stars, other.stars);
        EXPECT_EQ(one.slug, other.slug);
    }
}

TEST(SampleCatalog, HasSomeFourHundredApps)
{
    EXPECT_GE(testCatalog().apps().size(), 400U);
    EXPECT_LE(testCatalog().apps().size(), 450U);
}

TEST(SampleCatalog, GivesEveryAppANumberOfItsOwnAndSomeBeyond32Bits)
{
    std::set<std::int64_t> ids;
    for (const SampleApp &app : testCatalog().apps())
        ids.insert(app.trackId);
    EXPECT_EQ(ids.size(), testCatalog().apps().size());
    const auto large = std::ranges::count_if(ids, [](std::int64_t id) { return id > 1LL << 32; });
    EXPECT_GT(large, 20);
    EXPECT_LT(large, 200);
}

TEST(SampleCatalog, GivesEveryAppANameOfItsOwn)
{
    std::set<QString> names;
    for (const SampleApp &app : testCatalog().apps())
        names.insert(app.listing(Language::English).name);
    EXPECT_EQ(names.size(), testCatalog().apps().size());
}

TEST(SampleCatalog, HasHeavyTailedRatingCounts)
{
    const std::vector<double> ratings = sortedHomeRatings();
    const double median = ratings[ratings.size() / 2];
    const double mean =
        std::accumulate(ratings.begin(), ratings.end(), 0.0) / static_cast<double>(ratings.size());
    EXPECT_EQ(ratings.front(), 0);
    EXPECT_GT(ratings.back(), 2'000'000);
    EXPECT_LE(ratings.back(), 2'840'000);
    EXPECT_LT(median, 10'000);
    EXPECT_GT(mean, 10 * median);
    EXPECT_GT(std::ranges::count(ratings, 0.0), 10);
}

TEST(SampleCatalog, ReleasesAppsFrom2009To2026AndManyRatingsTakeYears)
{
    std::set<int> years;
    for (const SampleApp &app : testCatalog().apps()) {
        years.insert(app.released.date().year());
        if (app.homeRatings > 1'000'000) {
            EXPECT_LT(app.released.date().year(), 2024) << app.slug.toStdString();
        }
    }
    EXPECT_EQ(*years.begin(), 2009);
    EXPECT_EQ(*years.rbegin(), 2026);
    EXPECT_GE(years.size(), 17U);
}

TEST(SampleCatalog, KeepsStarsInTheirRange)
{
    for (const SampleApp &app : testCatalog().apps()) {
        EXPECT_GE(app.stars, 1) << app.slug.toStdString();
        EXPECT_LE(app.stars, 5) << app.slug.toStdString();
    }
}

TEST(SampleCatalog, HasPublishersWithSeveralApps)
{
    std::map<QString, int> apps;
    for (const SampleApp &app : testCatalog().apps())
        ++apps[app.publisher.name];
    EXPECT_GT(std::ranges::count_if(apps, [](const auto &entry) { return entry.second >= 3; }), 10);
    EXPECT_GT(std::ranges::count_if(apps, [](const auto &entry) { return entry.second == 1; }), 10);
}

TEST(SampleCatalog, HasAppsInTheScriptOfEveryLanguage)
{
    for (int index = 1; index < languageCount; ++index) {
        const auto language = static_cast<Language>(index);
        int local = 0;
        bool inScript = false;
        for (const SampleApp &app : testCatalog().apps()) {
            if (app.onlyLanguage != language)
                continue;
            ++local;
            for (const char32_t code : app.listing(language).name.toUcs4())
                inScript = inScript || QChar::script(code) == scriptOf(language);
        }
        EXPECT_GE(local, 10) << index;
        EXPECT_TRUE(inScript) << index;
    }
}

TEST(SampleCatalog, HoldsTheFixturesWhereTheyAreLookedFor)
{
    const SampleApp *lumen = testCatalog().find(lumenPhotoEditorId);
    ASSERT_NE(lumen, nullptr);
    EXPECT_EQ(lumen->listing(Language::English).name, u"Lumen Photo Editor");
    EXPECT_EQ(lumen->listing(Language::German).name, u"Lumen: Bildbearbeitung");
    ASSERT_NE(testCatalog().find(tidewaterJournalId), nullptr);
    ASSERT_NE(testCatalog().find(orchardBudgetId), nullptr);
    EXPECT_EQ(testCatalog().find(42), nullptr);
}

TEST(Market, SellsFixturesEverywhereAndOtherAppsNotInEveryStorefront)
{
    int absences = 0;
    for (const SampleApp &app : testCatalog().apps())
        for (const Storefront &shop : storefronts()) {
            const bool sold = isSold(app, shop, testDay());
            EXPECT_TRUE(sold || !app.isFixture) << app.slug.toStdString();
            absences += sold ? 0 : 1;
        }
    EXPECT_GT(absences, 400);
}

TEST(Market, SellsNoAppBeforeItsRelease)
{
    const SampleApp &lumen = *testCatalog().find(lumenPhotoEditorId);
    EXPECT_FALSE(isSold(lumen, storefront("US"), QDate(2019, 10, 21)));
    EXPECT_TRUE(isSold(lumen, storefront("US"), QDate(2019, 10, 22)));
}

TEST(Market, GathersMoreRatingsFromDayToDay)
{
    const SampleApp &lumen = *testCatalog().find(lumenPhotoEditorId);
    EXPECT_EQ(ratingCount(lumen, storefront("US"), referenceDay()), 3'846);
    EXPECT_GT(ratingCount(lumen, storefront("US"), testDay()), 3'846);
    EXPECT_LT(ratingCount(lumen, storefront("US"), testDay()), 4'300);
}

TEST(Market, RatesLocalAppsMostAtHome)
{
    for (const SampleApp &app : testCatalog().apps()) {
        if (app.onlyLanguage) {
            EXPECT_LE(ratingCount(app, storefront("US"), testDay()),
                      ratingCount(app, *app.home, testDay()))
                << app.slug.toStdString();
        }
    }
}

TEST(Market, NumbersVersionsByTheirDates)
{
    const SampleApp &lumen = *testCatalog().find(lumenPhotoEditorId);
    EXPECT_EQ(versionText(lumen, QDate(2019, 10, 22)), u"1.0.0");
    EXPECT_EQ(currentVersionReleased(lumen, QDate(2019, 11, 14)).date(), QDate(2019, 10, 22));
    EXPECT_EQ(currentVersionReleased(lumen, QDate(2019, 11, 15)).date(), QDate(2019, 11, 15));
    EXPECT_EQ(versionText(lumen, QDate(2019, 11, 15)), u"1.0.1");
}

TEST(BrandNames, AreAllDifferent)
{
    std::set<QString> names;
    for (int number = 0; number < brandNameCount(); ++number)
        names.insert(brandName(number));
    EXPECT_EQ(static_cast<int>(names.size()), brandNameCount());
    EXPECT_GT(brandNameCount(), 1'500);
}

} // namespace
} // namespace veltrix::sample
