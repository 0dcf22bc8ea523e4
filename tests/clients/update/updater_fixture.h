// SPDX-License-Identifier: GPL-3.0-or-later
// An updater with everything around it in the test's hand.
#pragma once

#include "clients/update/fake_download.h"
#include "clients/update/memory_update_settings.h"
#include "clients/update/test_feed.h"
#include "clients/update/test_package.h"
#include "clients/update/updater.h"
#include "support/fake_http.h"
#include "support/json_printers.h"
#include "support/virtual_clock.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{

/// The status as a line: "idle", "checking", "nothing newer", "2.0 is available", "found 2.0" (in
/// the background), "downloading 2.0: 3", "handed over 2.0", "failed: …".
QString inWords(const UpdateStatus &status);

/// Version 1.5 is installed; the feed has 2.0, whose package is sound.
class UpdaterTest : public testing::Test
{
protected:
    UpdaterTest();

    [[nodiscard]] UpdaterEnvironment environment();
    /// Starts the program, with automatic checks if the settings say so.
    void open();
    /// What the feed offers from now on.
    void offer(const QList<TestItem> &items);
    /// An item whose package is m_package.
    [[nodiscard]] TestItem item(const QString &version) const;
    void checkAndDownload();
    /// Lets queued signals arrive.
    static void turnEventLoop();
    /// Every status since the last call.
    QStringList takeHistory();
    /// Everything under the folder for downloads.
    [[nodiscard]] QStringList files() const;
    /// Times of the requests for the feed, in hours since the first turn of the clock.
    [[nodiscard]] QList<double> hoursOfChecks() const;

    const TestSigner m_signer;
    QByteArray m_package = packageOf("2.0");
    QTemporaryDir m_folder;
    std::shared_ptr<FileThread> m_files = std::make_shared<FileThread>();
    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>();
    const Date m_start = m_clock->now();
    FakeHttp m_http{m_clock};
    FakeDownload m_download;
    std::shared_ptr<MemoryUpdateSettings> m_settings = std::make_shared<MemoryUpdateSettings>();
    QStringList m_opened;
    bool m_hasInstaller = true;
    QStringList m_history;
    QList<bool> m_canCheck;
    std::unique_ptr<Updater> m_updater;
};

} // namespace veltrix
