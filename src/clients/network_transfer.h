// SPDX-License-Identifier: GPL-3.0-or-later
// One request on the wire, without redirects: limits, time-outs and the words for failures. Only
// for NetworkHttp: whoever includes it needs Qt Network.
#pragma once

#include "clients/http.h"

#include <QNetworkRequest>

#include <exception>

class QNetworkAccessManager;

namespace veltrix
{

/// How the headers and TLS settings of a request are to be sent.
struct TransferSetup {
    QNetworkRequest prepared;
    /// What is wrong with the certificates that were to be trusted; said when a certificate is not.
    QString certificatesProblem;
};

/// How a transfer ended.
struct TransferEnd {
    /// Nothing when it failed.
    std::optional<HttpResponse> response;
    /// The TransportError of a transfer that failed.
    std::exception_ptr error;
    /// It failed because a connection that was kept from an earlier request had gone. Only told of
    /// requests with a permitToRepeat; all others the toolkit sends again by itself.
    bool isConnectionGone = false;
    /// How often the toolkit sent a request with a permitToRepeat again all the same. Over plain
    /// HTTP nothing keeps it from that.
    int repeats = 0;
};

/// Sends one request and reads its answer. `request` says what to send and how long to wait.
/// `manager` must outlive the transfer. Throws Cancelled and nothing else.
Task<TransferEnd> transfer(QNetworkAccessManager *manager, HttpRequest request, TransferSetup setup,
                           HttpProgress progress, std::stop_token stop);

} // namespace veltrix
