// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/keyword_tracking.h"

#include "model/text_folding.h"

namespace veltrix
{

KeywordTracking::KeywordTracking(ASOStore &store, QUuid appId, QObject *parent)
    : QObject(parent), m_store(store), m_appId(appId)
{
    connect(&m_store, &ASOStore::keywordAdded, this, &KeywordTracking::trackedIsAnother);
    connect(&m_store, &ASOStore::keywordRemoved, this, &KeywordTracking::trackedIsAnother);
}

bool KeywordTracking::isTracked(const QString &keyword, const QString &country) const
{
    if (!m_tracked) {
        m_tracked.emplace();
        for (const TrackedKeyword &tracked : m_store.keywordsOfApp(m_appId))
            m_tracked->insert({tracked.country, foldedCase(tracked.keyword.trimmed())});
    }
    return m_tracked->contains({country, foldedCase(keyword.trimmed())});
}

void KeywordTracking::trackedIsAnother()
{
    m_tracked.reset();
    Q_EMIT trackedChanged();
}

void KeywordTracking::track(const QList<KeywordToTrack> &keywords)
{
    if (keywords.isEmpty())
        return;
    try {
        const KeywordAdmission admission = m_store.addTrackedKeywords(m_appId, keywords);
        setOutcome(admission);
        m_store.queueKeywordRefreshes(admission.kept);
        m_tasks.own(followSave(admission, m_tasks.token()));
    } catch (const StoreError &error) {
        m_outcome = {error.description(), true};
        Q_EMIT outcomeChanged();
    }
}

void KeywordTracking::setOutcome(const KeywordAdmission &admission)
{
    const AdmissionStatus status = admissionStatus(admission, !m_store.hasUnsavedChange());
    QStringList lines{status.message};
    if (!status.detail.isEmpty())
        lines << status.detail;
    lines << refusalLines(admission.refused);
    m_outcome = {lines.join(u'\n'), status.isProblem};
    Q_EMIT outcomeChanged();
}

Task<void> KeywordTracking::followSave(KeywordAdmission admission, std::stop_token stop)
{
    const bool wasUnsaved = m_store.hasUnsavedChange();
    co_await m_store.saved(stop);
    if (m_store.hasUnsavedChange() && !wasUnsaved)
        setOutcome(admission);
}

} // namespace veltrix
