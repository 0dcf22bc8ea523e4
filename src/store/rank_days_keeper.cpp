// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/rank_days_keeper.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// Keywords of one question; some 50 milliseconds of the saving thread after years.
constexpr size_t mostAsked = 250;

} // namespace

RankDaysKeeper::RankDaysKeeper(const KeywordList &keywords, const SnapshotIndex &snapshots,
                               StateSaver &saver, std::shared_ptr<Clock> clock)
    : m_keywords(keywords), m_snapshots(snapshots), m_saver(saver), m_clock(std::move(clock)),
      m_now(m_clock->now())
{
    m_tasks.own(followDays(m_tasks.token()));
}

RankDaysKeeper::~RankDaysKeeper() = default;

const RankDays &RankDaysKeeper::of(const QUuid &keywordId) const
{
    const auto known = m_values.constFind(keywordId);
    return known == m_values.cend() ? m_unknown : *known;
}

void RankDaysKeeper::beginAnew()
{
    m_now = m_clock->now();
    m_values.clear();
    m_ahead.clear();
    forgetHistory();
    renewAll();
    m_tasks.own(readSoon(m_tasks.token()));
}

void RankDaysKeeper::remove(const QUuid &keywordId)
{
    m_values.remove(keywordId);
    m_ahead.remove(keywordId);
    m_removed.insert(keywordId);
}

void RankDaysKeeper::forgetHistory()
{
    m_past.clear();
    m_unread.clear();
    m_pastAhead.reset();
    m_hasForgotten = true;
    if (!m_saver.hasHistory())
        return;
    for (const TrackedKeyword &keyword : m_keywords.all())
        m_unread.insert(keyword.id);
    m_unread.unite(m_removed);
}

RankDaysKeeper::Seen RankDaysKeeper::seenInState(const QUuid &keywordId) const
{
    Seen seen;
    DailyChecks checks;
    for (const SharedSnapshot &snapshot : m_snapshots.ofKeyword(keywordId)) {
        if (!isCalendarDate(snapshot->fetchedAt))
            continue;
        seen.days.push_back(utcDay(snapshot->fetchedAt));
        if (SnapshotIndex::liesAhead(snapshot->fetchedAt, m_now))
            seen.hasAhead = true;
        else
            checks.add(snapshot->fetchedAt, snapshot->position);
    }
    seen.checks = checks.all();
    return seen;
}

void RankDaysKeeper::hideDaysOfState(const QUuid &keywordId, const Seen &seen)
{
    const auto past = m_past.find(keywordId);
    if (past == m_past.end())
        return;
    for (const std::int64_t day : seen.days) {
        if (!past->forget(day))
            m_unread.insert(keywordId);
    }
}

bool RankDaysKeeper::renew(const QUuid &keywordId)
{
    const Seen seen = seenInState(keywordId);
    hideDaysOfState(keywordId, seen);
    RankDays value = m_past.value(keywordId);
    value.moveTo(utcDay(m_now));
    for (const RankCheck &check : seen.checks)
        value.add(check);
    value.setWhole(!m_unread.contains(keywordId));
    if (seen.hasAhead)
        m_ahead.insert(keywordId);
    else
        m_ahead.remove(keywordId);
    RankDays &known = m_values[keywordId];
    if (known == value)
        return false;
    known = value;
    return true;
}

void RankDaysKeeper::renewAll()
{
    m_unknown = RankDays(utcDay(m_now));
    QList<QUuid> others;
    for (const TrackedKeyword &keyword : m_keywords.all()) {
        if (renew(keyword.id))
            others.append(keyword.id);
    }
    announce(others);
}

void RankDaysKeeper::announce(const QList<QUuid> &keywordIds)
{
    if (!keywordIds.isEmpty())
        Q_EMIT changed(keywordIds);
}

void RankDaysKeeper::follow(const QList<QUuid> &keywordIds)
{
    followClock();
    QList<QUuid> others;
    for (const QUuid &id : keywordIds) {
        if (renew(id))
            others.append(id);
    }
    announce(others);
    startReading();
}

void RankDaysKeeper::readAgain(const QSet<QUuid> &keywordIds)
{
    if (!m_saver.hasHistory())
        return;
    m_unread.unite(keywordIds);
    m_movedMeanwhile.unite(keywordIds);
    follow(keywordIds.values());
}

