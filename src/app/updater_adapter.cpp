// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/updater_adapter.h"

#include <QLocale>

namespace veltrix
{

namespace
{

/// The words for each state of the updater.
struct StatusWords {
    UpdaterStatus operator()(const UpdateIdle &) const { return {}; }
    UpdaterStatus operator()(const UpdateChecking &) const
    {
        return {.text = UpdaterAdapter::tr("Checking for updates…"),
                .fraction = {},
                .canStop = true,
                .action = {}};
    }
    UpdaterStatus operator()(const UpdateNotNeeded &state) const
    {
        QStringList lines{UpdaterAdapter::tr("Veltrix is up to date.")};
        lines += state.reasons;
        return {.text = lines.join(u'\n'), .fraction = {}, .canStop = false, .action = {}};
    }
    UpdaterStatus operator()(const UpdateAvailable &state) const
    {
        const bool canDownload = state.offer.package.has_value();
        const bool hasPage = !state.offer.link.isEmpty();
        return {.text =
                    UpdaterAdapter::tr("Version %1 is available.").arg(state.offer.displayVersion),
                .fraction = {},
                .canStop = false,
                .action = canDownload ? UpdaterAdapter::tr("Download")
                          : hasPage   ? UpdaterAdapter::tr("Read More")
                                      : QString()};
    }
    UpdaterStatus operator()(const UpdateDownloading &state) const
    {
        const qint64 length = state.offer.package ? state.offer.package->length : 0;
        const double fraction =
            length > 0 ? static_cast<double>(state.received) / static_cast<double>(length) : 0;
        return {.text = UpdaterAdapter::tr("Downloading version %1 · %2 of %3")
                            .arg(state.offer.displayVersion,
                                 QLocale().formattedDataSize(state.received),
                                 QLocale().formattedDataSize(length)),
                .fraction = fraction,
                .canStop = true,
                .action = {}};
    }
    UpdaterStatus operator()(const UpdateHandedOver &state) const
    {
        return {.text = UpdaterAdapter::tr("Version %1 was verified and handed to the system’s "
                                           "installer.")
                            .arg(state.offer.displayVersion),
                .fraction = {},
                .canStop = false,
                .action = {}};
    }
    UpdaterStatus operator()(const UpdateFailed &state) const
    {
        return {.text = state.description, .fraction = {}, .canStop = false, .action = {}};
    }
};

} // namespace

UpdaterAdapter::UpdaterAdapter(Updater &updater, std::function<void(const QUrl &)> openUrl,
                               QObject *parent)
    : UpdaterInterface(parent), m_updater(updater), m_openUrl(std::move(openUrl))
{
    connect(&updater, &Updater::automaticallyChecksForUpdatesChanged, this,
            &UpdaterInterface::changed);
    connect(&updater, &Updater::canCheckForUpdatesChanged, this, &UpdaterInterface::changed);
    connect(&updater, &Updater::statusChanged, this, &UpdaterInterface::changed);
}

bool UpdaterAdapter::automaticallyChecksForUpdates() const
{
    return m_updater.automaticallyChecksForUpdates();
}

void UpdaterAdapter::setAutomaticallyChecksForUpdates(bool automatically)
{
    m_updater.setAutomaticallyChecksForUpdates(automatically);
}

bool UpdaterAdapter::canCheckForUpdates() const
{
    return m_updater.canCheckForUpdates();
}

void UpdaterAdapter::checkForUpdates()
{
    m_updater.checkForUpdates();
}

UpdaterStatus UpdaterAdapter::status() const
{
    return std::visit(StatusWords{}, m_updater.status());
}

void UpdaterAdapter::stop()
{
    m_updater.stop();
}

void UpdaterAdapter::performAction()
{
    const auto *available = std::get_if<UpdateAvailable>(&m_updater.status());
    if (!available)
        return;
    if (available->offer.package)
        m_updater.downloadUpdate();
    else if (!available->offer.link.isEmpty())
        m_openUrl(available->offer.link);
}

} // namespace veltrix
