// SPDX-License-Identifier: GPL-3.0-or-later
// The add popover in use: many lines, several storefronts, files, small windows, the keyboard.
#include "ui/support/ui_test.h"

#include "ui/dashboard/add_keywords.h"
#include "ui_kit/widgets/storefront_checklist.h"
#include "ui_kit/widgets/text_area.h"

#include <QClipboard>
#include <QDir>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class AddKeywordsTest : public UiTest
{
protected:
    void openCard(QSize size = {1280, 800})
    {
        open();
        world->client->holds = true;
        // Whatever the rest of the window asks for.
        window->setMinimumWidth(std::min(size.width(), 800));
        window->resize(size);
        settle();
        press(Qt::Key_N, Qt::ControlModifier);
    }
    void paste(const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        find("keywordInput")->setFocus();
        press(Qt::Key_V, Qt::ControlModifier);
    }
    void check(const char *storefront)
    {
        type("storefrontChecklistSearch", QString::fromLatin1(storefront));
        press(Qt::Key_Return);
    }
    void import(const QByteArray &content)
    {
        world->files.opened = content;
        click("addKeywordsImport");
    }
    void submit() { press(Qt::Key_Return, Qt::ControlModifier); }
    QStringList added()
    {
        QStringList keywords;
        for (const TrackedKeyword &keyword : store().trackedKeywords().mid(11))
            keywords << keyword.keyword + u'@' + keyword.country;
        return keywords;
    }
    QString label(const char *name) { return find<QLabel>(name)->text(); }
    QString note() { return label("addKeywordsNote"); }
    QString addText() { return find<Button>("addKeywordsSubmit")->text(); }
    QRect card()
    {
        return {find("addKeywordsCard")->mapTo(window.get(), QPoint()),
                find("addKeywordsCard")->size()};
    }
};

