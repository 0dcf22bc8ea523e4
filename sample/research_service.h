// SPDX-License-Identifier: GPL-3.0-or-later
// The research function: ranked apps of a keyword, at once or after a while.
#pragma once

#include "sample/app_store.h"
#include "sample/pause.h"

#include <QString>

#include <httplib.h>

#include <mutex>
#include <set>

namespace veltrix::sample
{

inline constexpr const char *researchPath = "/functions/v1/aso-research";
/// What clients must send in the header "apikey".
inline constexpr const char *publishableKey = "sb_publishable_veltrix_sample";

enum class FirstAnswer {
    Ready,
    /// The first question about a keyword is answered with 202, the next with results.
    Pending,
};

/// Serves POST researchPath with {"keyword":…,"country":…} and the publishable key.
class ResearchService
{
public:
    /// Pictures are taken from `pictureOrigin`, such as "http://127.0.0.1:8080". Store and pause
    /// must outlive the service.
    ResearchService(const AppStore &store, Pause &pause, QString pictureOrigin,
                    FirstAnswer firstAnswer);

    /// Adds the route; the service must outlive the server.
    void install(httplib::Server &server);

private:
    void research(const httplib::Request &request, httplib::Response &response);
    void answerCommand(const QString &command, const QString &country, const QString &term,
                       const httplib::Request &request, httplib::Response &response);
    void answerReady(const QString &country, const QString &term, const httplib::Request &request,
                     httplib::Response &response) const;
    [[nodiscard]] QByteArray readyBody(const QString &country, const QString &term) const;
    /// Whether this question is the first about its keyword, so that the answer is still pending.
    bool isFirstQuestion(const QString &country, const QString &keyword);

    const AppStore &m_store;
    Pause &m_pause;
    QString m_pictureOrigin;
    FirstAnswer m_firstAnswer;
    std::mutex m_mutex;
    std::set<QString> m_pending;
};

} // namespace veltrix::sample
