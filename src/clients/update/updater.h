// SPDX-License-Identifier: GPL-3.0-or-later
// Looks for newer versions of Veltrix and brings the one that the user wants to the installer.
#pragma once

#include "clients/http.h"
#include "clients/update/update_selection.h"
#include "clients/update/update_settings.h"
#include "clients/update/update_status.h"
#include "effects/clock.h"
#include "effects/file_thread.h"
#include "effects/task_scope.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

namespace veltrix
{

/// Opens a file with the system's default handler; false when there surely is none.
using OpenPackage = std::function<bool(QString path)>;

/// Where updates come from and who vouches for them.
struct UpdateSource {
    QUrl feed;
    UpdateKey key;
};

/// What the updater works with.
struct UpdaterEnvironment {
    HttpSend send;
    HttpDownload download;
    std::shared_ptr<Clock> clock;
    std::shared_ptr<UpdateSettings> settings;
    OpenPackage openPackage;
    /// The machine version of this program.
    QString installedVersion;
    /// Version of the system's kernel, the one version that all distributions have in common; empty
    /// when not known.
    QString systemVersion;
    /// Where packages are stored for the installer, and on which thread.
    QString downloadFolder;
    std::shared_ptr<FileThread> files;
};

/// Checks when asked to, and once a day by itself if the user wants that. It offers newer versions
/// only; a package is downloaded when the user says so, verified, and given to the system's
/// installer. The installation itself is never touched.
///
/// A listener of its signals must not destroy it at once; deleteLater() is fine.
class Updater final : public QObject
{
    Q_OBJECT

public:
    /// Least time between a check that succeeded and the next one in the background.
    static constexpr Seconds checkInterval{86'400};
    /// Time between the request for background checks and the first of them, so that none is in the
    /// way of a start.
    static constexpr Seconds backgroundDelay{10};
    /// Longest time for which the wall clock is left unread: a machine may sleep meanwhile. Also
    /// the time between a background check that failed and the next attempt.
    static constexpr Seconds clockReadingInterval{3'600};

    Updater(UpdateSource source, UpdaterEnvironment environment);
    ~Updater() override;

    /// Whether Veltrix checks by itself, a little after its start and then daily. Kept in the
    /// settings. Turning it on starts the checks, turning it off ends them.
    [[nodiscard]] bool automaticallyChecksForUpdates() const { return m_isAutomatic; }
    void setAutomaticallyChecksForUpdates(bool isOn);

    /// False while a requested check or a download is under way.
    [[nodiscard]] bool canCheckForUpdates() const;

    [[nodiscard]] const UpdateStatus &status() const { return m_status; }

    /// Checks at once, and says in the status what came of it. Nothing happens while
    /// canCheckForUpdates() is false.
    void checkForUpdates();

    /// Checks after a short delay if the last check is checkInterval old, and goes on doing so
    /// while automatic checks are on. Only an available update changes the status; failures do not
    /// show.
    void checkForUpdatesInBackground();

    /// Downloads, verifies and hands over the package of the available update. Nothing happens when
    /// none is available or it can only be read about.
    void downloadUpdate();

    /// Stops a requested check, or a download, whose update is then available again.
    void stop();

    /// The user has seen the outcome: the status becomes idle unless something is under way.
    void dismiss();

Q_SIGNALS:
    void automaticallyChecksForUpdatesChanged(bool isOn);
    void canCheckForUpdatesChanged(bool canCheck);
    void statusChanged();

private:
    Task<UpdateSelection> findUpdate(std::optional<int> rolloutGroup, std::stop_token stop);
    Task<void> check(std::stop_token stop);
    Task<void> keepChecking(std::stop_token stop);
    Task<void> checkSilently(std::stop_token stop);
    Task<void> download(UpdateOffer offer, std::stop_token stop);
    [[nodiscard]] static UpdateStatus outcomeOf(const UpdateSelection &selection);
    [[nodiscard]] HttpProgress progressReporter();
    void showProgress();
    void setStatus(UpdateStatus status);
    void noteCheck();
    [[nodiscard]] Seconds timeUntilDue() const;
    [[nodiscard]] int rolloutGroup();

    UpdateSource m_source;
    UpdaterEnvironment m_environment;
    UpdateStatus m_status;
    bool m_isAutomatic;
    /// What canCheckForUpdatesChanged last told.
    bool m_toldCanCheck = true;
    std::optional<Date> m_lastCheck;
    /// Bytes of the download under way, shown when the timer fires.
    qint64 m_received = 0;
    QTimer m_progressTimer;
    TaskScope m_background;
    TaskScope m_requested;
};

} // namespace veltrix
