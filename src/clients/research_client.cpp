// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/research_client.h"

#include "clients/pending_wait.h"
#include "clients/request_url.h"
#include "clients/research_envelope.h"
#include "clients/retry_after.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

/// A keyword and a storefront in the form in which they are sent and kept.
struct Subject {
    QString keyword;
    QString country;

    Subject(const QString &term, const QString &storefront)
        : keyword(term.trimmed().toLower()), country(storefront.toUpper())
    {
    }
    [[nodiscard]] QString key() const { return rankedAppsKey(keyword, country); }
};

ResearchError requestFailed(int status)
{
    return ResearchError(
        QStringLiteral("Research request failed (%1). Please try again later.").arg(status));
}

ResearchError queued(Seconds wait)
{
    // An instant has a resolution of some hundred nanoseconds, which must not make a second minute
    // of sixty seconds.
    constexpr double resolution = 1e-3;
    const double minutes = std::max(1.0, std::ceil((wait.count() - resolution) / 60));
    return ResearchError(
        QStringLiteral("Research is queued or temporarily limited. Try again in %1 minute(s).")
            .arg(QString::number(minutes, 'f', 0)));
}

HttpRequest requestFor(const SupabaseConfiguration &configuration, const Subject &subject)
{
    HttpRequest request;
    request.method = HttpRequest::Method::Post;
    request.url =
        requestUrl(configuration.projectURL, QStringLiteral("functions/v1/aso-research"), {});
    request.headers = {{"apikey", configuration.publishableKey.toUtf8()},
                       {"Content-Type", "application/json"}};
    request.body = toJson(ResearchQuery{subject.keyword, subject.country});
    request.timeout = ResearchClient::requestTimeout;
    return request;
}

/// Nothing when the body is not an envelope: platforms and proxies answer in their own forms.
std::optional<ResearchEnvelope> envelopeOf(const HttpResponse &response)
{
    try {
        return fromJson<ResearchEnvelope>(response.body,
                                          ListLimit{size_t(ResearchClient::mostResults)});
    } catch (const DecodingError &) {
        return std::nullopt;
    }
}

enum class Kind { Ready, Queued, Failed };

Kind classify(const HttpResponse &response, const std::optional<ResearchEnvelope> &envelope)
{
    if (response.status == 202 || response.status == 429 || response.status == 503)
        return Kind::Queued;
    if (response.status != 200 || !envelope || !envelope->status)
        return Kind::Failed;
    if (*envelope->status == QLatin1String("ready"))
        return envelope->results ? Kind::Ready : Kind::Failed;
    for (const char *waiting : {"stale", "pending", "failed", "unavailable"}) {
        if (*envelope->status == QLatin1String(waiting))
            return Kind::Queued;
    }
    return Kind::Failed;
}

Seconds delayOf(const HttpResponse &response, const std::optional<ResearchEnvelope> &envelope)
{
    Seconds delay = ResearchClient::defaultRetryDelay;
    if (const std::optional<Seconds> header = retryAfter(response))
        delay = *header;
    else if (envelope && envelope->retryAfter)
        delay = Seconds(*envelope->retryAfter);
    return std::max(delay, Seconds(1));
}

QList<ITunesAppResult> firstOf(const QList<ITunesAppResult> &results, std::int64_t limit)
{
    return results.first(std::clamp<std::int64_t>(limit, 0, results.size()));
}

} // namespace

struct ResearchClient::State {
    /// Not before this moment, which was so far away when it was set.
    struct RetryDate {
        Date moment;
        Seconds delay;
    };

    explicit State(Arguments arguments) : use(std::move(arguments)) {}

    Arguments use;
    RankedAppsCache cache{use.cache, use.clock};
    /// By cache key.
    QHash<QString, RetryDate> retryDates;
    /// For the whole service.
    std::optional<RetryDate> serviceRetryDate;

    /// Whether they may be served without asking the service.
    [[nodiscard]] bool areFresh(const SavedResults &saved) const
    {
        // The service's clock and this one may differ a little, but results that seem to be of next
        // year must not be served until then.
        const Seconds age = use.clock->now() - saved.fetchedAt;
        return age < freshness && age > -freshness;
    }

