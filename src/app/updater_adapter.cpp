// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/updater_adapter.h"

#include "ui_kit/text/release_notes.h"

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
        const UpdateOffer &offer = state.offer;
        UpdaterStatus status;
        status.text = UpdaterAdapter::tr("Version %1 is available.").arg(offer.displayVersion);
        if (offer.isCritical)
            status.text += u' ' + UpdaterAdapter::tr("It fixes a critical problem.");
        if (offer.package)
            status.action = UpdaterAdapter::tr("Download");
        else if (!offer.link.isEmpty())
            status.action = UpdaterAdapter::tr("Read More");
        status.notes = plainNotes(offer.notes);
        status.notesLink = offer.notesLink;
        if (offer.isCritical) {
            status.announcement = {UpdaterAdapter::tr("Version %1 of Veltrix fixes a critical "
                                                      "problem. Please install it soon.")
                                       .arg(offer.displayVersion),
                                   true};
        } else if (state.foundBy == UpdateCheck::Background) {
            status.announcement = {UpdaterAdapter::tr("Version %1 of Veltrix is available.")
                                       .arg(offer.displayVersion)};
        }
        return status;
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
        // The path is always told: a desktop also reports success when nothing opened.
        const QString text =
            state.isOpened
                ? UpdaterAdapter::tr("Version %1 was verified and handed to the system’s "
                                     "installer. The package is in “%2”.")
                : UpdaterAdapter::tr("Version %1 was downloaded and verified, but no program "
                                     "opened it. The package is in “%2”.");
        UpdaterStatus status;
        status.text = text.arg(state.offer.displayVersion, state.path);
        status.action = UpdaterAdapter::tr("Show in Folder");
        status.announcement = {status.text, false, true};
        return status;
    }
    UpdaterStatus operator()(const UpdateFailed &state) const
    {
        UpdaterStatus status;
        status.text = state.description;
        if (state.stage == UpdateFailed::Stage::Download)
            status.announcement = {state.description};
        return status;
    }
};

} // namespace

UpdaterAdapter::UpdaterAdapter(Updater &updater, std::function<void(const QUrl &)> openUrl,
                               std::function<void(const QString &)> showInFolder, QObject *parent)
    : UpdaterInterface(parent), m_updater(updater), m_openUrl(std::move(openUrl)),
      m_showInFolder(std::move(showInFolder))
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
    if (const auto *available = std::get_if<UpdateAvailable>(&m_updater.status())) {
        if (available->offer.package)
            m_updater.downloadUpdate();
        else if (!available->offer.link.isEmpty())
            m_openUrl(available->offer.link);
    } else if (const auto *handedOver = std::get_if<UpdateHandedOver>(&m_updater.status())) {
        m_showInFolder(handedOver->path);
    }
}

void UpdaterAdapter::dismiss()
{
    m_updater.dismiss();
}

} // namespace veltrix
