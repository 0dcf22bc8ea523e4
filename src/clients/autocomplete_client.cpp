// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/autocomplete_client.h"

#include "clients/autocomplete_score.h"
#include "clients/pending_wait.h"
#include "clients/property_list.h"
#include "clients/request_url.h"
#include "clients/retry_after.h"
#include "clients/storefront_ids.h"
#include "model/text_folding.h"

#include <QScopeGuard>
#include <QSet>

#include <algorithm>
#include <utility>
#include <vector>

namespace veltrix
{

struct AutocompleteClient::Core {
    Arguments use;
    /// The file thread's once something was saved.
    std::shared_ptr<AutocompleteStateFile> file;
    State state;
    bool isLoaded = false;
    /// The earliest moment of the next request.
    std::optional<Date> nextRequest;
    /// Who waits for a turn, and who had the last one.
    int waitingRuns = 0;
    int waitingTypists = 0;
    Asker last = Asker::Run;
    /// Requests in a row without an answer of the service's, and how long it is left alone for
    /// that.
    int failuresInARow = 0;
    std::optional<Date> pausedUntil;

    void load()
    {
        if (!std::exchange(isLoaded, true))
            state = file->load();
    }

    void save()
    {
        if (use.persistencePath.isEmpty())
            return;
        use.files->save(use.persistencePath, [file = file, state = state, now = use.clock->now()] {
            file->save(state, now);
        });
    }

    /// What is known for a prefix already, unless it is empty or too old.
    [[nodiscard]] std::optional<Hints> cached(const QString &key) const
    {
        const auto entry = state.cache.find(key);
        if (entry == state.cache.end() || entry->second.terms.isEmpty() || isOld(entry->second))
            return std::nullopt;
        return entry->second;
    }

    [[nodiscard]] bool isOld(const Hints &hints) const
    {
        const Seconds age = use.clock->now() - hints.fetchedAt;
        return age >= cacheLifetime || age < -clockTolerance;
    }

    [[nodiscard]] bool mayRequest()
    {
        const Date now = use.clock->now();
        if (state.blockedUntil && !isPending(*state.blockedUntil, now, longestBlock))
            state.blockedUntil.reset();
        if (pausedUntil && !isPending(*pausedUntil, now, pauseTime))
            pausedUntil.reset();
        if (const std::int64_t today = autocompleteDay(now); state.budgetDay != today) {
            state.budgetDay = today;
            state.requests = 0;
        }
        return !state.blockedUntil && !pausedUntil && state.requests < dailyLimit;
    }

    /// One that waits for a turn.
    class Waiting
    {
    public:
        Waiting(Core &core, Asker asker)
            : m_count(asker == Asker::Run ? core.waitingRuns : core.waitingTypists)
        {
            ++m_count;
        }
        ~Waiting() { --m_count; }
        Waiting(const Waiting &) = delete;
        Waiting &operator=(const Waiting &) = delete;

    private:
        int &m_count;
    };

    /// Runs and those who type go by turns while both wait.
    [[nodiscard]] bool isTurnOfOthers(Asker asker) const
    {
        return asker == last && (asker == Asker::Run ? waitingTypists : waitingRuns) > 0;
    }

    void countRequest()
    {
        ++state.requests;
        nextRequest = use.clock->now() + interval;
    }

    void block(const HttpResponse &response)
    {
        const Seconds asked = retryAfter(response).value_or(Seconds::zero());
        state.blockedUntil = use.clock->now() + std::clamp(asked, blockTime, longestBlock);
    }

    /// Counts on after the pause: the first failure then begins another.
    void noteFailure()
    {
        if (++failuresInARow >= failuresBeforePause)
            pausedUntil = use.clock->now() + pauseTime;
    }

    void keep(const QString &key, const Hints &hints)
    {
        // Nothing reads an old answer again, so the file keeps none.
        std::erase_if(state.cache, [this](const auto &entry) { return isOld(entry.second); });
        state.cache.insert_or_assign(key, hints);
    }

