// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/network_transfer.h"

#include "effects/clock.h"
#include "effects/one_shot.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslError>
#include <QTimer>

#include <algorithm>

namespace veltrix
{

namespace
{

/// Bytes taken from the connection at a time; more wait in the system until these are read.
constexpr qint64 chunkSize = 64 * 1024;
/// Bytes of headers that are accepted; honest answers have a few thousand.
constexpr qint64 headerLimit = 256 * 1024;

enum class LocalFailure {
    None,
    TimedOut,
    TooLarge,
    /// The connection closed without a byte of answer, and the toolkit has made another to send the
    /// request again, which it may not.
    ConnectionClosed,
};

QString certificateProblem(const QList<QSslError> &errors)
{
    const auto has = [&errors](std::initializer_list<QSslError::SslError> kinds) {
        return std::any_of(errors.begin(), errors.end(), [&kinds](const QSslError &error) {
            return std::find(kinds.begin(), kinds.end(), error.error()) != kinds.end();
        });
    };
    if (has({QSslError::HostNameMismatch}))
        return QStringLiteral("its certificate is for another name");
    if (has({QSslError::CertificateExpired}))
        return QStringLiteral("its certificate has expired");
    if (has({QSslError::CertificateNotYetValid}))
        return QStringLiteral("its certificate is not valid yet");
    return QStringLiteral("its certificate is not trusted");
}

QString networkProblem(QNetworkReply::NetworkError error, const QString &host)
{
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
        return QStringLiteral("The server “%1” refused the connection.").arg(host);
    case QNetworkReply::RemoteHostClosedError:
        return QStringLiteral("The server “%1” closed the connection before its answer was whole.")
            .arg(host);
    case QNetworkReply::HostNotFoundError:
        return QStringLiteral("The server “%1” could not be found. Check the internet connection.")
            .arg(host);
    case QNetworkReply::TimeoutError:
        return QStringLiteral("The server “%1” did not answer in time.").arg(host);
    case QNetworkReply::SslHandshakeFailedError:
        return QStringLiteral("A secure connection to the server “%1” could not be made.")
            .arg(host);
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
        return QStringLiteral("The network is not available.");
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::UnknownContentError:
        return QStringLiteral("The answer of the server “%1” could not be read.").arg(host);
    default:
        return QStringLiteral("The connection to the server “%1” failed.").arg(host);
    }
}

/// One QNetworkReply from its start to its end. Lives in the transfer's coroutine.
class Transfer
{
public:
    Transfer(QNetworkReply *reply, const HttpRequest &request, QString certificatesProblem,
             HttpProgress progress)
        : m_reply(reply), m_host(request.url.host()), m_bodyLimit(request.bodyLimit),
          m_mayRepeat(!request.permitToRepeat),
          m_certificatesProblem(std::move(certificatesProblem)), m_progress(std::move(progress))
    {
        m_reply->setReadBufferSize(chunkSize);
        startTimer(m_idle, request.timeout);
        startTimer(m_total, request.totalTimeout);
        const auto restartIdle = [this] {
            m_idle.start();
        };
        QObject::connect(m_reply, &QNetworkReply::metaDataChanged, &m_context,
                         [this] { measureHeaders(); });
        QObject::connect(m_reply, &QNetworkReply::metaDataChanged, &m_context, restartIdle);
        QObject::connect(m_reply, &QNetworkReply::requestSent, &m_context,
                         [this] { ++m_timesSent; });
        // Direct, while the toolkit waits and before it has written anything to the connection.
        QObject::connect(
            m_reply, &QNetworkReply::encrypted, &m_context, [this] { refuseRepeat(); },
            Qt::DirectConnection);
        QObject::connect(m_reply, &QNetworkReply::uploadProgress, &m_context, restartIdle);
        QObject::connect(m_reply, &QNetworkReply::readyRead, &m_context, [this] { read(); });
        QObject::connect(m_reply, &QNetworkReply::sslErrors, &m_context,
                         [this](const QList<QSslError> &errors) { m_sslErrors = errors; });
        // Queued: the coroutine runs on from the event loop, never from within the reply's signal,
        // so it may end the session that the reply belongs to.
        QObject::connect(
            m_reply, &QNetworkReply::finished, &m_context, [this] { m_finished.resolve({}); },
            Qt::QueuedConnection);
    }

    ~Transfer()
    {
        QObject::disconnect(m_reply, nullptr, &m_context, nullptr);
        m_reply->abort();
        m_reply->deleteLater();
    }
    Transfer(const Transfer &) = delete;
    Transfer &operator=(const Transfer &) = delete;

    [[nodiscard]] const OneShot<Done> &finished() const { return m_finished; }

    /// How it ended, once finished.
    TransferEnd takeEnd()
    {
        TransferEnd end;
        if (!m_mayRepeat)
            end.repeats = std::max(0, m_timesSent - 1);
        end.isConnectionGone = m_failure == LocalFailure::ConnectionClosed && !m_isOwnConnection;
        try {
            end.response = takeResponse();
        } catch (const TransportError &) {
            end.error = std::current_exception();
        }
        return end;
    }

private:
    HttpResponse takeResponse()
    {
        read();
        throwOnFailure();
        HttpResponse response;
        response.status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const QList<QNetworkReply::RawHeaderPair> &pairs = m_reply->rawHeaderPairs();
        response.headers.reserve(pairs.size());
        for (const auto &[name, value] : pairs)
            response.headers.append({name, value});
        response.body = std::move(m_body);
        return response;
    }

