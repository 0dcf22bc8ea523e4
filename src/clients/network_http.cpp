// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/network_http.h"

#include "clients/network_transfer.h"
#include "clients/trusted_certificates.h"
#include "effects/task_scope.h"

#include <QNetworkAccessManager>
#include <QNetworkCookie>
#include <QNetworkCookieJar>

#include <optional>
#include <utility>

namespace veltrix
{

struct NetworkHttp::Session {
    QNetworkAccessManager manager;
    /// Made at the first request that needs it: loading the TLS library would hold up the start.
    const TrustedCertificates &certificates();
    Task<HttpResponse> send(HttpRequest request, HttpProgress progress,
                            std::stop_token callersStop);

    QString trustedCertificatesPath;
    QByteArray userAgent;

private:
    std::optional<TrustedCertificates> m_certificates;
    TaskScope m_tasks;
};

namespace
{

using Session = NetworkHttp::Session;

/// Forgets every cookie.
class NoCookies final : public QNetworkCookieJar
{
public:
    [[nodiscard]] QList<QNetworkCookie> cookiesForUrl(const QUrl & /*url*/) const override
    {
        return {};
    }
    bool setCookiesFromUrl(const QList<QNetworkCookie> & /*cookies*/, const QUrl & /*url*/) override
    {
        return false;
    }
};

bool isHttp(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

bool isSameOrigin(const QUrl &one, const QUrl &other)
{
    const auto port = [](const QUrl &url) {
        return url.port(url.scheme() == QLatin1String("https") ? 443 : 80);
    };
    return one.scheme() == other.scheme() && one.host() == other.host() && port(one) == port(other);
}

TransferSetup prepare(Session &session, const HttpRequest &request)
{
    QNetworkRequest prepared(request.url);
    if (request.url.scheme() == QLatin1String("https"))
        prepared.setSslConfiguration(session.certificates().tls);
    // The loop below judges redirects itself: it must not carry a key to another origin.
    prepared.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                          QNetworkRequest::ManualRedirectPolicy);
    prepared.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    prepared.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // The manager has no cache. Told to pass one by, it would ask every proxy on the way to do so
    // too, with Cache-Control and Pragma.
    prepared.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                          QNetworkRequest::PreferNetwork);
    prepared.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    // The body limit guards against decompression bombs; a ratio would refuse honest answers too.
    prepared.setDecompressedSafetyCheckThreshold(-1);
    prepared.setTransferTimeout(0);
    prepared.setHeader(QNetworkRequest::UserAgentHeader, session.userAgent);
    for (const HttpHeader &header : request.headers)
        prepared.setRawHeader(header.name, header.value);
    QString certificatesProblem;
    if (request.url.scheme() == QLatin1String("https"))
        certificatesProblem = session.certificates().problem;
    return {prepared, certificatesProblem};
}

/// Whether a header says who asks, which is nobody else's business.
bool identifies(const HttpHeader &header)
{
    for (const char *name : {"apikey", "Authorization", "Cookie", "Proxy-Authorization"}) {
        if (header.name.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

/// Where an answer sends its request next; nothing when the answer stands for itself. Throws
/// TransportError when following it would be unsafe.
std::optional<HttpRequest> redirected(HttpRequest request, const HttpResponse &response)
{
    const bool isRedirect = response.status == 301 || response.status == 302 ||
                            response.status == 303 || response.status == 307 ||
                            response.status == 308;
    const std::optional<QByteArray> location = response.header("Location");
    if (!isRedirect || !location)
        return std::nullopt;
    const QUrl target = request.url.resolved(QUrl::fromEncoded(*location));
    const bool isLessSafe =
        request.url.scheme() == QLatin1String("https") && target.scheme() == QLatin1String("http");
    if (!isHttp(target) || isLessSafe) {
        throw TransportError(
            QStringLiteral("The server “%1” redirected to an address that is not safe.")
                .arg(request.url.host()));
    }
    const bool sameOrigin = isSameOrigin(request.url, target);
    const bool keepsMethod = response.status == 307 || response.status == 308;
    if (request.method == HttpRequest::Method::Post && !(keepsMethod && sameOrigin))
        return std::nullopt;
    if (!sameOrigin)
        request.headers.removeIf([](const HttpHeader &header) { return identifies(header); });
    request.url = target;
    return request;
}

} // namespace

const TrustedCertificates &NetworkHttp::Session::certificates()
{
    if (!m_certificates)
        m_certificates = loadTrustedCertificates(trustedCertificatesPath);
    return *m_certificates;
}

Task<HttpResponse> NetworkHttp::Session::send(HttpRequest request, HttpProgress progress,
                                              std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const QUrl asked = request.url;
    if (!isHttp(asked))
        throw BadUrlError();
    const HttpPermit permit = request.permitToRepeat;
    const Seconds totalTimeout = request.totalTimeout;
    const auto started = std::chrono::steady_clock::now();
    int redirects = 0;
    bool isSentAgain = false;
    for (;;) {
        request.totalTimeout = totalTimeout - (std::chrono::steady_clock::now() - started);
        const TransferSetup setup = prepare(*this, request);
        TransferEnd end = co_await transfer(&manager, request, setup, progress, stop);
        for (int i = 0; i < end.repeats; ++i)
            co_await permit(stop);
        if (end.isConnectionGone && !std::exchange(isSentAgain, true)) {
            co_await permit(stop);
            continue;
        }
        if (end.error)
            std::rethrow_exception(end.error);
        std::optional<HttpRequest> next = redirected(request, *end.response);
        if (!next)
            co_return *std::move(end.response);
        if (redirects++ == mostRedirects) {
            throw TransportError(
                QStringLiteral("The server “%1” redirected too often.").arg(asked.host()));
        }
        request = *std::move(next);
        if (permit)
            co_await permit(stop);
    }
}

NetworkHttp::NetworkHttp(const Options &options) : m_session(std::make_shared<Session>())
{
    m_session->userAgent = "Veltrix/" + options.version.toUtf8();
    m_session->trustedCertificatesPath = options.trustedCertificatesPath;
    m_session->manager.setCookieJar(new NoCookies);
    m_session->manager.setAutoDeleteReplies(false);
}

NetworkHttp::~NetworkHttp() = default;

HttpSend NetworkHttp::sender() const
{
    return [session = m_session](HttpRequest request, std::stop_token stop) {
        return session->send(std::move(request), {}, std::move(stop));
    };
}

HttpDownload NetworkHttp::downloader() const
{
    return [session = m_session](HttpRequest request, HttpProgress progress, std::stop_token stop) {
        return session->send(std::move(request), std::move(progress), std::move(stop));
    };
}

} // namespace veltrix
