// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_coverage.h"

#include "scoring/app_signals.h"
#include "scoring/difficulty_model.h"
#include "ui_kit/text/shown_text.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// App Store ids in the order of the results; 0 for a result without one.
QList<std::int64_t> idsOf(const QList<ITunesAppResult> &results)
{
    QList<std::int64_t> ids;
    ids.reserve(results.size());
    for (const ITunesAppResult &result : results)
        ids.append(result.trackId.value_or(0));
    return ids;
}

} // namespace

KeywordCoverage::KeywordCoverage(ASOStore &store, QObject *parent) : QObject(parent), m_store(store)
{
    connect(&m_run, &LoaderSignals::changed, this, &KeywordCoverage::progressChanged);
}

void KeywordCoverage::start(const ITunesAppResult &app, const QString &country,
                            std::optional<std::int64_t> ownTrackId)
{
    m_checks.clear();
    m_found.clear();
    m_pending.clear();
    m_run.clear();
    m_trackId = app.trackId.value_or(0);
    m_ownTrackId = ownTrackId;
    m_country = country;
    m_pending = keywordPhrases(app).mid(0, phraseLimit);
    Q_EMIT restarted();
    run();
}

void KeywordCoverage::setOwnApp(std::optional<std::int64_t> ownTrackId)
{
    m_ownTrackId = ownTrackId;
    for (qsizetype i = 0; i < m_checks.size(); ++i)
        m_checks[i].ownPosition = ownPositionAmong(m_found[i]);
    Q_EMIT ownAppChanged();
}

void KeywordCoverage::pause()
{
    m_isPaused = true;
}

void KeywordCoverage::unpause()
{
    m_isPaused = false;
    if (std::exchange(m_isHeld, false))
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
    m_isHeld = m_isPaused;
    if (m_isPaused)
        return;
    m_run.ask([this](std::stop_token stop) { return checkPending(stop); });
}

Task<Done> KeywordCoverage::checkPending(std::stop_token stop)
{
    while (!m_pending.isEmpty()) {
        if (m_isPaused) {
            m_isHeld = true;
            break;
        }
        const QString phrase = m_pending.constFirst();
        const QList<ITunesAppResult> results =
            co_await m_store.searchKeyword(phrase, m_country, searchLimit, stop);
        throwIfStopped(stop);
        m_pending.removeFirst();
        const AppKeywordCheck check = checkOf(phrase, results);
        m_checks.append(check);
        m_found.append(idsOf(results));
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
    if (m_run.state().value() && m_pending.isEmpty())
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
    check.ownPosition = ownPositionAmong(idsOf(results));
    // A score of no apps means nothing.
    if (!found.empty())
        check.difficulty =
            assessDifficulty(phrase, difficultySample(found), m_store.clock().now()).score;
    return check;
}

std::optional<std::int64_t>
KeywordCoverage::ownPositionAmong(const QList<std::int64_t> &found) const
{
    const qsizetype place = m_ownTrackId ? found.indexOf(*m_ownTrackId) : -1;
    return place < 0 ? std::nullopt : std::optional<std::int64_t>(place + 1);
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
    return tr("%1 / %2").arg(QString::number(ranked()), QString::number(m_checks.size()));
}

QString KeywordCoverage::progressText() const
{
    const qsizetype done = m_checks.size();
    if (phase() == Phase::Checking && !m_pending.isEmpty())
        return tr("Checking “%1” · %2 of %3")
            .arg(inSentence(m_pending.constFirst()), QString::number(done + 1),
                 QString::number(total()));
    if (phase() == Phase::Stopped)
        return tr("Stopped · %1 of %2 checked")
            .arg(QString::number(done), QString::number(total()));
    return {};
}

std::optional<double> KeywordCoverage::fraction() const
{
    if (total() == 0)
        return std::nullopt;
    return double(m_checks.size()) / double(total());
}

} // namespace veltrix
