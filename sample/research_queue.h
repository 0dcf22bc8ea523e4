// SPDX-License-Identifier: GPL-3.0-or-later
// What the research service remembers: the results of the day, the keywords to be fetched, and how
// much each client has asked for.
#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <tuple>
#include <variant>
#include <vector>

namespace veltrix::sample
{

/// In UTC.
using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

/// A keyword and a storefront in the form in which the service keeps them.
struct ResearchQuestion {
    /// Trimmed and in lower case.
    QString keyword;
    /// Two upper-case letters.
    QString country;

    bool operator==(const ResearchQuestion &) const = default;
    bool operator<(const ResearchQuestion &other) const
    {
        return std::tie(keyword, country) < std::tie(other.keyword, other.country);
    }
};

/// How a search at the App Store ended.
struct FetchedApps {
    /// A JSON list of apps, best first.
    QByteArray list;
};
struct FetchBlocked {
    /// For how long the App Store wants to be left alone; the least wait is a minute.
    std::chrono::seconds wait{0};
};
struct FetchFailed {
};
using Fetched = std::variant<FetchedApps, FetchBlocked, FetchFailed>;
using ResearchUpstream = std::function<Fetched(const ResearchQuestion &)>;

/// What can be said about a keyword. Waits are counted from the moment of the question.
struct Ready {
    Moment fetchedAt;
    QByteArray list;
};
struct Pending {
    std::chrono::milliseconds wait;
};
/// Pending, and there is a result of an earlier day.
struct Stale {
    Moment fetchedAt;
    std::chrono::milliseconds wait;
};
struct Blocked {
    std::chrono::milliseconds wait;
};
struct Failed {
    std::chrono::milliseconds wait;
};
enum class Refused {
    QueueFull,
    ShareSpent,
    TooManyOutstanding,
    DatabaseOutOfReach,
};
using Standing = std::variant<Ready, Pending, Stale, Blocked, Failed, Refused>;

/// The queue of keywords and the one worker that fetches them at a pace, first come, first served.
/// The worker has no thread: whatever it would have done by now is done at the next question, as of
/// the moment at which it would have been done. Safe to use from several threads at once.
class ResearchQueue
{
public:
    static constexpr int mostAttempts = 3;
    /// The wait after the first failed attempt; it doubles.
    static constexpr std::chrono::seconds retryDelay{5};
    static constexpr std::chrono::minutes failedFor{10};
    /// The wait after the first block; it doubles up to the longest.
    static constexpr std::chrono::minutes shortestBlock{1};
    static constexpr std::chrono::minutes longestBlock{60};
    static constexpr std::size_t mostQueued = 1'000;
    /// Of one client, at one time.
    static constexpr int mostOutstanding = 40;
    /// Of one client, on one UTC day.
    static constexpr int mostADay = 2'000;

    /// One fetch begins in each `pace`; with 0 they follow one another at once.
    ResearchQueue(std::chrono::milliseconds pace, ResearchUpstream upstream,
                  std::function<Moment()> now);

    /// What is known of a keyword. One that nobody knows is queued if the client may ask for it.
    Standing ask(const ResearchQuestion &question, const QString &client);

    /// Sets the worker to work until the queue is empty; without it nothing is fetched.
    void wake();

    /// From now on every question finds the database out of reach.
    void loseDatabase();

private:
    struct Job {
        ResearchQuestion question;
        QString client;
        Moment notBefore;
        int attempts = 0;
    };
    struct Share {
        std::chrono::sys_days day;
        int spent = 0;
    };
    using Jobs = std::vector<Job>;

    void workUntil(Moment now);
    [[nodiscard]] Jobs::iterator nextJob(Moment moment);
    void takeIn(Jobs::iterator job, const Fetched &fetched, Moment moment);
    void block(std::chrono::milliseconds wait, Moment moment);
    [[nodiscard]] std::optional<Standing> known(const ResearchQuestion &question, Moment now) const;
    [[nodiscard]] std::chrono::milliseconds waitFor(Jobs::const_iterator job, Moment now) const;
    std::optional<Refused> enqueue(const ResearchQuestion &question, const QString &client,
                                   Moment now);

    std::chrono::milliseconds m_pace;
    ResearchUpstream m_upstream;
    std::function<Moment()> m_now;
    std::mutex m_mutex;
    bool m_databaseLost = false;
    std::map<ResearchQuestion, Ready> m_results;
    std::map<ResearchQuestion, Moment> m_failedUntil;
    /// In the order of arrival.
    Jobs m_jobs;
    std::map<QString, Share> m_shares;
    Moment m_nextFetch{};
    Moment m_blockedUntil{};
    /// The length of the latest block; 0 after a success.
    std::chrono::milliseconds m_block{0};
    /// Up to when the worker has worked; none while it rests.
    std::optional<Moment> m_workedUntil;
};

} // namespace veltrix::sample
