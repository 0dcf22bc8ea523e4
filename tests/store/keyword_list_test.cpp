// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/keyword_list.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const QUuid app = QUuid::createUuid();

TrackedKeyword keyword(const char *text, const char *country = "US")
{
    return {QUuid::createUuid(), app, QString::fromUtf8(text), QString::fromUtf8(country), Date()};
}

TEST(KeywordList, FindsByIdAndByMeaning)
{
    const TrackedKeyword moon = keyword("Moon");
    const KeywordList list({keyword("tide"), moon});
    ASSERT_NE(list.find(moon.id), nullptr);
    EXPECT_EQ(*list.find(moon.id), moon);
    EXPECT_EQ(list.find(QUuid::createUuid()), nullptr);
    EXPECT_EQ(*list.findSame(app, QStringLiteral("mOON"), QStringLiteral("US")), moon);
    EXPECT_EQ(list.findSame(app, QStringLiteral("moon"), QStringLiteral("DE")), nullptr);
    EXPECT_EQ(list.findSame(QUuid(), QStringLiteral("moon"), QStringLiteral("US")), nullptr);
}

TEST(KeywordList, OfSeveralThatAreTheSameTheFirstCounts)
{
    const TrackedKeyword first = keyword("moon");
    TrackedKeyword twin = keyword("MOON");
    const KeywordList list({first, twin});
    EXPECT_EQ(*list.findSame(app, QStringLiteral("Moon"), QStringLiteral("US")), first);
    EXPECT_EQ(*list.find(twin.id), twin);
    twin.id = first.id;
    EXPECT_EQ(*KeywordList({first, twin}).find(first.id), first);
}

TEST(KeywordList, StaysRightAfterRemovals)
{
    const TrackedKeyword a = keyword("a");
    const TrackedKeyword b = keyword("b");
    const TrackedKeyword c = keyword("c");
    KeywordList list({a, b});
    list.append(c);
    const auto taken = list.take({a.id, QUuid::createUuid()});
    EXPECT_EQ(list.all(), (QList<TrackedKeyword>{b, c}));
    EXPECT_EQ(list.find(a.id), nullptr);
    EXPECT_EQ(*list.find(c.id), c);
    EXPECT_EQ(list.findSame(app, QStringLiteral("a"), QStringLiteral("US")), nullptr);
    EXPECT_EQ(*list.findSame(app, QStringLiteral("B"), QStringLiteral("US")), b);
    list.putBack(taken);
    EXPECT_EQ(list.all(), (QList<TrackedKeyword>{a, b, c}));
    EXPECT_EQ(*list.find(c.id), c);
    EXPECT_EQ(*list.findSame(app, QStringLiteral("A"), QStringLiteral("US")), a);
}

TEST(KeywordList, WhatHasNoPlaceAnyMoreGoesToTheEnd)
{
    const TrackedKeyword a = keyword("a");
    const TrackedKeyword b = keyword("b");
    const TrackedKeyword c = keyword("c");
    KeywordList list({a, b, c});
    const auto taken = list.take({c.id});
    list.take({a.id});
    list.putBack(taken);
    EXPECT_EQ(list.all(), (QList<TrackedKeyword>{b, c}));
}

} // namespace
} // namespace veltrix
