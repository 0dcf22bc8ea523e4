// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/autocomplete_score.h"

#include "clients/storefront_ids.h"
#include "support/generators.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

QStringList prefixes(const char *keyword)
{
    return autocompletePrefixes(QString::fromUtf8(keyword));
}

QStringList list(std::initializer_list<const char *> texts)
{
    QStringList made;
    for (const char *text : texts)
        made.append(QString::fromUtf8(text));
    return made;
}

AutocompleteProbe probe(const char *prefix, std::optional<std::int64_t> rank)
{
    return {QString::fromUtf8(prefix), {}, Date(), rank};
}

TEST(AutocompletePrefixes, BeginWithTwoCharactersAndEndWithTheWholeTerm)
{
    EXPECT_EQ(prefixes(""), list({}));
    EXPECT_EQ(prefixes("a"), list({"a"}));
    EXPECT_EQ(prefixes("ab"), list({"ab"}));
    EXPECT_EQ(prefixes("abc"), list({"ab", "abc"}));
    EXPECT_EQ(prefixes("abcde"), list({"ab", "abc", "abcd", "abcde"}));
    EXPECT_EQ(prefixes("abcdef"), list({"ab", "abc", "abcd", "abcde", "abcdef"}));
    EXPECT_EQ(prefixes("photo editor"),
              list({"ph", "photo", "photo e", "photo edit", "photo editor"}));
}

TEST(AutocompletePrefixes, NeverCutACharacterInTwo)
{
    EXPECT_EQ(prefixes("🐻🐼🐨"), list({"🐻🐼", "🐻🐼🐨"}));
}

RC_GTEST_PROP(AutocompletePrefixRules, HoldForEveryKeyword, (const QString &keyword))
{
    const QStringList planned = autocompletePrefixes(keyword);
    RC_ASSERT(planned.size() <= 5);
    RC_ASSERT(planned.isEmpty() == keyword.isEmpty());
    qsizetype last = 0;
    for (const QString &prefix : planned) {
        RC_ASSERT(keyword.startsWith(prefix));
        RC_ASSERT(prefix.size() > last);
        last = prefix.size();
    }
    RC_ASSERT(last == keyword.size());
}

TEST(RankAmongSuggestions, IsTheFirstPositionFromOne)
{
    const QStringList suggestions = list({"other", "CAFÉ ", "cafe"});
    EXPECT_EQ(rankAmong(suggestions, QStringLiteral("cafe")), 2);
    EXPECT_EQ(rankAmong(suggestions, QStringLiteral("caf")), std::nullopt);
    EXPECT_EQ(rankAmong({}, QStringLiteral("caf")), std::nullopt);
}

TEST(VisibilityScore, IsAHundredWhenTheTermIsFirstAtEveryPrefixAndZeroWhenItIsNowhere)
{
    const QString keyword = QStringLiteral("abcdef");
    EXPECT_EQ(visibilityScore({probe("ab", 1), probe("abc", 1), probe("abcdef", 1)}, keyword), 100);
    EXPECT_EQ(visibilityScore({probe("ab", {}), probe("abc", {})}, keyword), 0);
}

TEST(VisibilityScore, WeighsEarlierVisibilityMoreAndTheFullTermNotAtAll)
{
    const QString keyword = QStringLiteral("abcdef");
    // Weights 4/6 and 3/6; seen at the first only: 100 × 4 ÷ 7.
    EXPECT_EQ(visibilityScore({probe("ab", 1), probe("abc", {})}, keyword), 57);
    EXPECT_EQ(visibilityScore({probe("ab", {}), probe("abc", 1)}, keyword), 43);
    EXPECT_EQ(visibilityScore({probe("ab", {}), probe("abc", {}), probe("abcdef", 1)}, keyword), 0);
    // Rank 3 counts a half: 1 ÷ log₂ 4.
    EXPECT_EQ(visibilityScore({probe("ab", 3)}, keyword), 50);
}

TEST(VisibilityScore, IsAbsentWithoutAnIncompletePrefix)
{
    EXPECT_EQ(visibilityScore({probe("ab", 1)}, QStringLiteral("ab")), std::nullopt);
    EXPECT_EQ(visibilityScore({}, QStringLiteral("abc")), std::nullopt);
}

RC_GTEST_PROP(VisibilityScoreRules, StaysInBoundsAndNeverFallsWhenARankImproves,
              (std::vector<std::uint8_t> ranks))
{
    const QString keyword = QStringLiteral("abcdefghij");
    QList<AutocompleteProbe> probes;
    for (size_t i = 0; i < std::min<size_t>(ranks.size(), 8); ++i) {
        AutocompleteProbe one;
        one.prefix = keyword.left(qsizetype(i) + 2);
        if (ranks[i] > 0)
            one.exactRank = ranks[i];
        probes.append(one);
    }
    RC_PRE(!probes.isEmpty());
    const std::int64_t score = visibilityScore(probes, keyword).value();
    RC_ASSERT(score >= 0 && score <= 100);
    for (AutocompleteProbe &better : probes) {
        const auto before = better.exactRank;
        better.exactRank = before ? std::max<std::int64_t>(1, *before - 1) : 10;
        RC_ASSERT(visibilityScore(probes, keyword).value() >= score);
        better.exactRank = before;
    }
}

