// SPDX-License-Identifier: GPL-3.0-or-later
// Search and look-up, pictures and store pages, over HTTP.
#include "sample/itunes_service.h"

#include "sample/artwork.h"
#include "sample/command_term.h"
#include "sample/dice.h"
#include "sample/http_reply.h"
#include "sample/itunes_body.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace veltrix::sample
{

namespace
{

constexpr int defaultLimit = 50;
constexpr int largestLimit = 200;
/// More than any client should be willing to read.
constexpr qsizetype hugePadding = 40 * 1024 * 1024;
const char *const scriptType = "text/javascript; charset=utf-8";

QString parameter(const httplib::Request &request, const char *name)
{
    return QString::fromStdString(request.get_param_value(name));
}

/// A part of the path that the route's pattern has found.
QString part(const httplib::Request &request, std::size_t number)
{
    return QString::fromStdString(request.matches[number].str());
}

/// Where the client has reached this server, from its Host header.
QString originOf(const httplib::Request &request)
{
    const std::string host = request.get_header_value("Host");
    const bool plain = !host.empty() && std::ranges::all_of(host, [](char character) {
        return std::isalnum(static_cast<unsigned char>(character)) || character == '.' ||
               character == ':' || character == '-' || character == '[' || character == ']';
    });
    return QStringLiteral("http://") +
           (plain ? QString::fromStdString(host) : QStringLiteral("127.0.0.1"));
}

bool isCountryCode(const QString &text)
{
    return text.size() == 2 && text.at(0).isLetter() && text.at(1).isLetter();
}

bool asksForSoftware(const httplib::Request &request)
{
    const QString entity = parameter(request, "entity");
    return entity.isEmpty() || entity == QLatin1String("software");
}

std::optional<int> limitOf(const httplib::Request &request)
{
    if (!request.has_param("limit"))
        return defaultLimit;
    bool isNumber = false;
    const int limit = parameter(request, "limit").toInt(&isNumber);
    if (!isNumber)
        return std::nullopt;
    return std::clamp(limit, 1, largestLimit);
}

QList<qint64> idsOf(const httplib::Request &request)
{
    QList<qint64> ids;
    for (const QString &text : parameter(request, "id").split(QLatin1Char(','))) {
        bool isNumber = false;
        const qint64 id = text.trimmed().toLongLong(&isNumber);
        if (isNumber)
            ids += id;
    }
    return ids;
}

/// The header lines that answers of the real service carry.
void addServiceHeaders(const httplib::Request &request, httplib::Response &response)
{
    // Caches on the way have held the answer for a while already.
    const std::uint64_t held = stableTextHash(request.target.c_str()) % 600;
    response.set_header("Cache-Control", "max-age=" + std::to_string(86'400 - held));
    response.set_header("Content-Disposition", "attachment; filename=1.txt");
    response.set_header("X-Content-Type-Options", "nosniff");
}

void replyRecords(const httplib::Request &request, httplib::Response &response,
                  const Records &records)
{
    addServiceHeaders(request, response);
    replyText(request, response, itunesBody(records), scriptType);
}

void replyInvalid(const httplib::Request &request, httplib::Response &response,
                  const QByteArray &key)
{
    response.status = 400;
    replyText(request, response, invalidValueBody(key), scriptType);
}

void replyThrottled(httplib::Response &response)
{
    response.set_header("Cache-Control", "max-age=0, no-cache, no-store");
    replyEmpty(response, 403);
}

void replyPicture(httplib::Response &response, const QByteArray &png)
{
    response.set_header("Cache-Control", "public, max-age=86400");
    replyBytes(response, png, "image/png");
}

QByteArray pageOf(const SampleApp &app, const QString &name)
{
    return QStringLiteral("<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>%1</title>"
                          "</head>\n<body><img src=\"/artwork/%2/200.png\" alt=\"\">"
                          "<h1>%1</h1><p>%3</p></body></html>\n")
        .arg(name.toHtmlEscaped())
        .arg(app.trackId)
        .arg(app.publisher.name.toHtmlEscaped())
        .toUtf8();
}

} // namespace

ItunesService::ItunesService(const AppStore &store, Pause &pause, int requestsPerMinute)
    : m_store(store), m_pause(pause), m_throttle(requestsPerMinute)
{
}

void ItunesService::install(httplib::Server &server)
{
    server.Get("/search", std::bind_front(&ItunesService::search, this));
    server.Get("/lookup", std::bind_front(&ItunesService::lookUp, this));
    server.Get(R"(/artwork/(\d+)/(\d+)\.png)", std::bind_front(&ItunesService::artwork, this));
    server.Get(R"(/screenshots/(\d+)/(ipad-)?(\d+)\.png)",
               std::bind_front(&ItunesService::screenshot, this));
    server.Get(R"(/([A-Za-z]{2})/app/(?:[^/]+/)?id(\d+))",
               std::bind_front(&ItunesService::storePage, this));
}

bool ItunesService::refused(httplib::Response &response)
{
    if (m_throttle.admits())
        return false;
    replyThrottled(response);
    return true;
}

bool ItunesService::misbehave(const QString &command, httplib::Response &response)
{
    if (command == QLatin1String("throttled"))
        replyThrottled(response);
    else if (command == QLatin1String("limited"))
        replyEmpty(response, 429);
    else if (command == QLatin1String("error"))
        replyEmpty(response, 500);
    else if (command == QLatin1String("garbage"))
        replyGarbage(response);
    else if (command == QLatin1String("huge"))
        replyBytes(response,
                   "{\"resultCount\":0,\"results\":[" + QByteArray(hugePadding, ' ') + "]}",
                   scriptType);
    else
        return false;
    return true;
}

void ItunesService::search(const httplib::Request &request, httplib::Response &response)
{
    if (refused(response))
        return;
    const auto [command, term] = commandTerm(parameter(request, "term"));
    if (misbehave(command, response))
        return;
    if (command == QLatin1String("slow"))
        m_pause.wait(Pause::slowness);
    const QString country =
        request.has_param("country") ? parameter(request, "country") : QStringLiteral("US");
    const std::optional<int> limit = limitOf(request);
    if (!isCountryCode(country))
        return replyInvalid(request, response, "country");
    if (!limit)
        return replyInvalid(request, response, "limit");
    const Storefront *storefront = findStorefront(country);
    Records records;
    if (storefront && asksForSoftware(request))
        records = m_store.search(term, *storefront, *limit, originOf(request));
    if (command == QLatin1String("cut"))
        return replyCut(response, itunesBody(records), scriptType);
    replyRecords(request, response, records);
}

void ItunesService::lookUp(const httplib::Request &request, httplib::Response &response)
{
    if (refused(response))
        return;
    // Without a country the real service finds nothing, too.
    const Storefront *storefront = findStorefront(parameter(request, "country"));
    Records records;
    if (storefront && asksForSoftware(request))
        records = m_store.lookUp(idsOf(request), *storefront, originOf(request));
    replyRecords(request, response, records);
}

void ItunesService::artwork(const httplib::Request &request, httplib::Response &response) const
{
    const SampleApp *app = m_store.catalog().find(part(request, 1).toLongLong());
    const int size = part(request, 2).toInt();
    if (!app || size < 1 || size > largestIcon)
        return replyEmpty(response, 404);
    replyPicture(response, iconPng(*app, size));
}

void ItunesService::screenshot(const httplib::Request &request, httplib::Response &response) const
{
    const SampleApp *app = m_store.catalog().find(part(request, 1).toLongLong());
    const Screen screen = part(request, 2).isEmpty() ? Screen::Phone : Screen::Tablet;
    const int number = part(request, 3).toInt();
    if (!app || number < 1 || number > largestScreenshotNumber)
        return replyEmpty(response, 404);
    replyPicture(response, screenshotPng(*app, screen, number));
}

void ItunesService::storePage(const httplib::Request &request, httplib::Response &response) const
{
    const Storefront *storefront = findStorefront(part(request, 1));
    const SampleApp *app = m_store.catalog().find(part(request, 2).toLongLong());
    if (!storefront || !app)
        return replyEmpty(response, 404);
    replyText(request, response, pageOf(*app, app->listing(storefront->language).name),
              "text/html; charset=utf-8");
}

} // namespace veltrix::sample
