// SPDX-License-Identifier: GPL-3.0-or-later
// What the user is told after a run without a window, and was told before.
#pragma once

#include "effects/file_thread.h"
#include "effects/task_scope.h"
#include "headless/rank_notice.h"
#include "model/tracked_keyword.h"

#include <functional>

namespace veltrix
{

class ASOStore;

/// A keyword's rank when it was told last.
struct ToldRank {
    QUuid keyword;
    /// UTC day.
    std::int64_t day = 0;
    /// Absent when the app was not ranked.
    std::optional<std::int64_t> rank;
    /// It counted as being in the top 10.
    bool isInTopTen = false;

    bool operator==(const ToldRank &) const = default;
};

template <>
inline constexpr auto fieldsOf<ToldRank> = std::tuple{
    field("keyword", &ToldRank::keyword),
    field("day", &ToldRank::day),
    field("rank", &ToldRank::rank),
    field("isInTopTen", &ToldRank::isInTopTen, Presence::Lenient),
};

struct ToldRanks {
    QList<ToldRank> ranks;

    bool operator==(const ToldRanks &) const = default;
};

template <>
inline constexpr auto fieldsOf<ToldRanks> = std::tuple{
    field("ranks", &ToldRanks::ranks),
};

/// Tells every change once. A rank is compared with the one that was told last: so a second run of
/// a day tells only what is new since the first, and what a run that failed had found is told by
/// the next. A rank that was told more than a week ago, or never, counts as little as none: then it
/// is the check before that is compared with.
class RankTelling
{
public:
    /// Days until a rank that was told is forgotten.
    static constexpr std::int64_t longestMemory = 7;

    /// `store` outlives this; `path` is the file that remembers; `choice` says what is told now.
    RankTelling(ASOStore &store, QString path, std::function<DigestChoice()> choice);

    /// The file in a data folder.
    static QString pathIn(const QString &stateFolder);

    /// What is to be told of these keywords, which were measured. From then on it was. None also
    /// when that cannot be remembered: better nothing than the same each day.
    Task<std::optional<RankNotice>> tell(QList<TrackedKeyword> keywords, std::stop_token stop);

private:
    ASOStore &m_store;
    QString m_path;
    std::function<DigestChoice()> m_choice;
    FileThread m_files;
    TaskScope m_tasks;
};

} // namespace veltrix
