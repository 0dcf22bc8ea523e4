// SPDX-License-Identifier: GPL-3.0-or-later
// What the window shows and asks when the state file cannot be read or saved.
#include "ui/support/ui_test.h"

#include "effects/atomic_file.h"

#include <QDir>

namespace veltrix
{
namespace
{

class PersistenceTest : public UiTest
{
protected:
    [[nodiscard]] QString folder() const { return world->folder.path(); }
    [[nodiscard]] QString away() const { return folder() + QStringLiteral("-away"); }
    void takeDiskAway() const { ASSERT_TRUE(QDir().rename(folder(), away())); }
    void bringDisk() const { ASSERT_TRUE(QDir().rename(away(), folder())); }
    ~PersistenceTest() override
    {
        if (world && QFileInfo::exists(away()))
            QDir(away()).removeRecursively();
    }

    /// A window on a state whose disk is not there.
    void openWithoutDisk()
    {
        world = UiWorld::sample();
        takeDiskAway();
        testing::internal::CaptureStdout();
        world->restartStore();
        testing::internal::GetCapturedStdout();
        window = std::make_unique<MainWindow>(world->collaborators());
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void openUnsaved()
    {
        open();
        takeDiskAway();
        add("tide");
    }
    void add(const char *keyword)
    {
        const QUuid app = store().apps().constFirst().id;
        quietly([&] { store().addTrackedKeyword(app, text(keyword), text("US")); });
    }
    /// Without the lines that failing prints.
    void quietly(const std::function<void()> &act)
    {
        testing::internal::CaptureStdout();
        act();
        settle();
        testing::internal::GetCapturedStdout();
    }
    QString message() { return find<Banner>("persistenceBanner")->message(); }
    [[nodiscard]] bool isSaved(const char *keyword) const
    {
        return readWholeFile(folder() + QStringLiteral("/state.json"))
            .contains("\"keyword\":\"" + QByteArray(keyword) + '"');
    }
};

TEST_F(PersistenceTest, AFailedSaveStandsAboveBothWorkspaces)
{
    open();
    EXPECT_FALSE(isShown("persistenceBanner"));
    takeDiskAway();
    add("tide");
    EXPECT_TRUE(isShown("persistenceBanner"));
    EXPECT_EQ(message(), store().persistenceProblem()->text);
    window->showWorkspace(Workspace::Competitors);
    EXPECT_TRUE(isShown("persistenceBanner"));
    EXPECT_TRUE(isShown("persistenceTryAgain"));
    EXPECT_FALSE(isShown("persistenceBeginAnew"));
    EXPECT_FALSE(isShown("persistenceDismiss"));
}

TEST_F(PersistenceTest, TryAgainSavesAndTakesTheBannerAway)
{
    openUnsaved();
    bringDisk();
    click("persistenceTryAgain");
    EXPECT_FALSE(isShown("persistenceBanner"));
    EXPECT_TRUE(isSaved("tide"));
}

TEST_F(PersistenceTest, TryAgainInVainSaysSo)
{
    openUnsaved();
    const QString before = message();
    quietly([&] { click("persistenceTryAgain"); });
    EXPECT_TRUE(message().startsWith(before + QStringLiteral("\nTried again at ")))
        << qPrintable(message());
    EXPECT_TRUE(message().endsWith(QStringLiteral(". Nothing has changed.")));
}

TEST_F(PersistenceTest, AMinuteLaterItIsSavedByItself)
{
    openUnsaved();
    bringDisk();
    world->clock->advance(Seconds(60));
    settle();
    EXPECT_FALSE(isShown("persistenceBanner"));
    EXPECT_TRUE(isSaved("tide"));
}

TEST_F(PersistenceTest, DataThatIsNotLoadedIsNotShownAsNone)
{
    openWithoutDisk();
    EXPECT_TRUE(isShown("persistenceTryAgain"));
    EXPECT_TRUE(isShown("persistenceBeginAnew"));
    EXPECT_EQ(find<EmptyState>("keywordsEmpty")->content().title,
              QStringLiteral("Saved data not loaded"));
    EXPECT_EQ(find("appSelector")->accessibleName(), text("Choose app, currently not loaded"));
    window->showWorkspace(Workspace::Competitors);
    EXPECT_EQ(find<EmptyState>("competitorsEmpty")->content().title,
              QStringLiteral("Saved data not loaded"));
}

TEST_F(PersistenceTest, AddingAnAppBeforeTheDataIsLoadedIsRefusedInWords)
{
    openWithoutDisk();
    world->discovery->results = sampleResults();
    click("addAppButton");
    type("appSearchField", QStringLiteral("photo"));
    click("appSearchSubmit");
    settle();
    auto *add = window->findChild<QAbstractButton *>(QStringLiteral("appRowAdd"));
    ASSERT_TRUE(add);
    add->click();
    settle();
    EXPECT_TRUE(store().apps().isEmpty());
    bool told = false;
    for (const TextLabel *label : window->findChildren<TextLabel *>())
        told = told || label->text().contains(
                           text("Nothing can be added before the saved data has been loaded."));
    EXPECT_TRUE(told);
    EXPECT_FALSE(QFileInfo::exists(folder()));
}

TEST_F(PersistenceTest, EverythingAppearsWhenTheDiskComes)
{
    openWithoutDisk();
    window->setActive(true);
    settle();
    EXPECT_TRUE(world->client->searches.isEmpty());
    world->clock->advance(Seconds(30));
    bringDisk();
    click("persistenceTryAgain");
    EXPECT_FALSE(isShown("persistenceBanner"));
    EXPECT_EQ(model().rowCount(), 11);
    EXPECT_EQ(store().app(*window->selectedApp())->appName, text("Lumen Photo Editor"));
    EXPECT_EQ(find("workspaceKeywords")->accessibleDescription(), text("11 tracked"));
    EXPECT_EQ(find("workspaceCompetitors")->accessibleDescription(), text("5 tracked"));
    // The two that were never measured are, at once.
    EXPECT_EQ(world->client->searches.size(), 2);
}

TEST_F(PersistenceTest, BeginningAnewAsksFirst)
{
    openWithoutDisk();
    click("persistenceBeginAnew");
    EXPECT_EQ(find("confirmSheet")->accessibleName(), text("Begin Anew?"));
    click("confirmCancel");
    EXPECT_FALSE(store().isStateRead());
    click("persistenceBeginAnew");
    click("confirmAccept");
    settle();
    EXPECT_TRUE(store().isStateRead());
    EXPECT_FALSE(isShown("persistenceTryAgain"));
    EXPECT_EQ(find("appSelector")->accessibleName(), text("Choose app, currently none"));
    EXPECT_EQ(find<EmptyState>("keywordsEmpty")->content().title,
              text("Add keywords to discover your next opportunity"));
    EXPECT_TRUE(QFileInfo::exists(away() + QStringLiteral("/state.json")));
    QDir(folder()).removeRecursively();
}

TEST_F(PersistenceTest, AFileThatWasKeptIsToldUntilItIsDismissed)
{
    open();
    writeFileAtomically(folder() + QStringLiteral("/state.json"), "{}");
    add("tide");
    EXPECT_TRUE(isShown("persistenceBanner"));
    EXPECT_TRUE(message().contains(text("What it held was kept as")));
    EXPECT_FALSE(isShown("persistenceTryAgain"));
    add("harbour");
    EXPECT_TRUE(isShown("persistenceBanner"));
    click("persistenceDismiss");
    EXPECT_FALSE(isShown("persistenceBanner"));
}

TEST_F(PersistenceTest, ClosingWithAnUnsavedChangeAsks)
{
    openUnsaved();
    quietly([&] { EXPECT_FALSE(window->close()); });
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(find("confirmSheet")->accessibleName(), text("Quit without saving?"));
    EXPECT_EQ(find("confirmAlternative")->accessibleName(), text("Try again"));
    EXPECT_EQ(find("confirmAccept")->accessibleName(), text("Quit without saving"));
    // Enter does no harm.
    EXPECT_EQ(QApplication::focusWidget(), find("confirmAlternative"));
    EXPECT_TRUE(find<TextLabel>("confirmMessage")->text().contains(text("will be lost")));
    // Once, however often it is closed.
    quietly([&] { EXPECT_FALSE(window->close()); });
    EXPECT_EQ(window->findChildren<QWidget *>(QStringLiteral("confirmSheet")).size(), 1);
    click("confirmCancel");
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(store().hasUnsavedChange());
}

TEST_F(PersistenceTest, TryingAgainAtTheEndSavesAndCloses)
{
    openUnsaved();
    quietly([&] { window->close(); });
    quietly([&] { press(Qt::Key_Return); });
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(isShown("confirmSheet")) << "asks again while it cannot be saved";
    bringDisk();
    click("confirmAlternative");
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(isSaved("tide"));
}

TEST_F(PersistenceTest, QuittingWithoutSavingCloses)
{
    openUnsaved();
    quietly([&] { window->close(); });
    click("confirmAccept");
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(store().hasUnsavedChange());
}

TEST_F(PersistenceTest, ClosingSavesWhatHasBecomePossibleWithoutAsking)
{
    openUnsaved();
    bringDisk();
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(isSaved("tide"));
}

} // namespace
} // namespace veltrix
