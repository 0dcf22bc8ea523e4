// SPDX-License-Identifier: GPL-3.0-or-later
// A research service of its own for each test: on loopback, with a clock that the test turns and an
// App Store that fails when told.
#pragma once

#include "sample/loopback_server.h"
#include "sample/research_service.h"
#include "sample/research_upstream.h"

#include <atomic>

namespace veltrix::sample
{

class ResearchWorld
{
public:
    enum class AppStoreState { Answers, Blocks, Fails };

    /// How keywords begin for which the App Store has nothing.
    static constexpr QLatin1String anotherKeyword{"another keyword"};

    /// The made-up App Store must outlive the world; the service's pace is 3.2 seconds.
    explicit ResearchWorld(const AppStore &store)
        : m_search(searchIn(store, QStringLiteral("http://127.0.0.1"))),
          m_server(std::make_unique<httplib::Server>(), 0, m_log)
    {
        m_service.install(m_server.routes());
        m_server.start();
    }
    ~ResearchWorld() { m_pause.end(); }
    ResearchWorld(const ResearchWorld &) = delete;
    ResearchWorld &operator=(const ResearchWorld &) = delete;

    [[nodiscard]] httplib::Client client() const
    {
        return httplib::Client("127.0.0.1", m_server.port());
    }
    ResearchQueue &queue() { return m_queue; }

    [[nodiscard]] Moment now() const { return m_now; }
    void advance(std::chrono::milliseconds duration) { m_now = now() + duration; }

    /// How the App Store answers from now on; a block lasts `seconds`.
    void setAppStore(AppStoreState state, int seconds = 0)
    {
        m_blockSeconds = seconds;
        m_appStore = state;
    }

private:
    Fetched fetch(const ResearchQuestion &question)
    {
        if (m_appStore == AppStoreState::Blocks)
            return FetchBlocked{std::chrono::seconds(m_blockSeconds)};
        if (m_appStore == AppStoreState::Fails)
            return FetchFailed{};
        // Nobody looks at these, and there may be thousands.
        if (question.keyword.startsWith(anotherKeyword))
            return FetchedApps{"[]"};
        return m_search(question);
    }

    ResearchUpstream m_search;
    std::atomic<Moment> m_now{std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) +
                              std::chrono::hours(8)};
    std::atomic<AppStoreState> m_appStore = AppStoreState::Answers;
    std::atomic<int> m_blockSeconds = 0;
    ResearchQueue m_queue{std::chrono::milliseconds(3'200),
                          [this](const ResearchQuestion &question) { return fetch(question); },
                          [this] {
                              return now();
                          }};
    Pause m_pause;
    ResearchService m_service{m_queue, m_pause};
    AccessLog m_log{{}};
    LoopbackServer m_server;
};

} // namespace veltrix::sample
