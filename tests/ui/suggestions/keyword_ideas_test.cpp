// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/keyword_ideas.h"

#include "model/text_folding.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace veltrix
{
namespace
{

bool none(const QString &, const QString &)
{
    return false;
}

RivalListing rival(const char *name, const char *subtitle = "", const char *description = "",
                   const char *country = "US")
{
    RivalListing made;
    made.name = QString::fromUtf8(name);
    made.country = QString::fromUtf8(country);
    made.listing.trackName = made.name;
    made.listing.subtitle = QString::fromUtf8(subtitle);
    made.listing.description = QString::fromUtf8(description);
    return made;
}

QStringList phrasesOf(const QList<KeywordIdea> &ideas)
{
    QStringList phrases;
    for (const KeywordIdea &idea : ideas)
        phrases << idea.phrase;
    return phrases;
}

IdeaEvidence suggestion(const char *phrase)
{
    IdeaEvidence evidence;
    evidence.suggested.insert({QString::fromUtf8(phrase), QStringLiteral("US")});
    return evidence;
}

TEST(KeywordIdeas, ATitleComesBeforeASubtitleAndThatBeforeADescription)
{
    IdeaEvidence evidence;
    for (const char *phrase : {"grainy", "film camera", "batch development", "bat", "trip"})
        evidence.suggested.insert({QString::fromUtf8(phrase), QStringLiteral("US")});
    const auto ideas = keywordIdeas({rival("Grainy", "Film Camera", "Batch development for trips")},
                                    evidence, none, 60);
    EXPECT_EQ(phrasesOf(ideas),
              (QStringList{QStringLiteral("grainy"), QStringLiteral("film camera"),
                           QStringLiteral("batch development"), QStringLiteral("film"),
                           QStringLiteral("camera")}));
    EXPECT_EQ(ideas[2].place, IdeaPlace::Description);
}

TEST(KeywordIdeas, WhatMoreCompetitorsUseComesFirstAndNamesThem)
{
    const auto ideas = keywordIdeas({rival("Grainy"), rival("Hazel", "Film Camera"),
                                     rival("Quiet Aperture", "", "Your Film camera, at hand."),
                                     rival("Lens", "", "Film cameras")},
                                    {}, none, 60);
    EXPECT_EQ(ideas.first().phrase, QStringLiteral("film camera"));
    EXPECT_EQ(ideas.first().rivals,
              (QStringList{QStringLiteral("Hazel"), QStringLiteral("Quiet Aperture")}));
    EXPECT_EQ(ideas.first().place, IdeaPlace::Subtitle);
    EXPECT_EQ(ideaReasons(ideas.first()), QStringLiteral("In the subtitle of Hazel and 1 more"));
}

TEST(KeywordIdeas, WhatTheAppStoreSuggestsComesBeforeWhatItDoesNot)
{
    const auto ideas =
        keywordIdeas({rival("Grainy", "Film Camera")}, suggestion("film camera"), none, 60);
    EXPECT_EQ(ideas.first().phrase, QStringLiteral("film camera"));
    EXPECT_EQ(ideaReasons(ideas.first()),
              QStringLiteral("In the subtitle of Grainy · suggested by the App Store"));
}

TEST(KeywordIdeas, WhereASearchIsKeptItCountsWhetherACompetitorRanks)
{
    IdeaEvidence evidence;
    const QString us = QStringLiteral("US");
    evidence.ranking.insert({QStringLiteral("film"), us}, {QStringLiteral("Grainy")});
    evidence.ranking.insert({QStringLiteral("camera"), us}, {});
    const auto ideas = keywordIdeas({rival("Film, Camera, Lens")}, evidence, none, 60);
    EXPECT_EQ(phrasesOf(ideas), (QStringList{QStringLiteral("film"), QStringLiteral("camera"),
                                             QStringLiteral("lens")}));
    EXPECT_TRUE(ideaReasons(ideas[0]).endsWith(QStringLiteral(" · Grainy ranks for it")));
    EXPECT_TRUE(ideaReasons(ideas[1]).endsWith(QStringLiteral(" · none of them ranks for it")));
    EXPECT_EQ(ideas[2].ranking, std::nullopt) << "what was not searched is not told as no rank";
}

TEST(KeywordIdeas, WhatIsTrackedInTheStorefrontIsNoIdeaThere)
{
    const auto isTracked = [](const QString &phrase, const QString &country) {
        return phrase == QStringLiteral("grainy") && country == QStringLiteral("US");
    };
    const auto ideas =
        keywordIdeas({rival("Grainy"), rival("Grainy", "", "", "DE")}, {}, isTracked, 60);
    ASSERT_EQ(ideas.size(), 1);
    EXPECT_EQ(ideas.first().country, QStringLiteral("DE"));
}

TEST(KeywordIdeas, AListingOfWhichOnlyTheNameIsKnownGivesItsName)
{
    RivalListing known;
    known.name = QStringLiteral("Film Camera");
    known.country = QStringLiteral("US");
    EXPECT_EQ(keywordIdeas({known}, {}, none, 60).first().phrase, QStringLiteral("film camera"));
    EXPECT_TRUE(keywordIdeas({}, {}, none, 60).isEmpty());
    EXPECT_EQ(keywordIdeas({known}, {}, none, 2).size(), 2);
}

TEST(KeywordIdeas, TextsFromRightToLeftAndOfIdeographsAreIdeasToo)
{
    const auto ideas = keywordIdeas({rival("עורך תמונות", "写真加工アプリ")}, {}, none, 60);
    EXPECT_TRUE(phrasesOf(ideas).contains(QStringLiteral("עורך תמונות")));
    EXPECT_TRUE(phrasesOf(ideas).contains(QStringLiteral("写真加工アプリ")));
}

/// Up to five listings made of a few words, so that they have phrases in common.
rc::Gen<QList<RivalListing>> someListings()
{
    const auto text = rc::gen::map(
        rc::gen::container<std::vector<const char *>>(rc::gen::elementOf(std::vector<const char *>{
            "film", "camera", "photo", "Grain", "写真", "the", "app", ",", "lab"})),
        [](const std::vector<const char *> &words) {
            QStringList joined;
            for (const char *word : words)
                joined << QString::fromUtf8(word);
            return joined.join(u' ');
        });
    const auto listing = rc::gen::map(
        rc::gen::tuple(text, text, text, rc::gen::elementOf(std::vector<const char *>{"US", "DE"})),
        [](const auto &parts) {
            const auto &[name, subtitle, description, country] = parts;
            return rival(name.toUtf8().constData(), subtitle.toUtf8().constData(),
                         description.toUtf8().constData(), country);
        });
    return rc::gen::map(rc::gen::container<std::vector<RivalListing>>(listing),
                        [](const std::vector<RivalListing> &listings) {
                            return QList<RivalListing>(listings.begin(), listings.end());
                        });
}

RC_GTEST_PROP(KeywordIdeaRules, EachIsThereOnceWithAReasonAndNoneComesBeforeABetterOne, ())
{
    const auto ideas = keywordIdeas(*someListings(), suggestion("film camera"), none, 60);
    RC_ASSERT(ideas.size() <= 60);
    RC_ASSERT(std::is_sorted(ideas.begin(), ideas.end(),
                             [](const auto &a, const auto &b) { return a.points() > b.points(); }));
    QSet<IdeaKey> seen;
    for (const KeywordIdea &idea : ideas) {
        RC_ASSERT(!seen.contains({foldedCase(idea.phrase), idea.country}));
        seen.insert({foldedCase(idea.phrase), idea.country});
        RC_ASSERT(!idea.rivals.isEmpty() && !ideaReasons(idea).isEmpty());
        RC_ASSERT(idea.points() >= 1 && idea.points() <= 14);
    }
}

RC_GTEST_PROP(KeywordIdeaRules, MoreKnownOfAPhraseNeverLowersIt, ())
{
    const auto listings = *someListings();
    const auto before = keywordIdeas(listings, {}, none, 60);
    RC_PRE(!before.isEmpty());
    const KeywordIdea idea = before[*rc::gen::inRange<qsizetype>(0, before.size())];
    IdeaEvidence evidence;
    evidence.suggested.insert({foldedCase(idea.phrase), idea.country});
    evidence.ranking.insert({foldedCase(idea.phrase), idea.country}, {QStringLiteral("Grainy")});
    const auto after = keywordIdeas(listings, evidence, none, 60);
    const auto placeIn = [&idea](const QList<KeywordIdea> &ideas) {
        return std::find_if(ideas.begin(), ideas.end(),
                            [&idea](const KeywordIdea &other) {
                                return other.phrase == idea.phrase && other.country == idea.country;
                            }) -
               ideas.begin();
    };
    RC_ASSERT(placeIn(after) <= placeIn(before));
}

} // namespace
} // namespace veltrix
