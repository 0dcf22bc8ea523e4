// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/suggestion_list.h"

#include "model/text_folding.h"
#include "support/generators.h"

#include <QSet>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

bool none(const QString &)
{
    return false;
}

QStringList termsOf(const QList<Suggestion> &suggestions)
{
    QStringList terms;
    for (const Suggestion &suggestion : suggestions)
        terms << suggestion.term;
    return terms;
}

TEST(SuggestionList, KeepsTheOrderAndNamesWhatIsTracked)
{
    const QStringList terms{QStringLiteral("photo calendar"), QStringLiteral("photo caption"),
                            QStringLiteral("photo cartoon")};
    const auto isTracked = [](const QString &term) {
        return term == QStringLiteral("photo caption");
    };
    EXPECT_EQ(offeredSuggestions(terms, QStringLiteral("photo ca"), isTracked, 6),
              (QList<Suggestion>{{QStringLiteral("photo calendar"), false},
                                 {QStringLiteral("photo caption"), true},
                                 {QStringLiteral("photo cartoon"), false}}));
    EXPECT_EQ(offeredSuggestions(terms, QStringLiteral("photo ca"), isTracked, 2).size(), 2);
}

TEST(SuggestionList, LeavesOutWhatIsTypedAlreadyAndWhatCannotBeAdded)
{
    const QStringList terms{QStringLiteral("Photo"),   QStringLiteral("photos"),
                            QStringLiteral("PHOTOS"),  QStringLiteral("photo, video"),
                            QString(101, u'x'),        QStringLiteral("  "),
                            QStringLiteral("pho\nto"), QStringLiteral(" photo lab "),
                            QStringLiteral("写真加工")};
    EXPECT_EQ(termsOf(offeredSuggestions(terms, QStringLiteral(" photo"), none, 6)),
              (QStringList{QStringLiteral("photos"), QStringLiteral("photo lab"),
                           QStringLiteral("写真加工")}));
}

RC_GTEST_PROP(SuggestionListRules, EachIsOfferedOnceFitsInALineAndIsOneOfTheTerms,
              (const QStringList &terms, const QString &typed))
{
    const QList<Suggestion> offered = offeredSuggestions(terms, typed, none, 6);
    RC_ASSERT(offered.size() <= 6);
    QSet<QString> seen;
    for (const Suggestion &suggestion : offered) {
        RC_ASSERT(!seen.contains(foldedCase(suggestion.term)));
        seen.insert(foldedCase(suggestion.term));
        RC_ASSERT(!suggestion.term.contains(u',') && !suggestion.term.contains(u'\n'));
        RC_ASSERT(std::any_of(terms.begin(), terms.end(), [&](const QString &term) {
            return term.trimmed() == suggestion.term;
        }));
    }
}

TEST(SuggestionList, AsksFromTwoCharactersOnOrOneThatIsAWord)
{
    EXPECT_FALSE(isWorthSuggesting(QString()));
    EXPECT_FALSE(isWorthSuggesting(QStringLiteral(" p ")));
    EXPECT_TRUE(isWorthSuggesting(QStringLiteral("ph")));
    EXPECT_TRUE(isWorthSuggesting(QStringLiteral("写")));
    EXPECT_TRUE(isWorthSuggesting(QStringLiteral("사")));
    EXPECT_FALSE(isWorthSuggesting(QStringLiteral("ת")));
    EXPECT_TRUE(isWorthSuggesting(QString(100, u'x')));
    EXPECT_FALSE(isWorthSuggesting(QString(101, u'x')));
    EXPECT_FALSE(isWorthSuggesting(QStringLiteral("😀"))) << "one character of two units";
}

TEST(SuggestionList, SaysWhatIsShown)
{
    EXPECT_EQ(suggestionsHeading(QStringLiteral("photo ca")),
              QStringLiteral("Suggestions for “photo ca”"));
    EXPECT_EQ(noSuggestions(QStringLiteral("photo ca")),
              QStringLiteral("No suggestions for “photo ca”"));
    EXPECT_EQ(suggestionsFailed(), QStringLiteral("Suggestions couldn't be loaded."));
    EXPECT_EQ(spokenSuggestion({QStringLiteral("photo calendar"), false}, 1, 4),
              QStringLiteral("photo calendar, suggestion 1 of 4"));
    EXPECT_EQ(spokenSuggestion({QStringLiteral("%1 %L2"), true}, 3, 4),
              QStringLiteral("%1 %L2, suggestion 3 of 4, tracked"));
    EXPECT_NE(noSuggestions(QStringLiteral("תמונה")), QStringLiteral("No suggestions for “תמונה”"))
        << "a text from right to left is isolated in the sentence";
}

} // namespace
} // namespace veltrix
