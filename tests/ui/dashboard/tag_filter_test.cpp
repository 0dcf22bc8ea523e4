// SPDX-License-Identifier: GPL-3.0-or-later
// Filtering by tags and checking them, as values.
#include "ui/dashboard/tag_filter.h"

#include "support/json_printers.h"
#include "ui/dashboard/dashboard_placeholder.h"
#include "ui/dashboard/tag_check_model.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

TEST(TagFilterTest, NothingChosenShowsAll)
{
    const TagFilter filter;
    EXPECT_TRUE(filter.showsAll());
    EXPECT_TRUE(filter.shows({}));
    EXPECT_TRUE(filter.shows({text("core")}));
    EXPECT_EQ(filter.title(), text("All Tags"));
}

TEST(TagFilterTest, SeveralTagsShowKeywordsWithAnyOfThem)
{
    TagFilter filter = TagFilter::only(text("Core"));
    filter.set(text("title"), true);
    EXPECT_TRUE(filter.shows({text("core")}));
    EXPECT_TRUE(filter.shows({text("autumn"), text("title")}));
    EXPECT_FALSE(filter.shows({text("autumn")}));
    EXPECT_FALSE(filter.shows({}));
    EXPECT_EQ(filter.title(), text("Core +1"));
    EXPECT_EQ(filter.sentence(), text("Core, title"));
}

TEST(TagFilterTest, NamesThatDifferByCaseAreOne)
{
    TagFilter filter = TagFilter::only(text("Core"));
    filter.set(text("CORE"), true);
    EXPECT_EQ(filter.tags().size(), 1);
    EXPECT_TRUE(filter.has(text("core")));
    filter.set(text("core"), false);
    EXPECT_TRUE(filter.showsAll());
}

TEST(TagFilterTest, ThoseWithoutATagAreAChoiceOfTheirOwn)
{
    TagFilter filter;
    filter.setUntagged(true);
    EXPECT_TRUE(filter.shows({}));
    EXPECT_FALSE(filter.shows({text("core")}));
    EXPECT_EQ(filter.title(), text("Without a tag"));
    filter.set(text("core"), true);
    EXPECT_TRUE(filter.shows({}));
    EXPECT_TRUE(filter.shows({text("core")}));
    EXPECT_EQ(filter.title(), text("core +1"));
}

TEST(TagFilterTest, AnotherAppKeepsTheTagsThatItHas)
{
    TagFilter filter = TagFilter::only(text("core"));
    filter.set(text("title"), true);
    filter.keepOnly({text("TITLE"), text("other")});
    EXPECT_EQ(filter.tags(), QStringList{text("title")});
}

TEST(TagFilterTest, WhatLeftNothingIsSaid)
{
    const auto said = [](const TagFilter &tags, bool isNarrowed) {
        DashboardState state{true, true, 24, 0, QuickFilter::All, 0, tags, isNarrowed};
        const auto placeholder = dashboardPlaceholder(state);
        EXPECT_TRUE(placeholder);
        EXPECT_EQ(placeholder->wayOn, DashboardPlaceholder::WayOn::ShowAllKeywords);
        return placeholder->content.text;
    };
    EXPECT_EQ(said(TagFilter::only(text("core")), false), text("No keyword has the tag “core”."));
    TagFilter untagged;
    untagged.setUntagged(true);
    EXPECT_EQ(said(untagged, false), text("Every keyword has a tag."));
    untagged.set(text("core"), true);
    EXPECT_EQ(said(untagged, false), text("No keyword has one of the chosen tags."));
    EXPECT_EQ(said(untagged, true),
              text("No tracked keyword matches the search, the storefront filter and the tags."));
    EXPECT_EQ(said({}, true),
              text("No tracked keyword matches the search and the storefront filter."));
}

TEST(TagStatesTest, ATagOfSomeKeywordsIsPartlyChecked)
{
    const QStringList known{text("all"), text("none"), text("some")};
    const QList<TagState> states = tagStates(known, {{text("All"), text("some")}, {text("all")}});
    EXPECT_EQ(states, (QList<TagState>{{text("all"), Qt::Checked},
                                       {text("none"), Qt::Unchecked},
                                       {text("some"), Qt::PartiallyChecked}}));
    EXPECT_EQ(joinedTags({text("b"), text("D")}, {text("d"), text("a")}),
              (QStringList{text("a"), text("b"), text("D")}));
}

class TagCheckModelTest : public testing::Test
{
protected:
    static QStringList rowsOf(const TagCheckModel &model)
    {
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row)
            rows << model.index(row).data(Qt::AccessibleTextRole).toString();
        return rows;
    }
    QList<TagState> tags{{text("core"), Qt::Checked},
                         {text("Über"), Qt::PartiallyChecked},
                         {text("title"), Qt::Unchecked}};
};

TEST_F(TagCheckModelTest, ReadsEveryTagWithItsState)
{
    TagCheckModel model(TagCheckModel::Offer::Untagged);
    QAbstractItemModelTester tester(&model);
    model.setTags(tags);
    EXPECT_EQ(rowsOf(model).join(u'|'),
              text("core, checked|Über, partly checked|title, not checked|"
                   "Without a tag, not checked"));
    model.setFilter(text("UB"));
    EXPECT_EQ(rowsOf(model).join(u'|'), text("Über, partly checked"));
}

TEST_F(TagCheckModelTest, OffersToAddWhatIsNotThereYet)
{
    TagCheckModel model(TagCheckModel::Offer::NewTag);
    model.setTags(tags);
    model.setFilter(text(" cor "));
    EXPECT_EQ(rowsOf(model).join(u'|'), text("Add “cor”|core, checked"));
    model.setFilter(text("CORE"));
    EXPECT_EQ(rowsOf(model).join(u'|'), text("core, checked"));
    model.setFilter(text("a;b"));
    EXPECT_TRUE(rowsOf(model).isEmpty()) << "no tag can be called like that";
}

TEST_F(TagCheckModelTest, ACheckMovesNothing)
{
    TagCheckModel model(TagCheckModel::Offer::NewTag);
    model.setTags(tags);
    int resets = 0;
    QObject::connect(&model, &QAbstractItemModel::modelReset, [&] { ++resets; });
    tags[2].state = Qt::Checked;
    model.setTags(tags);
    EXPECT_EQ(resets, 0);
    EXPECT_EQ(model.index(model.rowOf(text("TITLE"))).data(Qt::CheckStateRole), Qt::Checked);
}

} // namespace
} // namespace veltrix
