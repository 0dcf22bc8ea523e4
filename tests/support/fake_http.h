// SPDX-License-Identifier: GPL-3.0-or-later
// HTTP without a network: what was asked, and what a test answers.
#pragma once

#include "clients/http.h"
#include "effects/clock.h"
#include "effects/one_shot.h"

#include <functional>
#include <memory>
#include <vector>

namespace veltrix
{

/// Records requests and answers them at once, after a delay on a clock, or when the test says so.
class FakeHttp
{
public:
    using Answer = std::function<HttpResponse(const HttpRequest &)>;

    struct Sent {
        HttpRequest request;
        Date at;
    };

    static HttpResponse response(int status, QByteArray body = {}, QList<HttpHeader> headers = {})
    {
        HttpResponse made;
        made.status = status;
        made.headers = std::move(headers);
        made.body = std::move(body);
        return made;
    }

    /// Times are noted on `clock` when there is one.
    explicit FakeHttp(std::shared_ptr<Clock> clock = nullptr) : m_state(std::make_shared<State>())
    {
        m_state->clock = std::move(clock);
    }

    /// Answers every request; may throw.
    void answerWith(Answer answer) { m_state->answer = std::move(answer); }
    void answerWith(HttpResponse answer)
    {
        answerWith([answer](const HttpRequest &) { return answer; });
    }
    /// Answers one request after another; the last answer is kept for all that follow.
    void answerInTurn(std::vector<HttpResponse> answers)
    {
        auto next = std::make_shared<size_t>(0);
        answerWith([answers, next](const HttpRequest &) {
            return answers.at(std::min((*next)++, answers.size() - 1));
        });
    }
    /// How long an answer takes, on the clock.
    void setLatency(Seconds latency) { m_state->latency = latency; }
    /// Requests stay without an answer until release().
    void hold() { m_state->isHeld = true; }
    void release()
    {
        m_state->isHeld = false;
        for (const OneShot<Done> &held : std::exchange(m_state->held, {}))
            held.resolve({});
    }

    [[nodiscard]] const std::vector<Sent> &sent() const { return m_state->sent; }
    [[nodiscard]] int count() const { return int(m_state->sent.size()); }
    /// Requests under way now, and the most that ever were.
    [[nodiscard]] int inFlight() const { return m_state->inFlight; }
    [[nodiscard]] int mostInFlight() const { return m_state->mostInFlight; }
    /// Absolute URLs of all requests.
    [[nodiscard]] QStringList urls() const
    {
        QStringList urls;
        for (const Sent &sent : m_state->sent)
            urls.append(sent.request.url.toString(QUrl::FullyEncoded));
        return urls;
    }

    [[nodiscard]] HttpSend sender() const
    {
        return [state = m_state](HttpRequest request, std::stop_token stop) {
            return run(state, std::move(request), std::move(stop));
        };
    }

private:
    struct State {
        std::shared_ptr<Clock> clock;
        Answer answer = [](const HttpRequest &) {
            return response(500);
        };
        Seconds latency{0};
        bool isHeld = false;
        std::vector<OneShot<Done>> held;
        std::vector<Sent> sent;
        int inFlight = 0;
        int mostInFlight = 0;
    };

    struct InFlight {
        explicit InFlight(State &stateToCount) : state(stateToCount)
        {
            state.mostInFlight = std::max(state.mostInFlight, ++state.inFlight);
        }
        ~InFlight() { --state.inFlight; }
        InFlight(const InFlight &) = delete;
        InFlight &operator=(const InFlight &) = delete;
        State &state;
    };

    static Task<HttpResponse> run(std::shared_ptr<State> state, HttpRequest request,
                                  std::stop_token stop)
    {
        throwIfStopped(stop);
        const InFlight counted(*state);
        state->sent.push_back({request, state->clock ? state->clock->now() : Date()});
        if (state->isHeld) {
            const OneShot<Done> held;
            state->held.push_back(held);
            co_await held.wait(stop);
        }
        if (state->clock)
            co_await state->clock->sleep(state->latency, stop);
        co_return state->answer(request);
    }

    std::shared_ptr<State> m_state;
};

} // namespace veltrix
