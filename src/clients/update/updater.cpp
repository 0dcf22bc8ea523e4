// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/updater.h"

#include "clients/update/update_download.h"
#include "clients/update/update_error.h"

#include <QRandomGenerator>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr Seconds longestFeedTransfer{60};

} // namespace

Updater::Updater(UpdateSource source, UpdaterEnvironment environment)
    : m_source(std::move(source)), m_environment(std::move(environment)),
      m_isAutomatic(m_environment.settings->automaticallyChecksForUpdates()),
      m_lastCheck(m_environment.settings->lastCheck())
{
    m_progressTimer.setSingleShot(true);
    connect(&m_progressTimer, &QTimer::timeout, this, &Updater::showProgress);
}

Updater::~Updater() = default;

void Updater::setAutomaticallyChecksForUpdates(bool isOn)
{
    if (isOn == m_isAutomatic)
        return;
    m_isAutomatic = isOn;
    m_environment.settings->setAutomaticallyChecksForUpdates(isOn);
    if (isOn)
        checkForUpdatesInBackground();
    else
        m_background.stop();
    Q_EMIT automaticallyChecksForUpdatesChanged(isOn);
}

bool Updater::canCheckForUpdates() const
{
    return !std::holds_alternative<UpdateChecking>(m_status) &&
           !std::holds_alternative<UpdateDownloading>(m_status);
}

void Updater::checkForUpdates()
{
    if (canCheckForUpdates())
        m_requested.own(check(m_requested.token()));
}

void Updater::checkForUpdatesInBackground()
{
    if (m_background.runningTasks() == 0)
        m_background.own(keepChecking(m_background.token()));
}

void Updater::downloadUpdate()
{
    const auto *available = std::get_if<UpdateAvailable>(&m_status);
    if (available && available->offer.package)
        m_requested.own(download(available->offer, m_requested.token()));
}

void Updater::stop()
{
    if (std::holds_alternative<UpdateChecking>(m_status)) {
        m_requested.stop();
        setStatus(UpdateIdle());
    } else if (const auto *downloading = std::get_if<UpdateDownloading>(&m_status)) {
        UpdateAvailable available{downloading->offer, UpdateCheck::Requested};
        m_requested.stop();
        setStatus(std::move(available));
    }
}

void Updater::dismiss()
{
    if (canCheckForUpdates())
        setStatus(UpdateIdle());
}

Task<UpdateSelection> Updater::findUpdate(std::optional<int> rolloutGroup, std::stop_token stop)
{
    HttpRequest request;
    request.url = m_source.feed;
    request.bodyLimit = largestAppcast;
    request.totalTimeout = longestFeedTransfer;
    const HttpResponse response = co_await m_environment.send(request, stop);
    throwIfStopped(stop);
    if (response.status != 200) {
        throw UpdateError(QStringLiteral("The update feed couldn’t be loaded: the server “%1” "
                                         "answered with status %2.")
                              .arg(m_source.feed.host())
                              .arg(response.status));
    }
    const UpdateTarget target{m_environment.installedVersion, m_environment.systemVersion,
                              rolloutGroup, m_environment.clock->now()};
    const UpdateSelection selection = selectUpdate(readAppcast(response.body), target);
    noteCheck();
    co_return selection;
}

Task<void> Updater::check(std::stop_token stop)
{
    setStatus(UpdateChecking());
    throwIfStopped(stop);
    UpdateStatus outcome;
    try {
        const UpdateSelection selection = co_await findUpdate(std::nullopt, stop);
        outcome = outcomeOf(selection);
    } catch (const Error &error) {
        outcome = UpdateFailed{error.description()};
    }
    // The package of an earlier update has served.
    if (std::holds_alternative<UpdateNotNeeded>(outcome))
        removeDownloadedUpdates(m_environment.downloadFolder);
    setStatus(std::move(outcome));
}

Task<void> Updater::keepChecking(std::stop_token stop)
{
    co_await m_environment.clock->sleep(backgroundDelay, stop);
    for (;;) {
        if (timeUntilDue() <= Seconds(0) && canCheckForUpdates())
            co_await checkSilently(stop);
        throwIfStopped(stop);
        if (!m_isAutomatic)
            co_return;
        const Seconds wait = timeUntilDue();
        const bool isSoon = wait > Seconds(0) && wait < clockReadingInterval;
        co_await m_environment.clock->sleep(isSoon ? wait : clockReadingInterval, stop);
    }
}

