// SPDX-License-Identifier: GPL-3.0-or-later
// HTTP over the real network.
#pragma once

#include "clients/http.h"

#include <memory>

namespace veltrix
{

/// Sends requests over HTTP and HTTPS. No cookies and no cache; no retry, except when a connection
/// closes without a byte of answer, as stale ones do. Certificates are always verified. Redirects
/// are followed only to an equal or safer scheme, at most five times; a POST is repeated (307, 308)
/// only at the same origin, and headers that identify (apikey, Authorization, cookies) are not
/// carried to another one.
///
/// A request with a permitToRepeat takes a permit before it follows a redirect. Over HTTPS it is
/// sent again only when a connection kept from an earlier request had gone, once, and after taking
/// a permit. Over plain HTTP the toolkit sends it again by itself, up to three times, and permits
/// for that are taken before the answer is handed on.
///
/// Failures are TransportErrors whose texts name the server but never the path or the query. A stop
/// aborts the connection at once. Senders keep what they need alive, so this object may go first; a
/// transfer ends with Cancelled when the last sender goes.
class NetworkHttp
{
public:
    static constexpr int mostRedirects = 5;

    /// What the program says of itself and whom it trusts.
    struct Options {
        /// Version of the program, for the User-Agent "Veltrix/<version>".
        QString version;
        /// A PEM file of further certificate authorities, for a self-hosted service; they are added
        /// to the system's own. Empty or missing: none.
        QString trustedCertificatesPath;
    };

    explicit NetworkHttp(const Options &options);
    ~NetworkHttp();
    NetworkHttp(const NetworkHttp &) = delete;
    NetworkHttp &operator=(const NetworkHttp &) = delete;

    /// Ready to be handed to clients.
    [[nodiscard]] HttpSend sender() const;
    [[nodiscard]] HttpDownload downloader() const;

    /// What transfers share. Internal to the implementation.
    struct Session;

private:
    std::shared_ptr<Session> m_session;
};

} // namespace veltrix
