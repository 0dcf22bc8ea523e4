// SPDX-License-Identifier: GPL-3.0-or-later
// Measurements a part at a time, because a history may be of any length.
#pragma once

#include "model/keyword_snapshot.h"

#include <limits>
#include <optional>
#include <vector>

namespace veltrix
{

/// Which part of a keyword's measurements.
struct PageStart {
    /// The first UTC day of it.
    std::int64_t firstDay = std::numeric_limits<std::int64_t>::min();
    /// About how many measurements; more where the state file has more in the same time.
    size_t size = 256;
};

struct MeasurementPage {
    /// Oldest first.
    std::vector<SharedSnapshot> measurements;
    /// Where the next begins; none when this is the last.
    std::optional<std::int64_t> nextDay;
};

} // namespace veltrix
