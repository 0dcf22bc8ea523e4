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

StateChange ASOStore::wholeState() const
{
    StateChange whole;
    whole.state = {m_apps, m_keywords.all(), m_snapshots.inFileOrder(), m_competitors};
    whole.now = m_clock->now();
    return whole;
}

void ASOStore::save()
{
    StateChange change = wholeState();
    change.removals = std::exchange(m_removals, {});
    change.edits = std::exchange(m_edits, {});
    m_saver.save(std::move(change));
}

void ASOStore::open(EarlyStateRead *early)
{
    PersistedState state = m_saver.load(early);
    m_wasRead = isStateRead();
    if (m_wasRead) {
        adopt(std::move(state));
        m_rankDays->beginAnew();
        Q_EMIT appsChanged();
        Q_EMIT competitorsChanged();
        Q_EMIT stateRead();
        m_tasks.own(tidyHistory(m_tasks.token()));
        m_tasks.own(readWrittenNotes(m_tasks.token()));
    }
    followPersistence();
}

bool ASOStore::isStateRead() const
{
    return m_saver.isRead();
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
    return m_saver.hasUnsavedChange();
}

Task<void> ASOStore::saved(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    co_await m_saver.finished(stop);
}

void ASOStore::waitUntilSaved()
{
    m_saver.waitUntilFinished();
}

bool ASOStore::saveBeforeEnd()
{
    waitUntilSaved();
    if (!hasUnsavedChange())
        return true;
    retryPersistence();
    waitUntilSaved();
    return !hasUnsavedChange();
}

std::optional<PersistenceProblem> ASOStore::persistenceProblem() const
{
    auto problem = m_saver.problem();
    if (!m_annotationsProblem)
        return problem;
    const QString line =
        QStringLiteral("Notes and tags could not be read. %1").arg(*m_annotationsProblem);
    if (!problem)
        return PersistenceProblem{line, PersistenceProblem::Remedy::Dismiss};
    problem->text += u'\n' + line;
    return problem;
}

void ASOStore::retryPersistence()
{
    if (isStateRead() && hasUnsavedChange()) {
        save();
        return;
    }
    if (!isStateRead()) {
        open();
        return;
    }
    m_saver.tryFolderAgain();
    followPersistence();
}

void ASOStore::beginAnew()
{
    if (!isStateRead())
        m_saver.beginAnew(m_clock->now());
}

void ASOStore::dismissPersistenceNotices()
{
    m_saver.dismissNotices();
    m_annotationsProblem.reset();
    followPersistence();
}

void ASOStore::followSaver()
{
    if (!std::exchange(m_wasRead, isStateRead()) && m_wasRead) {
        Q_EMIT stateRead();
        m_tasks.own(readWrittenNotes(m_tasks.token()));
    }
    if (m_announcedMove != m_saver.progress()) {
        m_announcedMove = m_saver.progress();
        Q_EMIT historyMoveChanged();
    }
    followPersistence();
}

bool ASOStore::canBeTriedAgain() const
{
    const auto &problem = m_saver.problem();
    return problem && problem->remedy != PersistenceProblem::Remedy::Dismiss;
}

void ASOStore::followPersistence()
{
    if (canBeTriedAgain() && !m_isRetryingPersistence) {
        m_isRetryingPersistence = true;
        m_tasks.own(retryPersistenceEveryMinute(m_tasks.token()));
    }
    if (m_announcedProblem == persistenceProblem())
        return;
    m_announcedProblem = persistenceProblem();
    Q_EMIT persistenceProblemChanged();
}

Task<void> ASOStore::retryPersistenceEveryMinute(std::stop_token stop)
{
    while (canBeTriedAgain()) {
        co_await m_clock->sleep(persistenceRetryInterval, stop);
        retryPersistence();
        co_await m_saver.finished(stop);
    }
    m_isRetryingPersistence = false;
}

} // namespace veltrix
