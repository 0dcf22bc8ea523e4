// SPDX-License-Identifier: GPL-3.0-or-later
// Which changes of ranks the user is told of after a measurement without a window.
#pragma once

namespace veltrix
{

struct DigestChoice {
    /// Keywords that rose or fell by at least `leastPlaces`.
    bool movements = true;
    /// At least 1.
    int leastPlaces = 3;
    /// Keywords that entered or left the top 10.
    bool topTen = true;
    /// Keywords that entered or left the results.
    bool results = true;
    /// Keywords that rank higher than ever before.
    bool bests = true;

    [[nodiscard]] bool tellsAnything() const { return movements || topTen || results || bests; }
    bool operator==(const DigestChoice &) const = default;
};

} // namespace veltrix
