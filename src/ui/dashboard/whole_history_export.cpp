// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/whole_history_export.h"

#include "ui/dashboard/history_columns.h"
#include "ui/dashboard/keyword_export.h"
#include "ui/measuring/measuring_status.h"
#include "ui_kit/text/csv.h"
#include "ui_kit/text/shown_text.h"

#include <QLocale>
#include <QPointer>

#include <memory>

namespace veltrix
{

WholeHistoryExport::WholeHistoryExport(ASOStore &store, FileExchange &files,
                                       MeasuringStatus &status, QObject *parent)
    : QObject(parent), m_store(store), m_files(files), m_status(status)
{
    connect(&m_status, &MeasuringStatus::otherStopRequested, this, &WholeHistoryExport::stop);
}

WholeHistoryExport::~WholeHistoryExport() = default;

void WholeHistoryExport::start(QWidget *dialogParent, const QList<TrackedKeyword> &keywords,
                               const QString &fileName)
{
    const FileExchange::Request request{tr("Export History"), fileName, tr("CSV files (*.csv)")};
    m_files.choosePlace(
        dialogParent, request,
        [self = QPointer(this), keywords](const QString &path, std::shared_ptr<FileOutput> file) {
            if (!self)
                return;
            if (self->m_tasks.runningTasks() > 0) {
                self->m_status.say(tr("Another export is still being written."),
                                   StatusBar::Tone::Error);
                return;
            }
            self->m_tasks.own(self->write(keywords, path, std::move(file), self->m_tasks.token()));
        });
}

Task<void> WholeHistoryExport::write(QList<TrackedKeyword> keywords, QString path,
                                     std::shared_ptr<FileOutput> file, std::stop_token stop)
{
    std::optional<QString> missing;
    std::optional<QString> problem;
    m_status.say(QString());
    try {
        QList<QUuid> apps;
        for (const TrackedKeyword &keyword : keywords) {
            if (!apps.contains(keyword.appId))
                apps.append(keyword.appId);
        }
        const HistoryColumns columns(m_store, apps);
        FileOutput::Piece header = [columns] {
            return toCsvFile(columns.titled(keywordHistoryHeader()));
        };
        co_await file->write(std::move(header), stop);
        for (qsizetype i = 0; i < keywords.size(); ++i) {
            showProgress(i, keywords.size());
            const auto reason = co_await writeKeyword(keywords[i], columns, file, stop);
            if (!missing)
                missing = reason;
        }
        showProgress(keywords.size(), keywords.size());
        co_await file->place(stop);
    } catch (const Error &error) {
        throwIfStopped(stop);
        problem = error.description();
    }
    m_status.showOtherWork(std::nullopt);
    const QString name = inSentence(path.section(u'/', -1));
    if (problem)
        m_status.say(*problem, StatusBar::Tone::Error);
    else if (missing)
        m_status.say(tr("Exported to %1 without older measurements. %2").arg(name, *missing),
                     StatusBar::Tone::Error);
    else
        m_status.say(tr("Exported to %1.").arg(name));
}

Task<std::optional<QString>> WholeHistoryExport::writeKeyword(TrackedKeyword keyword,
                                                              HistoryColumns columns,
                                                              std::shared_ptr<FileOutput> file,
                                                              std::stop_token stop)
{
    std::optional<QString> missing;
    // Shared by the pages.
    auto standings = std::make_shared<const std::vector<KeywordStandings>>();
    try {
        auto known = co_await m_store.standings(keyword.id, stop);
        standings = std::make_shared<const std::vector<KeywordStandings>>(std::move(known));
    } catch (const Error &error) {
        throwIfStopped(stop);
        missing = error.description();
    }
    std::optional<PageStart> next = PageStart();
    // One that is removed meanwhile ends there.
    while (next && m_store.trackedKeyword(keyword.id)) {
        MeasurementPage page;
        try {
            page = co_await m_store.measurements(keyword.id, *next, stop);
        } catch (const Error &error) {
            throwIfStopped(stop);
            missing = error.description();
            page.measurements = m_store.keywordSnapshots(keyword.id);
            std::erase_if(page.measurements, [&](const SharedSnapshot &snapshot) {
                return utcDay(snapshot->fetchedAt) < next->firstDay;
            });
        }
        next = page.nextDay ? std::optional(PageStart{.firstDay = *page.nextDay}) : std::nullopt;
        FileOutput::Piece rows = [keyword, columns, standings,
                                  measurements = std::move(page.measurements)] {
            return toCsvRows(columns.extended(keywordHistory(keyword, measurements), keyword,
                                              measurements, *standings));
        };
        co_await file->write(std::move(rows), stop);
    }
    co_return missing;
}

void WholeHistoryExport::showProgress(qsizetype done, qsizetype total)
{
    const QString text = done < total
                             ? tr("Exporting the history · keyword %1 of %2")
                                   .arg(QLocale().toString(done + 1), QLocale().toString(total))
                             : tr("Saving the exported history…");
    m_status.showOtherWork(StatusBar::Work{text, total > 0 ? double(done) / double(total) : 1});
}

void WholeHistoryExport::stop()
{
    if (m_tasks.runningTasks() == 0)
        return;
    m_tasks.stop();
    m_status.showOtherWork(std::nullopt);
    m_status.say(tr("Export stopped. No file was written."));
}

} // namespace veltrix
