// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/itunes_client.h"

#include "clients/request_url.h"
#include "model/json_reader.h"

#include <algorithm>

namespace veltrix
{

namespace
{

QString decimal(std::int64_t value)
{
    return QString::number(qlonglong(value));
}

/// The body for a URL: from the cache without a permit, else from the service with one.
Task<QByteArray> fetchBody(QUrl url, HttpSend send,
                           std::shared_ptr<ITunesTrafficController> traffic, std::stop_token stop)
{
    const QString key = absoluteString(url);
    if (std::optional<QByteArray> cached = traffic->cachedResponse(key))
        co_return *cached;
    co_await traffic->acquirePermit(stop);
    HttpRequest request;
    request.url = url;
    const HttpResponse response = co_await send(request, stop);
    if (!response.isSuccess())
        throw BadServerResponseError(response.status);
    traffic->storeResponse(response.body, key);
    co_return response.body;
}

Task<QList<ITunesAppResult>> fetchResults(ITunesClient::Arguments client, QString path,
                                          QList<QueryItem> query, std::stop_token stop)
{
    const QUrl url = requestUrl(client.baseURL, path, query);
    const QByteArray body = co_await fetchBody(url, client.send, client.traffic, stop);
    co_return fromJson<ITunesSearchResponse>(body).results;
}

Task<std::optional<ITunesAppResult>> findApp(Task<QList<ITunesAppResult>> search,
                                             std::int64_t trackId)
{
    const QList<ITunesAppResult> results = co_await search;
    const auto found =
        std::find_if(results.begin(), results.end(), [trackId](const ITunesAppResult &result) {
            return result.trackId == trackId;
        });
    if (found == results.end())
        co_return std::nullopt;
    co_return *found;
}

} // namespace

QUrl ITunesClient::defaultBaseURL()
{
    return QUrl(QStringLiteral("https://itunes.apple.com"));
}

ITunesClient::ITunesClient(Arguments arguments) : m_arguments(std::move(arguments)) {}

Task<QList<ITunesAppResult>> ITunesClient::search(QString term, QString country, std::int64_t limit,
                                                  std::stop_token stop)
{
    const QList<QueryItem> query = {
        {QStringLiteral("term"), term},
        {QStringLiteral("entity"), QStringLiteral("software")},
        {QStringLiteral("country"), country.toUpper()},
        {QStringLiteral("limit"), decimal(limit)},
    };
    return fetchResults(m_arguments, QStringLiteral("search"), query, std::move(stop));
}

Task<std::optional<ITunesAppResult>> ITunesClient::lookup(std::int64_t trackId, QString country,
                                                          std::stop_token stop)
{
    const QList<QueryItem> query = {
        {QStringLiteral("id"), decimal(trackId)},
        {QStringLiteral("country"), country.toUpper()},
        {QStringLiteral("entity"), QStringLiteral("software")},
    };
    return findApp(fetchResults(m_arguments, QStringLiteral("lookup"), query, std::move(stop)),
                   trackId);
}

} // namespace veltrix
