// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/listing_watch.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const QString us = QStringLiteral("US");
const QString de = QStringLiteral("DE");

Date day(double days)
{
    return dateFromReferenceSeconds(800'000'000.0 + days * secondsPerDay);
}

ListingFacts facts(const char *name, const char *version, const char *price, const char *icon = "i")
{
    return {QString::fromUtf8(name), QString::fromUtf8(version), QString::fromUtf8(price),
            QString::fromUtf8(icon)};
}

ListingFacts version(const char *text)
{
    return facts("Lumen", text, "Free");
}

TEST(ListingWatch, TheFirstLookChangesNothing)
{
    ListingWatch watch;
    EXPECT_TRUE(watch.see(facts("Lumen", "1.0", "Free"), us, day(0)).empty());
    EXPECT_TRUE(watch.changes().empty());
}

TEST(ListingWatch, EachFactThatBecameAnotherIsAChange)
{
    ListingWatch watch;
    watch.see(facts("Lumen", "1.0", "$1.99", "a"), us, day(0));
    const auto changes = watch.see(facts("Lumen Pro", "2.0", "Free", "b"), us, day(1));
    ASSERT_EQ(changes.size(), 4);
    EXPECT_EQ(changes[0], (ListingChange{ListingChangeKind::Name, day(1), us,
                                         QStringLiteral("Lumen"), QStringLiteral("Lumen Pro")}));
    EXPECT_EQ(changes[1].kind, ListingChangeKind::Version);
    EXPECT_EQ(changes[2], (ListingChange{ListingChangeKind::Price, day(1), us,
                                         QStringLiteral("$1.99"), QStringLiteral("Free")}));
    EXPECT_EQ(changes[3].kind, ListingChangeKind::Icon);
    EXPECT_EQ(watch.changes(), changes);
}

TEST(ListingWatch, WhatARecordDoesNotSayIsNoChange)
{
    ListingWatch watch;
    watch.see(facts("Lumen", "1.0", "Free"), us, day(0));
    EXPECT_TRUE(watch.see(ListingFacts(), us, day(1)).empty());
    EXPECT_TRUE(watch.see(facts("Lumen", "1.0", "Free"), us, day(2)).empty());
}

TEST(ListingWatch, AFactThatWasNotKnownBeforeIsNoChange)
{
    ListingWatch watch;
    watch.see(ListingFacts(), us, day(0));
    EXPECT_TRUE(watch.see(version("1.0"), us, day(1)).empty());
    EXPECT_EQ(watch.see(version("1.1"), us, day(2)).size(), 1);
}

TEST(ListingWatch, AnOldAnswerIsNoChangeAndTheNewOneIsNotToldAgain)
{
    ListingWatch watch;
    watch.see(version("1.0"), us, day(0));
    EXPECT_EQ(watch.see(version("1.1"), us, day(1)).size(), 1);
    EXPECT_TRUE(watch.see(version("1.0"), us, day(1.1)).empty());
    EXPECT_TRUE(watch.see(version("1.1"), us, day(1.2)).empty());
    EXPECT_EQ(watch.changes().size(), 1);
}

TEST(ListingWatch, WhatIsStillTheOldOneAfterTwoDaysWasTakenBack)
{
    ListingWatch watch;
    watch.see(version("1.0"), us, day(0));
    watch.see(version("1.1"), us, day(1));
    const auto changes = watch.see(version("1.0"), us, day(3));
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].earlier, QStringLiteral("1.1"));
    EXPECT_EQ(changes[0].later, QStringLiteral("1.0"));
}

TEST(ListingWatch, AVersionIsToldOnceInWhicheverStorefrontItShowsFirst)
{
    ListingWatch watch;
    watch.see(version("1.0"), us, day(0));
    watch.see(version("1.0"), de, day(0));
    EXPECT_EQ(watch.see(version("1.1"), de, day(1)).size(), 1);
    EXPECT_TRUE(watch.see(version("1.1"), us, day(1.5)).empty());
    // And the next one again.
    EXPECT_EQ(watch.see(version("1.2"), us, day(2)).size(), 1);
    EXPECT_TRUE(watch.see(version("1.2"), de, day(2)).empty());
}

TEST(ListingWatch, PricesAreEachStorefrontsOwn)
{
    ListingWatch watch;
    watch.see(facts("Lumen", "1.0", "$1.99"), us, day(0));
    watch.see(facts("Lumen", "1.0", "1,99 €"), de, day(0));
    EXPECT_EQ(watch.see(facts("Lumen", "1.0", "Free"), us, day(1)).size(), 1);
    const auto changes = watch.see(facts("Lumen", "1.0", "Gratis"), de, day(1));
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].storefront, de);
}

TEST(ListingWatch, AStorefrontSeenForTheFirstTimeIsComparedWithItselfAlone)
{
    ListingWatch watch;
    watch.see(facts("Lumen", "1.0", "$1.99"), us, day(0));
    EXPECT_TRUE(watch.see(facts("Lumen für Fotos", "1.0", "1,99 €"), de, day(1)).empty());
}

TEST(ListingWatch, GoesOnWhereItWas)
{
    ListingWatch before;
    before.see(version("1.0"), us, day(0));
    before.see(version("1.1"), us, day(1));
    ListingWatch after(before.seen(), before.changes());
    EXPECT_TRUE(after.see(version("1.0"), us, day(1.1)).empty());
    EXPECT_EQ(after.see(version("1.2"), us, day(2)).size(), 1);
    EXPECT_EQ(after.changes().size(), 2);
}

TEST(ListingWatch, AnIconIsTheSameOnAnotherServerAndInAnotherSize)
{
    ListingWatch watch;
    watch.see(facts("Lumen", "1", "Free", "https://is1.example/image/v4/a/Icon.png/100x100bb.jpg"),
              us, day(0));
    const ListingFacts same =
        facts("Lumen", "1", "Free", "https://is5.example/image/v4/a/Icon.png/512x512bb.jpg");
    EXPECT_TRUE(watch.see(same, us, day(1)).empty());
    const ListingFacts other =
        facts("Lumen", "1", "Free", "https://is1.example/image/v4/b/Icon.png/100x100bb.jpg");
    const auto changes = watch.see(other, us, day(2));
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].later, *other.icon) << "an address that can be loaded";
}

TEST(ListingFacts, EmptyTextsSayNothing)
{
    ITunesAppResult result;
    result.trackName = QStringLiteral("  ");
    result.version = QStringLiteral("");
    result.formattedPrice = QStringLiteral(" Free ");
    EXPECT_EQ(listingFacts(result),
              (ListingFacts{std::nullopt, std::nullopt, QStringLiteral("Free"), std::nullopt}));
}

} // namespace
} // namespace veltrix
