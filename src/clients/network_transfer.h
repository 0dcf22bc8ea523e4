// SPDX-License-Identifier: GPL-3.0-or-later
// One request on the wire, without redirects: limits, time-outs and the words for failures.
#pragma once

#include "clients/http.h"

#include <QNetworkRequest>

class QNetworkAccessManager;

namespace veltrix
{

/// Sends one request and reads its answer. `request` says what to send and how long to wait,
/// `prepared` is the same with its headers and TLS settings in place. `manager` must outlive the
/// transfer. Throws TransportError or Cancelled.
Task<HttpResponse> transfer(QNetworkAccessManager *manager, HttpRequest request,
                            QNetworkRequest prepared, HttpProgress progress, std::stop_token stop);

} // namespace veltrix
