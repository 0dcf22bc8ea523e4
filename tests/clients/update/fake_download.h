// SPDX-License-Identifier: GPL-3.0-or-later
// A download without a network, as far as the test lets it come.
#pragma once

#include "clients/http.h"
#include "effects/one_shot.h"

#include <memory>
#include <vector>

namespace veltrix
{

class FakeDownload
{
public:
    /// Answers every download at once.
    void answerWith(int status, QByteArray body = {})
    {
        m_state->response.status = status;
        m_state->response.body = std::move(body);
    }
    /// Downloads fail with this text instead.
    void failWith(const QString &text)
    {
        m_state->error = std::make_exception_ptr(TransportError(text));
    }
    /// Downloads stay under way until release().
    void hold() { m_state->isHeld = true; }
    void release()
    {
        m_state->isHeld = false;
        m_state->held.resolve({});
    }
    /// Reports progress of the download under way, as its transfer does.
    void report(qint64 received) { m_state->progress(received, std::nullopt); }

    [[nodiscard]] const std::vector<HttpRequest> &requests() const { return m_state->requests; }
    [[nodiscard]] int underWay() const { return m_state->underWay; }

    [[nodiscard]] HttpDownload downloader() const
    {
        return [state = m_state](HttpRequest request, HttpProgress progress, std::stop_token stop) {
            return run(state, std::move(request), std::move(progress), std::move(stop));
        };
    }

private:
    struct State {
        HttpResponse response;
        std::exception_ptr error;
        bool isHeld = false;
        OneShot<Done> held;
        HttpProgress progress;
        std::vector<HttpRequest> requests;
        int underWay = 0;
    };

    struct Counted {
        explicit Counted(State &stateToCount) : state(stateToCount) { ++state.underWay; }
        ~Counted() { --state.underWay; }
        Counted(const Counted &) = delete;
        Counted &operator=(const Counted &) = delete;
        State &state;
    };

    static Task<HttpResponse> run(std::shared_ptr<State> state, HttpRequest request,
                                  HttpProgress progress, std::stop_token stop)
    {
        throwIfStopped(stop);
        const Counted counted(*state);
        state->requests.push_back(std::move(request));
        state->progress = std::move(progress);
        if (state->isHeld) {
            state->held = OneShot<Done>();
            const OneShot<Done> held = state->held;
            co_await held.wait(stop);
        }
        if (state->error)
            std::rethrow_exception(state->error);
        // A copy of its own: what is returned is moved from.
        const HttpResponse response = state->response;
        co_return response;
    }

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace veltrix
