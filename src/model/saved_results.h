// SPDX-License-Identifier: GPL-3.0-or-later
// Ranked results that were kept from an earlier keyword search.
#pragma once

#include "model/itunes_app_result.h"

namespace veltrix
{

/// Ranked apps of one keyword in one storefront.
struct SavedResults {
    /// When the service produced them.
    Date fetchedAt;
    /// In rank order, at most 100.
    QList<ITunesAppResult> results;

    bool operator==(const SavedResults &) const = default;
};

template <>
inline constexpr auto fieldsOf<SavedResults> = std::tuple{
    field("fetchedAt", &SavedResults::fetchedAt),
    field("results", &SavedResults::results),
};

} // namespace veltrix
