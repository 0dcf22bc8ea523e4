// SPDX-License-Identifier: GPL-3.0-or-later
// The research client on a service that answers as told, at virtual times.
#pragma once

#include "clients/research_client.h"

#include "json/json_reader.h"
#include "support/fake_http.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltrix
{

using Results = QList<ITunesAppResult>;

inline const Date start = dateFromUnixSeconds(1'795'262'400); // 2026-11-21T12:00:00Z

/// Notes what is looked up and answers with an app of that id.
class FakeLookup final : public ITunesClientProtocol
{
public:
    Task<Results> search(QString, QString, std::int64_t, std::stop_token) override
    {
        ADD_FAILURE() << "searched where nothing is to be searched";
        co_return Results();
    }
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t trackId, QString country,
                                                std::stop_token) override
    {
        asked.append(QStringLiteral("%1 %2").arg(trackId).arg(country));
        ITunesAppResult found;
        found.trackId = trackId;
        co_return found;
    }
    QStringList asked;
};

inline QByteArray apps(int count)
{
    QByteArrayList list;
    for (int i = 1; i <= count; ++i)
        list.append("{\"trackId\":" + QByteArray::number(i) + "}");
    return "[" + list.join(',') + "]";
}

inline HttpResponse ready(int count, const char *fetchedAt = "2026-11-21T12:00:00.000Z")
{
    return FakeHttp::response(200, "{\"status\":\"ready\",\"results\":" + apps(count) +
                                       ",\"fetchedAt\":\"" + fetchedAt + "\"}");
}

inline HttpResponse status(int code, QByteArray body = {}, const char *retryAfter = nullptr)
{
    QList<HttpHeader> headers;
    if (retryAfter != nullptr)
        headers.append(HttpHeader{"retry-after", retryAfter});
    return FakeHttp::response(code, std::move(body), headers);
}

inline QString queuedText(int minutes)
{
    return QStringLiteral("Research is queued or temporarily limited. Try again in %1 minute(s).")
        .arg(minutes);
}

class ResearchClientTest : public testing::Test
{
protected:
    ResearchClientTest()
    {
        m_http.answerWith(ready(3));
        open();
    }

    void open()
    {
        m_client = std::make_unique<ResearchClient>(ResearchClient::Arguments{
            [this] { return m_configuration(); }, m_http.sender(), m_clock, m_lookup, {}});
    }
    Outcome<Results> search(const char *term = "photo editor", const char *country = "us",
                            std::int64_t limit = 100)
    {
        return Outcome(m_client->search(QString::fromUtf8(term), QString::fromUtf8(country), limit,
                                        m_stop.get_token()));
    }
    std::optional<SavedResults> saved(const QString &keyword, const QString &country)
    {
        return Outcome(m_client->savedResults(keyword, country, {})).value();
    }
    /// Moments of the requests, in seconds from the start.
    [[nodiscard]] std::vector<double> times() const
    {
        std::vector<double> times;
        for (const auto &sent : m_http.sent())
            times.push_back(std::round((sent.at - start).count() * 1000) / 1000);
        return times;
    }

    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>(start);
    FakeHttp m_http{m_clock};
    std::shared_ptr<FakeLookup> m_lookup = std::make_shared<FakeLookup>();
    ConfigurationProvider m_configuration = [] {
        return SupabaseConfiguration{QUrl(QStringLiteral("https://project.example")),
                                     QStringLiteral("sb_publishable_x")};
    };
    std::unique_ptr<ResearchClient> m_client;
    std::stop_source m_stop;
};

} // namespace veltrix
