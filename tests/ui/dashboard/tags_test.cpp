// SPDX-License-Identifier: GPL-3.0-or-later
// Tags in the window: the column, the filter, the editor, undoing.
#include "ui/support/ui_test.h"

#include "ui/dashboard/keyword_filter.h"
#include "ui/dashboard/quick_filter_bar.h"
#include "ui/dashboard/tag_filter_button.h"

#include <QListView>

namespace veltrix
{
namespace
{

class TagsTest : public UiTest
{
protected:
    TagsTest() { open(); }

    QUuid idOf(const char *keyword)
    {
        for (int row = 0; row < model().rowCount(); ++row) {
            if (model().entryAt(row).row.keyword == QLatin1String(keyword))
                return model().entryAt(row).row.id;
        }
        ADD_FAILURE() << keyword;
        return {};
    }
    void tag(const char *keyword, const QStringList &tags)
    {
        for (const QString &name : tags)
            store().setTag({idOf(keyword)}, name, true);
    }
    bool isTagColumnShown()
    {
        const auto shown = table().shownColumns();
        return std::find(shown.begin(), shown.end(), KeywordColumn::Tags) != shown.end();
    }
    QListView *list() { return find<QListView>("tagList"); }
    QStringList listed()
    {
        QStringList rows;
        for (int row = 0; row < list()->model()->rowCount(); ++row)
            rows << list()->model()->index(row, 0).data(Qt::AccessibleTextRole).toString();
        return rows;
    }
    void check(const QString &name)
    {
        for (int row = 0; row < list()->model()->rowCount(); ++row) {
            const QModelIndex index = list()->model()->index(row, 0);
            if (index.data().toString() == name) {
                list()->scrollTo(index);
                QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                                  list()->visualRect(index).center());
                return;
            }
        }
        ADD_FAILURE() << name.toStdString();
    }
    void openEditor(const QStringList &keywords)
    {
        table().setFocus();
        selectKeywords(keywords);
        press(Qt::Key_T, Qt::ControlModifier);
    }
    int countOf(QuickFilter filter) { return model().quickFilterCounts()[size_t(filter)]; }

    const QString core = QStringLiteral("core");
    const QString title = QStringLiteral("title");
    const QString collage = QStringLiteral("collage maker");
    const QString editor = QStringLiteral("photo editor");
};

TEST_F(TagsTest, TheColumnIsShownWhileThereAreTagsUnlessTheUserSaysOtherwise)
{
    EXPECT_FALSE(isTagColumnShown());
    tag("collage maker", {core});
    EXPECT_TRUE(isTagColumnShown());
    store().setTag({idOf("collage maker")}, core, false);
    EXPECT_FALSE(isTagColumnShown());
    table().setColumnVisible(KeywordColumn::Tags, true);
    EXPECT_TRUE(isTagColumnShown());
    tag("collage maker", {core});
    table().setColumnVisible(KeywordColumn::Tags, false);
    settle();
    reopen();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !store().tags(idOf("collage maker")).isEmpty(); }));
    EXPECT_FALSE(isTagColumnShown()) << "what the user said comes back";
}

TEST_F(TagsTest, TagsComeBackAtTheNextStart)
{
    tag("collage maker", {title, core});
    settle();
    reopen();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isTagColumnShown(); }));
    EXPECT_EQ(cell("collage maker", KeywordColumn::Tags), QStringLiteral("core; title"));
}

TEST_F(TagsTest, TheRowAndTheCellNameTheTags)
{
    tag("collage maker", {title, core});
    EXPECT_TRUE(cell("collage maker", KeywordColumn::Keyword, Qt::AccessibleTextRole)
                    .contains(QStringLiteral(", Tags: core, title, ")));
    EXPECT_EQ(cell("collage maker", KeywordColumn::Tags, Qt::ToolTipRole),
              QStringLiteral("Tags: core, title"));
    EXPECT_EQ(cell("photo editor", KeywordColumn::Tags, Qt::AccessibleTextRole),
              QStringLiteral("No tags"));
    EXPECT_FALSE(cell("photo editor", KeywordColumn::Keyword, Qt::AccessibleTextRole)
                     .contains(QStringLiteral("ags")));
}

