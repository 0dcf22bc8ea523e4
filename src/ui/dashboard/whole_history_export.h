// SPDX-License-Identifier: GPL-3.0-or-later
// All that was ever measured of an app's keywords, as a file.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"
#include "ui_kit/widgets/file_exchange.h"

#include <QObject>

namespace veltrix
{

class HistoryColumns;
class MeasuringStatus;

/// Writes such files a page at a time, so that a history of any length needs no more memory than a
/// short one. The status line tells how far it is, and can stop it; then there is no file.
class WholeHistoryExport final : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive this.
    WholeHistoryExport(ASOStore &store, FileExchange &files, MeasuringStatus &status,
                       QObject *parent = nullptr);
    ~WholeHistoryExport() override;

    /// Asks where to save, and writes the keywords there in their order. One at a time.
    void start(QWidget *dialogParent, const QList<TrackedKeyword> &keywords,
               const QString &fileName);

private:
    Task<void> write(QList<TrackedKeyword> keywords, QString path, std::shared_ptr<FileOutput> file,
                     std::stop_token stop);
    /// Gives the reason when days are missing because the history cannot be read.
    Task<std::optional<QString>> writeKeyword(TrackedKeyword keyword, HistoryColumns columns,
                                              std::shared_ptr<FileOutput> file,
                                              std::stop_token stop);
    void showProgress(qsizetype done, qsizetype total);
    void stop();

    ASOStore &m_store;
    FileExchange &m_files;
    MeasuringStatus &m_status;
    TaskScope m_tasks;
};

} // namespace veltrix
