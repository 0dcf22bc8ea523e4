// SPDX-License-Identifier: GPL-3.0-or-later
// What the windows hear of the updater.
#include "app/updater_adapter.h"
#include "clients/update/updater_fixture.h"

namespace veltrix
{
namespace
{

class UpdaterAdapterTest : public UpdaterTest
{
protected:
    void openAdapter()
    {
        open();
        m_adapter.emplace(
            *m_updater, [this](const QUrl &url) { m_pages.append(url); },
            [this](const QString &path) { m_shown.append(path); });
    }
    [[nodiscard]] QString announced() const
    {
        const auto announcement = m_adapter->status().announcement;
        if (!announcement)
            return QStringLiteral("nothing");
        return (announcement->isCritical ? QStringLiteral("! ") : QString()) + announcement->text;
    }

    QList<QUrl> m_pages;
    QStringList m_shown;
    std::optional<UpdaterAdapter> m_adapter;
};

TEST_F(UpdaterAdapterTest, TheHandOverAlwaysTellsWhereThePackageIsAndShowsItInItsFolder)
{
    openAdapter();
    checkAndDownload();
    ASSERT_EQ(m_opened.size(), 1);
    const UpdaterStatus status = m_adapter->status();
    EXPECT_EQ(status.text, QStringLiteral("Version 2.0 was verified and handed to the system’s "
                                          "installer. The package is in “%1”.")
                               .arg(m_opened[0]));
    EXPECT_EQ(status.action, QStringLiteral("Show in Folder"));
    EXPECT_EQ(announced(), status.text) << "the settings may have been closed meanwhile";
    EXPECT_TRUE(status.announcement->offersAction);
    m_adapter->performAction();
    EXPECT_EQ(m_shown, m_opened);
    m_adapter->dismiss();
    EXPECT_EQ(m_adapter->status(), UpdaterStatus());
}

TEST_F(UpdaterAdapterTest, WithoutAnInstallerItSaysSoAndTheSame)
{
    m_hasInstaller = false;
    openAdapter();
    checkAndDownload();
    ASSERT_EQ(m_opened.size(), 1);
    EXPECT_EQ(m_adapter->status().text,
              QStringLiteral("Version 2.0 was downloaded and verified, but no program opened it. "
                             "The package is in “%1”.")
                  .arg(m_opened[0]));
    m_adapter->performAction();
    EXPECT_EQ(m_shown, m_opened);
}

TEST_F(UpdaterAdapterTest, AnUpdateFoundInTheBackgroundIsAnnouncedWithItsNotes)
{
    TestItem found = item(QStringLiteral("2.0"));
    found.elements = QStringLiteral(
        "<description><![CDATA[<p>New:</p><ul><li>Faster &amp; safer</li></ul>]]></description>"
        "<u:releaseNotesLink>https://veltrix.example/2</u:releaseNotesLink>");
    offer({found});
    m_settings->isAutomatic = true;
    openAdapter();
    m_clock->advance(Seconds(60));
    EXPECT_EQ(announced(), QStringLiteral("Version 2.0 of Veltrix is available."));
    EXPECT_EQ(m_adapter->status().notes, QStringLiteral("New:\n• Faster & safer"));
    EXPECT_EQ(m_adapter->status().notesLink, QUrl(QStringLiteral("https://veltrix.example/2")));
    m_adapter->dismiss();
    EXPECT_EQ(announced(), QStringLiteral("nothing"));
}

TEST_F(UpdaterAdapterTest, ACriticalUpdateIsSaidPlainlyWhoeverFoundIt)
{
    TestItem critical = item(QStringLiteral("2.0"));
    critical.elements = QStringLiteral("<u:criticalUpdate/>");
    offer({critical});
    openAdapter();
    m_updater->checkForUpdates();
    EXPECT_EQ(announced(), QStringLiteral("! Version 2.0 of Veltrix fixes a critical problem. "
                                          "Please install it soon."));
    EXPECT_EQ(m_adapter->status().text,
              QStringLiteral("Version 2.0 is available. It fixes a critical problem."));
}

TEST_F(UpdaterAdapterTest, WhatARequestedCheckFoundIsSaidWhereItWasAskedFor)
{
    openAdapter();
    m_updater->checkForUpdates();
    EXPECT_EQ(announced(), QStringLiteral("nothing"));
    EXPECT_EQ(m_adapter->status().text, QStringLiteral("Version 2.0 is available."));
    m_http.answerWith(FakeHttp::response(503));
    m_updater->checkForUpdates();
    EXPECT_EQ(announced(), QStringLiteral("nothing"));
}

TEST_F(UpdaterAdapterTest, ADownloadThatFailsIsToldEvenWhenTheSettingsAreClosed)
{
    openAdapter();
    m_download.failWith(QStringLiteral("The connection failed."));
    checkAndDownload();
    EXPECT_EQ(announced(), QStringLiteral("The connection failed."));
}

} // namespace
} // namespace veltrix
