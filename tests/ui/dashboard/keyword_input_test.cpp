// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_input.h"

#include "support/generators.h"
#include "support/json_printers.h"
#include "ui_kit/text/table_file.h"

#include <QLocale>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdlib>

namespace veltrix
{
namespace
{

QString split(const char *text)
{
    return splitKeywords(QString::fromUtf8(text)).join(u'|');
}

/// The keywords of a file as "line:keyword@storefront".
QString imported(const QByteArray &content)
{
    QStringList lines;
    for (const auto &[keyword, country, line, tags, app] : readKeywordFile(content).keywords)
        lines << QString::number(line) + u':' + keyword + (country ? u'@' + *country : QString()) +
                     (tags.isEmpty() ? QString() : u'#' + tags.join(u'+')) +
                     (app.isEmpty() ? QString() : u'/' + app);
    return lines.join(u'|');
}

TEST(KeywordInput, SplitsAtCommasAndDropsEmptyPieces)
{
    EXPECT_EQ(split("a, ,b"), QStringLiteral("a|b"));
    EXPECT_EQ(split("photo editor"), QStringLiteral("photo editor"));
    EXPECT_EQ(split(",, ,\t,"), QString());
    EXPECT_EQ(split(""), QString());
}

TEST(KeywordInput, TrimsWhiteSpaceOfEveryKind)
{
    EXPECT_EQ(split("\xC2\xA0 film camera \xE3\x80\x80,\n x "), QStringLiteral("film camera|x"));
}

TEST(KeywordInput, TakesPastedLinesAndTabs)
{
    EXPECT_EQ(split("one\ntwo\r\nthree\tfour,five\n\n"), QStringLiteral("one|two|three|four|five"));
}

TEST(KeywordInput, EveryKindOfLineEndPartsKeywords)
{
    EXPECT_EQ(split("one\xE2\x80\xA8two\xE2\x80\xA9three\rfour\xC2\x85"
                    "five"),
              QStringLiteral("one|two|three|four|five"));
}

TEST(KeywordInput, KeepsCaseAndInnerSpaces)
{
    EXPECT_EQ(split("Photo  Editor"), QStringLiteral("Photo  Editor"));
}

TEST(KeywordFile, AListMayUseLinesTabsCommasAndSemicolons)
{
    EXPECT_EQ(imported("one\ntwo, three\tfour\r\n\"five, six\"\n"),
              QStringLiteral("1:one|2:two|2:three|2:four|3:five|3:six"));
    EXPECT_EQ(imported("eins;zwei\ndrei, vier;\n"), QStringLiteral("1:eins|1:zwei|2:drei|2:vier"));
}

TEST(KeywordFile, AHeaderInAnyCaseNamesTheColumns)
{
    EXPECT_EQ(imported("Position,keyword,Storefront\r\n1,photo editor,de\r\n2,\"x, y\",\r\n"),
              QStringLiteral("2:photo editor@DE|3:x, y"));
    EXPECT_EQ(imported("KEYWORDS\tCOUNTRY\nphoto, video\tjp\n"),
              QStringLiteral("2:photo, video@JP"));
    EXPECT_EQ(imported("country; Keyword \r\nFR;retouche photo\r\n"),
              QStringLiteral("2:retouche photo@FR"));
}

TEST(KeywordFile, StorefrontsMayBeNamedAndWhatIsNoneStaysAsItIsWritten)
{
    EXPECT_EQ(imported("Keyword,Country\na,Germany\nb,fr\nc, UK \nd, \ne,Europe\nf,south korea"),
              QStringLiteral("2:a@DE|3:b@FR|4:c@UK|5:d|6:e@Europe|7:f@KR"));
}

TEST(KeywordFile, AHeadingAloneHeadsAList)
{
    EXPECT_EQ(imported("Keywords\nphoto, video\nfilm;grain\n"),
              QStringLiteral("2:photo|2:video|3:film;grain"));
}

TEST(KeywordFile, ALineOfATableWithoutAKeywordIsToldAndABlankOneIsNot)
{
    EXPECT_EQ(imported("Keyword,Storefront\na,US\n,US\n , \n,,\nb,GB"),
              QStringLiteral("2:a@US|3:@US|6:b@GB"));
}

TEST(KeywordFile, ALineWithMoreCellsThanTheHeaderIsNotGuessedAt)
{
    const KeywordFile file = readKeywordFile("Keyword,Rank\nphoto,1\nfilm, grain,2\nsepia,3,,\n");
    EXPECT_EQ(file.keywords.size(), 2);
    EXPECT_EQ(file.overlongLines, QList<qsizetype>{3});
}

TEST(KeywordFile, ReadsWhatSpreadsheetsOfWindowsAndMacWrite)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(imported("Keyword;Country\r\nBildgr\xF6\xDF"
                       "e;\xD6sterreich\r\n"),
              QStringLiteral("2:Bildgröße@AT"));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    const QString text = QStringLiteral("\uFEFFKeyword\tCountry\n写真\tJapan\n");
    EXPECT_EQ(imported(QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2)),
              QStringLiteral("2:写真@JP"));
}

