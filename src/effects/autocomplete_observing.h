// SPDX-License-Identifier: GPL-3.0-or-later
// What the program needs of search suggestions: what they say about one keyword.
#pragma once

#include "effects/task.h"
#include "model/autocomplete_evidence.h"

#include <optional>

namespace veltrix
{

/// Asks which suggestions the App Store's search makes on the way to a keyword. Implemented by
/// AutocompleteClient.
class AutocompleteObserving
{
public:
    AutocompleteObserving() = default;
    virtual ~AutocompleteObserving() = default;
    AutocompleteObserving(const AutocompleteObserving &) = delete;
    AutocompleteObserving &operator=(const AutocompleteObserving &) = delete;

    /// The evidence for a keyword in a storefront (a two-letter code in any case), or nothing when
    /// it cannot be had. Throws only Cancelled.
    virtual Task<std::optional<AutocompleteEvidence>> observe(QString keyword, QString country,
                                                              std::stop_token stop) = 0;
};

} // namespace veltrix
