// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/app_updater.h"

#include "clients/update/stored_update_settings.h"
#include "clients/update/updater_fixture.h"

namespace veltrix
{
namespace
{

const QString feed = QStringLiteral("https://updates.example/feed.xml");

QString keyOf(int size)
{
    return QString::fromLatin1(QByteArray(size, 'k').toBase64());
}

TEST(UpdateSourceTest, AnHttpsFeedAndAKeyOf32BytesEnableUpdates)
{
    const auto source = updateSource(feed, keyOf(32));
    ASSERT_TRUE(source.has_value());
    EXPECT_EQ(source->feed, QUrl(feed));
    EXPECT_TRUE(source->key == UpdateKey::fromBase64(keyOf(32)));
}

TEST(UpdateSourceTest, OnlyAnHttpsAddressWithAHostEnablesUpdates)
{
    for (const char *good : {"https://a", "https://a:8443/feed?x=1#y", "https://[::1]/feed"})
        EXPECT_TRUE(updateSource(QString::fromUtf8(good), keyOf(32)).has_value()) << good;
    for (const char *bad :
         {"http://updates.example/feed.xml", "HTTPS://updates.example/feed.xml",
          "Https://updates.example/feed.xml", "https:///feed.xml", "https:", "https:feed.xml",
          "https", "", " https://a", "https://a b/", "https://a/%zz", "https://a:x/",
          "//updates.example/feed.xml", "ftp://updates.example/feed.xml", "httpsx://a/",
          "https://a/feed.xml\n", "https://a/feed.xml\r\nX: y", "https://a\n/feed.xml"})
        EXPECT_FALSE(updateSource(QString::fromUtf8(bad), keyOf(32)).has_value()) << bad;
}

TEST(UpdateSourceTest, AKeyOf31Or33BytesOrNoBase64DisablesUpdates)
{
    for (const int size : {0, 31, 33, 64})
        EXPECT_FALSE(updateSource(feed, keyOf(size)).has_value()) << size;
    EXPECT_FALSE(updateSource(feed, QStringLiteral("not base64")).has_value());
    EXPECT_FALSE(updateSource(feed, keyOf(32) + u' ').has_value());
    EXPECT_FALSE(updateSource(feed, keyOf(32) + u'\n').has_value());
}

TEST(UpdateSourceTest, AMissingValueDisablesUpdates)
{
    EXPECT_FALSE(updateSource(std::nullopt, keyOf(32)).has_value());
    EXPECT_FALSE(updateSource(feed, std::nullopt).has_value());
}

class AppUpdaterTest : public UpdaterTest
{
};

TEST_F(AppUpdaterTest, WithoutASourceThereIsNoUpdaterAndNothingIsChecked)
{
    m_settings->isAutomatic = true;
    const AppUpdater http(QStringLiteral("http://updates.example/feed.xml"), m_signer.publicKey(),
                          environment());
    const AppUpdater nothing(std::nullopt, std::nullopt, environment());
    EXPECT_EQ(http.updater(), nullptr);
    EXPECT_EQ(nothing.updater(), nullptr);
    EXPECT_EQ(m_clock->sleepers(), 0);
}

TEST_F(AppUpdaterTest, WithAutomaticChecksOnOneFollowsTheStart)
{
    m_settings->isAutomatic = true;
    const AppUpdater updates(feed, m_signer.publicKey(), environment());
    ASSERT_NE(updates.updater(), nullptr);
    EXPECT_EQ(m_http.count(), 0);
    m_clock->advance(Updater::backgroundDelay);
    EXPECT_EQ(m_http.count(), 1);
}

TEST_F(AppUpdaterTest, WithAutomaticChecksOffNoneFollowsButOneMayBeAskedFor)
{
    const AppUpdater updates(feed, m_signer.publicKey(), environment());
    ASSERT_NE(updates.updater(), nullptr);
    m_clock->advance(Seconds(1e6));
    EXPECT_EQ(m_http.count(), 0);
    EXPECT_TRUE(updates.updater()->canCheckForUpdates());
    updates.updater()->checkForUpdates();
    EXPECT_EQ(inWords(updates.updater()->status()), QStringLiteral("2.0 is available"));
}

TEST(StoredUpdateSettingsTest, WhatIsSetIsThereAfterARestart)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("preferences.ini"));
    const Date checked = dateFromUnixSeconds(1795262400.25);
    const auto openFile = [&path] {
        return std::make_shared<SettingsFile>(path, std::make_shared<FileThread>());
    };
    {
        StoredUpdateSettings fresh(openFile());
        EXPECT_FALSE(fresh.automaticallyChecksForUpdates());
        EXPECT_EQ(fresh.lastCheck(), std::nullopt);
        EXPECT_EQ(fresh.rolloutGroup(), std::nullopt);
        fresh.setAutomaticallyChecksForUpdates(true);
        fresh.setLastCheck(checked);
        fresh.setRolloutGroup(6);
        EXPECT_TRUE(fresh.automaticallyChecksForUpdates());
    }
    const auto file = openFile();
    StoredUpdateSettings again(file);
    EXPECT_TRUE(again.automaticallyChecksForUpdates());
    EXPECT_EQ(again.lastCheck(), checked);
    EXPECT_EQ(again.rolloutGroup(), 6);
    again.setAutomaticallyChecksForUpdates(false);
    file->sync();
    EXPECT_FALSE(StoredUpdateSettings(openFile()).automaticallyChecksForUpdates());
}

TEST(StoredUpdateSettingsTest, ValuesThatCannotBeReadCountAsAbsent)
{
    const QTemporaryDir folder;
    const auto preferences = std::make_shared<SettingsFile>(
        folder.filePath(QStringLiteral("preferences.ini")), std::make_shared<FileThread>());
    const StoredUpdateSettings settings(preferences);
    for (const char *text : {"", "maybe", "7", "-1", "2026-13-01T00:00:00.000Z"}) {
        for (const char *key :
             {"automaticallyChecksForUpdates", "lastUpdateCheck", "updateRolloutGroup"})
            preferences->setValue(QString::fromUtf8(key), QString::fromUtf8(text));
        EXPECT_FALSE(settings.automaticallyChecksForUpdates()) << text;
        EXPECT_EQ(settings.lastCheck(), std::nullopt) << text;
        EXPECT_EQ(settings.rolloutGroup(), std::nullopt) << text;
    }
}

} // namespace
} // namespace veltrix
