// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/export_run.h"

#include "headless/export_json.h"
#include "headless/keyword_choice.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace veltrix
{

namespace
{

/// How many measurements are in memory at a time.
constexpr size_t pageSize = 128;

} // namespace

QByteArray ExportRun::JsonArray::next(const QByteArray &element)
{
    return (std::exchange(m_isEmpty, false) ? "[\n" : ",\n") + element;
}

QByteArray ExportRun::JsonArray::end() const
{
    return m_isEmpty ? "[]\n" : "\n]\n";
}

ExportRun::ExportRun(ASOStore &store, ExportTables tables, ExportReceiver &receiver)
    : m_store(store), m_tables(std::move(tables)), m_receiver(receiver)
{
}

Task<void> ExportRun::run(ExportWish wish, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    requireState();
    m_array = {};
    if (wish.history)
        co_await giveHistory(wish, stop);
    else
        co_await giveTable(wish, stop);
}

void ExportRun::requireState() const
{
    const auto problem = m_store.persistenceProblem();
    // A file that was damaged leaves the store empty.
    if (m_store.isStateRead() && !(problem && m_store.apps().isEmpty()))
        return;
    throw Error(problem ? problem->text : QStringLiteral("What is tracked has not been read."));
}

/// App by app, as the window lists them; a keyword without an app is in no list.
std::vector<ExportRun::AppsKeyword> ExportRun::wishedKeywords(const ExportWish &wish) const
{
    QSet<QUuid> chosen;
    for (const TrackedKeyword &keyword : chosenKeywords(m_store, {wish.apps, wish.storefronts}))
        chosen.insert(keyword.id);
    std::vector<AppsKeyword> wished;
    for (const AppProfile &app : m_store.apps()) {
        for (const TrackedKeyword &keyword : m_tables.keywordsOfApp(m_store, app.id)) {
            if (chosen.contains(keyword.id))
                wished.push_back({app, keyword});
        }
    }
    return wished;
}

void ExportRun::requireWholeRanks(const std::vector<AppsKeyword> &keywords) const
{
    const bool areWhole = std::ranges::all_of(keywords, [this](const AppsKeyword &one) {
        return m_store.rankDays(one.keyword.id).isWhole();
    });
    if (!areWhole) {
        throw Error(QStringLiteral("Older measurements could not be read, so changes and best "
                                   "ranks are not known."));
    }
}

QByteArray ExportRun::csvTable(const std::vector<AppsKeyword> &keywords) const
{
    QList<QUuid> ids;
    for (const AppsKeyword &one : keywords)
        ids.append(one.keyword.id);
    return m_tables.toCsv(m_tables.table(m_store, ids));
}

QByteArray ExportRun::jsonTable(const std::vector<AppsKeyword> &keywords) const
{
    JsonArray array;
    QByteArray text;
    for (const auto &[app, keyword] : keywords)
        text += array.next(keywordObject(m_store, app, keyword));
    return text + array.end();
}

Task<void> ExportRun::giveTable(ExportWish wish, std::stop_token stop)
{
    // Wrong use is told before anything is read.
    (void)wishedKeywords(wish);
    co_await m_store.rankDaysRead(stop);
    requireWholeRanks(wishedKeywords(wish));
    co_await m_store.requireAnnotations(stop);
    const std::vector<AppsKeyword> keywords = wishedKeywords(wish);
    // By itself: in the call that is awaited, GCC 12 destroys what a condition makes twice.
    QByteArray text = wish.json ? jsonTable(keywords) : csvTable(keywords);
    co_await m_receiver.take(std::move(text), stop);
}

QByteArray ExportRun::rowsOf(const AppsKeyword &one, const QList<QUuid> &appIds,
                             const std::vector<SharedSnapshot> &measurements,
                             const std::vector<KeywordStandings> &standings, bool json)
{
    if (!json)
        return m_tables.toCsv(
            m_tables.history(m_store, appIds, one.keyword, measurements, standings));
    QByteArray rows;
    for (const SharedSnapshot &snapshot : measurements)
        rows += m_array.next(measurementObject(m_store, one.app, *snapshot, standings));
    return rows;
}

Task<void> ExportRun::giveHistory(ExportWish wish, std::stop_token stop)
{
    const std::vector<AppsKeyword> keywords = wishedKeywords(wish);
    QList<QUuid> appIds;
    for (const AppsKeyword &one : keywords) {
        if (!appIds.contains(one.app.id))
            appIds.append(one.app.id);
    }
    QByteArray header =
        wish.json ? QByteArray() : m_tables.toCsv(m_tables.historyHeader(m_store, appIds));
    co_await m_receiver.take(std::move(header), stop);
    for (const AppsKeyword &one : keywords) {
        std::optional<PageStart> next = PageStart{.size = pageSize};
        const std::vector<KeywordStandings> standings =
            co_await m_store.standings(one.keyword.id, stop);
        co_await m_store.requireAnnotations(stop);
        // One that is removed meanwhile ends there.
        while (next && m_store.trackedKeyword(one.keyword.id)) {
            const MeasurementPage page = co_await m_store.measurements(one.keyword.id, *next, stop);
            QByteArray rows = rowsOf(one, appIds, page.measurements, standings, wish.json);
            co_await m_receiver.take(std::move(rows), stop);
            next = page.nextDay ? std::optional(PageStart{*page.nextDay, pageSize}) : std::nullopt;
        }
    }
    QByteArray end = wish.json ? m_array.end() : QByteArray();
    co_await m_receiver.take(std::move(end), stop);
}

} // namespace veltrix
