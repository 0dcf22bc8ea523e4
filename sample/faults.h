// SPDX-License-Identifier: GPL-3.0-or-later
// Faults of a share of all requests, whatever they ask for.
#pragma once

#include "sample/pause.h"

#include <httplib.h>

#include <atomic>
#include <cstdint>
#include <optional>

namespace veltrix::sample
{

enum class Fault {
    /// The connection closes without an answer.
    HungUp,
    /// 403 without a body, as the search service refuses those who ask too often.
    Refused,
    /// 429 with a short Retry-After.
    Limited,
    /// 500 without a body.
    Broken,
    /// 503 with a short Retry-After.
    Unavailable,
    /// The head of an answer and half of what it announces.
    Cut,
    /// A page of a proxy with status 200.
    Garbage,
    /// The usual answer, after Pause::slowness.
    Slow,
};

/// Safe to use from several threads at once.
class Faults
{
public:
    /// What a Retry-After asks for; short, so that a run of an hour meets many faults.
    static constexpr int retryAfterSeconds = 1;

    /// Lets `percent` (0 to 100) of the requests fail. The same seed lets the same ones fail,
    /// counted in the order in which they come, in the same ways.
    Faults(int percent, std::uint64_t seed) : m_percent(percent), m_seed(seed) {}

    /// What happens to the next request; nothing for most.
    std::optional<Fault> next();

    /// Answers a request if its turn is to fail; whether it did. A slow one is kept waiting and
    /// goes on.
    bool answer(const httplib::Request &request, httplib::Response &response, Pause &pause);

private:
    int m_percent;
    std::uint64_t m_seed;
    std::atomic<std::uint64_t> m_count{0};
};

} // namespace veltrix::sample
