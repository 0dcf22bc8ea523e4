// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/app_selection.h"

#include "store/store_fixture.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class AppSelectionTest : public StoreTest
{
protected:
    void select()
    {
        selection = std::make_unique<AppSelection>(*store);
        QObject::connect(selection.get(), &AppSelection::changed,
                         [this](std::optional<QUuid> id) { told.push_back(id); });
    }
    ~AppSelectionTest() override { selection.reset(); }

    std::vector<std::optional<QUuid>> told;
    std::unique_ptr<AppSelection> selection;
};

TEST_F(AppSelectionTest, IsTheFirstAppAtTheStart)
{
    const AppProfile first = addApp(1, "First");
    addApp(2, "Second");
    select();
    EXPECT_EQ(selection->id(), first.id);
    EXPECT_EQ(selection->app()->appName, text("First"));
}

TEST_F(AppSelectionTest, WithoutAnAppNothingIsChosenUntilOneIsAdded)
{
    select();
    EXPECT_EQ(selection->id(), std::nullopt);
    EXPECT_EQ(selection->counts(), AppSelection::Counts());
    const AppProfile added = addApp(1, "First");
    EXPECT_EQ(selection->id(), added.id);
    EXPECT_EQ(told, (std::vector<std::optional<QUuid>>{added.id}));
}

TEST_F(AppSelectionTest, StaysWhileAnotherAppIsAddedOrRemoved)
{
    const AppProfile first = addApp(1, "First");
    const AppProfile second = addApp(2, "Second");
    select();
    selection->select(second.id);
    told.clear();
    store->removeApp(first.id);
    addApp(3, "Third");
    EXPECT_EQ(selection->id(), second.id);
    EXPECT_TRUE(told.empty());
}

TEST_F(AppSelectionTest, WhenTheChosenAppIsRemovedTheFirstOneIsChosenAndAtLastNone)
{
    const AppProfile first = addApp(1, "First");
    const AppProfile second = addApp(2, "Second");
    select();
    selection->select(second.id);
    store->removeApp(second.id);
    EXPECT_EQ(selection->id(), first.id);
    store->removeApp(first.id);
    EXPECT_EQ(selection->id(), std::nullopt);
}

TEST_F(AppSelectionTest, CountsWhatIsTrackedOfTheApp)
{
    addKeyword("moon");
    addKeyword("tide", "DE");
    const QUuid app = store->apps().first().id;
    store->addCompetitor(appResult(7, "Rival"), app, text("US"));
    const AppProfile other = addApp(2, "Second");
    select();
    EXPECT_EQ(selection->counts(), (AppSelection::Counts{2, 1}));
    selection->select(other.id);
    EXPECT_EQ(selection->counts(), (AppSelection::Counts{0, 0}));
}

} // namespace
} // namespace veltrix
