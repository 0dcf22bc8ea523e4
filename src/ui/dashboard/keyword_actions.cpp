// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_actions.h"

#include "model/text_folding.h"
#include "ui/dashboard/keyword_export.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/measuring/measuring_status.h"
#include "ui_kit/text/csv.h"
#include "ui_kit/text/file_name.h"
#include "ui_kit/text/shown_text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHash>
#include <QMap>
#include <QPointer>
#include <QSet>

#include <utility>

namespace veltrix
{

KeywordActions::KeywordActions(ASOStore &store, KeywordTableModel &model, FileExchange &files,
                               MeasuringStatus &status,
                               std::shared_ptr<AutocompleteSuggesting> suggestions, QObject *parent)
    : QObject(parent), m_store(store), m_model(model), m_files(files), m_status(status),
      m_suggestions(std::move(suggestions)), m_historyExport(store, files, status)
{
}

KeywordActions::~KeywordActions() = default;

void KeywordActions::sayProblem(const QString &problem)
{
    m_status.say(problem, StatusBar::Tone::Error);
}

KeywordActions::Addition KeywordActions::add(std::optional<QUuid> appId, const KeywordPlan &file,
                                             const KeywordPlan &typed, const QStringList &tags)
{
    if (!appId || !m_store.app(*appId)) {
        const QString problem = tr("Select an app first");
        m_status.sayWithoutApp(problem);
        return {problem, {}};
    }
    QSet<QUuid> before;
    for (const TrackedKeyword &keyword : m_store.keywordsOfApp(*appId))
        before.insert(keyword.id);
    KeywordAdmission admission;
    try {
        admission = m_store.addTrackedKeywords(*appId, file.keywords + typed.keywords);
    } catch (const StoreError &error) {
        return {error.description(), {}};
    }
    QList<TrackedKeyword> added = admission.kept;
    added.removeIf([&before](const TrackedKeyword &kept) { return before.contains(kept.id); });
    tagAdded(added, file, tags);
    AdmissionCount count(admission);
    const QList<RefusedLine> refused = file.refused + file.refusedTags;
    count.refused += refused.size() + typed.refused.size();
    if (file.entered > 0)
        Q_EMIT imported(*appId, count, refused);
    // Said before the queue starts: should it fail at once, its own message comes after this one.
    m_status.say(admissionStatus(count, !m_store.hasUnsavedChange()));
    m_store.queueKeywordRefreshes(admission.kept);
    m_tasks.own(sayWhenUnsaved(count, m_tasks.token()));
    return {std::nullopt, count};
}

void KeywordActions::tagAdded(const QList<TrackedKeyword> &added, const KeywordPlan &file,
                              const QStringList &tags)
{
    const auto keyOf = [](const QString &keyword, const QString &country) {
        return std::pair(foldedCase(keyword.trimmed()), country.toUpper());
    };
    QHash<std::pair<QString, QString>, QStringList> ofFile;
    for (const auto &[keyword, its] : file.tagged)
        ofFile[keyOf(keyword.keyword, keyword.country)] += its;
    QMap<QString, QList<QUuid>> tagged;
    for (const TrackedKeyword &keyword : added) {
        for (const QString &tag : tags + ofFile.value(keyOf(keyword.keyword, keyword.country)))
            tagged[tag].append(keyword.id);
    }
    try {
        for (auto tag = tagged.cbegin(); tag != tagged.cend(); ++tag)
            m_store.setTag(tag.value(), tag.key(), true);
    } catch (const StoreError &error) {
        sayProblem(error.description());
    }
}

Task<void> KeywordActions::sayWhenUnsaved(AdmissionCount count, std::stop_token stop)
{
    const bool wasUnsaved = m_store.hasUnsavedChange();
    co_await m_store.saved(stop);
    if (m_store.hasUnsavedChange() && !wasUnsaved)
        m_status.say(admissionStatus(count, false));
}

KeywordPlanner KeywordActions::planner(std::optional<QUuid> appId) const
{
    const auto app = appId ? m_store.app(*appId) : std::nullopt;
    return app ? KeywordPlanner(m_store.keywordsOfApp(app->id), app->appName)
               : KeywordPlanner(QList<TrackedKeyword>());
}

void KeywordActions::chooseFile(QWidget *dialogParent,
                                std::function<void(const FileExchange::OpenedFile &)> done)
{
    const FileExchange::Request request{
        tr("Import Keywords"), {}, tr("Text and CSV files (*.txt *.csv *.tsv);;All files (*)")};
    m_files.open(dialogParent, request, std::move(done));
}

FileExchange::OpenedFile KeywordActions::readFile(const QString &path) const
{
    return m_files.read(path);
}

void KeywordActions::refresh(const QList<QUuid> &ids)
{
    QList<QUuid> measurable;
    QStringList problems;
    for (const QUuid &id : ids) {
        const auto keyword = m_store.trackedKeyword(id);
        const auto reason = keyword ? m_store.unmeasurableReason(*keyword) : std::nullopt;
        if (reason)
            problems.append(unmeasurableSentence(keyword->keyword, *reason));
        else
            measurable.append(id);
    }
    if (!problems.isEmpty())
        sayProblem(
            problems.size() == 1
                ? problems.constFirst()
                : tr("%L1 keywords cannot be measured. Their rows say why.").arg(problems.size()));
    if (!measurable.isEmpty())
        m_tasks.own(refreshRows(measurable, m_tasks.token()));
}

Task<void> KeywordActions::refreshRows(QList<QUuid> ids, std::stop_token stop)
{
    // However it ends, no row stays marked.
    struct Marked {
        KeywordTableModel &model;
        QList<QUuid> ids;
        Marked(KeywordTableModel &table, QList<QUuid> keywords)
            : model(table), ids(std::move(keywords))
        {
            for (const QUuid &id : std::as_const(ids))
                model.setRefreshing(id, true);
        }
        Marked(const Marked &) = delete;
        Marked &operator=(const Marked &) = delete;
        ~Marked()
        {
            for (const QUuid &id : std::as_const(ids))
                model.setRefreshing(id, false);
        }
    };
    const Marked marked(m_model, ids);
    const bool isOne = ids.size() == 1;
    KeywordRefreshes::RowEnded ended = [this, isOne](const TrackedKeyword &keyword,
                                                     const std::optional<QString> &problem) {
        m_model.setRefreshing(keyword.id, false);
        if (!problem)
            m_status.say(tr("“%1” is up to date.").arg(inSentence(keyword.keyword)));
        else
            sayProblem(isOne ? *problem
                             : tr("“%1”: %2").arg(inSentence(keyword.keyword), *problem));
    };
    KeywordRefreshes::Rows rows{.ids = ids};
    co_await m_store.refreshes().refreshRows(std::move(rows), std::move(ended), stop);
}

void KeywordActions::copyRefusals(const QList<RefusedLine> &refused) const
{
    QGuiApplication::clipboard()->setText(toTabSeparated(refusalTable(refused)));
}

void KeywordActions::exportKeywords(QWidget *dialogParent, const QString &appName,
                                    const QList<QUuid> &ids)
{
    saveCsv(dialogParent, tr("Export Keywords"), suggestedFileName(appName, tr("keywords")),
            keywordTable(m_store, ids));
}

void KeywordActions::exportAllApps(QWidget *dialogParent)
{
    saveCsv(dialogParent, tr("Export Keywords of All Apps"),
            suggestedFileName(tr("All apps"), tr("keywords")), keywordTableOfAllApps(m_store));
}

void KeywordActions::exportHistory(QWidget *dialogParent, QUuid appId, const QString &appName)
{
    m_historyExport.start(dialogParent, sortedKeywords(m_store, appId),
                          suggestedFileName(appName, tr("history")));
}

void KeywordActions::saveCsv(QWidget *dialogParent, const QString &title, const QString &fileName,
                             const QList<QStringList> &table)
{
    const FileExchange::Request request{title, fileName, tr("CSV files (*.csv)")};
    m_files.save(dialogParent, request, toCsvFile(table),
                 [self = QPointer(this)](const QString &path, const std::optional<QString> &error) {
                     if (!self)
                         return;
                     if (error)
                         self->sayProblem(*error);
                     else
                         self->m_status.say(
                             tr("Exported to %1.").arg(inSentence(path.section(u'/', -1))));
                 });
}

} // namespace veltrix
