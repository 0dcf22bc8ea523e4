// SPDX-License-Identifier: GPL-3.0-or-later
// All sample services, wired together and running.
#include "sample/sample_services.h"

#include "sample/research_question.h"
#include "sample/research_upstream.h"

#include <QDateTime>

#include <chrono>
#include <memory>

namespace veltrix::sample
{

namespace
{

using std::chrono::milliseconds;

/// The real service fetches once in 3.2 seconds; nobody who tries the program out wants to wait.
constexpr milliseconds noPace(0);
/// Fast enough for a demonstration, and slow enough that work in progress can be seen.
constexpr milliseconds unhurriedPace(1'000);
constexpr milliseconds noHold(0);

std::function<Moment()> clockBehind(std::chrono::seconds behind)
{
    return [behind] {
        return std::chrono::floor<milliseconds>(std::chrono::system_clock::now() - behind);
    };
}

std::function<QDate()> dayOf(const Options &options)
{
    if (options.date)
        return [day = *options.date] {
            return day;
        };
    return [] {
        return QDateTime::currentDateTimeUtc().date();
    };
}

QString originOf(const char *scheme, const LoopbackServer &server)
{
    return QStringLiteral("%1://127.0.0.1:%2").arg(QLatin1String(scheme)).arg(server.port());
}

QByteArray line(const char *name, const QString &value)
{
    return QByteArray(name) + ' ' + value.toUtf8() + '\n';
}

} // namespace

SampleServices::SampleServices(const Options &options)
    : m_log(options.logFile), m_faults(options.faults, options.faultSeed), m_store(dayOf(options)),
      m_signingKey(signingKey(options.updateSeed)),
      m_http(std::make_unique<httplib::Server>(), options.port, m_log),
      m_https(
          std::make_unique<httplib::SSLServer>(m_identity.certificate.get(), m_identity.key.get()),
          options.httpsPort, m_log),
      m_itunes(m_store, m_pause, options.throttle),
      m_researchQueue(options.researchPending ? unhurriedPace : noPace,
                      searchIn(m_store, httpOrigin()), clockBehind(options.researchBehind)),
      m_research(m_researchQueue, m_pause,
                 options.researchPending ? noHold : ResearchService::longestHold),
      m_updates(options.updateVersion, m_signingKey)
{
    m_itunes.install(m_http.routes());
    m_hints.install(m_http.routes());
    m_research.install(m_https.routes());
    m_updates.install(m_https.routes(), httpsOrigin());
    for (LoopbackServer *server : {&m_http, &m_https}) {
        server->routes().set_pre_routing_handler(
            [this](const httplib::Request &request, httplib::Response &response) {
                return m_faults.answer(request, response, m_pause)
                           ? httplib::Server::HandlerResponse::Handled
                           : httplib::Server::HandlerResponse::Unhandled;
            });
    }
    m_http.start();
    m_https.start();
}

SampleServices::~SampleServices()
{
    m_pause.end();
    m_http.stop();
    m_https.stop();
}

QString SampleServices::httpOrigin() const
{
    return originOf("http", m_http);
}

QString SampleServices::httpsOrigin() const
{
    return originOf("https", m_https);
}

QByteArray SampleServices::readyLines() const
{
    return line("itunes", httpOrigin()) + line("hints", httpOrigin() + QLatin1String(hintsPath)) +
           line("store", httpOrigin()) + line("research", httpsOrigin()) +
           line("publishable-key", QLatin1String(publishableKey)) +
           line("feed", httpsOrigin() + QLatin1String(feedPath)) +
           line("ed-public-key", QString::fromLatin1(updatePublicKey()));
}

} // namespace veltrix::sample
