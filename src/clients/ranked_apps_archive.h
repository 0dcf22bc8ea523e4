// SPDX-License-Identifier: GPL-3.0-or-later
// Ranked results of keyword searches, kept from one start of the program to the next.
#pragma once

#include "clients/ranked_apps_database.h"

#include <QByteArray>

#include <map>

namespace veltrix
{

class DataFolderLock;

/// How much is kept where.
struct RankedAppsLimits {
    /// Entries of the file, and bytes.
    qsizetype entries = 100;
    qint64 bytes = 4'000'000;
    /// Bytes of the database. Of 6,000 keywords, lists need some 60 MB.
    qint64 databaseBytes = 256'000'000;
    /// Once there is a database, which has every answer, the file with the newest is written no
    /// more often than this.
    Seconds filePause{600};
};

/// Keeps ranked results in a file of JSON, and beside it, when they are more than the file is to
/// hold, in a database ("caches.sqlite"). The file is read at the first question. In memory is what
/// the file holds, as it stands there. A failure leaves what was there and is ignored. It belongs
/// to one thread at a time.
class RankedAppsArchive
{
public:
    /// Without a path it is in memory alone. `lock` holds the file's folder and may be null: what
    /// another process has is not written.
    RankedAppsArchive(QString path, DataFolderLock *lock, RankedAppsLimits limits = {});

    /// What is kept under a key, however old.
    [[nodiscard]] std::optional<SavedResults> find(const QString &key, Date now);
    /// Keeps results in the place of what is there. The same results keep their date when they are
    /// younger than `remembered`.
    void keep(const QString &key, const SavedResults &saved, Seconds remembered, Date now);
    /// Writes what was kept: the file; or once that is full, the database, and the file now and
    /// then.
    void save(Date now);
    /// Writes the file if it is not up to date, for the end of the program.
    void finish(Date now);

private:
    struct Entry {
        Date fetchedAt;
        /// A SavedResults.
        QByteArray json;
        /// As a run before this one has left it, which may have been killed: the database may have
        /// a newer one.
        bool isFromFile = false;
        bool isInDatabase = false;
    };
    using Entries = std::map<QString, Entry>;

    void load(Date now);
    [[nodiscard]] bool isTooMuch() const;
    /// Takes out what the file is not to hold, the oldest.
    [[nodiscard]] Entries takeExcess(Date now);
    /// Adds what the database does not have yet; false when it fails.
    [[nodiscard]] bool saveRows(const Entries &excess, Date now);
    void writeFile(Date now);
    [[nodiscard]] bool mayWrite() const;

    QString m_path;
    DataFolderLock *m_lock;
    RankedAppsLimits m_limits;
    RankedAppsDatabase m_database;
    bool m_isLoaded = false;
    Entries m_entries;
    /// Not in the file as they are.
    bool m_isChanged = false;
    std::optional<Date> m_written;
};

} // namespace veltrix