TEST_F(AddKeywordsTest, ManyLinesGoToAllCheckedStorefronts)
{
    openCard();
    EXPECT_EQ(QApplication::focusWidget(), find("keywordInput"));
    EXPECT_EQ(find("keywordInput")->accessibleName(),
              QStringLiteral("Enter keyword(s), comma-separated"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("disposable camera"));
    press(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("film grain, photo editor"));
    EXPECT_EQ(note(), QStringLiteral("3 keywords: 2 will be added, 1 is tracked already"));
    check("germany");
    check("JP");
    EXPECT_EQ(note(), QStringLiteral("3 keywords × 3 storefronts: 8 will be added, 1 is tracked "
                                     "already"));
    EXPECT_EQ(addText(), QStringLiteral("Add 8 keywords"));
    EXPECT_EQ(label("storefrontChecklistCount"), QStringLiteral("3 chosen"));
    submit();
    EXPECT_FALSE(isShown("addKeywordsCard"));
    EXPECT_EQ(added().join(u' '),
              QStringLiteral("disposable camera@US disposable camera@DE disposable camera@JP "
                             "film grain@US film grain@DE film grain@JP photo editor@DE "
                             "photo editor@JP"));
    EXPECT_EQ(status(), QStringLiteral("Keywords saved. Metrics will update in the background."));
}

TEST_F(AddKeywordsTest, ThreeThousandPastedKeywordsInThreeStorefrontsAreTakenWhole)
{
    openCard();
    check("GB");
    check("DE");
    QString list;
    for (int i = 0; i < 3000; ++i)
        list += QStringLiteral("a keyword of some length %1\r\n").arg(i);
    paste(list);
    EXPECT_EQ(note(), QStringLiteral("3,000 keywords × 3 storefronts: 9,000 will be added"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("one more"));
    submit();
    EXPECT_EQ(added().size(), 9003);
    EXPECT_EQ(model().rowCount(), 9014);
}

TEST_F(AddKeywordsTest, LineEndsOfEveryKindAndTextsOfEveryKindAreTaken)
{
    openCard();
    paste(QStringLiteral("one\u2028two\u2029three\rfour %1 %L2\nתמונה\nعدسة، كاميرا"));
    EXPECT_EQ(note(), QStringLiteral("6 keywords"));
    submit();
    EXPECT_EQ(added().join(u'|'), QStringLiteral("one@US|two@US|three@US|four %1 %L2@US|תמונה@US|"
                                                 "عدسة، كاميرا@US"));
}

TEST_F(AddKeywordsTest, AFileIsPreviewedBeforeItIsAdded)
{
    openCard();
    QByteArray file = "Keyword;Country\r\n";
    for (int i = 0; i < 21; ++i)
        file += "retusche " + QByteArray::number(i) + ";Germany\r\n";
    file += "film;\r\nPhoto Editor;us\r\nfilm;US\r\n";
    for (int i = 0; i < 7; ++i)
        file += "strand " + QByteArray::number(i) + ";Europe\r\n";
    file += "Bildgr\xF6\xDF"
            "e, gro\xDF;de;zu viel\r\n;fr\r\n";
    import(file);
    EXPECT_TRUE(added().isEmpty());
    EXPECT_EQ(label("importFileName"), QStringLiteral("keywords.csv"));
    EXPECT_EQ(label("importNote"),
              QStringLiteral("22 will be added, 1 is tracked already, 1 is repeated, 9 cannot be "
                             "added\nUnited States 1, Germany 21"));
    EXPECT_EQ(
        label("importRefusals").split(u'\n'),
        (QStringList{QStringLiteral("Line 26, “strand 0”: “Europe” is not a supported storefront"),
                     QStringLiteral("Line 27, “strand 1”: “Europe” is not a supported storefront"),
                     QStringLiteral("Line 28, “strand 2”: “Europe” is not a supported storefront"),
                     QStringLiteral("Line 29, “strand 3”: “Europe” is not a supported storefront"),
                     QStringLiteral("Line 30, “strand 4”: “Europe” is not a supported storefront"),
                     QStringLiteral("and 4 more")}));
    EXPECT_EQ(addText(), QStringLiteral("Add 22 keywords"));
    paste(QStringLiteral("grain\nfilm"));
    EXPECT_EQ(note(), QStringLiteral("2 keywords: 1 will be added, 1 is repeated"))
        << "what the file adds is not added twice";
    EXPECT_EQ(addText(), QStringLiteral("Add 23 keywords"));
    submit();
    EXPECT_FALSE(isShown("addKeywordsCard"));
    EXPECT_EQ(added().size(), 23);
    EXPECT_EQ(find<StatusBar>("statusBar")->detail(),
              QStringLiteral("23 added, 1 already there, 9 refused"));
    EXPECT_TRUE(isShown("importBanner")) << "what was refused can be copied whole";
}

TEST_F(AddKeywordsTest, AFileIsTakenOffByItsButton)
{
    openCard();
    import("film\ngrain\n");
    check("GB");
    EXPECT_EQ(label("importNote"),
              QStringLiteral("4 will be added\nUnited States 2, United Kingdom 2"))
        << "a list goes to the checked storefronts";
    EXPECT_EQ(addText(), QStringLiteral("Add 4 keywords"));
    click("importRemove");
    EXPECT_FALSE(isShown("importPreview"));
    EXPECT_FALSE(find("addKeywordsSubmit")->isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), find("keywordInput"));
    submit();
    EXPECT_TRUE(added().isEmpty());
}

TEST_F(AddKeywordsTest, TagsOfAFileGoToTheKeywordsThatItAdds)
{
    openCard();
    import("Keyword,Storefront,Tags\nfilm,US,core; autumn\nPhoto Editor,US,core\n"
           "grain,US,\"a,b; core; a,b\"\nsepia,US,\"a,b\"\n");
    EXPECT_EQ(label("importNote"), QStringLiteral("3 will be added, 1 is tracked already, 1 tag "
                                                  "cannot be used\nUnited States 3"));
    EXPECT_EQ(label("importRefusals"),
              QStringLiteral("Line 4, “a,b”: The name of a tag has no comma and no semicolon"));
    submit();
    QStringList tagged;
    for (const TrackedKeyword &keyword : store().trackedKeywords()) {
        if (const QStringList tags = store().tags(keyword.id); !tags.isEmpty())
            tagged << keyword.keyword + u':' + tags.join(u'+');
    }
    EXPECT_EQ(tagged.join(u' '), QStringLiteral("film:autumn+core grain:core"))
        << "a keyword that was there keeps the tags that it has";
    EXPECT_EQ(find<StatusBar>("statusBar")->detail(),
              QStringLiteral("3 added, 1 already there, 1 refused"));
}

TEST_F(AddKeywordsTest, RowsOfOtherAppsAreToldAndLeftOut)
{
    openCard();
    import("Keyword,Storefront,App\nfilm,US,lumen photo editor\ngrain,US,Orchard Budget\n"
           "sepia,US,\ntide,US,Tidewater Journal\n");
    EXPECT_EQ(label("importNote"), QStringLiteral("2 will be added, 2 are of other apps and left "
                                                  "out\nUnited States 2"));
    submit();
    EXPECT_EQ(added().join(u' '), QStringLiteral("film@US sepia@US"));
    press(Qt::Key_N, Qt::ControlModifier);
    import("Keyword,App\nmoon,Tidewater Journal\n");
    EXPECT_EQ(label("importNote"), QStringLiteral("1 is of another app and left out"));
    EXPECT_FALSE(find("addKeywordsSubmit")->isEnabled());
}

TEST_F(AddKeywordsTest, AFileThatCannotBeReadSaysWhyInItsPlace)
{
    openCard();
    import(QByteArray::fromHex("ffd8ffe000104a46494600010101004800480000ffdb004300080606"));
    EXPECT_EQ(label("importRefusals"), QStringLiteral("The file is not a text file."));
    EXPECT_FALSE(isShown("importNote"));
    EXPECT_FALSE(find("addKeywordsSubmit")->isEnabled());
    import("Keyword,Storefront\nfilm,US\n\"grain,US\n");
    EXPECT_EQ(label("importRefusals"),
              QStringLiteral("The quotation mark in line 3 is not closed."));
    import("\n , \n");
    EXPECT_EQ(label("importRefusals"), QStringLiteral("The file holds no keywords."));
    world->files.error = QStringLiteral("No permission.");
    click("addKeywordsImport");
    EXPECT_EQ(label("importRefusals"), QStringLiteral("No permission."));
    EXPECT_EQ(status(), QString()) << "one failure is told once";
    paste(QStringLiteral("film"));
    submit();
    EXPECT_EQ(added(), QStringList{QStringLiteral("film@US")}) << "the field is not held up";
}

TEST_F(AddKeywordsTest, AFileDroppedOnTheFieldIsAnImport)
{
    openCard();
    world->files.opened = "film\n";
    auto *field = find<TextArea>("keywordInput");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QStringLiteral("/home/user/%1 list.txt"))});
    QDragEnterEvent enter({20, 20}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(field->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({20, 20}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(field->viewport(), &drop);
    settle();
    EXPECT_EQ(label("importFileName"), QStringLiteral("%1 list.txt"));
    EXPECT_EQ(addText(), QStringLiteral("Add 1 keyword"));
    data.setUrls({QUrl::fromLocalFile(QStringLiteral("/a.csv")),
                  QUrl::fromLocalFile(QStringLiteral("/b.csv"))});
    QCoreApplication::sendEvent(field->viewport(), &enter);
    QDropEvent two({20, 20}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(field->viewport(), &two);
    settle();
    EXPECT_EQ(note(), QStringLiteral("One file can be imported at a time."));
    EXPECT_EQ(label("importFileName"), QStringLiteral("%1 list.txt"));
}

TEST_F(AddKeywordsTest, AListWithRepetitionsAndImpossibleOnesLosesNoneWithoutAWord)
{
    openCard();
    QStringList lines;
    for (int i = 0; i < 300; ++i)
        lines << QStringLiteral("keyword %1").arg(i % 100);
    for (int i = 0; i < 50; ++i)
        lines << QString(101, QChar(u'a' + i % 26)) + QString::number(i);
    import(lines.join(QStringLiteral("\r\n")).toUtf8());
    EXPECT_EQ(label("importNote"),
              QStringLiteral("100 will be added, 200 are repeated, 50 cannot be added\n"
                             "United States 100"));
    EXPECT_EQ(label("importRefusals").section(u'\n', -1), QStringLiteral("and 45 more"));
}

TEST_F(AddKeywordsTest, ANarrowWindowHasTheStorefrontsBehindAButton)
{
    openCard({690, 600});
    EXPECT_FALSE(isShown("storefrontChecklist"));
    EXPECT_EQ(find<Button>("addKeywordsStorefronts")->text(), QStringLiteral("United States"));
    click("addKeywordsStorefronts");
    EXPECT_EQ(QApplication::focusWidget(), find("storefrontChecklistSearch"));
    check("DE");
    check("JP");
    press(Qt::Key_Escape);
    EXPECT_FALSE(isShown("storefrontChecklist"));
    ASSERT_TRUE(isShown("addKeywordsCard")) << "only the list has closed";
    EXPECT_EQ(find<Button>("addKeywordsStorefronts")->text(), QStringLiteral("3 storefronts"));
    paste(QStringLiteral("film"));
    EXPECT_EQ(addText(), QStringLiteral("Add 3 keywords"));
    click("addKeywordsStorefronts");
    window->resize(1280, 800);
    settle();
    EXPECT_TRUE(isShown("storefrontChecklist")) << "beside the field again";
    EXPECT_EQ(QApplication::focusWidget(), find("keywordInput"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(isShown("addKeywordsCard"));
}

TEST_F(AddKeywordsTest, ThePopoverStaysInTheWindowAndScrollsInside)
{
    openCard({800, 500});
    QStringList refused;
    for (int i = 0; i < 9; ++i)
        refused << QString(120, u'x') + QString::number(i);
    import(refused.join(u'\n').toUtf8());
    paste(refused.join(u'\n'));
    settle();
    EXPECT_TRUE(window->rect().contains(card()));
    EXPECT_GT(find<QScrollArea>("addKeywordsScroll")->verticalScrollBar()->maximum(), 0);
    const QRect button(find("addKeywordsSubmit")->mapTo(window.get(), QPoint()),
                       find("addKeywordsSubmit")->size());
    EXPECT_TRUE(card().contains(button)) << "the button stays in view";
    window->resize(1280, 900);
    settle();
    EXPECT_EQ(find<QScrollArea>("addKeywordsScroll")->verticalScrollBar()->maximum(), 0);
}

TEST_F(AddKeywordsTest, TabGoesFromTheFieldThroughTheStorefrontsToTheButtons)
{
    openCard();
    paste(QStringLiteral("film"));
    QStringList stops;
    for (int i = 0; i < 8; ++i) {
        stops << QApplication::focusWidget()->objectName();
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(stops.join(u' '),
              QStringLiteral("keywordInput storefrontChecklistSearch storefrontChecklist "
                             "addKeywordsTagsLine addKeywordsImport addKeywordsCancel "
                             "addKeywordsSubmit keywordInput"));
}

} // namespace
} // namespace veltrix
