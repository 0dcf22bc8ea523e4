// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/app_updater.h"

namespace veltrix
{

std::optional<UpdateSource> updateSource(const std::optional<QString> &feedUrl,
                                         const std::optional<QString> &publicKey)
{
    if (!feedUrl || !publicKey)
        return std::nullopt;
    const QUrl feed(*feedUrl, QUrl::StrictMode);
    const std::optional<UpdateKey> key = UpdateKey::fromBase64(*publicKey);
    // The scheme is compared as it is written; QUrl would make it lower-case.
    if (!feedUrl->startsWith(QLatin1String("https:")) || !feed.isValid() || feed.host().isEmpty() ||
        !key)
        return std::nullopt;
    return UpdateSource{feed, *key};
}

AppUpdater::AppUpdater(const std::optional<QString> &feedUrl,
                       const std::optional<QString> &publicKey, UpdaterEnvironment environment)
{
    std::optional<UpdateSource> source = updateSource(feedUrl, publicKey);
    if (!source)
        return;
    m_updater = std::make_unique<Updater>(*std::move(source), std::move(environment));
    if (m_updater->automaticallyChecksForUpdates())
        m_updater->checkForUpdatesInBackground();
}

} // namespace veltrix
