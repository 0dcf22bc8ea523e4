// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_coverage.h"

#include "scoring/app_signals.h"
#include "scoring/difficulty_model.h"

#include <algorithm>

namespace veltrix
{

KeywordCoverage::KeywordCoverage(ASOStore &store, QObject *parent) : QObject(parent), m_store(store)
{
    connect(&m_run, &LoaderSignals::changed, this, &KeywordCoverage::progressChanged);
}

void KeywordCoverage::start(const ITunesAppResult &app, const QString &country,
                            std::optional<std::int64_t> ownTrackId)
{
    m_checks.clear();
    m_pending.clear();
    m_run.clear();
    m_trackId = app.trackId.value_or(0);
    m_ownTrackId = ownTrackId;
    m_country = country;
    m_pending = keywordPhrases(app).mid(0, phraseLimit);
    Q_EMIT restarted();
    run();
}

void KeywordCoverage::stop()
{
    if (phase() == Phase::Checking)
        m_run.clear();
}

void KeywordCoverage::resume()
{
    if (phase() == Phase::Stopped || phase() == Phase::Failed)
        run();
}

void KeywordCoverage::toggle()
{
    if (phase() == Phase::Checking)
        stop();
    else
        resume();
}

void KeywordCoverage::run()
{
    m_run.ask([this](std::stop_token stop) { return checkPending(stop); });
}

Task<Done> KeywordCoverage::checkPending(std::stop_token stop)
{
    while (!m_pending.isEmpty()) {
        const QString phrase = m_pending.constFirst();
        const QList<ITunesAppResult> results =
            co_await m_store.searchKeyword(phrase, m_country, searchLimit, stop);
        throwIfStopped(stop);
        m_pending.removeFirst();
        const AppKeywordCheck check = checkOf(phrase, results);
        m_checks.append(check);
        Q_EMIT checked(check);
        throwIfStopped(stop);
        if (!m_pending.isEmpty())
            Q_EMIT progressChanged();
        throwIfStopped(stop);
    }
    co_return Done();
}

KeywordCoverage::Phase KeywordCoverage::phase() const
{
    if (m_run.state().isUnderWay())
        return Phase::Checking;
    if (m_run.state().is<LoadFailed>())
        return Phase::Failed;
    if (m_run.state().value())
        return Phase::Finished;
    return total() > 0 ? Phase::Stopped : Phase::Idle;
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

QString KeywordCoverage::progressText() const
{
    const qsizetype done = m_checks.size();
    if (phase() == Phase::Checking && !m_pending.isEmpty())
        return tr("Checking “%1” · %2 of %3")
            .arg(m_pending.constFirst())
            .arg(done + 1)
            .arg(total());
    if (phase() == Phase::Stopped)
        return tr("Stopped · %1 of %2 checked").arg(done).arg(total());
    return {};
}

std::optional<double> KeywordCoverage::fraction() const
{
    if (total() == 0)
        return std::nullopt;
    return double(m_checks.size()) / double(total());
}

} // namespace veltrix
