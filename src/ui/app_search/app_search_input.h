// SPDX-License-Identifier: GPL-3.0-or-later
// What the text of the app search means: an App Store ID or a name.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace veltrix
{

/// The text as it was understood.
struct AppSearchInput {
    enum class Origin {
        /// The text is a number, a link, or names an ID ("id42").
        Explicit,
        /// The digits of the text were put together; "Asphalt 9" may be a name all the same.
        CollectedDigits,
        /// There is no number in it.
        Name,
    };

    /// The App Store ID, unless the text is a name.
    std::optional<std::int64_t> trackId;
    /// The trimmed text, its case kept, line ends as spaces; empty when nothing was entered.
    QString name;
    Origin origin = Origin::Name;

    bool operator==(const AppSearchInput &) const = default;
};

/// Reads the text of the app search. A pasted link is read first: its last path component of the
/// form "id" and digits is the ID. Then the lower-cased text is, in this order: a whole number;
/// "id" and a whole number; the digits right after the first "id"; all its digits together; a name.
AppSearchInput parseAppSearch(const QString &text);

} // namespace veltrix
