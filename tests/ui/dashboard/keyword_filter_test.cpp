// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_filter.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const QString germany = QStringLiteral("DE");
const QString japan = QStringLiteral("JP");

class KeywordFilterTest : public testing::Test
{
protected:
    KeywordFilter filter{QStringLiteral("US")};
    QSignalSpy changed{&filter, &KeywordFilter::changed};
    QSignalSpy moved{&filter, &KeywordFilter::storefrontOfNewKeywordsChanged};
};

TEST_F(KeywordFilterTest, NewKeywordsGoToTheFilteredStorefrontElseToThatOfSearches)
{
    EXPECT_EQ(filter.storefrontOfNewKeywords(), QStringLiteral("US"));
    filter.setStorefront(germany);
    EXPECT_EQ(filter.storefrontOfNewKeywords(), germany);
    EXPECT_EQ(moved.takeLast().first(), germany);
    // Searches move on; who filters stays where he is.
    filter.setSearchStorefront(japan);
    EXPECT_EQ(filter.storefrontOfNewKeywords(), germany);
    EXPECT_TRUE(moved.isEmpty());
    filter.setStorefront(std::nullopt);
    EXPECT_EQ(moved.takeLast().first(), japan);
}

TEST_F(KeywordFilterTest, TellsWhatIsAnotherAndNothingElse)
{
    filter.setSearch(QStringLiteral("moon"));
    filter.setSearch(QStringLiteral("moon"));
    EXPECT_EQ(changed.count(), 1);
    filter.setSearchStorefront(japan);
    EXPECT_EQ(changed.count(), 1) << "the table shows the same keywords";
    EXPECT_EQ(moved.count(), 1);
    filter.setStorefront(japan);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(moved.count(), 1) << "new keywords go there already";
}

TEST_F(KeywordFilterTest, ClearingShowsAllKeywordsAgain)
{
    filter.setSearch(QStringLiteral("moon"));
    filter.setStorefront(germany);
    filter.setQuick(QuickFilter::Risen);
    changed.clear();
    filter.clear();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(filter.search(), QString());
    EXPECT_EQ(filter.storefront(), std::nullopt);
    EXPECT_EQ(filter.quick(), QuickFilter::All);
    EXPECT_EQ(filter.storefrontOfNewKeywords(), QStringLiteral("US"));
}

} // namespace
} // namespace veltrix