Task<void> Updater::checkSilently(std::stop_token stop)
{
    UpdateSelection selection;
    try {
        selection = co_await findUpdate(rolloutGroup(), stop);
    } catch (const Error &) {
        // Nobody asked, so nobody is told. It stays due, and is tried again at the next reading of
        // the clock.
        co_return;
    }
    // A check or a download that the user asked for meanwhile has the word.
    if (!selection.offer || !canCheckForUpdates())
        co_return;
    const auto *available = std::get_if<UpdateAvailable>(&m_status);
    if (!available || available->offer != *selection.offer)
        setStatus(UpdateAvailable{*std::move(selection.offer), UpdateCheck::Background});
}

Task<void> Updater::download(UpdateOffer offer, std::stop_token stop)
{
    setStatus(UpdateDownloading{offer, 0});
    throwIfStopped(stop);
    const QString folder = m_environment.downloadFolder;
    removeDownloadedUpdates(folder);
    const HttpProgress progress = progressReporter();
    UpdateStatus outcome;
    try {
        const ExpectedVersion version{offer.version, m_environment.installedVersion};
        const QString path =
            co_await veltrix::downloadUpdate(m_environment.download, *offer.package, m_source.key,
                                             version, folder, m_environment.files, progress, stop);
        outcome = UpdateHandedOver{offer, path, m_environment.openPackage(path)};
    } catch (const Error &error) {
        outcome = UpdateFailed{error.description(), UpdateFailed::Stage::Download};
    }
    setStatus(std::move(outcome));
}

UpdateStatus Updater::outcomeOf(const UpdateSelection &selection)
{
    if (selection.offer)
        return UpdateAvailable{*selection.offer, UpdateCheck::Requested};
    UpdateNotNeeded notNeeded;
    for (const SkippedUpdate &skipped : selection.skipped) {
        // A newer version that cannot be trusted is not the same as no newer version.
        if (skipped.isRefusal())
            return UpdateFailed{skipped.description};
        // A feed keeps its old versions; nobody asks after those.
        if (skipped.reason != SkippedUpdate::Reason::NotNewer)
            notNeeded.reasons.append(skipped.description);
    }
    return notNeeded;
}

HttpProgress Updater::progressReporter()
{
    m_received = 0;
    m_progressTimer.stop();
    // Shown from the event loop and not from within the transfer, which a listener may stop.
    return [this](qint64 received, std::optional<qint64> /*total*/) {
        m_received = received;
        if (!m_progressTimer.isActive())
            m_progressTimer.start();
    };
}

void Updater::showProgress()
{
    if (const auto *downloading = std::get_if<UpdateDownloading>(&m_status)) {
        UpdateDownloading further = *downloading;
        further.received = std::min(m_received, further.offer.package->length);
        setStatus(std::move(further));
    }
}

void Updater::setStatus(UpdateStatus status)
{
    if (status == m_status)
        return;
    m_status = std::move(status);
    Q_EMIT statusChanged();
    // A listener may have changed the status again; what counts is how it stands now.
    if (std::exchange(m_toldCanCheck, canCheckForUpdates()) != m_toldCanCheck)
        Q_EMIT canCheckForUpdatesChanged(m_toldCanCheck);
}

void Updater::noteCheck()
{
    m_lastCheck = m_environment.clock->now();
    m_environment.settings->setLastCheck(*m_lastCheck);
}

Seconds Updater::timeUntilDue() const
{
    const Date now = m_environment.clock->now();
    // A check in the future means that a clock was wrong.
    if (!m_lastCheck || *m_lastCheck > now)
        return Seconds(0);
    return *m_lastCheck + checkInterval - now;
}

int Updater::rolloutGroup()
{
    if (const std::optional<int> group = m_environment.settings->rolloutGroup())
        return *group;
    const int group = QRandomGenerator::global()->bounded(rolloutGroups);
    m_environment.settings->setRolloutGroup(group);
    return group;
}

} // namespace veltrix
