// SPDX-License-Identifier: GPL-3.0-or-later
// Reading chosen keywords out of the store as one text, piece by piece.
#pragma once

#include "effects/task_scope.h"
#include "headless/export_messages.h"
#include "store/aso_store.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <functional>
#include <vector>

namespace veltrix
{

/// The tables of the window, which this floor does not see.
struct ExportTables {
    /// The keywords of an app in their order.
    std::function<QList<TrackedKeyword>(const ASOStore &store, QUuid appId)> keywordsOfApp;
    /// One line a keyword, below a header line.
    std::function<QList<QStringList>(const ASOStore &store, const QList<QUuid> &ids)> table;
    /// Of the history of keywords of these apps.
    std::function<QList<QStringList>(const ASOStore &store, const QList<QUuid> &appIds)>
        historyHeader;
    /// Measurements of a keyword of one of them, one line each, with where others stood then.
    std::function<QList<QStringList>(const ASOStore &store, const QList<QUuid> &appIds,
                                     const TrackedKeyword &keyword,
                                     const std::vector<SharedSnapshot> &measurements,
                                     const std::vector<KeywordStandings> &standings)>
        history;
    std::function<QByteArray(const QList<QStringList> &rows)> toCsv;
};

/// Takes the text.
class ExportReceiver
{
public:
    ExportReceiver() = default;
    virtual ~ExportReceiver() = default;
    ExportReceiver(const ExportReceiver &) = delete;
    ExportReceiver &operator=(const ExportReceiver &) = delete;

    /// Ends when there is room for the next piece. Throws an Error when there will be none.
    virtual Task<void> take(QByteArray piece, std::stop_token stop) = 0;
};

/// Gives the wished text to a receiver: UTF-8, no more than a page of measurements at a time.
class ExportRun
{
public:
    /// `store` and `receiver` outlive this.
    ExportRun(ASOStore &store, ExportTables tables, ExportReceiver &receiver);

    /// Throws UnknownChoice, and other Errors when something cannot be read: what was given then is
    /// not all.
    Task<void> run(ExportWish wish, std::stop_token stop);

private:
    struct AppsKeyword {
        AppProfile app;
        TrackedKeyword keyword;
    };
    /// The elements of one array, one a line.
    class JsonArray
    {
    public:
        /// An element with what stands before it.
        QByteArray next(const QByteArray &element);
        [[nodiscard]] QByteArray end() const;

    private:
        bool m_isEmpty = true;
    };

    [[nodiscard]] std::vector<AppsKeyword> wishedKeywords(const ExportWish &wish) const;
    void requireState() const;
    void requireWholeRanks(const std::vector<AppsKeyword> &keywords) const;
    [[nodiscard]] QByteArray csvTable(const std::vector<AppsKeyword> &keywords) const;
    [[nodiscard]] QByteArray jsonTable(const std::vector<AppsKeyword> &keywords) const;
    /// `appIds` are those of the whole export.
    [[nodiscard]] QByteArray rowsOf(const AppsKeyword &one, const QList<QUuid> &appIds,
                                    const std::vector<SharedSnapshot> &measurements,
                                    const std::vector<KeywordStandings> &standings, bool json);
    Task<void> giveTable(ExportWish wish, std::stop_token stop);
    Task<void> giveHistory(ExportWish wish, std::stop_token stop);

    ASOStore &m_store;
    ExportTables m_tables;
    ExportReceiver &m_receiver;
    JsonArray m_array;
    TaskScope m_tasks;
};

} // namespace veltrix