QList<AutocompleteDailyScore> history(std::initializer_list<std::pair<std::int64_t, int>> days)
{
    QList<AutocompleteDailyScore> made;
    for (const auto &[day, score] : days)
        made.append({day, score, Date()});
    return made;
}

TEST(VisibilityReportRules, TwoDaysReportTodaysScoreAndThreeTheMedian)
{
    EXPECT_EQ(reportVisibility({}, 100), (VisibilityReport{0, {}, {}}));
    EXPECT_EQ(reportVisibility(history({{100, 40}}), 100), (VisibilityReport{1, 40, 0}));
    EXPECT_EQ(reportVisibility(history({{99, 90}, {100, 40}}), 100), (VisibilityReport{2, 40, 50}));
    EXPECT_EQ(reportVisibility(history({{98, 10}, {99, 90}, {100, 40}}), 100),
              (VisibilityReport{3, 40, 80}));
    EXPECT_EQ(reportVisibility(history({{98, 50}, {99, 90}, {100, 40}}), 100),
              (VisibilityReport{3, 50, 50}));
}

TEST(VisibilityReportRules, SevenCalendarDaysCountTodayIncluded)
{
    // Day 94 is the seventh back; day 93 is out of the window, and so not an observed day either.
    EXPECT_EQ(reportVisibility(history({{93, 0}, {94, 80}, {100, 90}}), 100),
              (VisibilityReport{2, 90, 10}));
    EXPECT_EQ(reportVisibility(history({{93, 0}, {94, 80}, {95, 81}, {100, 90}}), 100),
              (VisibilityReport{3, 81, 10}));
    EXPECT_EQ(reportVisibility(history({{1, 10}, {2, 20}, {3, 30}}), 100),
              (VisibilityReport{0, {}, {}}));
}

TEST(VisibilityReportRules, DaysThatAWrongClockPutAheadAreNotObservedYet)
{
    EXPECT_EQ(reportVisibility(history({{465, 10}, {466, 20}, {99, 30}, {100, 40}}), 100),
              (VisibilityReport{2, 40, 10}));
}

TEST(VisibilityReportRules, TheMeanOfTheMiddleTwoIsRoundedHalfAwayFromZero)
{
    EXPECT_EQ(reportVisibility(history({{97, 10}, {98, 21}, {99, 20}, {100, 90}}), 100).score, 21);
}

TEST(AutocompleteDays, AreUtcDaysSince1970)
{
    EXPECT_EQ(autocompleteDay(dateFromUnixSeconds(0)), 0);
    EXPECT_EQ(autocompleteDay(dateFromUnixSeconds(86'399.9)), 0);
    EXPECT_EQ(autocompleteDay(dateFromUnixSeconds(86'400)), 1);
    EXPECT_EQ(autocompleteDay(dateFromUnixSeconds(-1)), -1);
    EXPECT_EQ(autocompleteDay(dateFromUnixSeconds(1'795'262'400)), 20'778);
}

TEST(StorefrontIds, AreKnownForEveryStorefrontThatCanBeChosen)
{
    const char *choices = "US GB CA AU DE FR IT ES NL SE NO DK FI IE CH AT BE PT PL CZ HU RO GR TR "
                          "BR MX AR CL CO PE JP KR CN HK TW SG MY TH PH VN ID IN AE SA IL ZA NZ";
    const QStringList codes = QString::fromLatin1(choices).split(u' ');
    ASSERT_EQ(codes.size(), 47);
    for (const QString &code : codes)
        EXPECT_TRUE(storefrontIdOf(code).has_value()) << code.toStdString();
    EXPECT_EQ(storefrontIdOf(QStringLiteral("us"))->header(), QStringLiteral("143441-1,29"));
    EXPECT_EQ(storefrontIdOf(QStringLiteral("JP"))->header(), QStringLiteral("143462-9,29"));
    EXPECT_EQ(storefrontIdOf(QStringLiteral("ZW"))->storefrontId, 143'605);
    EXPECT_EQ(storefrontIdOf(QStringLiteral("BD"))->header(), QStringLiteral("143490,29"));
    for (const char *unknown : {"", "XX", "USA", "ÜS", "A"})
        EXPECT_EQ(storefrontIdOf(QString::fromUtf8(unknown)), std::nullopt) << unknown;
}

} // namespace
} // namespace veltrix
