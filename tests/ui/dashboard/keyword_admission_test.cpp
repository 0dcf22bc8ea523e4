// SPDX-License-Identifier: GPL-3.0-or-later
// What the popover and an import let in, what they refuse, and what they say about it.
#include "ui/support/ui_test.h"

#include "ui/dashboard/keyword_filter.h"
#include "ui_kit/widgets/text_area.h"

#include <QClipboard>
#include <QGuiApplication>

namespace veltrix
{
namespace
{

const QString saved = QStringLiteral("Keywords saved. Metrics will update in the background.");

class KeywordAdmissionPageTest : public UiTest
{
protected:
    /// Opens the popover and puts the text into its field.
    void paste(const QString &text)
    {
        click("addKeywordsButton");
        QGuiApplication::clipboard()->setText(text);
        find("keywordInput")->setFocus();
        press(Qt::Key_V, Qt::ControlModifier);
    }
    void add() { press(Qt::Key_Return, Qt::ControlModifier); }
    /// Opens the popover with the file, and adds what it holds.
    void import(const QByteArray &content)
    {
        world->files.opened = content;
        page().importKeywords();
        click("addKeywordsSubmit");
    }
    /// The keywords after those of the sample, "text@COUNTRY".
    QStringList added()
    {
        QStringList keywords;
        for (const TrackedKeyword &keyword : store().trackedKeywords().mid(11))
            keywords << keyword.keyword + u'@' + keyword.country;
        return keywords;
    }
    QString detail() { return find<StatusBar>("statusBar")->detail(); }
    QString note() { return find<TextLabel>("addKeywordsNote")->text(); }
    QString refusals() { return find<TextLabel>("addKeywordsRefusals")->text(); }
    QString field() { return find<TextArea>("keywordInput")->toPlainText(); }
    QString importNotice()
    {
        return isShown("importBanner") ? find<Banner>("importBanner")->message() : QString();
    }
};

TEST_F(KeywordAdmissionPageTest, APasteOfThreeHundredLinesKeepsTheTenBadOnesInTheField)
{
    open();
    world->client->holds = true;
    QStringList lines;
    QStringList bad;
    for (int i = 0; i < 300; ++i) {
        lines << QStringLiteral("keyword %1").arg(i);
        if (i % 30 == 7) {
            lines.last() += QString(100, u'x');
            bad << lines.last();
        }
    }
    paste(lines.join(u'\n'));
    EXPECT_EQ(note(), QStringLiteral("300 keywords: 290 will be added, 10 cannot be added"));
    EXPECT_EQ(find<Button>("addKeywordsSubmit")->text(), QStringLiteral("Add 290 keywords"));
    EXPECT_EQ(find("addKeywordsSubmit")->accessibleName(), QStringLiteral("Add keywords"));
    add();
    EXPECT_EQ(added().size(), 290);
    EXPECT_EQ(status(), saved);
    EXPECT_EQ(detail(), QStringLiteral("290 added, 10 refused"));
    ASSERT_TRUE(isShown("addKeywordsCard"));
    EXPECT_EQ(field(), bad.join(u'\n'));
    EXPECT_EQ(note(), QStringLiteral("290 added, 10 refused"));
    const QStringList reasons = refusals().split(u'\n');
    ASSERT_EQ(reasons.size(), 6);
    EXPECT_EQ(reasons[0],
              QStringLiteral("“keyword 7%1…”: longer than 100 characters").arg(QString(15, u'x')));
    EXPECT_EQ(reasons[5], QStringLiteral("and 5 more"));
}

TEST_F(KeywordAdmissionPageTest, WhatIsMendedInTheFieldGoesInAndThePopoverCloses)
{
    open();
    world->client->holds = true;
    paste(QStringLiteral("film, photo\u0007editor"));
    add();
    EXPECT_EQ(added(), QStringList{QStringLiteral("film@US")});
    EXPECT_EQ(refusals(), QStringLiteral("“photo\uFFFDeditor”: contains a control character"));
    EXPECT_EQ(QApplication::focusWidget(), find("keywordInput"));
    type("keywordInput", QStringLiteral("photo editing"));
    EXPECT_FALSE(isShown("addKeywordsRefusals"));
    EXPECT_EQ(note(), QStringLiteral("1 keyword"));
    add();
    EXPECT_FALSE(isShown("addKeywordsCard"));
    EXPECT_EQ(added().last(), QStringLiteral("photo editing@US"));
    EXPECT_EQ(detail(), QStringLiteral("1 added"));
}

TEST_F(KeywordAdmissionPageTest, WhileTypingTheFieldSaysWhatCannotBeAdded)
{
    open();
    click("addKeywordsButton");
    find<TextArea>("keywordInput")->setPlainText(QString(100, u'x'));
    EXPECT_FALSE(isShown("addKeywordsRefusals"));
    EXPECT_EQ(note(), QStringLiteral("1 keyword"));
    find("keywordInput")->setFocus();
    press(Qt::Key_End);
    press(Qt::Key_X);
    EXPECT_TRUE(isShown("addKeywordsRefusals"));
    EXPECT_EQ(note(), QStringLiteral("1 keyword: 1 cannot be added"));
    EXPECT_NE(find("addKeywordsRefusals")->accessibleName(), refusals()) << "not at each key";
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return find("addKeywordsRefusals")->accessibleName() == refusals(); }, 5000));
    EXPECT_EQ(find("addKeywordsNote")->accessibleName(), note());
    // The card has made room for it.
    QWidget *card = find("addKeywordsCard");
    EXPECT_GE(card->height(), card->sizeHint().height());
}

