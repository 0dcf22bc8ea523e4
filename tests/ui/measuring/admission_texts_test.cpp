// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/measuring/admission_texts.h"

#include "support/json_printers.h"
#include "ui_kit/text/tool_tip_text.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class AdmissionTexts : public testing::Test
{
protected:
    AdmissionTexts() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }

    static KeywordAdmission admission(qsizetype added, qsizetype already, qsizetype refused)
    {
        KeywordAdmission made;
        made.kept.resize(added + already);
        made.added = added;
        for (qsizetype i = 1; i <= refused; ++i)
            made.refused.append({QStringLiteral("k%1").arg(i), QStringLiteral("UK"),
                                 KeywordRefusal::UnknownStorefront});
        return made;
    }
    static QString count(qsizetype added, qsizetype already, qsizetype refused)
    {
        return admissionCount(admission(added, already, refused));
    }
};

TEST_F(AdmissionTexts, TheCountTellsWhatHappenedAndOnlyThat)
{
    EXPECT_EQ(count(12, 3, 2), QStringLiteral("12 added, 3 already there, 2 refused"));
    EXPECT_EQ(count(1, 0, 0), QStringLiteral("1 added"));
    EXPECT_EQ(count(1, 1, 0), QStringLiteral("1 added, 1 already there"));
    EXPECT_EQ(count(1, 0, 1), QStringLiteral("1 added, 1 refused"));
    EXPECT_EQ(count(1234, 0, 0), QStringLiteral("1,234 added"));
}

TEST_F(AdmissionTexts, WhereNothingWasAddedItSaysSoInWords)
{
    EXPECT_EQ(count(0, 3, 0), QStringLiteral("None added, 3 already there"));
    EXPECT_EQ(count(0, 0, 2), QStringLiteral("None added, 2 refused"));
    EXPECT_EQ(count(0, 3, 2), QStringLiteral("None added, 3 already there, 2 refused"));
}

TEST_F(AdmissionTexts, EachRefusalIsNamedWithItsReason)
{
    const QList<RefusedKeyword> refused{
        {QStringLiteral("retouch"), QStringLiteral("UK"), KeywordRefusal::UnknownStorefront},
        {QString(101, u'x'), QStringLiteral("US"), KeywordRefusal::TooLong},
        {QStringLiteral("photo\u0007editor"), QStringLiteral("US"),
         KeywordRefusal::ControlCharacter},
        {QString(), QStringLiteral("US"), KeywordRefusal::Empty},
        {QStringLiteral("%1"), QString(), KeywordRefusal::UnknownStorefront}};
    EXPECT_EQ(refusalLines(refused),
              (QStringList{QStringLiteral("“retouch”: “UK” is not a supported storefront"),
                           QStringLiteral("“xxxxxxxxxxxxxxxxxxxxxxxx…”: longer "
                                          "than 100 characters"),
                           QStringLiteral("“photo\uFFFDeditor”: contains a control character"),
                           QStringLiteral("“”: no text"), QStringLiteral("“%1”: no storefront")}));
}

TEST_F(AdmissionTexts, OfMoreThanFiveRefusalsFiveAreNamedAndTheOthersCounted)
{
    EXPECT_EQ(refusalLines(admission(0, 0, 5).refused).size(), 5);
    const QStringList lines = refusalLines(admission(0, 0, 17).refused);
    ASSERT_EQ(lines.size(), 6);
    EXPECT_EQ(lines[4], QStringLiteral("“k5”: “UK” is not a supported storefront"));
    EXPECT_EQ(lines[5], QStringLiteral("and 12 more"));
    EXPECT_EQ(refusalLines(admission(0, 0, 6).refused).last(), QStringLiteral("and 1 more"));
}

TEST_F(AdmissionTexts, NamesInOneLineAreCutTheSameWay)
{
    EXPECT_EQ(namesInShort({QStringLiteral("a"), QStringLiteral("b")}), QStringLiteral("“a”, “b”"));
    QStringList many;
    for (int i = 1; i <= 7; ++i)
        many << QString::number(i);
    EXPECT_EQ(namesInShort(many), QStringLiteral("“1”, “2”, “3”, “4”, “5” and 2 more"));
}

TEST_F(AdmissionTexts, SavedIsOnlySaidOfWhatWasAddedAndIsOnDisk)
{
    EXPECT_EQ(
        admissionStatus(admission(2, 1, 1), true),
        (AdmissionStatus{QStringLiteral("Keywords saved. Metrics will update in the background."),
                         QStringLiteral("2 added, 1 already there, 1 refused"), false, true}));
    EXPECT_EQ(admissionStatus(admission(2, 0, 0), false),
              (AdmissionStatus{QStringLiteral("The new keywords are not saved yet."),
                               QStringLiteral("2 added"), true}));
    EXPECT_EQ(admissionStatus(admission(0, 2, 0), true),
              (AdmissionStatus{QStringLiteral("None added, 2 already there"), QString(), false}));
    EXPECT_EQ(admissionStatus(admission(0, 0, 2), true),
              (AdmissionStatus{QStringLiteral("None added, 2 refused"), QString(), true}));
}

TEST_F(AdmissionTexts, AllRefusalsCanBeCopiedAsATable)
{
    EXPECT_EQ(
        refusalTable({{admission(0, 0, 1).refused[0]},
                      {QStringLiteral("more cells than the header line"), 7}}),
        (QList<QStringList>{
            {QStringLiteral("Keyword"), QStringLiteral("Storefront"), QStringLiteral("Reason"),
             QStringLiteral("Line")},
            {QStringLiteral("k1"),
             QStringLiteral("UK"),
             QStringLiteral("“UK” is not a supported storefront"),
             {}},
            {{}, {}, QStringLiteral("more cells than the header line"), QStringLiteral("7")}}));
}

TEST_F(AdmissionTexts, ARefusalOfAFileNamesItsLine)
{
    const RefusedKeyword tooLong{QStringLiteral("%2 %1"), QStringLiteral("US"),
                                 KeywordRefusal::TooLong};
    EXPECT_EQ(refusalLines(QList<RefusedLine>{{tooLong, 1234}, {QStringLiteral("no text"), 2}}),
              (QStringList{QStringLiteral("Line 1,234, “%2 %1”: longer than 100 characters"),
                           QStringLiteral("Line 2: no text")}));
}

TEST(ToolTipText, LongLinesAreBrokenAtSpaces)
{
    EXPECT_EQ(toolTipText(QString()), QString());
    EXPECT_EQ(toolTipText(QStringLiteral("a\nb")), QStringLiteral("a\nb"));
    const QString words = QStringLiteral("ninechars ").repeated(10).trimmed();
    EXPECT_EQ(toolTipText(words), words.first(79) + u'\n' + words.sliced(80));
    EXPECT_EQ(toolTipText(QString(80, u'x')), QString(80, u'x'));
    EXPECT_EQ(toolTipText(QString(81, u'x')), QString(80, u'x') + QStringLiteral("\nx"));
}

TEST(ToolTipText, AVeryLongTextIsCut)
{
    const QString text = toolTipText(QString(20'000, u'x'));
    EXPECT_EQ(text.count(u'x'), 1000);
    EXPECT_TRUE(text.endsWith(u'…'));
}

} // namespace
} // namespace veltrix