TEST_F(TagsTest, SortedByTagsThoseWithoutOneComeLast)
{
    tag("photo editor", {core});
    tag("collage maker", {title});
    model().sort(int(KeywordColumn::Tags), Qt::AscendingOrder);
    EXPECT_EQ(shownKeywords().mid(0, 2), (QStringList{editor, collage}));
    model().sort(int(KeywordColumn::Tags), Qt::DescendingOrder);
    EXPECT_EQ(shownKeywords().mid(0, 2), (QStringList{collage, editor}));
}

TEST_F(TagsTest, AClickOnATagInARowFiltersByIt)
{
    tag("collage maker", {core});
    tag("photo editor", {core, title});
    QSignalSpy opened(&table(), &KeywordTableView::opened);
    const QRect place = table().visualRect(
        model().index(model().rowOf(idOf("collage maker")), int(KeywordColumn::Tags)));
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {},
                      QPoint(place.left() + 24, place.center().y()));
    EXPECT_EQ(shownKeywords(), (QStringList{collage, editor}));
    EXPECT_EQ(find<TagFilterButton>("tagFilter")->text(), core);
    QTest::mouseDClick(
        table().viewport(), Qt::LeftButton, {},
        QPoint(place.left() + 24, table().visualRect(model().index(0, 0)).center().y()));
    EXPECT_EQ(opened.size(), 0) << "the second click opens nothing";
}

TEST_F(TagsTest, TheFilterCountsWithTheQuickFiltersAndAllOthers)
{
    tag("collage maker", {core});
    tag("photo editor", {title});
    click("tagFilter");
    EXPECT_EQ(listed().join(u'|'),
              QStringLiteral("core, not checked|title, not checked|Without a tag, not checked"));
    EXPECT_EQ(find<TextLabel>("tagNote")->text(),
              QStringLiteral("Keywords with any of the checked tags are shown."));
    check(core);
    EXPECT_EQ(shownKeywords(), QStringList{collage});
    EXPECT_EQ(countOf(QuickFilter::All), 1);
    check(title);
    EXPECT_EQ(shownKeywords(), (QStringList{collage, editor}));
    EXPECT_EQ(countOf(QuickFilter::All), 2);
    press(Qt::Key_Escape);
    page().filter().setSearch(QStringLiteral("photo"));
    EXPECT_EQ(shownKeywords(), QStringList{editor});
    EXPECT_EQ(find<TagFilterButton>("tagFilter")->accessibleName(),
              QStringLiteral("Tag filter: core, title"));
}

TEST_F(TagsTest, ThoseWithoutATagAreFound)
{
    const int all = model().rowCount();
    tag("collage maker", {core});
    click("tagFilter");
    check(QStringLiteral("Without a tag"));
    EXPECT_EQ(model().rowCount(), all - 1);
    EXPECT_FALSE(shownKeywords().contains(collage));
}

TEST_F(TagsTest, AFilterWithoutRowsSaysWhichAndShowsAllAgain)
{
    const int all = model().rowCount();
    tag("collage maker", {core});
    page().filter().setTags(TagFilter::only(core));
    store().setTag({idOf("collage maker")}, core, false);
    auto *empty = find<EmptyState>("keywordsEmpty");
    ASSERT_TRUE(empty->isVisible());
    click("keywordsEmptyAction");
    EXPECT_EQ(model().rowCount(), all);
    EXPECT_EQ(find<TagFilterButton>("tagFilter")->text(), QStringLiteral("All Tags"));
}

