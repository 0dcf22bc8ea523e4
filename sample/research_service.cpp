// SPDX-License-Identifier: GPL-3.0-or-later
// The research function.
#include "sample/research_service.h"

#include "sample/command_term.h"
#include "sample/http_reply.h"
#include "sample/research_answer.h"
#include "sample/research_question.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>

namespace veltrix::sample
{

namespace
{

using std::chrono::milliseconds;
using std::chrono::seconds;

/// How often the queue is asked about a question that is held.
constexpr milliseconds glance(50);

/// With what the platform itself refuses, before the function runs.
struct PlatformError {
    QLatin1String command;
    Refusal refusal;
};
constexpr Refusal functionNotFound{404, "404", "Function not found"};
constexpr std::array platformErrors{
    PlatformError{QLatin1String("error"), {500, "\"INTERNAL_ERROR\"", "Internal Server Error"}},
    PlatformError{QLatin1String("boot"), {503, "\"BOOT_ERROR\"", "Function failed to start"}},
    PlatformError{QLatin1String("idle"), {504, "\"IDLE_TIMEOUT\"", "Function timed out"}},
    PlatformError{QLatin1String("worker"), {546, "\"WORKER_LIMIT\"", "Function ran out of memory"}},
    PlatformError{QLatin1String("missing"), functionNotFound},
};

/// The standing that a command asks for.
std::optional<Standing> commandedStanding(const QString &command)
{
    if (command == QLatin1String("limited"))
        return Refused::TooManyOutstanding;
    if (command == QLatin1String("unavailable"))
        return Refused::DatabaseOutOfReach;
    if (command == QLatin1String("failed"))
        return Failed{ResearchQueue::failedFor};
    if (command == QLatin1String("stale")) {
        const auto now = std::chrono::floor<milliseconds>(std::chrono::system_clock::now());
        return Stale{now - std::chrono::days(1), seconds(90)};
    }
    return std::nullopt;
}

/// The wait of a question that only has to wait for its turn.
std::optional<milliseconds> turnOf(const Standing &standing)
{
    if (const auto *pending = std::get_if<Pending>(&standing))
        return pending->wait;
    if (const auto *stale = std::get_if<Stale>(&standing))
        return stale->wait;
    return std::nullopt;
}

} // namespace

ResearchService::ResearchService(ResearchQueue &queue, Pause &pause, milliseconds hold)
    : m_queue(queue), m_pause(pause), m_hold(hold)
{
}

void ResearchService::install(httplib::Server &server)
{
    using Request = httplib::Request;
    using Response = httplib::Response;
    server.Post(researchPath, std::bind_front(&ResearchService::research, this));
    const auto refuseMethod = [](const Request &request, Response &response) {
        response.set_header("Allow", "POST");
        replyRefusal(request, response, {405, "\"METHOD_NOT_ALLOWED\"", "The method is not POST"});
    };
    const auto refusePath = [](const Request &request, Response &response) {
        replyRefusal(request, response, functionNotFound);
    };
    using Add =
        httplib::Server &(httplib::Server::*)(const std::string &, httplib::Server::Handler);
    for (const Add add : {static_cast<Add>(&httplib::Server::Get), Add(&httplib::Server::Put),
                          Add(&httplib::Server::Patch), Add(&httplib::Server::Delete),
                          Add(&httplib::Server::Options)})
        (server.*add)(researchPath, refuseMethod);
    for (const Add add : {Add(&httplib::Server::Get), Add(&httplib::Server::Post)})
        (server.*add)("/functions/v1/.+", refusePath);
}

void ResearchService::research(const httplib::Request &request, httplib::Response &response)
{
    const auto read = readResearchQuestion(request);
    if (const auto *refusal = std::get_if<Refusal>(&read))
        return replyRefusal(request, response, *refusal);
    const auto &question = std::get<ResearchQuestion>(read);
    const QString command = commandTerm(question.keyword).command;
    if (misbehave(command, request, response))
        return;
    if (command == QLatin1String("slow"))
        m_pause.wait(Pause::slowness);
    const Standing standing =
        answerTo(question, QString::fromStdString(request.remote_addr),
                 command == QLatin1String("pending") ? milliseconds(0) : m_hold);
    const auto *ready = std::get_if<Ready>(&standing);
    if (command == QLatin1String("cut") && ready)
        return replyCut(response, readyBody(*ready), "application/json");
    replyStanding(request, response, standing);
}

bool ResearchService::misbehave(const QString &command, const httplib::Request &request,
                                httplib::Response &response)
{
    const auto *error = std::ranges::find(platformErrors, command, &PlatformError::command);
    if (error != platformErrors.end())
        replyRefusal(request, response, error->refusal);
    else if (const auto standing = commandedStanding(command))
        replyStanding(request, response, *standing);
    else if (command == QLatin1String("garbage"))
        replyGarbage(response);
    else
        return false;
    return true;
}

Standing ResearchService::answerTo(const ResearchQuestion &question, const QString &client,
                                   milliseconds hold)
{
    Standing standing = ask(question, client);
    const auto turn = turnOf(standing);
    if (!turn || *turn > hold)
        return standing;
    // Glances are counted, so that this ends when the services do and pauses no longer last.
    for (milliseconds held(0);; held += glance) {
        standing = ask(question, client);
        if (!turnOf(standing) || held >= hold)
            return standing;
        m_pause.wait(glance);
    }
}

Standing ResearchService::ask(const ResearchQuestion &question, const QString &client)
{
    const Standing standing = m_queue.ask(question, client);
    // What is queued is fetched: the worker begins with the first question that finds nothing.
    if (turnOf(standing) || std::holds_alternative<Blocked>(standing))
        m_queue.wake();
    return standing;
}

} // namespace veltrix::sample
