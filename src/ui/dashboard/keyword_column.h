// SPDX-License-Identifier: GPL-3.0-or-later
// The one list of the keyword table's columns: it feeds the model, sorting, painting, copying,
// export, the saved layout and what a screen reader says.
#pragma once

#include "ui/dashboard/keyword_entry.h"
#include "ui_kit/table/column.h"

namespace veltrix
{

enum class KeywordColumn {
    Keyword,
    Tags,
    Target,
    Popularity,
    Difficulty,
    Position,
    In7Days,
    In30Days,
    Best,
    Apps,
};

using KeywordColumnInfo = Column<KeywordEntry, KeywordColumn>;

/// All columns in their defined order; the index is the model's column.
std::span<const KeywordColumnInfo> keywordColumns();
const KeywordColumnInfo &keywordColumnInfo(KeywordColumn column);
/// The column of an id, or nothing.
std::optional<KeywordColumn> keywordColumnOf(const QString &id);

} // namespace veltrix
