// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/ui_test.h"

#include "ui/settings/settings_section.h"
#include "ui/settings/settings_sheet.h"
#include "ui_kit/widgets/storefront_picker.h"

#include <QCheckBox>

namespace veltrix
{
namespace
{

class SettingsTest : public UiTest
{
protected:
    /// Opens the settings in a window that `prepare` has set up.
    void openSettings(const std::function<void(UiWorld &)> &prepare = {})
    {
        world = UiWorld::sample();
        if (prepare)
            prepare(*world);
        window = std::make_unique<MainWindow>(world->collaborators());
        window->show();
        window->openSettings();
        settle();
    }
    QString text(const char *label) { return find<QLabel>(label)->text(); }
};

TEST_F(SettingsTest, HasItsSectionsInOrder)
{
    openSettings();
    QStringList titles;
    for (const auto *section : window->findChildren<SettingsSection *>())
        titles << section->accessibleName();
    EXPECT_EQ(titles, (QStringList{QStringLiteral("Appearance"), QStringLiteral("Research"),
                                   QStringLiteral("Every Day"), QStringLiteral("Notifications"),
                                   QStringLiteral("Updates"), QStringLiteral("Help"),
                                   QStringLiteral("About")}));
}

TEST_F(SettingsTest, TheDefaultStorefrontIsThatOfTheNextAppSearchAndNotTheFilter)
{
    openSettings();
    auto *picker = find<StorefrontPicker>("defaultStorefront");
    EXPECT_EQ(picker->text(), QStringLiteral("United States"));
    click("defaultStorefront");
    type("storefrontSearch", QStringLiteral("Brazil"));
    press(Qt::Key_Return);
    EXPECT_EQ(world->preferences.storefront, QStringLiteral("BR"));
    click("settingsDone");
    EXPECT_FALSE(isShown("settingsSheet"));
    EXPECT_EQ(find<StorefrontPicker>("storefrontFilter")->code(), std::nullopt);
    EXPECT_EQ(model().rowCount(), 11);
    click("addAppButton");
    EXPECT_EQ(find<StorefrontPicker>("appSearchStorefront")->code(), QStringLiteral("BR"));
}

TEST_F(SettingsTest, ExplainsTheDefaultStorefront)
{
    openSettings();
    bool found = false;
    for (const auto *label : window->findChildren<QLabel *>())
        found = found || label->text() == QStringLiteral("Used when searching for apps. The "
                                                         "Keywords view still opens with All "
                                                         "Countries selected.");
    EXPECT_TRUE(found);
}

TEST_F(SettingsTest, SaysWhichServiceKeywordSearchesUse)
{
    openSettings();
    EXPECT_EQ(text("researchService"), QStringLiteral("App Store search"));
    openSettings([](UiWorld &made) {
        made.information.research = {ResearchServiceInformation::Kind::Research,
                                     QStringLiteral("research.example")};
    });
    EXPECT_EQ(text("researchService"), QStringLiteral("Research service"));
    EXPECT_TRUE(text("researchServiceNote").contains(QStringLiteral("research.example")));
    openSettings([](UiWorld &made) {
        made.information.research = {ResearchServiceInformation::Kind::Misconfigured,
                                     QStringLiteral("The key is missing.")};
    });
    EXPECT_EQ(text("researchServiceNote"), QStringLiteral("The key is missing."));
}

TEST_F(SettingsTest, WithoutAnUpdaterItSaysWhereUpdatesAre)
{
    openSettings();
    EXPECT_EQ(text("updatesUnavailable"),
              QStringLiteral("Update checks are available in signed release builds."));
    EXPECT_FALSE(window->findChild<QWidget *>(QStringLiteral("automaticUpdates")));
}

TEST_F(SettingsTest, TheSwitchIsTheUpdatersOwnSetting)
{
    openSettings([](UiWorld &made) { made.hasUpdater = true; });
    auto *automatic = find<QCheckBox>("automaticUpdates");
    EXPECT_EQ(automatic->text(), QStringLiteral("Automatically check for updates"));
    EXPECT_TRUE(automatic->isChecked());
    automatic->click();
    EXPECT_FALSE(world->updater.automatic);
    world->updater.automatic = true;
    world->updater.set({});
    EXPECT_TRUE(automatic->isChecked());
}

TEST_F(SettingsTest, CheckNowStartsACheckWhileOneMayStart)
{
    openSettings([](UiWorld &made) { made.hasUpdater = true; });
    click("checkForUpdates");
    EXPECT_EQ(world->updater.checks, 1);
    world->updater.canCheck = false;
    world->updater.set({QStringLiteral("Loading…"), 0.5, true, {}});
    EXPECT_FALSE(find("checkForUpdates")->isEnabled());
    EXPECT_EQ(text("updaterStatus"), QStringLiteral("Loading…"));
    click("stopUpdate");
    EXPECT_EQ(world->updater.stops, 1);
    world->updater.set({QStringLiteral("Veltrix is up to date."), std::nullopt, false, {}});
    EXPECT_FALSE(isShown("stopUpdate"));
    EXPECT_EQ(text("updaterStatus"), QStringLiteral("Veltrix is up to date."));
}

TEST_F(SettingsTest, OffersWhatCanBeDoneAboutAnUpdate)
{
    openSettings([](UiWorld &made) { made.hasUpdater = true; });
    world->updater.set({QStringLiteral("Version 1.5 is available."), std::nullopt, false,
                        QStringLiteral("Download")});
    EXPECT_EQ(find("updaterAction")->accessibleName(), QStringLiteral("Download"));
    click("updaterAction");
    EXPECT_EQ(world->updater.actions, 1);
    world->updater.set({QStringLiteral("Loading Veltrix 1.5…"), 0.1, true, {}});
    EXPECT_FALSE(isShown("updaterAction"));
}

TEST_F(SettingsTest, ShowsTheNotesOfAnAvailableVersionAsText)
{
    openSettings([](UiWorld &made) { made.hasUpdater = true; });
    EXPECT_FALSE(isShown("updateNotes"));
    EXPECT_FALSE(isShown("updateNotesLink"));
    UpdaterStatus status{QStringLiteral("Version 1.5 is available."), std::nullopt, false,
                         QStringLiteral("Download")};
    status.notes = QStringLiteral("• Rankings <b>load</b> faster.");
    status.notesLink = QUrl(QStringLiteral("https://veltrix.example/notes"));
    world->updater.set(status);
    EXPECT_TRUE(isShown("updateNotes"));
    EXPECT_EQ(text("updateNotes"), status.notes);
    EXPECT_EQ(find<QLabel>("updateNotes")->textFormat(), Qt::PlainText);
    click("updateNotesLink");
    EXPECT_EQ(world->openedUrls, QList<QUrl>{status.notesLink});
    world->updater.set({});
    EXPECT_FALSE(isShown("updateNotes"));
    EXPECT_FALSE(isShown("updateNotesLink"));
}

class UpdateBannerTest : public UiTest
{
protected:
    void openWithUpdater()
    {
        world = UiWorld::sample();
        world->hasUpdater = true;
        window = std::make_unique<MainWindow>(world->collaborators());
        window->show();
        settle();
    }
    void announce(const UpdaterAnnouncement &announcement, const QString &action = QString())
    {
        UpdaterStatus status;
        status.text = announcement.text;
        status.action = action;
        status.announcement = announcement;
        world->updater.set(status);
        settle();
    }
};

TEST_F(UpdateBannerTest, AnUpdateFoundInTheBackgroundIsShownInEveryWorkspace)
{
    openWithUpdater();
    EXPECT_FALSE(isShown("updateBanner"));
    announce({QStringLiteral("Version 1.5 of Veltrix is available.")});
    EXPECT_TRUE(isShown("updateBanner"));
    EXPECT_EQ(find<Banner>("updateBanner")->message(),
              QStringLiteral("Version 1.5 of Veltrix is available."));
    window->showWorkspace(Workspace::Competitors);
    EXPECT_TRUE(isShown("updateBanner"));
    EXPECT_FALSE(isShown("settingsSheet")) << "it does not get in the way";
    click("updateBannerAction");
    EXPECT_TRUE(isShown("settingsSheet"));
    EXPECT_EQ(world->updater.actions, 0);
}

TEST_F(UpdateBannerTest, ACheckWithoutNewsShowsNone)
{
    openWithUpdater();
    world->updater.set({QStringLiteral("Veltrix is up to date."), std::nullopt, false, {}});
    EXPECT_FALSE(isShown("updateBanner"));
}

TEST_F(UpdateBannerTest, APackageCanBeShownInItsFolderFromThere)
{
    openWithUpdater();
    announce({QStringLiteral("The package is in “/tmp/v.deb”."), false, true},
             QStringLiteral("Show in Folder"));
    EXPECT_EQ(find<Button>("updateBannerAction")->text(), QStringLiteral("Show in Folder"));
    EXPECT_EQ(find("updateBannerAction")->accessibleName(), QStringLiteral("Show in Folder"));
    click("updateBannerAction");
    EXPECT_EQ(world->updater.actions, 1);
    EXPECT_FALSE(isShown("settingsSheet"));
}

TEST_F(UpdateBannerTest, WhatIsDismissedIsToldToTheUpdaterAndMayComeBack)
{
    openWithUpdater();
    const UpdaterAnnouncement critical{
        QStringLiteral("Version 1.5 of Veltrix fixes a critical problem."), true};
    announce(critical);
    EXPECT_TRUE(isShown("updateBanner"));
    click("updateBannerDismiss");
    EXPECT_EQ(world->updater.dismissals, 1);
    EXPECT_FALSE(isShown("updateBanner"));
    announce(critical);
    EXPECT_TRUE(isShown("updateBanner"));
}

TEST_F(SettingsTest, TheLinksOpenTheirAddresses)
{
    openSettings();
    click("supportLink");
    click("privacyLink");
    click("termsLink");
    EXPECT_EQ(world->openedUrls,
              (QList<QUrl>{QUrl(QStringLiteral("mailto:support@veltrix.example")),
                           QUrl(QStringLiteral("https://veltrix.example/privacy")),
                           QUrl(QStringLiteral("https://veltrix.example/terms"))}));
}

TEST_F(SettingsTest, ALinkWithoutAnAddressIsOff)
{
    openSettings([](UiWorld &made) {
        made.information.supportEmail.clear();
        made.information.termsOfUse.clear();
    });
    EXPECT_FALSE(find("supportLink")->isEnabled());
    EXPECT_FALSE(find("termsLink")->isEnabled());
    EXPECT_TRUE(find("privacyLink")->isEnabled());
}

TEST_F(SettingsTest, ShowsTheVersion)
{
    openSettings();
    EXPECT_EQ(text("versionText"), QStringLiteral("1.4 (27)"));
    EXPECT_EQ(AppInformation().versionText, QStringLiteral("—"));
}

TEST_F(SettingsTest, ClosingThemWhileTheUpdaterSpeaksIsSafe)
{
    openSettings([](UiWorld &made) { made.hasUpdater = true; });
    press(Qt::Key_Escape);
    world->updater.set({QStringLiteral("late"), std::nullopt, false, {}});
    EXPECT_FALSE(isShown("settingsSheet"));
}

} // namespace
} // namespace veltrix
