// SPDX-License-Identifier: GPL-3.0-or-later
// The one list of the columns of checked phrases.
#pragma once

#include "scoring/app_keyword_check.h"
#include "ui_kit/table/column.h"

#include <memory>

namespace veltrix
{

enum class CheckColumn {
    /// Whether the phrase is to be tracked.
    Chosen,
    Keyword,
    Rank,
    /// That of the user's own app.
    OwnRank,
    Difficulty,
};

/// What the table knows of one phrase.
struct CheckEntry {
    AppKeywordCheck check;
    bool isChosen = false;
    /// Tracked already for the user's app, so it cannot be chosen.
    bool isTracked = false;
    /// Place in the listing.
    int order = 0;
    /// The phrase's place in the order of the user's language.
    std::shared_ptr<const QCollatorSortKey> collation;

    [[nodiscard]] bool isChecked() const { return isChosen || isTracked; }
};

/// All columns in their order; the index is the model's column.
std::span<const Column<CheckEntry, CheckColumn>> checkColumns();

} // namespace veltrix
