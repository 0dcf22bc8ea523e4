// SPDX-License-Identifier: GPL-3.0-or-later
// Search in the made-up App Store: any text, any script, a ranking that moves from day to day.
#include "sample/fixtures.h"
#include "sample/text_folding.h"
#include "sample_printers.h"

#include <gmock/gmock.h>

#include <set>

namespace veltrix::sample
{
namespace
{

using testing::Contains;
using testing::IsEmpty;

TEST(TextFolding, IgnoresCaseAccentsAndPunctuation)
{
    EXPECT_EQ(folded(u"  Éditeur PHOTO: Crème-Brûlée! "), u"editeur photo creme brulee");
    EXPECT_EQ(folded(u"ＦＵＬＬ ｗｉｄｔｈ"), u"full width");
    EXPECT_EQ(folded(u"Ёлка"), u"елка");
    EXPECT_EQ(folded(u"ستوديو السدرةُ"), u"ستوديو السدره");
    EXPECT_EQ(folded(u"★ ♥"), u"");
}

TEST(TextFolding, KeepsMarksThatMakeTheWord)
{
    EXPECT_EQ(folded(u"แต่งรูป"), u"แต่งรูป");
    EXPECT_EQ(folded(u"がぎ"), u"がぎ");
    EXPECT_NE(folded(u"が"), folded(u"か"));
}

TEST(AppSearch, FindsNothingForUnknownWords)
{
    for (const char *term : {"xyzzy qwrtl", "", "   ", "!!!", "ĳsvogel kwartet"})
        EXPECT_THAT(namesFor("US", term), IsEmpty()) << term;
}

TEST(AppSearch, AnswersTermsOfWhichHalfTheWordsAreKnown)
{
    EXPECT_THAT(namesFor("US", "polaroid frame").first(3),
                Contains(testing::Truly(
                    [](const QString &name) { return name.contains(QLatin1String("Frame")); })));
}

TEST(AppSearch, IgnoresCaseAccentsPluralsAndStopWords)
{
    const QStringList plain = namesFor("US", "photo editor");
    EXPECT_EQ(namesFor("US", "  PHÓTO   éditors! "), plain);
    EXPECT_EQ(namesFor("US", "the best photo editor app for free"), plain);
}

TEST(AppSearch, PutsNamesWithTheTermFirst)
{
    const QStringList names = namesFor("US", "photo editor");
    ASSERT_GE(names.size(), 40);
    for (const QString &name : names.first(25)) {
        EXPECT_THAT(foldedWords(name), Contains(u"photo"_qs));
        EXPECT_THAT(foldedWords(name), Contains(u"editor"_qs));
    }
}

TEST(AppSearch, FindsAnAppByItsWholeName)
{
    EXPECT_EQ(positionOf(lumenPhotoEditorId, "US", "Lumen Photo Editor"), 1);
    EXPECT_EQ(positionOf(tidewaterJournalId, "GB", "tidewater"), 1);
    EXPECT_EQ(positionOf(orchardBudgetId, "DE", "orchard haushaltsbuch"), 1);
}

TEST(AppSearch, RanksThePhotoEditorInTheMiddleOfItsField)
{
    const int position = positionOf(lumenPhotoEditorId, "US", "photo editor");
    EXPECT_GE(position, 15);
    EXPECT_LE(position, 40);
    EXPECT_LE(positionOf(lumenPhotoEditorId, "US", "collage maker"), 15);
    EXPECT_GE(positionOf(lumenPhotoEditorId, "US", "collage maker"), 2);
}

TEST(AppSearch, MovesFromDayToDayButNeverWithinADay)
{
    std::set<int> positions;
    for (int day = 0; day < 20; ++day)
        positions.insert(
            positionOf(lumenPhotoEditorId, "US", "photo editor", testDay().addDays(day)));
    EXPECT_GE(positions.size(), 3U);
    EXPECT_LE(*positions.rbegin() - *positions.begin(), 15);
    EXPECT_EQ(namesFor("US", "photo editor"), namesFor("US", "photo editor"));
    EXPECT_NE(namesFor("US", "photo editor"), namesFor("US", "photo editor", testDay().addDays(1)));
}

TEST(AppSearch, AnswersRealisticKeywordsWithFullResults)
{
    for (const char *term : {"photo editor",      "collage maker", "film camera filter",
                             "remove background", "retro photo",   "passport photo",
                             "light leak effect", "photo journal", "daily journal",
                             "budget planner",    "stock options", "meditation timer",
                             "private network",   "recipes",       "running",
                             "learn spanish",     "calendar",      "notes",
                             "weather radar",     "puzzle",        "kids games"})
        EXPECT_GE(namesFor("US", term).size(), 10) << term;
}

struct ScriptCase {
    const char *country;
    const char *term;
    /// A part that the best names hold.
    const char16_t *part;
};

class AppSearchScripts : public testing::TestWithParam<ScriptCase>
{
};

TEST_P(AppSearchScripts, FindsAppsInTheLanguageOfTheStorefront)
{
    const QStringList names = namesFor(GetParam().country, GetParam().term);
    ASSERT_GE(names.size(), 5);
    const QString part = QString::fromUtf16(GetParam().part);
    for (const QString &name : names.first(2))
        EXPECT_TRUE(name.contains(part)) << name.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Languages, AppSearchScripts,
    testing::Values(ScriptCase{"DE", "bildbearbeitung", u"Bildbearbeitung"},
                    ScriptCase{"FR", "retouche photo", u"etouche photo"},
                    ScriptCase{"ES", "editor de fotos", u"ditor de fotos"},
                    ScriptCase{"BR", "controle de gastos", u"ontrole de gastos"},
                    ScriptCase{"JP", "家計簿", u"家計簿"},
                    ScriptCase{"JP", "写真編集アプリ", u"写真編集"},
                    ScriptCase{"KR", "가계부", u"가계부"}, ScriptCase{"TH", "แต่งรูป", u"แต่งรูป"},
                    ScriptCase{"SA", "محرر صور", u"محرر الصور"},
                    ScriptCase{"AE", "وصفات", u"وصفات"},
                    ScriptCase{"RU", "ФОТОРЕДАКТОР", u"Фоторедактор"}),
    [](const auto &test) { return std::string(test.param.country) + std::to_string(test.index); });

} // namespace
} // namespace veltrix::sample
