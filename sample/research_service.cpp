// SPDX-License-Identifier: GPL-3.0-or-later
// The research function.
#include "sample/research_service.h"

#include "sample/command_term.h"
#include "sample/http_reply.h"
#include "sample/json_text.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <utility>

namespace veltrix::sample
{

namespace
{

constexpr int resultLimit = 100;
constexpr std::chrono::seconds slowness(3);
constexpr const char *pendingSeconds = "2";
constexpr const char *limitedSeconds = "120";
const char *const jsonType = "application/json";

/// The fields that the function passes on.
constexpr std::array<QByteArrayView, 19> passedOn{"trackId",
                                                  "trackName",
                                                  "userRatingCount",
                                                  "averageUserRating",
                                                  "releaseDate",
                                                  "currentVersionReleaseDate",
                                                  "artworkUrl60",
                                                  "artworkUrl100",
                                                  "artworkUrl512",
                                                  "primaryGenreName",
                                                  "kind",
                                                  "description",
                                                  "screenshotUrls",
                                                  "ipadScreenshotUrls",
                                                  "sellerName",
                                                  "version",
                                                  "formattedPrice",
                                                  "minimumOsVersion",
                                                  "trackViewUrl"};

QByteArray objectOf(const std::vector<RecordField> &fields)
{
    QByteArrayList members;
    for (const RecordField &field : fields)
        if (std::ranges::find(passedOn, QByteArrayView(field.key)) != passedOn.end())
            members += '"' + field.key + "\":" + field.value;
    return '{' + members.join(',') + '}';
}

/// The status and code with which the platform itself refuses, before the function runs.
struct PlatformError {
    QLatin1String command;
    int status;
    QByteArrayView code;
    QByteArrayView message;
};
constexpr std::array platformErrors{
    PlatformError{QLatin1String("error"), 500, "\"INTERNAL_ERROR\"", "Internal Server Error"},
    PlatformError{QLatin1String("boot"), 503, "\"BOOT_ERROR\"", "Function failed to start"},
    PlatformError{QLatin1String("idle"), 504, "\"IDLE_TIMEOUT\"", "Function timed out"},
    PlatformError{QLatin1String("worker"), 546, "\"WORKER_LIMIT\"", "Function ran out of memory"},
    PlatformError{QLatin1String("missing"), 404, "404", "Function not found"},
};

void replyPlatformError(const httplib::Request &request, httplib::Response &response, int status,
                        QByteArrayView code, QByteArrayView message)
{
    response.status = status;
    replyText(request, response,
              QByteArray("{\"code\":").append(code) + ",\"message\":\"" +
                  QByteArray().append(message) + "\"}",
              jsonType);
}

/// An answer without results; Retry-After in seconds, or none for null.
void replyStatus(const httplib::Request &request, httplib::Response &response, int httpStatus,
                 const char *status, const char *retryAfter)
{
    response.status = httpStatus;
    if (retryAfter)
        response.set_header("Retry-After", retryAfter);
    replyText(request, response, QByteArray("{\"status\":\"") + status + "\"}", jsonType);
}

} // namespace

ResearchService::ResearchService(const AppStore &store, Pause &pause, QString pictureOrigin,
                                 FirstAnswer firstAnswer)
    : m_store(store), m_pause(pause), m_pictureOrigin(std::move(pictureOrigin)),
      m_firstAnswer(firstAnswer)
{
}

void ResearchService::install(httplib::Server &server)
{
    server.Post(researchPath, [this](const httplib::Request &request, httplib::Response &response) {
        research(request, response);
    });
}

void ResearchService::research(const httplib::Request &request, httplib::Response &response)
{
    if (request.get_header_value("apikey") != publishableKey)
        return replyPlatformError(request, response, 401, "401", "Invalid API key");
    const QJsonObject question =
        QJsonDocument::fromJson(QByteArray::fromStdString(request.body)).object();
    const QString keyword = question.value(QLatin1String("keyword")).toString();
    const QString country = question.value(QLatin1String("country")).toString();
    if (keyword.isEmpty() || country.size() != 2)
        return replyPlatformError(request, response, 400, "\"BAD_REQUEST\"",
                                  "keyword and country are required");
    const auto [command, term] = commandTerm(keyword);
    const bool canBePending =
        command == QLatin1String("pending") || m_firstAnswer == FirstAnswer::Pending;
    if (canBePending && isFirstQuestion(country, keyword))
        return replyStatus(request, response, 202, "pending", pendingSeconds);
    answerCommand(command, country, term, request, response);
}

void ResearchService::answerCommand(const QString &command, const QString &country,
                                    const QString &term, const httplib::Request &request,
                                    httplib::Response &response)
{
    const auto *error = std::ranges::find(platformErrors, command, &PlatformError::command);
    if (error != platformErrors.end())
        return replyPlatformError(request, response, error->status, error->code, error->message);
    if (command == QLatin1String("limited"))
        return replyStatus(request, response, 429, "unavailable", limitedSeconds);
    if (command == QLatin1String("unavailable"))
        return replyStatus(request, response, 503, "unavailable", nullptr);
    if (command == QLatin1String("failed"))
        return replyStatus(request, response, 200, "failed", limitedSeconds);
    if (command == QLatin1String("stale"))
        return replyText(request, response, R"({"status":"stale","retryAfter":90.5})", jsonType);
    if (command == QLatin1String("garbage"))
        return replyGarbage(response);
    if (command == QLatin1String("cut"))
        return replyCut(response, readyBody(country, term), jsonType);
    if (command == QLatin1String("slow"))
        m_pause.wait(slowness);
    answerReady(country, term, request, response);
}

bool ResearchService::isFirstQuestion(const QString &country, const QString &keyword)
{
    const std::lock_guard lock(m_mutex);
    const QString key = country + QLatin1Char(':') + keyword;
    if (m_pending.erase(key) > 0)
        return false;
    m_pending.insert(key);
    return true;
}

void ResearchService::answerReady(const QString &country, const QString &term,
                                  const httplib::Request &request,
                                  httplib::Response &response) const
{
    replyText(request, response, readyBody(country, term), jsonType);
}

QByteArray ResearchService::readyBody(const QString &country, const QString &term) const
{
    QByteArrayList results;
    if (const Storefront *storefront = findStorefront(country))
        for (const auto &record : m_store.search(term, *storefront, resultLimit, m_pictureOrigin))
            results += objectOf(record);
    const QString now =
        QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ"));
    return "{\"status\":\"ready\",\"fetchedAt\":" + jsonString(now) + ",\"results\":[" +
           results.join(',') + "]}";
}

} // namespace veltrix::sample