TEST_F(TagsTest, ATagIsAddedByKeyboardAndUndoneAsOneStep)
{
    openEditor({collage, editor});
    EXPECT_TRUE(list()->isVisible());
    for (const QString &name : {core, title}) {
        QTest::keyClicks(QApplication::focusWidget(), name);
        press(Qt::Key_Return);
    }
    EXPECT_EQ(listed().join(u'|'), QStringLiteral("core, checked|title, checked"));
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(store().tags(idOf("photo editor")), (QStringList{core, title}));
    EXPECT_EQ(find("statusOffer")->accessibleName(), QStringLiteral("Changed tags of 2 keywords"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(store().tags(idOf("photo editor")), QStringList());
    EXPECT_EQ(store().tags(idOf("collage maker")), QStringList());
    EXPECT_EQ(status(), QStringLiteral("Restored tags of 2 keywords"));
    EXPECT_TRUE(table().hasFocus()) << "the focus goes back";
}

TEST_F(TagsTest, ATagOfSomeIsPartlyCheckedAndUndoGivesEachWhatItHad)
{
    tag("collage maker", {core});
    openEditor({collage, editor});
    EXPECT_EQ(listed(), QStringList{QStringLiteral("core, partly checked")});
    check(core);
    EXPECT_EQ(listed(), QStringList{QStringLiteral("core, checked")});
    EXPECT_EQ(store().tags(idOf("photo editor")), QStringList{core});
    check(core);
    EXPECT_EQ(listed(), QStringList{QStringLiteral("core, not checked")})
        << "it can be checked again, though no keyword has it now";
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(find("statusOffer")->accessibleName(),
              QStringLiteral("Changed tags of “collage maker”"));
    click("undoButton");
    EXPECT_EQ(store().tags(idOf("collage maker")), QStringList{core});
    EXPECT_EQ(store().tags(idOf("photo editor")), QStringList());
}

TEST_F(TagsTest, AnEditorThatChangedNothingOffersNoUndo)
{
    tag("collage maker", {core});
    openEditor({collage});
    check(core);
    check(core);
    press(Qt::Key_Escape);
    settle();
    EXPECT_FALSE(isShown("undoButton"));
}

TEST_F(TagsTest, ANameThatCannotBeIsSaidInTheEditor)
{
    openEditor({collage});
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("a;b"));
    press(Qt::Key_Return);
    EXPECT_EQ(find<TextLabel>("tagProblem")->text(),
              QStringLiteral("The name of a tag has no comma and no semicolon."));
    EXPECT_TRUE(store().tags(idOf("collage maker")).isEmpty());
}

TEST_F(TagsTest, TheRowMenuOpensTheEditor)
{
    selectKeywords({collage});
    Q_EMIT table().menuRequested(table().mapToGlobal(QPoint(10, 10)));
    choose("rowMenu", QStringLiteral("Tags…"));
    EXPECT_TRUE(isShown("tagList"));
}

TEST_F(TagsTest, RemovedKeywordsComeBackWithTheirTags)
{
    tag("collage maker", {core});
    const QUuid id = idOf("collage maker");
    store().removeKeywords({id});
    settle();
    EXPECT_FALSE(isTagColumnShown());
    press(Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(cell("collage maker", KeywordColumn::Tags), core);
    EXPECT_TRUE(isTagColumnShown());
}

TEST_F(TagsTest, TagsAreTheLastColumnOfAnExport)
{
    tag("collage maker", {title, core});
    page().exportTable();
    settle();
    const QList<QByteArray> lines = world->files.saved.split('\n');
    EXPECT_TRUE(lines.first().trimmed().endsWith(",Tags")) << lines.first().toStdString();
    const auto line = std::find_if(lines.begin(), lines.end(), [](const QByteArray &one) {
        return one.contains("collage maker");
    });
    ASSERT_NE(line, lines.end());
    EXPECT_TRUE(line->trimmed().endsWith(",\"core; title\"")) << line->toStdString();
}

} // namespace
} // namespace veltrix
