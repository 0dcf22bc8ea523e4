// SPDX-License-Identifier: GPL-3.0-or-later
// What the program needs of search suggestions while somebody types.
#pragma once

#include "effects/task.h"

#include <QStringList>

#include <optional>

namespace veltrix
{

/// Asks which suggestions the App Store's search makes for what has been typed. Implemented by
/// AutocompleteClient, at the pace and from the answers that it keeps for measuring.
class AutocompleteSuggesting
{
public:
    AutocompleteSuggesting() = default;
    virtual ~AutocompleteSuggesting() = default;
    AutocompleteSuggesting(const AutocompleteSuggesting &) = delete;
    AutocompleteSuggesting &operator=(const AutocompleteSuggesting &) = delete;

    /// What is suggested for a prefix in a storefront (a two-letter code in any case), best first
    /// and lower-cased or not as the service writes it; empty when nothing is, no value when it
    /// cannot be had. Throws only Cancelled.
    virtual Task<std::optional<QStringList>> suggest(QString prefix, QString country,
                                                     std::stop_token stop) = 0;
};

} // namespace veltrix
