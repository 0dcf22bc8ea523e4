// SPDX-License-Identifier: GPL-3.0-or-later
// One request on the wire, without redirects: limits, time-outs and the words for failures.
#pragma once

#include "clients/http.h"

#include <QNetworkRequest>

class QNetworkAccessManager;

namespace veltrix
{

/// How the headers and TLS settings of a request are to be sent.
struct TransferSetup {
    QNetworkRequest prepared;
    /// What is wrong with the certificates that were to be trusted; said when a certificate is not.
    QString certificatesProblem;
};

/// Sends one request and reads its answer. `request` says what to send and how long to wait.
/// `manager` must outlive the transfer. Throws TransportError or Cancelled.
Task<HttpResponse> transfer(QNetworkAccessManager *manager, HttpRequest request,
                            TransferSetup setup, HttpProgress progress, std::stop_token stop);

} // namespace veltrix
