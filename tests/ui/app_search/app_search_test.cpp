// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/ui_test.h"

#include "ui/app_search/app_search.h"
#include "ui/app_search/app_search_sheet.h"
#include "ui_kit/widgets/app_row.h"
#include "ui_kit/widgets/storefront_picker.h"

#include <QScrollArea>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class AppSearchTest : public UiTest
{
protected:
    void openSearch()
    {
        open();
        // The Competitors workspace asks for developers' names.
        world->discovery->lookups.clear();
        click("addAppButton");
    }
    void search(const QString &text)
    {
        type("appSearchField", text);
        press(Qt::Key_Return);
    }
    const EmptyState::Content &message() { return find<EmptyState>("appSearchMessage")->content(); }
    QList<AppRow *> rows()
    {
        return find<QScrollArea>("appSearchResults")->findChildren<AppRow *>();
    }
    Button *addButton(AppRow *row) { return row->findChild<Button *>(QStringLiteral("appRowAdd")); }
};

TEST_F(AppSearchTest, BeforeAnySearchItSaysWhatToDo)
{
    openSearch();
    EXPECT_EQ(message().title, QStringLiteral("Search for an app"));
    EXPECT_EQ(message().text, QStringLiteral("Search an app name, App Store ID, or App Store URL "
                                             "to see ranked results."));
    EXPECT_EQ(QApplication::focusWidget(), find("appSearchField"));
    EXPECT_EQ(find("appSearchField")->accessibleName(),
              QStringLiteral("Search app name, ID, or App Store URL"));
    EXPECT_EQ(find<Button>("appSearchStorefront")->text(),
              QStringLiteral("Search the App Store in United States"));
}

TEST_F(AppSearchTest, ANameIsSearchedWithItsCaseInTheStorefrontForTwentyResults)
{
    openSearch();
    world->discovery->results = sampleResults();
    search(QStringLiteral("  Photo Editor "));
    EXPECT_EQ(world->discovery->searches, QStringList{QStringLiteral("Photo Editor/US/20")});
    EXPECT_EQ(find<TextLabel>("appSearchCount")->text(),
              QStringLiteral("7 results for “Photo Editor” in United States"));
    EXPECT_EQ(rows().size(), 7);
    EXPECT_EQ(rows().first()->accessibleName(), QStringLiteral("Lumen Photo Editor"));
    EXPECT_EQ(rows().last()->accessibleName(), QStringLiteral("Unknown App"));
}

TEST_F(AppSearchTest, AnEmptyTextSearchesNothing)
{
    openSearch();
    search(QStringLiteral("   "));
    EXPECT_TRUE(world->discovery->searches.isEmpty());
    EXPECT_EQ(message().title, QStringLiteral("Search for an app"));
}

TEST_F(AppSearchTest, WhileItSearchesItSaysSo)
{
    openSearch();
    world->discovery->holds = true;
    search(QStringLiteral("photo"));
    EXPECT_EQ(message().title, QStringLiteral("Getting app results…"));
}

TEST_F(AppSearchTest, NoResultsIsAStateOfItsOwn)
{
    openSearch();
    search(QStringLiteral("photo"));
    EXPECT_EQ(message().title, QStringLiteral("No apps found"));
    EXPECT_EQ(message().text, QStringLiteral("Try a different app name or storefront."));
}

TEST_F(AppSearchTest, AFailureShowsItsTextAndTryAgainRunsTheSameSearch)
{
    openSearch();
    world->discovery->fails = [](const QString &) {
        return true;
    };
    search(QStringLiteral("photo"));
    EXPECT_EQ(message().title, QStringLiteral("Couldn't search apps"));
    EXPECT_EQ(message().symbol, QStringLiteral("wifi.exclamationmark"));
    EXPECT_EQ(message().text, QStringLiteral("The network is down."));
    EXPECT_EQ(message().action, QStringLiteral("Try again"));
    EXPECT_EQ(find<TextField>("appSearchField")->text(), QStringLiteral("photo"));
    type("appSearchField", QStringLiteral("something else"));
    world->discovery->fails = nullptr;
    world->discovery->results = sampleResults();
    click("appSearchMessageAction");
    EXPECT_EQ(world->discovery->searches,
              (QStringList{QStringLiteral("photo/US/20"), QStringLiteral("photo/US/20")}));
    EXPECT_EQ(rows().size(), 7);
}

