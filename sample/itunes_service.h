// SPDX-License-Identifier: GPL-3.0-or-later
// Search and look-up, pictures and store pages, over HTTP.
#pragma once

#include "sample/app_store.h"
#include "sample/pause.h"
#include "sample/throttle.h"

#include <httplib.h>

namespace veltrix::sample
{

/// Serves
///   GET /search?term=&entity=software&country=&limit=
///   GET /lookup?id=&country=&entity=software
///   GET /artwork/<trackId>/<pixels>.png
///   GET /screenshots/<trackId>/<number>.png, /screenshots/<trackId>/ipad-<number>.png
///   GET /<country>/app/id<trackId>, /<country>/app/<slug>/id<trackId>
class ItunesService
{
public:
    /// Store and pause must outlive the service; `requestsPerMinute` 0 means no limit.
    ItunesService(const AppStore &store, Pause &pause, int requestsPerMinute);

    /// Adds the routes; the service must outlive the server.
    void install(httplib::Server &server);

private:
    void search(const httplib::Request &request, httplib::Response &response);
    void lookUp(const httplib::Request &request, httplib::Response &response);
    void artwork(const httplib::Request &request, httplib::Response &response) const;
    void screenshot(const httplib::Request &request, httplib::Response &response) const;
    void storePage(const httplib::Request &request, httplib::Response &response) const;

    /// Answers a command other than those that go on to search; whether it did.
    bool misbehave(const QString &command, httplib::Response &response);
    bool refused(httplib::Response &response);

    const AppStore &m_store;
    Pause &m_pause;
    Throttle m_throttle;
};

} // namespace veltrix::sample
