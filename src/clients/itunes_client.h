// SPDX-License-Identifier: GPL-3.0-or-later
// Apple's public iTunes Search service.
#pragma once

#include "clients/http.h"
#include "clients/itunes_traffic_controller.h"
#include "effects/itunes_client_protocol.h"
#include "effects/task_scope.h"

namespace veltrix
{

struct QueryItem;

/// Searches and looks up through the iTunes Search service, paced and cached by the controller;
/// what goes out again on its way (a redirect, a connection that had gone) takes a permit each
/// time. Never retries. Throws BadUrlError, TransportError, BadServerResponseError (any status but
/// 2xx; a throttled answer is one of these, never an empty result), UnreadableAnswerError (never
/// kept, so that the next call asks again), or Cancelled, also when the client goes first.
class ITunesClient final : public ITunesClientProtocol
{
public:
    struct Arguments {
        /// Paths "search" and "lookup" are appended to it.
        QUrl baseURL;
        HttpSend send;
        std::shared_ptr<ITunesTrafficController> traffic;
    };

    /// The most results that the service gives. Of a longer answer the first ones are read, of a
    /// search as many as it asked for.
    static constexpr std::int64_t mostResults = 200;

    /// Where Apple's service is.
    static QUrl defaultBaseURL();

    explicit ITunesClient(Arguments arguments);

    Task<QList<ITunesAppResult>> search(QString term, QString country, std::int64_t limit,
                                        std::stop_token stop) override;
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t trackId, QString country,
                                                std::stop_token stop) override;

private:
    /// The first `most` results for a path: from the cache without a permit, else from the service
    /// with one.
    Task<QList<ITunesAppResult>> fetch(QString path, QList<QueryItem> query, size_t most,
                                       std::stop_token callersStop);

    Arguments m_use;
    TaskScope m_tasks;
};

} // namespace veltrix
