// SPDX-License-Identifier: GPL-3.0-or-later
// What adding keywords would do, and how it is said.
#include "ui/dashboard/keyword_plan.h"

#include "ui/dashboard/keyword_plan_texts.h"

#include "support/json_printers.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class KeywordPlanTest : public testing::Test
{
protected:
    KeywordPlanTest() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }

    static TrackedKeyword tracked(const char *keyword, const char *country)
    {
        return {QUuid::createUuid(), QUuid(), QString::fromUtf8(keyword),
                QString::fromLatin1(country), Date()};
    }
    KeywordPlan plan(const QString &text, const char *storefronts)
    {
        return planner.plan(enteredKeywords(text), list(storefronts));
    }
    QString note(const QString &text, const char *storefronts)
    {
        KeywordPlanner copy = planner;
        const QStringList places = list(storefronts);
        return typedNote(copy.plan(enteredKeywords(text), places), places.size());
    }
    static QStringList list(const char *storefronts)
    {
        return QString::fromLatin1(storefronts).split(u' ', Qt::SkipEmptyParts);
    }
    static QString added(const KeywordPlan &plan)
    {
        QStringList texts;
        for (const auto &[keyword, country] : plan.keywords)
            texts << keyword + u'@' + country;
        return texts.join(u' ');
    }

    KeywordPlanner planner{{tracked("moon", "US"), tracked("Tide", "DE")}};
};

TEST_F(KeywordPlanTest, EveryKeywordGoesToEveryStorefront)
{
    const KeywordPlan made = plan(QStringLiteral("star, MOON"), "US GB");
    EXPECT_EQ(added(made), QStringLiteral("star@US star@GB MOON@US MOON@GB"));
    EXPECT_EQ(made.added, 3);
    EXPECT_EQ(made.alreadyTracked(), 1);
    EXPECT_EQ(made.addedIn,
              (QMap<QString, qsizetype>{{QStringLiteral("GB"), 2}, {QStringLiteral("US"), 1}}));
}

TEST_F(KeywordPlanTest, TheSameKeywordTwiceCountsOnceAndIsTold)
{
    const KeywordPlan made = plan(QStringLiteral("Photo\nfilm\nphoto\nFILM\nphoto"), "US DE");
    EXPECT_EQ(added(made), QStringLiteral("Photo@US Photo@DE film@US film@DE"));
    EXPECT_EQ(made.repeated, 3);
    EXPECT_EQ(plan(QStringLiteral("film"), "US GB").repeated, 0) << "it is new in one of them";
    EXPECT_EQ(plan(QStringLiteral("film"), "US DE").repeated, 1) << "of the list before";
}

TEST_F(KeywordPlanTest, ARefusalIsOneWhateverTheNumberOfStorefronts)
{
    const QString tooLong(101, u'x');
    const KeywordPlan made = plan(tooLong + u'\n' + tooLong + QStringLiteral("\nstar"), "US DE");
    EXPECT_EQ(added(made), QStringLiteral("star@US star@DE"));
    ASSERT_EQ(made.refused.size(), 1);
    EXPECT_EQ(made.refused[0].reason, QStringLiteral("longer than 100 characters"));
    EXPECT_EQ(made.repeated, 1);
}

TEST_F(KeywordPlanTest, AKeywordOfAFileKeepsItsStorefrontAndItsLine)
{
    const KeywordPlan made = planner.plan({{QStringLiteral("a"), QStringLiteral("JP"), 2},
                                           {QStringLiteral("b"), QStringLiteral("Europe"), 3},
                                           {QString(), std::nullopt, 4},
                                           {QStringLiteral("c"), std::nullopt, 5}},
                                          list("US"));
    EXPECT_EQ(added(made), QStringLiteral("a@JP c@US"));
    EXPECT_EQ(refusalLines(made.refused),
              (QStringList{QStringLiteral("Line 3, “b”: “Europe” is not a supported storefront"),
                           QStringLiteral("Line 4: no text")}));
}

TEST_F(KeywordPlanTest, WithoutAStorefrontNothingIsPlannedAndNothingCalledRepeated)
{
    const KeywordPlan made = plan(QStringLiteral("a, b"), "");
    EXPECT_EQ(made.entered, 2);
    EXPECT_TRUE(made.keywords.isEmpty());
    EXPECT_EQ(made.repeated, 0);
    EXPECT_EQ(note(QStringLiteral("a, b"), ""), QStringLiteral("2 keywords: choose a storefront"));
}

TEST_F(KeywordPlanTest, TheNoteSaysWhatWillHappenAndOnlyThat)
{
    EXPECT_EQ(note(QStringLiteral("a"), "US"), QStringLiteral("1 keyword"));
    EXPECT_EQ(note(QStringLiteral("a, b"), "US"), QStringLiteral("2 keywords"));
    EXPECT_EQ(note(QStringLiteral("moon"), "US"),
              QStringLiteral("1 keyword: 1 is tracked already"));
    EXPECT_EQ(note(QStringLiteral("a, moon, tide"), "US DE"),
              QStringLiteral("3 keywords × 2 storefronts: 4 will be added, 2 are tracked already"));
    EXPECT_EQ(note(QStringLiteral("a, A, b, B, \x1b, ") + QString(101, u'x'), "US"),
              QStringLiteral("6 keywords: 2 will be added, 2 are repeated, 2 cannot be added"));
}

TEST_F(KeywordPlanTest, TheNoteOfAFileCountsByStorefrontInTheirOrder)
{
    QList<EnteredKeyword> entered;
    for (const char *country : {"JP", "US", "US", "DE"})
        entered.append({QStringLiteral("k%1").arg(entered.size()), QString::fromLatin1(country)});
    EXPECT_EQ(fileNote(planner.plan(entered, {})),
              QStringLiteral("4 will be added\nUnited States 2, Germany 1, Japan 1"));
    for (const char *country : {"FR", "IT", "ES", "NL"})
        entered.append({QStringLiteral("more"), QString::fromLatin1(country)});
    EXPECT_EQ(fileNote(planner.plan(entered, {})),
              QStringLiteral("4 will be added, 4 are repeated\n"
                             "France 1, Italy 1, Spain 1, Netherlands 1"));
    KeywordPlanner fresh{{}};
    EXPECT_EQ(fileNote(fresh.plan(entered, {})),
              QStringLiteral("8 will be added\nUnited States 2, Germany 1, France 1, Italy 1, "
                             "Spain 1 and 2 more"));
}

TEST_F(KeywordPlanTest, TheButtonCarriesTheSum)
{
    EXPECT_EQ(addLabel(0), QStringLiteral("Add keywords"));
    EXPECT_EQ(addLabel(1), QStringLiteral("Add 1 keyword"));
    EXPECT_EQ(addLabel(1234), QStringLiteral("Add 1,234 keywords"));
}

} // namespace
} // namespace veltrix