    void startTimer(QTimer &timer, Seconds duration)
    {
        constexpr std::chrono::milliseconds longest = std::chrono::hours(24);
        const auto wanted =
            std::chrono::ceil<std::chrono::milliseconds>(roundedUpToNanoseconds(duration));
        timer.setSingleShot(true);
        timer.setInterval(std::min(wanted, longest));
        QObject::connect(&timer, &QTimer::timeout, &m_context,
                         [this] { failWith(LocalFailure::TimedOut); });
        timer.start();
    }

    void failWith(LocalFailure failure)
    {
        if (m_failure != LocalFailure::None || m_reply->isFinished())
            return;
        m_failure = failure;
        m_reply->abort();
    }

    /// Called when a connection of this transfer's own is ready. The first one is what it needs;
    /// one more after the request was sent is for sending it again.
    void refuseRepeat()
    {
        if (m_timesSent == 0)
            m_isOwnConnection = true;
        else if (!m_mayRepeat)
            failWith(LocalFailure::ConnectionClosed);
    }

    void measureHeaders()
    {
        // Of more than a hundred headers, or one of more than 8 KiB, the toolkit hands on none;
        // what follows would be read without its length, its encoding and its type.
        const QList<QNetworkReply::RawHeaderPair> &pairs = m_reply->rawHeaderPairs();
        qint64 size = 0;
        for (const auto &[name, value] : pairs)
            size += name.size() + value.size();
        if (!pairs.isEmpty() && size <= headerLimit)
            return;
        failWith(LocalFailure::TooLarge);
        m_failure = LocalFailure::TooLarge;
    }

    void read()
    {
        if (m_failure != LocalFailure::None)
            return;
        m_idle.start();
        for (;;) {
            const QByteArray chunk = m_reply->read(chunkSize);
            if (chunk.isEmpty())
                break;
            m_body += chunk;
            if (m_body.size() > m_bodyLimit) {
                m_body.clear();
                if (!m_reply->isFinished())
                    failWith(LocalFailure::TooLarge);
                m_failure = LocalFailure::TooLarge;
                return;
            }
        }
        if (m_progress)
            m_progress(m_body.size(), announcedSize());
    }

    /// The size of the body as it will be read: unknown when it is compressed on the way.
    [[nodiscard]] std::optional<qint64> announcedSize() const
    {
        const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
        if (!length.isValid() || m_reply->hasRawHeader("Content-Encoding"))
            return std::nullopt;
        return length.toLongLong();
    }

    void throwOnFailure() const
    {
        if (m_failure == LocalFailure::TimedOut)
            throw TransportError(networkProblem(QNetworkReply::TimeoutError, m_host));
        if (m_failure == LocalFailure::TooLarge) {
            throw TransportError(
                QStringLiteral("The answer of the server “%1” was too large.").arg(m_host));
        }
        if (m_failure == LocalFailure::ConnectionClosed)
            throw TransportError(networkProblem(QNetworkReply::RemoteHostClosedError, m_host));
        if (m_reply->error() == QNetworkReply::SslHandshakeFailedError && !m_sslErrors.isEmpty()) {
            QString text =
                QStringLiteral("A secure connection to the server “%1” could not be made: %2.")
                    .arg(m_host, certificateProblem(m_sslErrors));
            if (!m_certificatesProblem.isEmpty())
                text += u' ' + m_certificatesProblem;
            throw TransportError(text);
        }
        if (!hasWholeAnswer())
            throw TransportError(networkProblem(m_reply->error(), m_host));
    }

    /// A status that means failure is an answer all the same; the reply counts it as an error.
    [[nodiscard]] bool hasWholeAnswer() const
    {
        const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (status == 0)
            return false;
        const auto error = m_reply->error();
        const bool isTransportFailure =
            error > QNetworkReply::NoError && error <= QNetworkReply::UnknownNetworkError;
        const bool isBrokenAnswer =
            error == QNetworkReply::ProtocolFailure || error == QNetworkReply::UnknownContentError;
        return !isTransportFailure && !(isBrokenAnswer && status < 400);
    }

    QNetworkReply *m_reply;
    QString m_host;
    qint64 m_bodyLimit;
    bool m_mayRepeat;
    QString m_certificatesProblem;
    HttpProgress m_progress;
    QByteArray m_body;
    QList<QSslError> m_sslErrors;
    LocalFailure m_failure = LocalFailure::None;
    int m_timesSent = 0;
    /// The connection was made for this transfer, not kept from an earlier one. Only known of
    /// encrypted ones.
    bool m_isOwnConnection = false;
    OneShot<Done> m_finished;
    QTimer m_idle;
    QTimer m_total;
    /// Receives all signals; gone first, so none arrives at a half-destroyed transfer.
    QObject m_context;
};

QNetworkReply *start(QNetworkAccessManager &manager, const HttpRequest &request,
                     const QNetworkRequest &prepared)
{
    switch (request.method) {
    case HttpRequest::Method::Get:
        return manager.get(prepared);
    case HttpRequest::Method::Post:
        return manager.post(prepared, request.body);
    }
    Q_UNREACHABLE();
}

} // namespace

Task<TransferEnd> transfer(QNetworkAccessManager *manager, HttpRequest request, TransferSetup setup,
                           HttpProgress progress, std::stop_token stop)
{
    throwIfStopped(stop);
    Transfer running(start(*manager, request, setup.prepared), request, setup.certificatesProblem,
                     progress);
    co_await running.finished().wait(stop);
    co_return running.takeEnd();
}

} // namespace veltrix
