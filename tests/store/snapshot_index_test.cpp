// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/snapshot_index.h"
#include "support/generators.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace veltrix
{
namespace
{

QUuid keywordId(int number)
{
    return QUuid(uint(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

SharedSnapshot snapshot(int keyword, double seconds)
{
    auto made = std::make_shared<KeywordSnapshot>();
    made->id = QUuid::createUuid();
    made->trackedKeywordId = keywordId(keyword);
    made->fetchedAt = dateFromReferenceSeconds(seconds);
    return made;
}

/// After every snapshot of these tests.
const Date afterAll = dateFromReferenceSeconds(1'000'000);

TEST(SnapshotIndex, ASecondSnapshotOfTheDayTakesThePlaceOfTheFirst)
{
    SnapshotIndex index;
    const SharedSnapshot other = snapshot(2, 100);
    const SharedSnapshot later = snapshot(1, 86'399);
    const SharedSnapshot nextDay = snapshot(1, 86'400);
    index.store(snapshot(1, 100));
    index.store(other);
    index.store(later);
    index.store(nextDay);
    EXPECT_EQ(index.inFileOrder(), (std::vector{other, later, nextDay}));
    EXPECT_EQ(index.ofKeyword(keywordId(1)), (std::vector{later, nextDay}));
    EXPECT_EQ(index.newest(keywordId(1), afterAll), nextDay);
    EXPECT_EQ(index.size(), 3U);
}

TEST(SnapshotIndex, AnEarlierMomentOfTheSameDayReplacesToo)
{
    SnapshotIndex index;
    const SharedSnapshot earlier = snapshot(1, 100);
    index.store(snapshot(1, 5'000));
    index.store(earlier);
    EXPECT_EQ(index.inFileOrder(), std::vector{earlier});
}

TEST(SnapshotIndex, WhatIsForgottenIsGoneFromBothOrdersAndGivenBackToBeFreed)
{
    const SharedSnapshot first = snapshot(1, 100);
    const SharedSnapshot other = snapshot(2, 200);
    const SharedSnapshot second = snapshot(1, 200'000);
    const SharedSnapshot removed = snapshot(3, 300);
    SharedSnapshot third = snapshot(1, 400'000);
    SnapshotIndex index({removed, first, other, second, third});
    std::vector<FiledSnapshot> taken = index.takeKeyword(keywordId(3));
    // One that is not there is none of its business.
    const std::vector<SharedSnapshot> dropped =
        index.forget({first.get(), third.get(), removed.get()});
    EXPECT_EQ(dropped.size(), 4U) << "a reference of each order";
    EXPECT_EQ(index.inFileOrder(), (std::vector{other, second}));
    EXPECT_EQ(index.ofKeyword(keywordId(1)), std::vector{second});
    EXPECT_EQ(index.size(), 2U);
    index.putBack(std::move(taken));
    EXPECT_EQ(index.inFileOrder(), (std::vector{removed, other, second}));
    index.store(third);
    EXPECT_EQ(index.newest(keywordId(1), afterAll), third);
    EXPECT_TRUE(index.forget({third.get(), second.get(), other.get(), removed.get()}).size() == 8);
    EXPECT_TRUE(index.inFileOrder().empty());
}

TEST(SnapshotIndex, AFileInAnyOrderIsReadByDate)
{
    const SharedSnapshot first = snapshot(1, 100);
    const SharedSnapshot second = snapshot(1, 200'000);
    const SharedSnapshot third = snapshot(1, 400'000);
    const SnapshotIndex index({third, first, second});
    EXPECT_EQ(index.ofKeyword(keywordId(1)), (std::vector{first, second, third}));
    EXPECT_EQ(index.inFileOrder(), (std::vector{third, first, second}));
    EXPECT_EQ(index.newest(keywordId(1), afterAll), third);
}

TEST(SnapshotIndex, SeveralOfOneDayFromAFileStayUntilTheDayIsMeasuredAgain)
{
    const SharedSnapshot first = snapshot(1, 100);
    const SharedSnapshot twin = snapshot(1, 100);
    SnapshotIndex index({first, twin});
    EXPECT_EQ(index.newest(keywordId(1), afterAll), first);
    EXPECT_EQ(index.ofKeyword(keywordId(1)), (std::vector{first, twin}));
    const SharedSnapshot measured = snapshot(1, 50);
    index.store(measured);
    EXPECT_EQ(index.inFileOrder(), std::vector{measured});
}

TEST(SnapshotIndex, WhatLiesAheadByMoreThanFiveMinutesIsNotTheNewestUntilItsTimeComes)
{
    const SharedSnapshot first = snapshot(1, 1000);
    const SharedSnapshot ahead = snapshot(1, 500'000);
    const SnapshotIndex index({ahead, first});
    const auto newestAt = [&](double now) {
        return index.newest(keywordId(1), dateFromReferenceSeconds(now));
    };
    EXPECT_EQ(newestAt(2000), first);
    EXPECT_EQ(newestAt(500'000 - 300.001), first);
    EXPECT_EQ(newestAt(500'000 - 300), ahead) << "clocks are set right now and then";
    EXPECT_EQ(newestAt(600'000), ahead);
    EXPECT_EQ(newestAt(600), nullptr);
    EXPECT_EQ(index.size(), 2U) << "nothing is deleted";
}

TEST(SnapshotIndex, AMeasurementBesideOneThatLiesAheadIsTheNewest)
{
    const SharedSnapshot ahead = snapshot(1, 900'000);
    SnapshotIndex index({ahead});
    const SharedSnapshot measured = snapshot(1, 1000);
    index.store(measured);
    EXPECT_EQ(index.newest(keywordId(1), dateFromReferenceSeconds(1000)), measured);
    EXPECT_EQ(index.ofKeyword(keywordId(1)), (std::vector{measured, ahead}));
}

TEST(SnapshotIndex, RemovingAKeywordLeavesTheOthersInOrder)
{
    const SharedSnapshot a = snapshot(1, 100);
    const SharedSnapshot b = snapshot(2, 100);
    const SharedSnapshot c = snapshot(1, 100'000);
    const SharedSnapshot d = snapshot(3, 100);
    SnapshotIndex index({a, b, c, d});
    index.takeKeyword(keywordId(1));
    EXPECT_EQ(index.inFileOrder(), (std::vector{b, d}));
    EXPECT_EQ(index.newest(keywordId(1), afterAll), nullptr);
    EXPECT_TRUE(index.ofKeyword(keywordId(1)).empty());
    index.takeKeyword(keywordId(9));
    EXPECT_EQ(index.size(), 2U);
}

TEST(SnapshotIndex, WhatWasTakenGoesBackToItsPlace)
{
    const SharedSnapshot a = snapshot(1, 100);
    const SharedSnapshot b = snapshot(2, 100);
    const SharedSnapshot sameDay = snapshot(1, 200);
    const SharedSnapshot later = snapshot(2, 500'000);
    SnapshotIndex index({a, b, sameDay});
    auto taken = index.takeKeyword(keywordId(1));
    index.store(later);
    index.putBack(std::move(taken));
    EXPECT_EQ(index.inFileOrder(), (std::vector{a, b, sameDay, later}));
    EXPECT_EQ(index.ofKeyword(keywordId(1)), (std::vector{a, sameDay}));
    EXPECT_EQ(index.size(), 4U);
}

TEST(SnapshotIndex, WhatWasTakenJoinsWhatCameMeanwhileAndTheNewerOfADayStays)
{
    const SharedSnapshot old = snapshot(1, 100);
    const SharedSnapshot olderOfTheDay = snapshot(1, 90'000);
    const SharedSnapshot newerOfAnother = snapshot(1, 180'500);
    SnapshotIndex index({old, snapshot(1, 50'000), olderOfTheDay, newerOfAnother});
    auto taken = index.takeKeyword(keywordId(1));
    const SharedSnapshot newerOfTheDay = snapshot(1, 91'000);
    index.store(newerOfTheDay);
    index.store(snapshot(1, 180'000));
    index.putBack(taken);
    const SharedSnapshot newerOfTheFirst = taken[1].snapshot;
    EXPECT_EQ(index.ofKeyword(keywordId(1)),
              (std::vector{newerOfTheFirst, newerOfTheDay, newerOfAnother}));
    EXPECT_EQ(index.inFileOrder(), (std::vector{newerOfTheFirst, newerOfAnother, newerOfTheDay}));
    EXPECT_EQ(index.size(), 3U);
}

/// The rule as it reads, on a plain list.
struct PlainList {
    void store(const SharedSnapshot &added)
    {
        std::erase_if(all, [&](const SharedSnapshot &old) {
            return old->trackedKeywordId == added->trackedKeywordId &&
                   utcDay(old->fetchedAt) == utcDay(added->fetchedAt);
        });
        all.push_back(added);
    }
    void removeKeyword(const QUuid &id)
    {
        std::erase_if(all, [&](const SharedSnapshot &old) { return old->trackedKeywordId == id; });
    }
    [[nodiscard]] std::vector<SharedSnapshot> ofKeyword(const QUuid &id) const
    {
        std::vector<SharedSnapshot> result;
        std::ranges::copy_if(all, std::back_inserter(result), [&](const SharedSnapshot &one) {
            return one->trackedKeywordId == id;
        });
        std::ranges::stable_sort(result, {}, [](const auto &one) { return one->fetchedAt; });
        return result;
    }

    std::vector<SharedSnapshot> all;
};

RC_GTEST_PROP(SnapshotIndex, BehavesLikeAPlainListUnderAnyOperations, ())
{
    constexpr int keywords = 4;
    PlainList plain;
    const auto initial = *rc::gen::inRange(0, 20);
    for (int i = 0; i < initial; ++i)
        plain.all.push_back(
            snapshot(*rc::gen::inRange(0, keywords), *rc::gen::inRange(-300'000, 300'000)));
    SnapshotIndex index(plain.all);

    const auto operations = *rc::gen::inRange(0, 60);
    for (int i = 0; i < operations; ++i) {
        const int keyword = *rc::gen::inRange(0, keywords);
        if (*rc::gen::inRange(0, 10) == 0) {
            auto taken = index.takeKeyword(keywordId(keyword));
            if (*rc::gen::arbitrary<bool>())
                index.putBack(std::move(taken));
            else
                plain.removeKeyword(keywordId(keyword));
        } else {
            const SharedSnapshot added = snapshot(keyword, *rc::gen::inRange(-300'000, 300'000));
            plain.store(added);
            index.store(added);
        }
        RC_ASSERT(index.inFileOrder() == plain.all);
        RC_ASSERT(index.size() == plain.all.size());
        for (int k = 0; k < keywords; ++k) {
            const auto expected = plain.ofKeyword(keywordId(k));
            RC_ASSERT(index.ofKeyword(keywordId(k)) == expected);
            const SharedSnapshot newest = index.newest(keywordId(k), afterAll);
            RC_ASSERT((newest == nullptr) == expected.empty());
            if (newest)
                RC_ASSERT(newest->fetchedAt == expected.back()->fetchedAt);
        }
    }
}

} // namespace
} // namespace veltrix