    /// The moment before which a key must not be asked for, or nothing.
    [[nodiscard]] std::optional<Date> retryMoment(const QString &key) const
    {
        const Date now = use.clock->now();
        std::optional<Date> latest;
        const auto consider = [now, &latest](const RetryDate &date) {
            if (isPending(date.moment, now, date.delay))
                latest = std::max(date.moment, latest.value_or(date.moment));
        };
        if (const auto own = retryDates.constFind(key); own != retryDates.constEnd())
            consider(*own);
        if (serviceRetryDate)
            consider(*serviceRetryDate);
        return latest;
    }

    /// Takes a final answer in and gives its results.
    QList<ITunesAppResult> accept(const QString &key, const ResearchEnvelope &envelope)
    {
        QList<ITunesAppResult> results = firstOf(*envelope.results, mostResults);
        retryDates.remove(key);
        // Without its date an answer cannot grow old, so it is not kept.
        const auto fetchedAt = parseInternetDateTime(envelope.fetchedAt.value_or(QString()),
                                                     FractionalSeconds::Required);
        if (fetchedAt)
            cache.keep(key, SavedResults{*fetchedAt, results});
        return results;
    }

    /// Notes that the service wants to be left alone, and gives until when.
    Date postpone(const QString &key, int status, Seconds delay)
    {
        const Date retryMoment = use.clock->now() + delay;
        if (status == 429 || status == 503)
            serviceRetryDate = {retryMoment, delay};
        else
            retryDates.insert(key, {retryMoment, delay});
        return retryMoment;
    }
};

ResearchClient::ResearchClient(Arguments arguments)
    : m_state(std::make_unique<State>(std::move(arguments)))
{
}

ResearchClient::~ResearchClient() = default;

Task<QList<ITunesAppResult>> ResearchClient::search(QString term, QString country,
                                                    std::int64_t limit, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    throwIfStopped(stop);
    const SupabaseConfiguration configuration = m_state->use.configuration();
    const Subject subject(term, country);
    const qsizetype length = subject.keyword.toUcs4().size();
    if (length < 1 || length > longestKeyword)
        throw ResearchError(QStringLiteral("Enter a keyword between 1 and 100 characters."));
    const QString key = subject.key();
    const std::optional<SavedResults> saved = co_await m_state->cache.find(key, stop);
    if (saved && m_state->areFresh(*saved))
        co_return firstOf(saved->results, limit);

    const HttpRequest request = requestFor(configuration, subject);
    const Date deadline = m_state->use.clock->now() + patience;
    for (int attempt = 1;; ++attempt) {
        co_await passGate(key, deadline, stop);
        throwIfStopped(stop);
        const HttpResponse response = co_await m_state->use.send(request, stop);
        const std::optional<ResearchEnvelope> envelope = envelopeOf(response);
        switch (classify(response, envelope)) {
        case Kind::Ready:
            co_return firstOf(m_state->accept(key, *envelope), limit);
        case Kind::Failed:
            throw requestFailed(response.status);
        case Kind::Queued:
            break;
        }
        const Seconds delay = delayOf(response, envelope);
        const Date retryMoment = m_state->postpone(key, response.status, delay);
        if (attempt == mostAttempts || retryMoment >= deadline)
            throw queued(delay);
    }
}

Task<std::optional<ITunesAppResult>> ResearchClient::lookup(std::int64_t trackId, QString country,
                                                            std::stop_token stop)
{
    return m_state->use.lookup->lookup(trackId, std::move(country), std::move(stop));
}

Task<std::optional<SavedResults>> ResearchClient::savedResults(QString keyword, QString country,
                                                               std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    co_return co_await m_state->cache.find(rankedAppsKey(keyword, country), stop);
}

Task<void> ResearchClient::passGate(QString key, Date deadline, std::stop_token stop)
{
    const std::optional<Date> retryMoment = m_state->retryMoment(key);
    if (!retryMoment)
        co_return;
    const Seconds wait = *retryMoment - m_state->use.clock->now();
    if (wait <= Seconds::zero())
        co_return;
    if (*retryMoment >= deadline)
        throw queued(wait);
    co_await m_state->use.clock->sleep(wait, stop);
}

} // namespace veltrix