TEST_F(AppSearchTest, AResultIsTrackedAndBecomesTheSelectedApp)
{
    openSearch();
    world->discovery->results = sampleResults();
    search(QStringLiteral("photo"));
    Button *add = addButton(rows().at(1));
    EXPECT_EQ(add->accessibleName(), QStringLiteral("Track Foxglove Film Camera"));
    EXPECT_EQ(add->symbol(), QStringLiteral("plus.circle"));
    add->click();
    settle();
    EXPECT_EQ(store().apps().last().appName, QStringLiteral("Foxglove Film Camera"));
    EXPECT_EQ(window->selectedApp(), store().apps().last().id);
    EXPECT_EQ(status(), QStringLiteral("Added Foxglove Film Camera"));
}

TEST_F(AppSearchTest, TheSheetStaysOpenForFurtherApps)
{
    openSearch();
    world->discovery->results = sampleResults();
    search(QStringLiteral("photo"));
    EXPECT_FALSE(isShown("appSearchDone"));
    auto *scroll = find<QScrollArea>("appSearchResults")->verticalScrollBar();
    scroll->setValue(scroll->maximum());
    const int place = scroll->value();
    QTest::mouseClick(addButton(rows().at(4)), Qt::LeftButton);
    settle();
    ASSERT_TRUE(isShown("appSearchSheet"));
    EXPECT_EQ(find<QLabel>("appSearchAdded")->text(), QStringLiteral("Added Quiet Aperture"));
    EXPECT_EQ(addButton(rows().at(4))->symbol(), QStringLiteral("checkmark.circle.fill"));
    EXPECT_EQ(addButton(rows().at(4))->accessibleName(), QStringLiteral("Already tracking"));
    EXPECT_FALSE(addButton(rows().at(4))->isEnabled());
    EXPECT_EQ(scroll->value(), place) << "the rows stay where they are";
    // Typing replaces the search at once.
    EXPECT_EQ(QApplication::focusWidget(), find("appSearchField"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("42"));
    world->discovery->found = appResult(42, "Harbour %1 Clock");
    press(Qt::Key_Return);
    EXPECT_EQ(find<QLabel>("appSearchAdded")->text(), QStringLiteral("Added Harbour %1 Clock"));
    EXPECT_EQ(status(), QStringLiteral("Added Harbour %1 Clock"));
    EXPECT_EQ(store().apps().size(), 5);
    EXPECT_EQ(window->selectedApp(), store().apps().last().id);
    click("appSearchDone");
    EXPECT_FALSE(isShown("appSearchSheet"));
}

TEST_F(AppSearchTest, AnAppThatIsTrackedAlreadyCannotBeAdded)
{
    openSearch();
    world->discovery->results = sampleResults();
    search(QStringLiteral("photo"));
    Button *add = addButton(rows().first());
    EXPECT_EQ(add->accessibleName(), QStringLiteral("Already tracking"));
    EXPECT_EQ(add->symbol(), QStringLiteral("checkmark.circle.fill"));
    EXPECT_FALSE(add->isEnabled());
}

TEST_F(AppSearchTest, AnIdIsTrackedAtOnce)
{
    openSearch();
    world->discovery->found = appResult(42, "Harbour Clock");
    search(QStringLiteral(" ID42 "));
    EXPECT_EQ(world->discovery->lookups, QStringList{QStringLiteral("42/US")});
    EXPECT_TRUE(world->discovery->searches.isEmpty());
    EXPECT_EQ(status(), QStringLiteral("Added Harbour Clock"));
    EXPECT_EQ(store().apps().last().trackId, 42);
}

TEST_F(AppSearchTest, ALinkIsTrackedAtOnce)
{
    openSearch();
    world->discovery->found = appResult(42, "Harbour Clock");
    search(QStringLiteral("https://apps.apple.com/us/app/harbour-2/id42?mt=8"));
    EXPECT_EQ(world->discovery->lookups, QStringList{QStringLiteral("42/US")});
    EXPECT_EQ(store().apps().last().appName, QStringLiteral("Harbour Clock"));
}

TEST_F(AppSearchTest, AnIdThatDoesNotExistIsNoFailureAndReportsTheStoresMessage)
{
    openSearch();
    search(QStringLiteral("42"));
    EXPECT_EQ(message().title, QStringLiteral("No apps found"));
    EXPECT_EQ(message().symbol, QStringLiteral("magnifyingglass"));
    EXPECT_EQ(message().text, QStringLiteral("App not found on iTunes Lookup"));
    EXPECT_EQ(message().action, QString());
    EXPECT_EQ(status(), QString());
    EXPECT_EQ(store().apps().size(), 3);
}

TEST_F(AppSearchTest, ALookUpThatFailsIsAFailure)
{
    openSearch();
    world->discovery->fails = [](const QString &) {
        return true;
    };
    search(QStringLiteral("42"));
    EXPECT_EQ(message().title, QStringLiteral("Couldn't search apps"));
    EXPECT_EQ(message().symbol, QStringLiteral("wifi.exclamationmark"));
}

TEST_F(AppSearchTest, AnotherStorefrontStartsTheSearchAnew)
{
    openSearch();
    world->discovery->holds = true;
    search(QStringLiteral("photo"));
    world->discovery->results = sampleResults();
    // What is typed meanwhile is not searched yet.
    type("appSearchField", QStringLiteral("something else"));
    click("appSearchStorefront");
    type("storefrontSearch", QStringLiteral("Japan"));
    press(Qt::Key_Return);
    world->discovery->release();
    settle();
    EXPECT_EQ(world->discovery->searches,
              (QStringList{QStringLiteral("photo/US/20"), QStringLiteral("photo/JP/20")}));
    EXPECT_EQ(find<TextLabel>("appSearchCount")->text(),
              QStringLiteral("7 results for “photo” in Japan"));
}

TEST_F(AppSearchTest, ALineEndInTheFieldIsASpace)
{
    openSearch();
    find<QLineEdit>("appSearchField")->setText(QStringLiteral("\u2028photo\u2028editor\u2029"));
    click("appSearchSubmit");
    EXPECT_EQ(world->discovery->searches, QStringList{QStringLiteral("photo editor/US/20")});
}

TEST_F(AppSearchTest, DigitsInANameFallBackToTheName)
{
    openSearch();
    world->discovery->results = sampleResults();
    search(QStringLiteral("Asphalt 9"));
    EXPECT_EQ(world->discovery->lookups, QStringList{QStringLiteral("9/US")});
    EXPECT_EQ(world->discovery->searches, QStringList{QStringLiteral("Asphalt 9/US/20")});
    EXPECT_EQ(rows().size(), 7);
}

TEST_F(AppSearchTest, AFailedFallBackIsAFailure)
{
    openSearch();
    world->discovery->fails = [](const QString &term) {
        return term == QStringLiteral("Asphalt 9");
    };
    search(QStringLiteral("Asphalt 9"));
    EXPECT_EQ(message().text, QStringLiteral("The network is down."));
}

TEST_F(AppSearchTest, ANewSearchVoidsTheResultsOfAnOlderOne)
{
    openSearch();
    world->discovery->holds = true;
    world->discovery->results = sampleResults();
    search(QStringLiteral("first"));
    world->discovery->results = {};
    type("appSearchField", QStringLiteral("second"));
    press(Qt::Key_Return);
    world->discovery->release();
    settle();
    EXPECT_EQ(message().title, QStringLiteral("No apps found"));
}

TEST_F(AppSearchTest, TheStorefrontOfSearchesIsRememberedAndIsNotTheFilter)
{
    openSearch();
    click("appSearchStorefront");
    type("storefrontSearch", QStringLiteral("Japan"));
    press(Qt::Key_Return);
    search(QStringLiteral("photo"));
    EXPECT_EQ(world->discovery->searches, QStringList{QStringLiteral("photo/JP/20")});
    EXPECT_EQ(window->searchStorefront(), QStringLiteral("JP"));
    EXPECT_EQ(find<StorefrontPicker>("storefrontFilter")->code(), std::nullopt);
    EXPECT_EQ(world->preferences.storefront, QStringLiteral("US")) << "the default stays";
}

TEST_F(AppSearchTest, ClosingItWhileItSearchesStopsTheSearch)
{
    openSearch();
    world->discovery->holds = true;
    search(QStringLiteral("42"));
    EXPECT_EQ(find("appSearchClose")->accessibleName(), QStringLiteral("Close app search"));
    click("appSearchClose");
    EXPECT_FALSE(isShown("appSearchSheet"));
    world->discovery->release();
    settle();
    EXPECT_EQ(store().apps().size(), 3);
}

TEST_F(AppSearchTest, OneResultIsCountedAsOne)
{
    openSearch();
    world->discovery->results = {sampleResults().first()};
    search(QStringLiteral("x"));
    EXPECT_EQ(find<TextLabel>("appSearchCount")->text(),
              QStringLiteral("1 result for “x” in United States"));
}

} // namespace
} // namespace veltrix