TEST(KeywordFile, AnApostropheBeforeAFormulaIsTheSpreadsheets)
{
    EXPECT_EQ(imported("Keyword,Storefront\n'=photo,US\n'-12 filter,US\n'90s,US\n-3,US"),
              QStringLiteral("2:=photo@US|3:-12 filter@US|4:'90s@US|5:-3@US"));
}

TEST(KeywordFile, TagsAndTheAppAreReadFromTheirColumns)
{
    EXPECT_EQ(imported("Keyword,Storefront,App,Tags\nfilm,US,Lumen,core; Autumn ;;CORE\n"
                       "grain,US,'=Sum,'=a; b\nsepia,US,,\n"),
              QStringLiteral("2:film@US#core+Autumn/Lumen|3:grain@US#=a+b/=Sum|4:sepia@US"));
    EXPECT_EQ(imported("Keyword;Tags\nfilm;\"core; autumn\"\n"),
              QStringLiteral("2:film#core+autumn"))
        << "in a file that semicolons part, tags are in quotation marks";
}

/// "begin-end:keyword" of the keyword at the caret, which is the first '^' of the text.
QString atCaret(QString text)
{
    const qsizetype caret = text.indexOf(u'^');
    text.remove(caret, 1);
    const KeywordInText found = keywordAt(text, caret);
    return QStringLiteral("%1-%2:%3")
        .arg(QString::number(found.begin), QString::number(found.end), found.keyword);
}

TEST(KeywordInText, IsWhatStandsBetweenTheSeparatorsAroundTheCaret)
{
    EXPECT_EQ(atCaret(QStringLiteral("film\nphoto ca^")), QStringLiteral("5-13:photo ca"));
    EXPECT_EQ(atCaret(QStringLiteral("film,  pho^to  ,grain")), QStringLiteral("7-12:photo"));
    EXPECT_EQ(atCaret(QStringLiteral("^film\ngrain")), QStringLiteral("0-4:film"));
    EXPECT_EQ(atCaret(QStringLiteral("film\n^\ngrain")), QStringLiteral("5-5:"));
    EXPECT_EQ(atCaret(QStringLiteral("film,   ^")), QStringLiteral("8-8:"));
    EXPECT_EQ(atCaret(QStringLiteral("^")), QStringLiteral("0-0:"));
    EXPECT_EQ(atCaret(QStringLiteral("一\u2028写真^\t二")), QStringLiteral("2-4:写真"));
}

RC_GTEST_PROP(KeywordInTextRules, IsOneOfTheKeywordsWhereverTheCaretStands,
              (const QString &text, int place))
{
    const qsizetype caret = text.isEmpty() ? 0 : std::abs(place % 1000) % (text.size() + 1);
    const KeywordInText found = keywordAt(text, caret);
    RC_ASSERT(found.keyword == text.mid(found.begin, found.end - found.begin));
    RC_ASSERT(found.keyword.isEmpty() || splitKeywords(text).contains(found.keyword));
    QString replaced = text;
    replaced.replace(found.begin, found.end - found.begin, QStringLiteral("photo calendar"));
    RC_ASSERT(splitKeywords(replaced).contains(QStringLiteral("photo calendar")));
}

TEST(KeywordFile, AFileOfMillionsOfCellsIsRefusedBeforeItIsTakenApart)
{
    EXPECT_THROW(readKeywordFile(QByteArray("x,").repeated(1'000'001)), TableFileError);
    EXPECT_THROW(readKeywordFile(QByteArray("x;y\n").repeated(600'000)), TableFileError);
    EXPECT_EQ(readKeywordFile(QByteArray("x\n").repeated(20'000)).keywords.size(), 20'000);
}

TEST(KeywordFile, AnEmptyFileHasNoKeywords)
{
    EXPECT_EQ(imported(""), QString());
    EXPECT_EQ(imported("Keyword,Storefront\n"), QString());
}

} // namespace
} // namespace veltrix
