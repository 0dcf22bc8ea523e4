// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/rank_telling.h"

#include "effects/atomic_file.h"
#include "effects/file_error.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "store/aso_store.h"

#include <QHash>

namespace veltrix
{

namespace
{

using ToldByKeyword = QHash<QUuid, ToldRank>;

ToldByKeyword read(const QString &path)
{
    ToldByKeyword told;
    try {
        for (const ToldRank &rank : fromJson<ToldRanks>(readWholeFile(path)).ranks)
            told.insert(rank.keyword, rank);
    } catch (const Error &) {
        // Nothing was told, or nobody knows any more what.
    }
    return told;
}

/// Of keywords that are gone there is nothing to tell any more.
QByteArray encoded(const ToldByKeyword &told, const ASOStore &store)
{
    ToldRanks all;
    for (const TrackedKeyword &keyword : store.trackedKeywords()) {
        if (const auto found = told.constFind(keyword.id); found != told.cend())
            all.ranks.append(*found);
    }
    return toJson(all);
}

/// None when there is nothing to compare with.
std::optional<RankChange> changeOf(const RankDays &days, const std::optional<ToldRank> &told)
{
    const auto now = days.latest();
    RankChange change;
    change.now = now->rank;
    if (told && now->day - told->day <= RankTelling::longestMemory) {
        change.before = told->rank;
        change.wasInTopTen = told->isInTopTen;
        change.isInTopTen = isInTopTen(change.now, change.wasInTopTen);
        const auto best = days.best();
        // One that a run had found which told nothing is new all the same.
        const bool isStillBest =
            days.isWhole() && now->rank && best && best->rank == now->rank && best->day > told->day;
        change.isNewBest = told->day == now->day ? days.isNewBest() && now->rank != told->rank
                                                 : days.isNewBest() || isStillBest;
        return change;
    }
    const auto before = days.before();
    if (!before)
        return std::nullopt;
    change.before = before->rank;
    change.wasInTopTen = isInTopTen(change.before, false);
    change.isInTopTen = isInTopTen(change.now, change.wasInTopTen);
    change.isNewBest = days.isNewBest();
    return change;
}

} // namespace

RankTelling::RankTelling(ASOStore &store, QString path, std::function<DigestChoice()> choice)
    : m_store(store), m_path(std::move(path)), m_choice(std::move(choice))
{
}

QString RankTelling::pathIn(const QString &stateFolder)
{
    return stateFolder + QStringLiteral("/told_ranks_v1.json");
}

Task<std::optional<RankNotice>> RankTelling::tell(QList<TrackedKeyword> keywords,
                                                  std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    co_await m_store.rankDaysRead(stop);
    std::function<ToldByKeyword()> reading = [path = m_path] {
        return read(path);
    };
    ToldByKeyword told = co_await m_files.run(std::move(reading), stop);
    QList<RankChange> changes;
    for (const TrackedKeyword &keyword : keywords) {
        const RankDays &days = m_store.rankDays(keyword.id);
        if (!days.isCheckedToday())
            continue;
        std::optional<ToldRank> last;
        if (const auto found = told.constFind(keyword.id); found != told.cend())
            last = *found;
        const RankCheck now = *days.latest();
        auto change = changeOf(days, last);
        told.insert(keyword.id, {keyword.id, now.day, now.rank,
                                 change ? change->isInTopTen : isInTopTen(now.rank, false)});
        if (!change)
            continue;
        change->keyword = keyword.keyword;
        change->storefront = keyword.country;
        if (const auto app = m_store.app(keyword.appId))
            change->app = app->appName;
        changes.append(std::move(*change));
    }
    std::function<Done()> writing = [path = m_path, content = encoded(told, m_store)] {
        writeFileAtomically(path, content);
        return Done();
    };
    try {
        co_await m_files.run(std::move(writing), stop);
    } catch (const FileError &) {
        co_return std::nullopt;
    }
    co_return noticeOf(changes, m_choice());
}

} // namespace veltrix
