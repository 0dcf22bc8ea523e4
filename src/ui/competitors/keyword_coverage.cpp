// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_coverage.h"

#include "scoring/app_signals.h"
#include "scoring/difficulty_model.h"

#include <algorithm>

namespace veltrix
{

KeywordCoverage::KeywordCoverage(ASOStore &store, QObject *parent) : QObject(parent), m_store(store)
{
}

KeywordCoverage::~KeywordCoverage() = default;

void KeywordCoverage::start(const ITunesAppResult &app, const QString &country,
                            std::optional<std::int64_t> ownTrackId)
{
    m_tasks.stop();
    m_trackId = app.trackId.value_or(0);
    m_ownTrackId = ownTrackId;
    m_country = country;
    m_checks.clear();
    m_pending = keywordPhrases(app).mid(0, phraseLimit);
    m_phase = Phase::Idle;
    Q_EMIT restarted();
    run();
}

void KeywordCoverage::stop()
{
    if (m_phase != Phase::Checking)
        return;
    m_tasks.stop();
    setPhase(Phase::Stopped);
}

void KeywordCoverage::resume()
{
    if (m_phase == Phase::Stopped || m_phase == Phase::Failed)
        run();
}

void KeywordCoverage::run()
{
    m_error.clear();
    setPhase(m_pending.isEmpty() ? Phase::Finished : Phase::Checking);
    if (m_phase == Phase::Checking)
        m_tasks.own(checkPending(m_tasks.token()));
}

Task<void> KeywordCoverage::checkPending(std::stop_token stop)
{
    while (!m_pending.isEmpty()) {
        const QString phrase = m_pending.constFirst();
        QString problem;
        try {
            const QList<ITunesAppResult> results =
                co_await m_store.searchKeyword(phrase, m_country, searchLimit, stop);
            throwIfStopped(stop);
            m_pending.removeFirst();
            m_checks.append(checkOf(phrase, results));
        } catch (const Error &error) {
            problem = error.description();
        }
        throwIfStopped(stop);
        if (!problem.isEmpty()) {
            m_error = problem;
            setPhase(Phase::Failed);
            co_return;
        }
        const AppKeywordCheck check = m_checks.constLast();
        Q_EMIT checked(check);
        throwIfStopped(stop);
        if (!m_pending.isEmpty())
            Q_EMIT progressChanged();
    }
    setPhase(Phase::Finished);
}

AppKeywordCheck KeywordCoverage::checkOf(const QString &phrase,
                                         const QList<ITunesAppResult> &results) const
{
    const std::span<const ITunesAppResult> found(results.constData(), size_t(results.size()));
    AppKeywordCheck check;
    check.keyword = phrase;
    check.position = rankedPosition(found, m_trackId);
    if (m_ownTrackId)
        check.ownPosition = rankedPosition(found, *m_ownTrackId);
    // A score of no apps means nothing.
    if (!found.empty())
        check.difficulty =
            assessDifficulty(phrase, difficultySample(found), m_store.clock().now()).score;
    return check;
}

int KeywordCoverage::ranked() const
{
    return int(std::ranges::count_if(
        m_checks, [](const AppKeywordCheck &check) { return check.position.has_value(); }));
}

QString KeywordCoverage::coverageText() const
{
    if (m_checks.isEmpty())
        return tr("Not checked");
    return tr("%1 / %2").arg(ranked()).arg(m_checks.size());
}

void KeywordCoverage::setPhase(Phase phase)
{
    m_phase = phase;
    Q_EMIT progressChanged();
}

} // namespace veltrix
