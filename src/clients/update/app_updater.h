// SPDX-License-Identifier: GPL-3.0-or-later
// Decides once, at the start, whether this copy of Veltrix can be updated.
#pragma once

#include "clients/update/updater.h"

namespace veltrix
{

/// Where updates come from, if both texts of the information dictionary are good: the feed's
/// address must be a URL with a host whose scheme is written exactly "https", the key base64 of
/// exactly 32 bytes.
std::optional<UpdateSource> updateSource(const std::optional<QString> &feedUrl,
                                         const std::optional<QString> &publicKey);

/// Holds the updater for the life of the program, or none.
class AppUpdater
{
public:
    /// Takes the values of "SUFeedURL" and "SUPublicEDKey", nothing when absent or not text. When
    /// there is an updater and automatic checks are on, the first of them is scheduled.
    AppUpdater(const std::optional<QString> &feedUrl, const std::optional<QString> &publicKey,
               UpdaterEnvironment environment);

    /// Nothing when this copy cannot be updated.
    [[nodiscard]] Updater *updater() const { return m_updater.get(); }

private:
    std::unique_ptr<Updater> m_updater;
};

} // namespace veltrix
