// SPDX-License-Identifier: GPL-3.0-or-later
// The research function: ranked apps of a keyword, at once or after a while.
#pragma once

#include "sample/pause.h"
#include "sample/research_queue.h"

#include <httplib.h>

#include <chrono>

namespace veltrix::sample
{

inline constexpr const char *researchPath = "/functions/v1/aso-research";

/// Serves POST researchPath with {"keyword":…,"country":…} and the publishable key, as
/// supabase/contract/README.md says, and terms that make it misbehave.
class ResearchService
{
public:
    static constexpr std::chrono::seconds longestHold{8};

    /// A question that should be answered within `hold` is held until it is; with 0 none is.
    /// Queue and pause must outlive the service.
    ResearchService(ResearchQueue &queue, Pause &pause,
                    std::chrono::milliseconds hold = longestHold);

    /// Adds the routes; the service must outlive the server.
    void install(httplib::Server &server);

private:
    void research(const httplib::Request &request, httplib::Response &response);
    /// Answers a command that asks for a standing or a fault of its own; whether it did.
    static bool misbehave(const QString &command, const httplib::Request &request,
                          httplib::Response &response);
    Standing answerTo(const ResearchQuestion &question, const QString &client,
                      std::chrono::milliseconds hold);
    Standing ask(const ResearchQuestion &question, const QString &client);

    ResearchQueue &m_queue;
    Pause &m_pause;
    std::chrono::milliseconds m_hold;
};

} // namespace veltrix::sample
