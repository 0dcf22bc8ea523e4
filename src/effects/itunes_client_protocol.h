// SPDX-License-Identifier: GPL-3.0-or-later
// What the program needs of the App Store: a search and a look-up.
#pragma once

#include "effects/task.h"
#include "model/itunes_app_result.h"

namespace veltrix
{

/// Searches the App Store and looks single apps up, in one storefront. Implemented by ITunesClient
/// (Apple's public service) and ResearchClient (the research service).
class ITunesClientProtocol
{
public:
    ITunesClientProtocol() = default;
    virtual ~ITunesClientProtocol() = default;
    ITunesClientProtocol(const ITunesClientProtocol &) = delete;
    ITunesClientProtocol &operator=(const ITunesClientProtocol &) = delete;

    /// Apps for a term, best first, at most `limit` (1 to 200). `country` is a two-letter
    /// storefront code in any case. Throws an Error when there is no answer.
    virtual Task<QList<ITunesAppResult>> search(QString term, QString country, std::int64_t limit,
                                                std::stop_token stop) = 0;

    /// The app with that App Store id, or nothing when the storefront does not have it.
    virtual Task<std::optional<ITunesAppResult>> lookup(std::int64_t trackId, QString country,
                                                        std::stop_token stop) = 0;
};

} // namespace veltrix
