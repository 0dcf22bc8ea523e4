// SPDX-License-Identifier: GPL-3.0-or-later
// The ranked results of keyword searches, for those who must not wait for a disk.
#pragma once

#include "clients/ranked_apps_archive.h"
#include "effects/clock.h"
#include "effects/file_thread.h"

#include <memory>

namespace veltrix
{

/// The storefront code in upper case, a colon, and the keyword trimmed and in lower case.
QString rankedAppsKey(const QString &keyword, const QString &country);

/// A RankedAppsArchive on the thread for files. What is kept is there for whoever asks next, and on
/// the disk some milliseconds later. Nothing is read before something is asked or kept.
class RankedAppsCache
{
public:
    struct Arguments {
        /// The file; empty means memory only.
        QString path;
        /// Needed where there is a path.
        std::shared_ptr<FileThread> files = {};
        /// Holds the file's folder; may be null, and outlives the thread.
        DataFolderLock *lock = nullptr;
        RankedAppsLimits limits = {};
    };

    RankedAppsCache(Arguments arguments, std::shared_ptr<Clock> clock);
    /// Leaves the file up to date.
    ~RankedAppsCache();
    RankedAppsCache(const RankedAppsCache &) = delete;
    RankedAppsCache &operator=(const RankedAppsCache &) = delete;

    /// RankedAppsArchive::find(). Throws Cancelled only.
    [[nodiscard]] Task<std::optional<SavedResults>> find(QString key, std::stop_token stop);
    /// RankedAppsArchive::keep().
    void keep(const QString &key, const SavedResults &saved, Seconds remembered = Seconds::zero());

private:
    void save();

    QString m_path;
    std::shared_ptr<FileThread> m_files;
    std::shared_ptr<Clock> m_clock;
    /// The thread's, where there is one.
    std::shared_ptr<RankedAppsArchive> m_archive;
};

} // namespace veltrix
