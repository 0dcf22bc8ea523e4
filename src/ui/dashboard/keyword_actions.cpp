// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_actions.h"

#include "ui/dashboard/keyword_export.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/measuring/admission_texts.h"
#include "ui_kit/text/csv.h"
#include "ui_kit/text/file_name.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>

#include <map>

namespace veltrix
{

KeywordActions::KeywordActions(ASOStore &store, KeywordTableModel &model, FileExchange &files,
                               QObject *parent)
    : QObject(parent), m_store(store), m_model(model), m_files(files)
{
}

KeywordActions::~KeywordActions() = default;

KeywordActions::Addition KeywordActions::add(std::optional<QUuid> appId,
                                             const QStringList &keywords, const QString &country)
{
    QList<ImportedKeyword> list;
    for (const QString &keyword : keywords)
        list.append({keyword, std::nullopt});
    return add(appId, list, country);
}

KeywordActions::Addition KeywordActions::add(std::optional<QUuid> appId,
                                             const QList<ImportedKeyword> &keywords,
                                             const QString &country)
{
    if (!appId || !m_store.app(*appId))
        return {tr("Select an app first"), {}};
    // One save a storefront, the storefronts in the order of their first keyword.
    QStringList countries;
    std::map<QString, QStringList> texts;
    for (const ImportedKeyword &keyword : keywords) {
        const QString place = keyword.country.value_or(country);
        if (!countries.contains(place))
            countries.append(place);
        texts[place].append(keyword.keyword);
    }
    KeywordAdmission admission;
    try {
        for (const QString &place : std::as_const(countries))
            admission.append(m_store.addTrackedKeywords(*appId, texts[place], place));
    } catch (const StoreError &error) {
        return {error.description(), {}};
    }
    // Said before the queue starts: should it fail at once, its own message comes after this one.
    const AdmissionStatus status = admissionStatus(admission, !m_store.hasUnsavedChange());
    Q_EMIT statusChanged(status.message,
                         status.isProblem ? StatusBar::Tone::Error : StatusBar::Tone::Normal,
                         status.detail);
    m_store.queueKeywordRefreshes(admission.kept);
    return {std::nullopt, admission};
}

void KeywordActions::importFile(QWidget *dialogParent, std::optional<QUuid> appId,
                                const QString &country)
{
    const FileExchange::Request request{
        tr("Import Keywords"), {}, tr("Text and CSV files (*.txt *.csv *.tsv);;All files (*)")};
    m_files.open(dialogParent, request,
                 [self = QPointer(this), appId, country](const QByteArray &content,
                                                         const std::optional<QString> &error) {
                     if (!self)
                         return;
                     const auto keywords = keywordsFromFile(content);
                     std::optional<QString> problem = error;
                     if (!problem && keywords.isEmpty())
                         problem = tr("The file holds no keywords.");
                     if (!problem) {
                         const Addition addition = self->add(appId, keywords, country);
                         problem = addition.problem;
                         if (!problem)
                             Q_EMIT self->imported(*appId, addition.admission);
                     }
                     if (problem)
                         Q_EMIT self->statusChanged(*problem, StatusBar::Tone::Error);
                 });
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
        Q_EMIT statusChanged(
            problems.size() == 1
                ? problems.constFirst()
                : tr("%L1 keywords cannot be measured. Their rows say why.").arg(problems.size()),
            StatusBar::Tone::Error);
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
            Q_EMIT statusChanged(tr("“%1” is up to date.").arg(keyword.keyword),
                                 StatusBar::Tone::Normal);
        else
            Q_EMIT statusChanged(isOne ? *problem : tr("“%1”: %2").arg(keyword.keyword, *problem),
                                 StatusBar::Tone::Error);
    };
    co_await m_store.refreshes().refreshRows(ids, std::move(ended), stop);
}

void KeywordActions::copyRefusals(const QList<RefusedKeyword> &refused) const
{
    QGuiApplication::clipboard()->setText(toTabSeparated(refusalTable(refused)));
}

void KeywordActions::exportTable(QWidget *dialogParent, const QString &appName,
                                 const QList<QStringList> &table)
{
    saveCsv(dialogParent, tr("Export Keywords"), suggestedFileName(appName, tr("keywords")), table);
}

void KeywordActions::exportHistory(QWidget *dialogParent, QUuid appId, const QString &appName)
{
    saveCsv(dialogParent, tr("Export History"), suggestedFileName(appName, tr("history")),
            keywordHistory(m_store, appId));
}

void KeywordActions::saveCsv(QWidget *dialogParent, const QString &title, const QString &fileName,
                             const QList<QStringList> &table)
{
    const FileExchange::Request request{title, fileName, tr("CSV files (*.csv)")};
    m_files.save(dialogParent, request, toCsv(table).toUtf8(),
                 [self = QPointer(this)](const QString &path, const std::optional<QString> &error) {
                     if (!self)
                         return;
                     if (error)
                         Q_EMIT self->statusChanged(*error, StatusBar::Tone::Error);
                     else
                         Q_EMIT self->statusChanged(
                             tr("Exported to %1.").arg(path.section(u'/', -1)),
                             StatusBar::Tone::Normal);
                 });
}

} // namespace veltrix