TEST_F(KeywordAdmissionPageTest, RefusingEverythingSavesNothingAndSaysSo)
{
    open();
    paste(QString(101, u'x'));
    add();
    EXPECT_TRUE(added().isEmpty());
    EXPECT_EQ(status(), QStringLiteral("None added, 1 refused"));
    EXPECT_EQ(detail(), QString());
    EXPECT_EQ(note(), QStringLiteral("None added, 1 refused"));
    EXPECT_EQ(field(), QString(101, u'x'));
    EXPECT_TRUE(world->client->searches.isEmpty());
}

TEST_F(KeywordAdmissionPageTest, WhatIsThereAlreadyIsCountedAndNotSavedAgain)
{
    open();
    world->client->holds = true;
    paste(QStringLiteral("Photo Editor, PHOTO editor"));
    EXPECT_EQ(note(), QStringLiteral("2 keywords: 1 is tracked already, 1 is repeated"));
    add();
    EXPECT_FALSE(isShown("addKeywordsCard"));
    EXPECT_EQ(status(), QStringLiteral("None added, 1 already there"));
    paste(QStringLiteral("photo editor, film"));
    add();
    EXPECT_EQ(status(), saved);
    EXPECT_EQ(detail(), QStringLiteral("1 added, 1 already there"));
}

TEST_F(KeywordAdmissionPageTest, AStorefrontOfThePreferencesThatIsNoneIsNamedUntilAnotherIsChosen)
{
    open();
    page().filter().setSearchStorefront(QStringLiteral("UK"));
    paste(QStringLiteral("retouch"));
    EXPECT_EQ(note(), QStringLiteral("“UK” is not a supported storefront: choose another"));
    EXPECT_FALSE(find("addKeywordsSubmit")->isEnabled());
    add();
    EXPECT_TRUE(added().isEmpty());
    type("storefrontChecklistSearch", QStringLiteral("GB"));
    press(Qt::Key_Return);
    EXPECT_EQ(note(), QStringLiteral("1 keyword"));
    click("addKeywordsSubmit");
    EXPECT_EQ(added(), QStringList{QStringLiteral("retouch@GB")});
}

TEST_F(KeywordAdmissionPageTest, ALongListIsTakenWhole)
{
    open();
    QStringList lines;
    for (int i = 0; i < 5000; ++i)
        lines << QStringLiteral("keyword number %1").arg(i);
    paste(lines.join(u'\n'));
    EXPECT_EQ(note(), QStringLiteral("5,000 keywords"));
}

TEST_F(KeywordAdmissionPageTest, SavedIsNotSaidOfAChangeThatIsNotOnDisk)
{
    open();
    world->folder.remove();
    paste(QStringLiteral("film, grain"));
    add();
    EXPECT_EQ(status(), QStringLiteral("The new keywords are not saved yet."));
    EXPECT_EQ(detail(), QStringLiteral("2 added"));
}

TEST_F(KeywordAdmissionPageTest, AnImportRefusesAStorefrontByNameAndTakesTheRest)
{
    open();
    world->client->holds = true;
    import("Keyword,Storefront\nretouch,UK\nfilm,US\ngrain,de\nPhoto Editor,US\nsepia,Europe\n");
    EXPECT_FALSE(isShown("addKeywordsCard"));
    EXPECT_EQ(added(), (QStringList{QStringLiteral("film@US"), QStringLiteral("grain@DE")}));
    EXPECT_EQ(status(), saved);
    EXPECT_EQ(detail(), QStringLiteral("2 added, 1 already there, 2 refused"));
    EXPECT_EQ(importNotice(),
              QStringLiteral("2 added, 1 already there, 2 refused\n"
                             "Line 2, “retouch”: “UK” is not a supported storefront\n"
                             "Line 6, “sepia”: “Europe” is not a supported storefront"));
    // Both are measured; nothing waits behind what was refused.
    world->client->release();
    world->client->release();
    EXPECT_EQ(world->client->searches.filter(QStringLiteral("film")).size(), 1);
    EXPECT_EQ(world->client->searches.filter(QStringLiteral("grain/DE")).size(), 1);
    EXPECT_TRUE(world->client->searches.filter(QStringLiteral("UK")).isEmpty());
}

TEST_F(KeywordAdmissionPageTest, WhatAnImportRefusedCanBeCopiedWholeAndDismissed)
{
    open();
    QByteArray file = "Keyword,Storefront\nfilm,US\n";
    for (int i = 1; i <= 17; ++i)
        file += QByteArray("word ") + QByteArray::number(i) + ",UK\n";
    import(file);
    EXPECT_EQ(importNotice().section(u'\n', -1), QStringLiteral("and 12 more"));
    click("importBannerAction");
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 18);
    EXPECT_EQ(lines[0], QStringLiteral("Keyword\tStorefront\tReason\tLine"));
    EXPECT_EQ(lines[17], QStringLiteral("word 17\tUK\t“UK” is not a supported storefront\t19"));
    click("importBannerDismiss");
    EXPECT_EQ(importNotice(), QString());
}

TEST_F(KeywordAdmissionPageTest, TheNoticeOfAnImportStandsAtItsAppAndGoesWithTheNextImport)
{
    open();
    import("Keyword,Storefront\nretouch,UK\n");
    EXPECT_EQ(status(), QStringLiteral("None added, 1 refused"));
    EXPECT_NE(importNotice(), QString());
    window->selectApp(store().apps().last().id);
    EXPECT_EQ(importNotice(), QString());
    window->selectApp(store().apps().first().id);
    EXPECT_NE(importNotice(), QString());
    import("Keyword,Storefront\nretouch,GB\n");
    EXPECT_EQ(importNotice(), QString());
    EXPECT_EQ(added(), QStringList{QStringLiteral("retouch@GB")});
}

} // namespace
} // namespace veltrix
