// SPDX-License-Identifier: GPL-3.0-or-later
// What the research service remembers.
#include "sample/research_queue.h"

#include <algorithm>
#include <utility>

namespace veltrix::sample
{

namespace
{

using std::chrono::milliseconds;

std::chrono::sys_days dayOf(Moment moment)
{
    return std::chrono::floor<std::chrono::days>(moment);
}

} // namespace

ResearchQueue::ResearchQueue(milliseconds pace, ResearchUpstream upstream,
                             std::function<Moment()> now)
    : m_pace(pace), m_upstream(std::move(upstream)), m_now(std::move(now))
{
}

Standing ResearchQueue::ask(const ResearchQuestion &question, const QString &client)
{
    const std::lock_guard lock(m_mutex);
    if (m_databaseLost)
        return Refused::DatabaseOutOfReach;
    const Moment now = m_now();
    workUntil(now);
    if (const auto standing = known(question, now))
        return *standing;
    if (const auto refusal = enqueue(question, client, now))
        return *refusal;
    return known(question, now).value();
}

void ResearchQueue::wake()
{
    const std::lock_guard lock(m_mutex);
    if (!m_workedUntil)
        m_workedUntil = m_now();
}

void ResearchQueue::loseDatabase()
{
    const std::lock_guard lock(m_mutex);
    m_databaseLost = true;
}

void ResearchQueue::workUntil(Moment now)
{
    while (m_workedUntil && !m_jobs.empty()) {
        const Moment free = std::max({*m_workedUntil, m_nextFetch, m_blockedUntil});
        const auto job = nextJob(free);
        const Moment moment = std::max(free, job->notBefore);
        if (moment > now)
            return;
        m_workedUntil = moment;
        m_nextFetch = moment + m_pace;
        takeIn(job, m_upstream(job->question), moment);
    }
    m_workedUntil.reset();
}

ResearchQueue::Jobs::iterator ResearchQueue::nextJob(Moment moment)
{
    const auto due =
        std::ranges::find_if(m_jobs, [&](const Job &job) { return job.notBefore <= moment; });
    return due != m_jobs.end() ? due : std::ranges::min_element(m_jobs, {}, &Job::notBefore);
}

void ResearchQueue::takeIn(Jobs::iterator job, const Fetched &fetched, Moment moment)
{
    if (const auto *apps = std::get_if<FetchedApps>(&fetched)) {
        m_results.insert_or_assign(job->question, Ready{moment, apps->list});
        m_block = milliseconds(0);
        m_jobs.erase(job);
    } else if (const auto *blocked = std::get_if<FetchBlocked>(&fetched)) {
        // It is not the keyword's fault, so the keyword keeps its attempts.
        block(blocked->wait, moment);
    } else if (++job->attempts == mostAttempts) {
        m_failedUntil.insert_or_assign(job->question, moment + failedFor);
        m_jobs.erase(job);
    } else {
        job->notBefore = moment + retryDelay * (1 << (job->attempts - 1));
    }
}

void ResearchQueue::block(milliseconds wait, Moment moment)
{
    m_block = std::clamp<milliseconds>(m_block * 2, shortestBlock, longestBlock);
    m_blockedUntil = moment + std::max(m_block, std::min<milliseconds>(wait, longestBlock));
}

std::optional<Standing> ResearchQueue::known(const ResearchQuestion &question, Moment now) const
{
    const auto result = m_results.find(question);
    const bool hasResult = result != m_results.end();
    if (hasResult && dayOf(result->second.fetchedAt) >= dayOf(now))
        return result->second;
    const auto failure = m_failedUntil.find(question);
    if (failure != m_failedUntil.end() && failure->second > now)
        return Failed{failure->second - now};
    const auto job = std::ranges::find(m_jobs, question, &Job::question);
    if (job == m_jobs.end())
        return std::nullopt;
    const milliseconds wait = waitFor(job, now);
    if (m_blockedUntil > now)
        return Blocked{m_blockedUntil - now + wait};
    if (hasResult)
        return Stale{result->second.fetchedAt, wait};
    return Pending{wait};
}

milliseconds ResearchQueue::waitFor(Jobs::const_iterator job, Moment now) const
{
    constexpr std::chrono::seconds forTheFetch(1);
    const auto place = std::distance(m_jobs.begin(), job) + 1;
    return std::max<milliseconds>(place * m_pace, job->notBefore - now) + forTheFetch;
}

std::optional<Refused> ResearchQueue::enqueue(const ResearchQuestion &question,
                                              const QString &client, Moment now)
{
    if (std::ranges::count(m_jobs, client, &Job::client) >= mostOutstanding)
        return Refused::TooManyOutstanding;
    Share &share = m_shares[client];
    if (share.day != dayOf(now))
        share = {dayOf(now), 0};
    if (share.spent >= mostADay)
        return Refused::ShareSpent;
    if (m_jobs.size() >= mostQueued)
        return Refused::QueueFull;
    ++share.spent;
    m_jobs.push_back({question, client, now});
    return std::nullopt;
}

} // namespace veltrix::sample
