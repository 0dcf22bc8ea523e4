// SPDX-License-Identifier: GPL-3.0-or-later
// HTTP as an injected effect: one request in, one body and response out.
#pragma once

#include "effects/task.h"
#include "model/date.h"
#include "model/error.h"

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <functional>
#include <optional>

namespace veltrix
{

/// One header of a request or a response.
struct HttpHeader {
    QByteArray name;
    QByteArray value;
    bool operator==(const HttpHeader &) const = default;
};

/// Waits until a request may go out, and accounts for it. Throws Cancelled when stopped.
using HttpPermit = std::function<Task<void>(std::stop_token stop)>;

/// What is asked of a server, and how long and how much of an answer is waited for.
struct HttpRequest {
    enum class Method { Get, Post };

    Method method = Method::Get;
    QUrl url;
    QList<HttpHeader> headers;
    QByteArray body;
    /// Time without any progress after which the request fails.
    Seconds timeout{60};
    /// Time for the whole request, redirects included, after which it fails however steadily bytes
    /// trickle in.
    Seconds totalTimeout{300};
    /// Largest body that is accepted, in bytes after decompression.
    qint64 bodyLimit = 32LL * 1024 * 1024;
    /// For a service whose requests are counted: asked each time that the request goes out again,
    /// after a redirect or because a connection that was kept open had gone. The first time is the
    /// caller's to account for. Empty: the request may be repeated without asking.
    HttpPermit permitToRepeat;
};

/// A whole answer, of whatever status.
struct HttpResponse {
    int status = 0;
    QList<HttpHeader> headers;
    QByteArray body;

    /// The first header of that name, ignoring case.
    [[nodiscard]] std::optional<QByteArray> header(QByteArrayView name) const;
    [[nodiscard]] bool isSuccess() const { return status >= 200 && status <= 299; }
};

/// Sends one request. Answers of every status are responses; throws TransportError when there is no
/// answer, and Cancelled when stopped.
using HttpSend = std::function<Task<HttpResponse>(HttpRequest request, std::stop_token stop)>;

/// Told how far a body has come: bytes received, and bytes in all when the server says so.
using HttpProgress = std::function<void(qint64 received, std::optional<qint64> total)>;

/// Like HttpSend, for a body large enough to show how far it is.
using HttpDownload = std::function<Task<HttpResponse>(HttpRequest request, HttpProgress progress,
                                                      std::stop_token stop)>;

/// No answer: offline, refused, timed out, an untrusted certificate, a body beyond the limit.
class TransportError final : public Error
{
public:
    using Error::Error;
};

/// A request could not be formed.
class BadUrlError final : public Error
{
public:
    BadUrlError();
};

/// The answer was not one that the service gives on success.
class BadServerResponseError final : public Error
{
public:
    explicit BadServerResponseError(int status);
};

/// An answer of success that says something else than its service does: the sign-in page of a
/// network, half of an answer.
class UnreadableAnswerError final : public Error
{
public:
    explicit UnreadableAnswerError(const QString &host);
};

} // namespace veltrix
