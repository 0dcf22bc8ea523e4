// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/shared_keywords.h"

#include "store/store_fixture.h"
#include "ui/competitors/shared_keywords_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

QUuid id(uint number)
{
    return QUuid(number, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

const Date someDay = startOfUtcDay(9'000) + Seconds(40'000);

/// A check of keyword `number` with the ranks of competitors; 0 is not among the results.
KeywordStandings checkOf(uint number, const std::vector<std::pair<QUuid, int>> &rivals)
{
    KeywordStandings check{id(number), someDay, {}, {}};
    for (const auto &[competitor, rank] : rivals)
        check.rivals.push_back(
            {competitor, rank > 0 ? std::optional<std::int64_t>(rank) : std::nullopt});
    return check;
}

std::optional<OwnStanding> ownAt(std::optional<std::int64_t> rank)
{
    return OwnStanding{text("film camera"), text("US"), rank, false};
}

/// Ranks of both for one keyword each; 0 is not ranked.
SharedKeywords sharedOf(const std::vector<std::pair<int, int>> &ranks)
{
    std::vector<TheirCheck> checks;
    for (size_t i = 0; i < ranks.size(); ++i) {
        TheirCheck check{id(uint(i)), someDay, id(99), std::nullopt};
        if (ranks[i].second > 0)
            check.rank = ranks[i].second;
        checks.push_back(check);
    }
    return SharedKeywords::of(checks, [&](const TheirCheck &check) {
        const int own = ranks[check.keywordId.data1].first;
        return ownAt(own > 0 ? std::optional<std::int64_t>(own) : std::nullopt);
    });
}

TEST(SharedKeywords, AreThoseWhereBothRankWithWhoLeadsByHowMuch)
{
    const SharedKeywords shared = sharedOf({{2, 5}, {11, 3}, {0, 4}, {7, 0}, {0, 0}});
    ASSERT_EQ(shared.keywords.size(), 2U);
    EXPECT_EQ(shared.keywords[0].leadText(), text("You by 3"));
    EXPECT_EQ(shared.keywords[0].leadSentence(), text("you lead by 3"));
    EXPECT_EQ(shared.keywords[1].leadText(), text("They by 8"));
    EXPECT_EQ(shared.keywords[1].leadSentence(), text("they lead by 8"));
    EXPECT_EQ(shared.leadText(), text("You lead on 1 of 2 keywords"));
    EXPECT_EQ(shared.emptyText(text("Foxglove")), QString());
}

TEST(SharedKeywords, OneKeywordIsOne)
{
    EXPECT_EQ(sharedOf({{2, 5}}).leadText(), text("You lead on 1 of 1 keyword"));
}

TEST(SharedKeywords, OfACompetitorJustTrackedNothingIsKeptYet)
{
    const SharedKeywords shared;
    EXPECT_EQ(shared.leadText(), QString());
    EXPECT_EQ(shared.emptyText(text("Foxglove Film Camera")),
              text("Ranks of Foxglove Film Camera are kept from the next measurement on."));
}

TEST(SharedKeywords, AreNoneWhileNoKeywordHasBoth)
{
    EXPECT_EQ(sharedOf({{0, 4}, {7, 0}}).emptyText(text("Foxglove")),
              text("No keyword yet where both rank."));
}

TEST(SharedKeywords, ANameThatTurnsTheTextIsCleanedInTheSentence)
{
    EXPECT_EQ(SharedKeywords().emptyText(text("\u202EFox\u0007glove\nFilm")),
              text("Ranks of Foxglove Film are kept from the next measurement on."));
    EXPECT_EQ(SharedKeywords().emptyText(text("עורך")),
              text("Ranks of \u2068עורך\u2069 are kept from the next measurement on."));
}

TEST(SharedKeywords, AnAppTrackedInThreeStorefrontsIsOneAppWithTheRankThatThereIs)
{
    const QSet<QUuid> tracked{id(1), id(2), id(3)};
    const auto checks = theirChecks({checkOf(10, {{id(1), 0}, {id(2), 4}, {id(3), 0}}),
                                     checkOf(11, {{id(3), 9}, {id(8), 1}}),
                                     checkOf(12, {{id(8), 2}}), checkOf(13, {{id(1), 0}})},
                                    tracked);
    ASSERT_EQ(checks.size(), 3U);
    EXPECT_EQ(checks[0], (TheirCheck{id(10), someDay, id(2), 4}));
    EXPECT_EQ(checks[1], (TheirCheck{id(11), someDay, id(3), 9}));
    EXPECT_EQ(checks[2], (TheirCheck{id(13), someDay, id(1), std::nullopt}));
}

TEST(SharedKeywords, AKeywordThatIsGoneIsNotAmongThem)
{
    const auto shared = SharedKeywords::of({{id(1), someDay, id(99), 4}}, [](const TheirCheck &) {
        return std::optional<OwnStanding>();
    });
    EXPECT_TRUE(shared.keywords.empty());
    EXPECT_FALSE(shared.isKept);
}

TEST(SharedKeywords, RanksOfAnEarlierCheckAreSaidToBe)
{
    const auto of = [](int older) {
        std::vector<TheirCheck> checks;
        for (int i = 0; i < 3; ++i)
            checks.push_back({id(uint(i)), someDay, id(99), 4});
        return SharedKeywords::of(checks, [&](const TheirCheck &check) {
            auto own = ownAt(7);
            own->isMeasuredSince = check.keywordId.data1 < uint(older);
            return own;
        });
    };
    EXPECT_EQ(of(0).olderText(), QString());
    EXPECT_EQ(of(1).olderText(), text("Both ranks of 1 keyword are of an earlier check: what the "
                                      "newest one found of others could not be kept."));
    EXPECT_TRUE(of(2).olderText().startsWith(text("Both ranks of 2 keywords are of ")));
}

RC_GTEST_PROP(SharedKeywords, SwappingBothAppsSwapsEveryLead, ())
{
    const auto rank = rc::gen::inRange(0, 101);
    const auto ranks = *rc::gen::container<std::vector<std::pair<int, int>>>(rc::gen::suchThat(
        rc::gen::pair(rank, rank), [](const auto &both) { return both.first != both.second; }));
    std::vector<std::pair<int, int>> swapped;
    for (const auto &[own, theirs] : ranks)
        swapped.emplace_back(theirs, own);
    const SharedKeywords shared = sharedOf(ranks);
    const SharedKeywords other = sharedOf(swapped);
    RC_ASSERT(shared.keywords.size() == other.keywords.size());
    RC_ASSERT(shared.led() + other.led() == qsizetype(shared.keywords.size()));
    for (size_t i = 0; i < shared.keywords.size(); ++i)
        RC_ASSERT(shared.keywords[i].lead() == -other.keywords[i].lead());
}

RC_GTEST_PROP(SharedKeywords, ACheckSaysTheSameInWhateverOrderItsCompetitorsStand, ())
{
    auto numbers = *rc::gen::unique<std::vector<uint>>(rc::gen::inRange(1U, 9U));
    std::vector<std::pair<QUuid, int>> rivals;
    for (const uint number : numbers)
        rivals.emplace_back(id(number), *rc::gen::inRange(0, 101));
    auto shuffled = rivals;
    std::ranges::reverse(shuffled);
    const QSet<QUuid> tracked{id(1), id(2), id(3)};
    const auto checks = theirChecks({checkOf(10, rivals)}, tracked);
    const auto again = theirChecks({checkOf(10, shuffled)}, tracked);
    RC_ASSERT(checks.size() == again.size());
    if (!checks.empty())
        RC_ASSERT(checks.front().rank == again.front().rank);
}

class SharedKeywordsModelTest : public testing::Test
{
protected:
    static SharedKeyword keyword(uint number, const char *name, int own, int theirs,
                                 const char *country = "US")
    {
        return {id(number), text(name), text(country), id(99), someDay, own, theirs, false};
    }
    void fill() { model.setKeywords(some, {}); }
    QString order()
    {
        QStringList keywords;
        for (int row = 0; row < model.rowCount(); ++row)
            keywords << model.entryAt(row).shared.keyword;
        return keywords.join(text(", "));
    }
    QString sentence(int row)
    {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.index(row, column).data(Qt::AccessibleTextRole).toString();
        return cells.join(text(", "));
    }

    const std::vector<SharedKeyword> some{
        keyword(1, "retro photo", 4, 1), keyword(2, "film camera filter", 2, 5),
        keyword(3, "Analog camera", 11, 3), keyword(4, "double exposure", 3, 14)};
    SharedKeywordsModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(SharedKeywordsModelTest, RowsStandInTheOrderOfTheirKeywords)
{
    fill();
    EXPECT_EQ(order(), text("Analog camera, double exposure, film camera filter, retro photo"));
}

TEST_F(SharedKeywordsModelTest, LeadsSortFromTheUsersLargestToTheirs)
{
    fill();
    model.sort(int(SharedColumn::Leads), Qt::AscendingOrder);
    EXPECT_EQ(order(), text("double exposure, film camera filter, retro photo, Analog camera"));
    model.sort(int(SharedColumn::TheirRank), Qt::AscendingOrder);
    EXPECT_EQ(order(), text("retro photo, Analog camera, film camera filter, double exposure"));
}

TEST_F(SharedKeywordsModelTest, ARowReadsAsOneSentence)
{
    fill();
    EXPECT_EQ(sentence(2),
              text("film camera filter, United States, your rank 2, their rank 5, you lead by 3"));
}

TEST_F(SharedKeywordsModelTest, ACopyHasTheStorefrontBesideTheKeyword)
{
    fill();
    const QList<QStringList> copied = model.texts({2}, {0, 1, 2, 3});
    EXPECT_EQ(copied[0].join(u'|'), text("Keyword|Storefront|Your rank|Their rank|Leads"));
    EXPECT_EQ(copied[1].join(u'|'), text("film camera filter|US|2nd|# 5|You by 3"));
}

TEST_F(SharedKeywordsModelTest, WhatStaysChangesInItsRowAndWhatIsGoneGoes)
{
    fill();
    const QPersistentModelIndex retro = model.index(3, 0);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    model.setKeywords({keyword(1, "retro photo", 9, 1), keyword(3, "Analog camera", 11, 3)}, {});
    EXPECT_EQ(order(), text("Analog camera, retro photo"));
    EXPECT_EQ(retro.row(), 1);
    EXPECT_EQ(model.entryAt(1).shared.leadText(), text("They by 8"));
    EXPECT_EQ(changed.size(), 1) << "the row that did not change is left alone";
    EXPECT_EQ(resets.size(), 0);
}

TEST_F(SharedKeywordsModelTest, OfManyTheFirstShowUntilAllAreWanted)
{
    std::vector<SharedKeyword> many;
    for (uint i = 1; i <= 2'400; ++i)
        many.push_back(keyword(i, qPrintable(QStringLiteral("keyword %1").arg(i)), int(i % 97 + 1),
                               int(i % 89 + 100)));
    model.setKeywords(many, {});
    EXPECT_EQ(model.rowCount(), SharedKeywordsModel::firstRows);
    EXPECT_EQ(model.hiddenCount(), 2'375);
    EXPECT_EQ(model.entryAt(0).shared.keyword, text("keyword 1"));
    model.sort(int(SharedColumn::Leads), Qt::AscendingOrder);
    EXPECT_EQ(model.rowCount(), SharedKeywordsModel::firstRows);
    const auto best = std::ranges::max_element(many, {}, &SharedKeyword::lead);
    EXPECT_EQ(model.entryAt(0).shared.lead(), best->lead())
        << "the first of all, not of those shown";
    model.showAll();
    EXPECT_EQ(model.rowCount(), 2'400);
    EXPECT_EQ(model.hiddenCount(), 0);
}

} // namespace
} // namespace veltrix
