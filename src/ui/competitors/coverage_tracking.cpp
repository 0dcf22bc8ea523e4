// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/coverage_tracking.h"

namespace veltrix
{

CoverageTracking::CoverageTracking(ASOStore &store, const QString &country,
                                   const std::optional<QUuid> &appId, QObject *parent)
    : QObject(parent), m_store(store), m_country(country), m_appId(appId)
{
    connect(&m_store, &ASOStore::keywordAdded, this, &CoverageTracking::trackedChanged);
    connect(&m_store, &ASOStore::keywordRemoved, this, &CoverageTracking::trackedChanged);
    connect(&m_store, &ASOStore::refreshProgressChanged, this, [this] {
        if (m_store.refreshProgress().isIdle())
            endPromise();
    });
    connect(&m_store, &ASOStore::historyRefreshErrorChanged, this, [this] {
        if (m_store.historyRefreshError())
            endPromise();
    });
}

void CoverageTracking::setApp(const std::optional<QUuid> &appId)
{
    if (appId == m_appId)
        return;
    m_appId = appId;
    setOutcome({}, false);
    Q_EMIT trackedChanged();
}

bool CoverageTracking::hasApp() const
{
    return m_appId && m_store.app(*m_appId);
}

QSet<QString> CoverageTracking::tracked() const
{
    QSet<QString> tracked;
    if (!m_appId)
        return tracked;
    for (const TrackedKeyword &keyword : m_store.keywordsOfApp(*m_appId)) {
        if (keyword.country == m_country.toUpper())
            tracked.insert(keyword.keyword);
    }
    return tracked;
}

void CoverageTracking::track(const QStringList &keywords)
{
    if (!hasApp() || keywords.isEmpty())
        return;
    try {
        const KeywordAdmission admission =
            m_store.addTrackedKeywords(*m_appId, keywords, m_country);
        // What was refused stays chosen.
        Q_EMIT trackedChanged();
        setOutcome(admission);
        // Queued last: should it fail at once, its own message comes after this one.
        m_store.queueKeywordRefreshes(admission.kept);
        m_tasks.own(followSave(admission, m_tasks.token()));
    } catch (const StoreError &error) {
        setOutcome({error.description(), true, {}}, false);
    }
}

void CoverageTracking::setOutcome(const KeywordAdmission &admission)
{
    const AdmissionStatus status = admissionStatus(admission, !m_store.hasUnsavedChange());
    QStringList lines = refusalLines(admission.refused);
    if (!status.detail.isEmpty())
        lines.prepend(status.detail);
    setOutcome({status.message, status.isProblem, lines}, admission.added > 0 && !status.isProblem);
}

Task<void> CoverageTracking::followSave(KeywordAdmission admission, std::stop_token stop)
{
    const bool wasUnsaved = m_store.hasUnsavedChange();
    co_await m_store.saved(stop);
    if (m_store.hasUnsavedChange() && !wasUnsaved)
        setOutcome(admission);
}

void CoverageTracking::setOutcome(const Outcome &outcome, bool isPromise)
{
    m_outcome = outcome;
    m_isPromise = isPromise;
    Q_EMIT outcomeChanged();
}

void CoverageTracking::endPromise()
{
    if (!std::exchange(m_isPromise, false))
        return;
    m_outcome.message.clear();
    Q_EMIT promiseEnded();
}

} // namespace veltrix
