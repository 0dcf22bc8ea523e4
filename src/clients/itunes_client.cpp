// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/itunes_client.h"

#include "clients/request_url.h"
#include "json/json_error.h"
#include "json/json_reader.h"

#include <algorithm>

namespace veltrix
{

namespace
{

QString decimal(std::int64_t value)
{
    return QString::number(qlonglong(value));
}

/// The first results in a body, `most` of them. Throws UnreadableAnswerError.
QList<ITunesAppResult> resultsIn(const QByteArray &body, const QUrl &url, size_t most)
{
    try {
        return fromJson<ITunesSearchResponse>(body, ListLimit{most}).results;
    } catch (const DecodingError &) {
        // Where the text stops being JSON helps nobody who reads it.
        throw UnreadableAnswerError(url.host());
    }
}

Task<std::optional<ITunesAppResult>> appAmong(Task<QList<ITunesAppResult>> search,
                                              std::int64_t trackId)
{
    const QList<ITunesAppResult> results = co_await search;
    if (const ITunesAppResult *found = findApp(results, trackId))
        co_return *found;
    co_return std::nullopt;
}

} // namespace

QUrl ITunesClient::defaultBaseURL()
{
    return QUrl(QStringLiteral("https://itunes.apple.com"));
}

ITunesClient::ITunesClient(Arguments arguments) : m_use(std::move(arguments)) {}

Task<QList<ITunesAppResult>> ITunesClient::search(QString term, QString country, std::int64_t limit,
                                                  std::stop_token stop)
{
    const QList<QueryItem> query = {
        {QStringLiteral("term"), term},
        {QStringLiteral("entity"), QStringLiteral("software")},
        {QStringLiteral("country"), country.toUpper()},
        {QStringLiteral("limit"), decimal(limit)},
    };
    const auto most = size_t(std::clamp<std::int64_t>(limit, 1, mostResults));
    return fetch(QStringLiteral("search"), query, most, std::move(stop));
}

Task<std::optional<ITunesAppResult>> ITunesClient::lookup(std::int64_t trackId, QString country,
                                                          std::stop_token stop)
{
    const QList<QueryItem> query = {
        {QStringLiteral("id"), decimal(trackId)},
        {QStringLiteral("country"), country.toUpper()},
        {QStringLiteral("entity"), QStringLiteral("software")},
    };
    return appAmong(fetch(QStringLiteral("lookup"), query, mostResults, std::move(stop)), trackId);
}

Task<QList<ITunesAppResult>> ITunesClient::fetch(QString path, QList<QueryItem> query, size_t most,
                                                 std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const QUrl url = requestUrl(m_use.baseURL, path, query);
    const QString key = absoluteString(url);
    if (const std::optional<QByteArray> cached = m_use.traffic->cachedResponse(key))
        co_return resultsIn(*cached, url, most);
    co_await m_use.traffic->acquirePermit(stop);
    HttpRequest request;
    request.url = url;
    request.permitToRepeat = [this](std::stop_token permitStop) {
        return m_use.traffic->acquirePermit(std::move(permitStop));
    };
    const HttpResponse response = co_await m_use.send(request, stop);
    if (!response.isSuccess())
        throw BadServerResponseError(response.status);
    const QList<ITunesAppResult> results = resultsIn(response.body, url, most);
    m_use.traffic->storeResponse(response.body, key);
    co_return results;
}

} // namespace veltrix
