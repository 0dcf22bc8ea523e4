// SPDX-License-Identifier: GPL-3.0-or-later
// The ranked results that do not fit into their file.
#pragma once

#include "effects/sqlite_database.h"
#include "model/saved_results.h"

#include <optional>
#include <set>
#include <vector>

namespace veltrix
{

/// Results of that age and older are not taken over from one start to the next: seven days.
inline constexpr Seconds rankedAppsLifetime{604'800};
/// For so long results may be served in the place of a search, whole: half an hour.
inline constexpr Seconds rankedAppsFreshness{1'800};

/// The most that are kept of a keyword, and read again.
inline constexpr size_t mostRankedApps = 100;

/// What a list of apps shows and what tracks one of them; details are looked up when they are
/// wanted. Most of a listing is its description.
[[nodiscard]] QList<ITunesAppResult> listedResults(const QList<ITunesAppResult> &results);

/// Ranked results by key in a database, one row each, packed. For half an hour all of them is
/// there, and after that what a list of apps shows. A cache: what is older than its lifetime goes,
/// and when it grows too large, the oldest; whatever fails is a miss and a line on the error
/// output, and a file that is damaged or not its own is begun anew. Nothing here throws.
class RankedAppsDatabase
{
public:
    struct Row {
        QString key;
        SavedResults saved;
    };

    /// `sizeLimit`: bytes of the file.
    RankedAppsDatabase(QString path, qint64 sizeLimit);

    /// There is a file.
    [[nodiscard]] bool exists() const;
    [[nodiscard]] std::optional<SavedResults> find(const QString &key);
    /// Adds rows in the place of those with the same keys, making the file when there is none.
    /// False when nothing was added.
    [[nodiscard]] bool insert(const std::vector<Row> &rows, Date now);

private:
    [[nodiscard]] SqliteDatabase open() const;
    /// False when it fails, which is said then.
    template <class Work>
    bool guarded(Work &&work);
    void sweep(SqliteDatabase &database, Date now);
    void shrink(SqliteDatabase &database) const;
    /// Says what went wrong, once for each reason, and removes what cannot be used.
    void giveUp(const Error &error, bool isUnusable);

    QString m_path;
    qint64 m_sizeLimit;
    std::optional<Date> m_swept;
    std::set<QString> m_said;
};

} // namespace veltrix
