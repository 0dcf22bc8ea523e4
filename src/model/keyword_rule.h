// SPDX-License-Identifier: GPL-3.0-or-later
// What a keyword must be like so that it can be measured.
#pragma once

#include <QString>

#include <optional>

namespace veltrix
{

/// Why a keyword can never be measured.
enum class KeywordRefusal {
    /// Nothing is left once white space is trimmed from its ends.
    Empty,
    /// More than longestKeyword characters.
    TooLong,
    /// A control character, such as a tab or a line break, inside the text.
    ControlCharacter,
    /// The storefront is none of storefrontCodes().
    UnknownStorefront,
};

/// Most characters (Unicode code points) of a keyword, without white space at its ends.
inline constexpr qsizetype longestKeyword = 100;

/// Empty for a keyword that can be measured: 1 to longestKeyword characters once trimmed, as
/// written and in lower case, as it is searched; no control characters; a storefront that can be
/// chosen, in any case. Of several reasons the first in the order of KeywordRefusal.
[[nodiscard]] std::optional<KeywordRefusal> keywordRefusal(const QString &text,
                                                           const QString &country);

} // namespace veltrix
