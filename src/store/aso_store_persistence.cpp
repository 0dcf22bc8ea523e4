// SPDX-License-Identifier: GPL-3.0-or-later
// The store's state file: loading, saving, and what is done when it cannot be.
#include "store/aso_store.h"

namespace veltrix
{

void ASOStore::adopt(PersistedState state)
{
    m_apps = std::move(state.apps);
    renumberApps();
    m_keywords = KeywordList(std::move(state.trackedKeywords));
    m_snapshots = SnapshotIndex(state.snapshots);
    m_competitors = std::move(state.competitors);
}

void ASOStore::save()
{
    const auto before = m_file.problem();
    m_file.save({m_apps, m_keywords.all(), m_snapshots.inFileOrder(), m_competitors},
                m_clock->now());
    followPersistence(before);
}

bool ASOStore::isStateRead() const
{
    return m_file.isRead();
}

void ASOStore::requireStateRead() const
{
    if (!isStateRead()) {
        throw StoreError(423, QStringLiteral("Nothing can be added before the saved data has been "
                                             "loaded."));
    }
}

bool ASOStore::hasUnsavedChange() const
{
    return m_file.hasUnsavedChange();
}

std::optional<PersistenceProblem> ASOStore::persistenceProblem() const
{
    return m_file.problem();
}

void ASOStore::retryPersistence()
{
    if (m_file.isRead() && m_file.hasUnsavedChange()) {
        save();
        return;
    }
    const auto before = m_file.problem();
    if (m_file.isRead()) {
        m_file.tryFolderAgain();
    } else {
        PersistedState state = m_file.load();
        if (m_file.isRead()) {
            adopt(std::move(state));
            Q_EMIT appsChanged();
            Q_EMIT competitorsChanged();
            Q_EMIT stateRead();
        }
    }
    followPersistence(before);
}

void ASOStore::beginAnew()
{
    const auto before = m_file.problem();
    const bool wasRead = isStateRead();
    m_file.beginAnew(m_clock->now());
    if (!wasRead && isStateRead())
        Q_EMIT stateRead();
    followPersistence(before);
}

void ASOStore::dismissPersistenceNotices()
{
    const auto before = m_file.problem();
    m_file.dismissNotices();
    followPersistence(before);
}

void ASOStore::followPersistence(const std::optional<PersistenceProblem> &before)
{
    const auto now = m_file.problem();
    if (now && now->remedy != PersistenceProblem::Remedy::Dismiss && !m_isRetryingPersistence) {
        m_isRetryingPersistence = true;
        m_tasks.own(retryPersistenceEveryMinute(m_tasks.token()));
    }
    if (now != before)
        Q_EMIT persistenceProblemChanged();
}

Task<void> ASOStore::retryPersistenceEveryMinute(std::stop_token stop)
{
    for (;;) {
        const auto problem = m_file.problem();
        if (!problem || problem->remedy == PersistenceProblem::Remedy::Dismiss)
            break;
        co_await m_clock->sleep(persistenceRetryInterval, stop);
        retryPersistence();
    }
    m_isRetryingPersistence = false;
}

} // namespace veltrix
