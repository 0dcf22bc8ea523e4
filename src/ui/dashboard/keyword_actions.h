// SPDX-License-Identifier: GPL-3.0-or-later
// What can be done with keywords: add, import, refresh, copy, export, remove.
#pragma once

#include "effects/autocomplete_suggesting.h"
#include "effects/task_scope.h"
#include "store/aso_store.h"
#include "ui/dashboard/keyword_plan.h"
#include "ui/dashboard/whole_history_export.h"
#include "ui_kit/widgets/file_exchange.h"

#include <QObject>

#include <functional>
#include <memory>

namespace veltrix
{

class KeywordTableModel;
class MeasuringStatus;

/// The operations behind the dashboard's menus and keys. What happened is said in the status line;
/// nothing is asked here.
class KeywordActions final : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive this; without `suggestions` nothing is suggested.
    KeywordActions(ASOStore &store, KeywordTableModel &model, FileExchange &files,
                   MeasuringStatus &status, std::shared_ptr<AutocompleteSuggesting> suggestions,
                   QObject *parent = nullptr);
    ~KeywordActions() override;

    /// What became of keywords that were to be added.
    struct Addition {
        /// What to tell the user when nothing could be tried: "Select an app first", or what the
        /// store says.
        std::optional<QString> problem;
        AdmissionCount count;
    };

    /// Adds what the lists plan to the app, with one save, and queues it for measuring. Those that
    /// are new get `tags`, and the tags that the file gives them. What of `file` was refused is
    /// told through imported() as well.
    Addition add(std::optional<QUuid> appId, const KeywordPlan &file, const KeywordPlan &typed,
                 const QStringList &tags);
    /// What the App Store suggests to whoever types a keyword; may be null.
    [[nodiscard]] const std::shared_ptr<AutocompleteSuggesting> &suggestions() const
    {
        return m_suggestions;
    }
    [[nodiscard]] Clock &clock() const { return m_store.clock(); }
    /// Tells what a plan starts from.
    [[nodiscard]] KeywordPlanner planner(std::optional<QUuid> appId) const;
    /// The tags of the app's keywords.
    [[nodiscard]] QStringList knownTags(QUuid appId) const { return m_store.allTags(appId); }
    /// `done` is not called when the user cancels.
    void chooseFile(QWidget *dialogParent,
                    std::function<void(const FileExchange::OpenedFile &file)> done);
    [[nodiscard]] FileExchange::OpenedFile readFile(const QString &path) const;

    /// Measures the keywords one after another. Of one that cannot be measured it says why.
    void refresh(const QList<QUuid> &ids);

    void copyRefusals(const QList<RefusedLine> &refused) const;
    /// The keywords as a table, in their order.
    void exportKeywords(QWidget *dialogParent, const QString &appName, const QList<QUuid> &ids);
    void exportAllApps(QWidget *dialogParent);
    void exportHistory(QWidget *dialogParent, QUuid appId, const QString &appName);

Q_SIGNALS:
    void imported(QUuid appId, const AdmissionCount &count, const QList<RefusedLine> &refused);

private:
    void sayProblem(const QString &problem);
    void tagAdded(const QList<TrackedKeyword> &added, const KeywordPlan &file,
                  const QStringList &tags);
    Task<void> refreshRows(QList<QUuid> ids, std::stop_token stop);
    /// Corrects what was said of added keywords, should they not be saved.
    Task<void> sayWhenUnsaved(AdmissionCount count, std::stop_token stop);
    void saveCsv(QWidget *dialogParent, const QString &title, const QString &fileName,
                 const QList<QStringList> &table);

    ASOStore &m_store;
    KeywordTableModel &m_model;
    FileExchange &m_files;
    MeasuringStatus &m_status;
    std::shared_ptr<AutocompleteSuggesting> m_suggestions;
    WholeHistoryExport m_historyExport;
    TaskScope m_tasks;
};

} // namespace veltrix