    /// What was suggested for any prefix in that storefront and begins with this one: best ranks
    /// first. None when nothing is known.
    [[nodiscard]] std::optional<QStringList> knownTerms(const QString &country,
                                                        const QString &prefix) const
    {
        const QString wanted = foldedForSearch(prefix);
        std::vector<std::pair<qsizetype, QString>> ranked;
        for (const auto &[key, hints] : state.cache) {
            if (!key.startsWith(country + u':') || isOld(hints))
                continue;
            for (qsizetype i = 0; i < hints.terms.size(); ++i) {
                if (foldedForSearch(hints.terms[i]).startsWith(wanted))
                    ranked.emplace_back(i, hints.terms[i]);
            }
        }
        std::stable_sort(ranked.begin(), ranked.end(),
                         [](const auto &a, const auto &b) { return a.first < b.first; });
        QStringList terms;
        for (const auto &[rank, term] : ranked) {
            if (!terms.contains(term))
                terms.append(term);
        }
        return terms.isEmpty() ? std::nullopt : std::optional(terms);
    }

    void addScore(const QString &key, std::int64_t score)
    {
        const Date now = use.clock->now();
        const std::int64_t today = autocompleteDay(now);
        QList<DailyScore> &days = state.history[key];
        days.removeIf([today](const DailyScore &entry) { return entry.day == today; });
        days.append({today, score, now});
        dropUnreadScores(state.history, today);
        save();
    }
};

namespace
{

/// Whether answers of this day are among the probes, not only kept ones of the day before.
bool hasProbeOfDay(const QList<AutocompleteProbe> &probes, std::int64_t day)
{
    return std::any_of(probes.begin(), probes.end(), [day](const AutocompleteProbe &probe) {
        return autocompleteDay(probe.fetchedAt) == day;
    });
}

bool isRefusal(int status)
{
    return status == 403 || status == 429 || status == 503;
}

HttpRequest hintsRequest(const QUrl &hintsURL, const QString &prefix, const StorefrontId &store)
{
    HttpRequest request;
    request.url = requestUrl(hintsURL, {},
                             {{QStringLiteral("clientApplication"), QStringLiteral("Software")},
                              {QStringLiteral("term"), prefix}});
    request.headers = {{"X-Apple-Store-Front", store.header().toLatin1()}};
    request.timeout = AutocompleteClient::requestTimeout;
    request.totalTimeout = AutocompleteClient::requestTimeout * 2;
    request.bodyLimit = AutocompleteClient::bodyLimit;
    return request;
}

} // namespace

QUrl AutocompleteClient::defaultHintsURL()
{
    return QUrl(
        QStringLiteral("https://search.itunes.apple.com/WebObjects/MZSearchHints.woa/wa/hints"));
}

AutocompleteClient::AutocompleteClient(Arguments arguments) : m_core(std::make_unique<Core>())
{
    m_core->use = std::move(arguments);
    m_core->file = std::make_shared<AutocompleteStateFile>(m_core->use.persistencePath);
}

AutocompleteClient::~AutocompleteClient() = default;

const AutocompleteClient::State &AutocompleteClient::state()
{
    m_core->load();
    return m_core->state;
}

Task<std::optional<AutocompleteEvidence>>
AutocompleteClient::observe(QString keyword, QString country, std::stop_token callersStop)
{
    throwIfStopped(callersStop);
    keyword = keyword.trimmed().toLower();
    country = country.toUpper();
    const std::optional<StorefrontId> store = storefrontIdOf(country);
    const QStringList prefixes = autocompletePrefixes(keyword);
    if (m_runs.runningTasks() > 0 || !store || prefixes.isEmpty())
        co_return std::nullopt;
    const ScopedStop stop(m_runs, callersStop);
    m_core->load();

    AutocompleteEvidence evidence;
    evidence.keyword = keyword;
    evidence.country = country;
    evidence.storefront = QString::number(store->storefrontId);
    evidence.language = store->language;
    evidence.plannedProbes = prefixes.size();
    for (const QString &prefix : prefixes) {
        const std::optional<Hints> hints = co_await fetch(prefix, country, Asker::Run, stop);
        if (!hints)
            break;
        evidence.probes.append(
            {prefix, hints->terms, hints->fetchedAt, rankAmong(hints->terms, keyword)});
    }

    const QString key = country + u':' + keyword;
    const std::int64_t today = autocompleteDay(m_core->use.clock->now());
    if (evidence.probes.size() == evidence.plannedProbes && hasProbeOfDay(evidence.probes, today)) {
        if (const auto score = visibilityScore(evidence.probes, keyword))
            m_core->addScore(key, *score);
    }
    const auto history = m_core->state.history.find(key);
    if (history != m_core->state.history.end()) {
        const VisibilityReport report = reportVisibility(history->second, today);
        evidence.observedDays = report.observedDays;
        evidence.dailyScore = report.score;
        evidence.scoreSpread = report.spread;
    }
    if (evidence.probes.isEmpty() && !evidence.dailyScore)
        co_return std::nullopt;
    co_return evidence;
}

Task<std::optional<QStringList>> AutocompleteClient::suggest(QString prefix, QString country,
                                                             std::stop_token callersStop)
{
    throwIfStopped(callersStop);
    prefix = prefix.trimmed().toLower();
    country = country.toUpper();
    if (prefix.isEmpty() || !storefrontIdOf(country))
        co_return std::nullopt;
    const ScopedStop stop(m_typing, callersStop);
    m_core->load();
    const std::optional<Hints> hints = co_await fetch(prefix, country, Asker::Typist, stop);
    if (hints)
        co_return hints->terms;
    co_return m_core->knownTerms(country, prefix);
}

Task<bool> AutocompleteClient::awaitTurn(Asker asker, std::stop_token stop)
{
    const Core::Waiting waiting(*m_core, asker);
    // Once, because typing comes and goes.
    bool hasYielded = false;
    while (m_core->mayRequest()) {
        const std::optional<Date> turn = m_core->nextRequest;
        if (!turn)
            co_return true;
        // Never longer than the interval, also when the clock was set back.
        const Seconds wait = std::min(*turn - m_core->use.clock->now(), interval);
        co_await m_core->use.clock->sleep(wait, stop);
        // A day may have begun meanwhile, and its budget with it.
        if (!m_core->mayRequest())
            break;
        // Somebody else may have gone first.
        if (m_core->nextRequest != turn)
            continue;
        if (hasYielded || !m_core->isTurnOfOthers(asker))
            co_return true;
        // They wake now, too.
        hasYielded = true;
        co_await m_core->use.clock->sleep(interval, stop);
    }
    co_return false;
}

Task<std::optional<AutocompleteClient::Hints>>
AutocompleteClient::fetch(QString prefix, QString country, Asker asker, std::stop_token stop)
{
    throwIfStopped(stop);
    const QString key = country + u':' + prefix;
    if (std::optional<Hints> cached = m_core->cached(key))
        co_return cached;
    const bool isMyTurn = co_await awaitTurn(asker, stop);
    if (!isMyTurn)
        co_return std::nullopt;
    m_core->last = asker;
    try {
        const HttpRequest request =
            hintsRequest(m_core->use.hintsURL, prefix, storefrontIdOf(country).value());
        m_core->countRequest();
        // However it ends: a request that was stopped has been counted too.
        const auto atEnd = qScopeGuard([this] { m_core->save(); });
        const HttpResponse response = co_await m_core->use.send(request, stop);
        if (isRefusal(response.status)) {
            m_core->block(response);
            co_return std::nullopt;
        }
        if (!response.isSuccess())
            throw BadServerResponseError(response.status);
        const Hints hints{parseSearchHints(response.body), m_core->use.clock->now()};
        m_core->failuresInARow = 0;
        m_core->keep(key, hints);
        co_return hints;
    } catch (const Error &) {
        m_core->noteFailure();
        co_return std::nullopt;
    }
}

QStringList parseSearchHints(const QByteArray &body)
{
    const PropertyListValue list = readPropertyList(body, {.bytes = AutocompleteClient::bodyLimit});
    const std::optional<PropertyListValue> member = list.member(QStringLiteral("hints"));
    const std::optional<PropertyListValue::Array> hints = member ? member->array() : std::nullopt;
    if (!hints)
        throw PropertyListError(QStringLiteral("it holds no hints"));
    QStringList terms;
    for (const PropertyListValue &hint : *hints) {
        const QString text = hint.textMember(QStringLiteral("term")).value_or(QString());
        if (!text.isEmpty())
            terms.append(text);
    }
    return terms;
}

} // namespace veltrix
