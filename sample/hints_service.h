// SPDX-License-Identifier: GPL-3.0-or-later
// The search-hints service: what the store suggests while somebody types.
#pragma once

#include "sample/hint_index.h"
#include "sample/pause.h"

#include <httplib.h>

namespace veltrix::sample
{

/// The path of the service.
inline constexpr const char *hintsPath = "/WebObjects/MZSearchHints.woa/wa/hints";

/// Serves GET hintsPath?clientApplication=Software&term=… for the storefront of the header
/// X-Apple-Store-Front ("143441-1,29"); without a known storefront the answer has no hints.
class HintsService
{
public:
    /// Index and pause must outlive the service.
    HintsService(const HintIndex &index, Pause &pause);

    /// Adds the route; the service must outlive the server.
    void install(httplib::Server &server);

private:
    void hints(const httplib::Request &request, httplib::Response &response);

    const HintIndex &m_index;
    Pause &m_pause;
};

} // namespace veltrix::sample
