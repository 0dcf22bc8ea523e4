// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/folder_run.h"

#include "app/stored_preferences.h"
#include "app/user_files.h"
#include "effects/data_locations.h"
#include "ui/dashboard/history_columns.h"
#include "ui/dashboard/keyword_export.h"
#include "ui_kit/text/csv.h"

#include <QDeadlineTimer>

#include <algorithm>

namespace veltrix
{

namespace
{

/// How long the process that has the folder may take to take a wish.
constexpr std::chrono::milliseconds ownersPatience{5000};

} // namespace

ExportTables windowTables()
{
    return {
        .keywordsOfApp = sortedKeywords,
        .table = keywordTable,
        .historyHeader =
            [](const ASOStore &store, const QList<QUuid> &appIds) {
                return HistoryColumns(store, appIds).titled(keywordHistoryHeader());
            },
        .history =
            [](const ASOStore &store, const QList<QUuid> &appIds, const TrackedKeyword &keyword,
               const std::vector<SharedSnapshot> &measurements,
               const std::vector<KeywordStandings> &standings) {
                return HistoryColumns(store, appIds)
                    .extended(keywordHistory(keyword, measurements), keyword, measurements,
                              standings);
            },
        .toCsv = toCsvRows,
    };
}

QString busyText(const QString &folder)
{
    return QStringLiteral("Veltrix is already running on “") + folder +
           QStringLiteral("” and does not answer.");
}

OwnData::OwnData(const Bundle &bundle, const QString &folder, DataFolderLock &lock)
    : m_settings((clearLeftovers(folder, cacheFolder()), storedSettings())),
      m_services(bundle, {folder, cacheFolder(), &lock}, m_settings),
      m_telling(m_services.store(), RankTelling::pathIn(folder),
                [settings = m_settings] { return StoredPreferences(*settings).digestChoice(); })
{
    m_services.store().open();
}

OwnRun::OwnRun(ASOStore &store, RankTelling &telling, DataFolderLock &lock)
    : m_guests(store, telling, windowTables())
{
    QObject::connect(&m_ends, &EndSignals::endRequested, &m_loop, [this] { stop(End::Signal); });
    // The window goes first.
    lock.makeRoomWhenAsked();
    QObject::connect(&lock, &DataFolderLock::raiseRequested, &m_loop,
                     [this] { stop(End::MakesRoom); });
    QObject::connect(&lock, &DataFolderLock::wishReceived, &m_loop,
                     [this](FolderGuest *guest) { m_guests.serve(guest); });
}

void OwnRun::stop(End reason)
{
    if (m_end == End::Done)
        m_end = reason;
    m_stop.request_stop();
}

OwnRun::End OwnRun::run(Work work)
{
    m_tasks.own(workAndServe(std::move(work)));
    if (!m_isDone)
        m_loop.exec();
    return m_end;
}

Task<void> OwnRun::workAndServe(Work work)
{
    try {
        co_await work(m_stop.get_token());
        co_await m_guests.allServed(m_stop.get_token());
    } catch (const Cancelled &) {
        // Whoever is not served goes on by itself.
    }
    m_isDone = true;
    m_loop.quit();
}

std::unique_ptr<FolderOwner> ownerOf(DataFolderLock &lock, const QByteArray &wish,
                                     std::chrono::milliseconds patience)
{
    constexpr std::chrono::milliseconds look{500};
    const QDeadlineTimer deadline(patience);
    std::unique_ptr<FolderOwner> owner;
    do {
        if (lock.acquireWithin(std::min(patience, look)) != DataFolderLock::Outcome::HeldByAnother)
            return nullptr;
        owner = lock.askOwner(wish, ownersPatience);
    } while (!owner && !deadline.hasExpired());
    return owner;
}

OwnersEnd listenTo(FolderOwner &owner, const std::function<bool(const QByteArray &line)> &take)
{
    QEventLoop loop;
    OwnersEnd end = OwnersEnd::Left;
    QObject::connect(&owner, &FolderOwner::answered, &loop, [&](const QByteArray &line) {
        if (end == OwnersEnd::Left && take(line))
            end = OwnersEnd::Told;
    });
    QObject::connect(&owner, &FolderOwner::ended, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    const EndSignals ends;
    QObject::connect(&ends, &EndSignals::endRequested, &loop, [&] {
        if (end == OwnersEnd::Left)
            end = OwnersEnd::Signal;
        loop.quit();
    });
    owner.listen();
    loop.exec();
    return end;
}

} // namespace veltrix