void RankDaysKeeper::followMove(const std::vector<SharedSnapshot> &snapshots)
{
    const std::int64_t today = utcDay(m_now);
    for (const SharedSnapshot &snapshot : snapshots) {
        const QUuid &id = snapshot->trackedKeywordId;
        m_movedMeanwhile.insert(id);
        if (SnapshotIndex::liesAhead(snapshot->fetchedAt, m_now)) {
            m_pastAhead = std::min(m_pastAhead.value_or(snapshot->fetchedAt), snapshot->fetchedAt);
            continue;
        }
        RankDays &past = m_past[id];
        past.moveTo(today);
        past.add({utcDay(snapshot->fetchedAt), snapshot->position});
    }
}

void RankDaysKeeper::followClock()
{
    const Date before = std::exchange(m_now, m_clock->now());
    // What had come lies ahead again, or the other way round.
    const bool wasSetBack =
        SnapshotIndex::liesAhead(before, m_now) || utcDay(before) > utcDay(m_now);
    const bool hasCome = m_pastAhead && !SnapshotIndex::liesAhead(*m_pastAhead, m_now);
    if (wasSetBack || hasCome)
        forgetHistory();
    if (wasSetBack || hasCome || utcDay(before) != utcDay(m_now)) {
        renewAll();
        return;
    }
    QList<QUuid> others;
    for (const QUuid &id : m_ahead.values()) {
        if (renew(id))
            others.append(id);
    }
    announce(others);
}

Task<void> RankDaysKeeper::followDays(std::stop_token stop)
{
    for (;;) {
        const Date now = m_clock->now();
        const Seconds untilMidnight = startOfUtcDay(utcDay(now) + 1) - now;
        co_await m_clock->sleep(std::min(untilMidnight, longestWait), stop);
        followClock();
        startReading();
    }
}

Task<void> RankDaysKeeper::readSoon(std::stop_token stop)
{
    if (m_unread.isEmpty())
        co_return;
    co_await m_clock->sleep(readingDelay, stop);
    startReading();
}

Task<void> RankDaysKeeper::read(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    followClock();
    startReading();
    if (!m_isReading)
        co_return;
    const OneShot<Done> ended;
    m_waiting.push_back(ended);
    co_await ended.wait(stop);
}

void RankDaysKeeper::startReading()
{
    if (m_isReading || nextQuestion().keywords.empty())
        return;
    m_isReading = true;
    m_tasks.own(readHistory(m_tasks.token()));
}

PastRanks::Question RankDaysKeeper::nextQuestion() const
{
    PastRanks::Question question{{}, m_now};
    for (const QUuid &id : m_unread) {
        if (!m_keywords.find(id))
            continue;
        question.keywords.push_back({id, seenInState(id).days});
        if (question.keywords.size() == mostAsked)
            break;
    }
    return question;
}

Task<void> RankDaysKeeper::readHistory(std::stop_token stop)
{
    try {
        for (;;) {
            // What joins histories does so in a save.
            co_await m_saver.finished(stop);
            const PastRanks::Question question = nextQuestion();
            if (question.keywords.empty())
                break;
            m_movedMeanwhile.clear();
            m_hasForgotten = false;
            const PastRanks answer = co_await m_saver.pastRanks(question, stop);
            if (!m_hasForgotten)
                take(question, answer);
            // What lay ahead when it was asked may have come.
            followClock();
        }
    } catch (const Error &) {
        // Asked for again with the next look at the clock; until then nothing is said to be whole.
    }
    m_isReading = false;
    for (const OneShot<Done> &waiting : std::exchange(m_waiting, {}))
        waiting.resolve({});
}

void RankDaysKeeper::take(const PastRanks::Question &question, const PastRanks &answer)
{
    if (answer.firstAhead)
        m_pastAhead = std::min(m_pastAhead.value_or(*answer.firstAhead), *answer.firstAhead);
    QList<QUuid> others;
    for (size_t i = 0; i < question.keywords.size(); ++i) {
        const QUuid &id = question.keywords[i].id;
        if (m_movedMeanwhile.contains(id))
            continue;
        m_past.insert(id, answer.ofKeywords[i]);
        m_unread.remove(id);
        if (m_keywords.find(id) && renew(id))
            others.append(id);
    }
    announce(others);
}

} // namespace veltrix
