// SPDX-License-Identifier: GPL-3.0-or-later
// What the research service answers.
#include "sample/research_answer.h"

#include "sample/http_reply.h"
#include "sample/json_text.h"

#include <QDateTime>

#include <algorithm>

namespace veltrix::sample
{

namespace
{

using std::chrono::milliseconds;
using std::chrono::seconds;

const char *const jsonType = "application/json";

QByteArray jsonMoment(Moment moment)
{
    const auto date = QDateTime::fromMSecsSinceEpoch(moment.time_since_epoch().count(), Qt::UTC);
    return jsonString(date.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ")));
}

/// Turns each kind of standing into its answer.
class Reply
{
public:
    Reply(const httplib::Request &request, httplib::Response &response)
        : m_request(request), m_response(response)
    {
    }

    void operator()(const Ready &ready) const
    {
        replyText(m_request, m_response, readyBody(ready), jsonType);
    }
    void operator()(const Pending &pending) const { wait(202, "pending", pending.wait); }
    void operator()(const Stale &stale) const
    {
        wait(200, "stale", stale.wait, ",\"fetchedAt\":" + jsonMoment(stale.fetchedAt));
    }
    void operator()(const Blocked &blocked) const { wait(200, "unavailable", blocked.wait); }
    void operator()(const Failed &failed) const { wait(200, "failed", failed.wait); }

    /// 429 and 503 hold back every keyword of a client, so nothing else may be said that way.
    void operator()(Refused refused) const
    {
        switch (refused) {
        case Refused::QueueFull:
            return wait(200, "unavailable", seconds(600));
        case Refused::ShareSpent:
            return wait(200, "unavailable", seconds(3'600));
        case Refused::TooManyOutstanding:
            return wait(429, "unavailable", seconds(60));
        case Refused::DatabaseOutOfReach:
            return wait(503, "unavailable", seconds(10));
        }
    }

private:
    void wait(int httpStatus, const char *status, milliseconds duration,
              const QByteArray &more = {}) const
    {
        const auto whole = std::max(std::chrono::ceil<seconds>(duration), seconds(1));
        const QByteArray retryAfter = QByteArray::number(qint64(whole.count()));
        m_response.status = httpStatus;
        m_response.set_header("Retry-After", retryAfter.toStdString());
        replyText(m_request, m_response,
                  QByteArray("{\"status\":\"") + status + '"' + more +
                      ",\"retryAfter\":" + retryAfter + '}',
                  jsonType);
    }

    const httplib::Request &m_request;
    httplib::Response &m_response;
};

} // namespace

QByteArray readyBody(const Ready &ready)
{
    return "{\"status\":\"ready\",\"fetchedAt\":" + jsonMoment(ready.fetchedAt) +
           ",\"results\":" + ready.list + '}';
}

void replyStanding(const httplib::Request &request, httplib::Response &response,
                   const Standing &standing)
{
    std::visit(Reply(request, response), standing);
}

void replyRefusal(const httplib::Request &request, httplib::Response &response,
                  const Refusal &refusal)
{
    response.status = refusal.status;
    replyText(request, response,
              QByteArray("{\"code\":").append(refusal.code) + ",\"message\":\"" +
                  QByteArray().append(refusal.message) + "\"}",
              jsonType);
}

} // namespace veltrix::sample
