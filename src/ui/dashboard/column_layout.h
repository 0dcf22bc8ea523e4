// SPDX-License-Identifier: GPL-3.0-or-later
// How the user has arranged the keyword table.
#pragma once

#include "ui/dashboard/keyword_column.h"
#include "ui/dashboard/quick_filter.h"

#include <QString>

#include <vector>

namespace veltrix
{

/// Order, width and visibility of every column, what the rows are sorted by, and which of them are
/// shown. Widths are pixels at the standard font.
struct ColumnLayout {
    struct Column {
        KeywordColumn column = KeywordColumn::Keyword;
        int width = 0;
        bool isVisible = true;
        bool operator==(const Column &) const = default;
    };

    /// In the order on screen; every column once.
    std::vector<Column> columns;
    KeywordColumn sortedBy = KeywordColumn::Keyword;
    Qt::SortOrder sortOrder = Qt::AscendingOrder;
    /// How much wider than the table the user has made all columns together; negative: narrower.
    int excess = 0;
    QuickFilter quickFilter = QuickFilter::All;
    /// Whether the tags are shown while there are any, as long as the user has not said otherwise.
    bool doTagsFollow = true;

    /// All columns in their defined order with their default widths, those shown that are at first,
    /// sorted by keyword.
    static ColumnLayout standard();

    /// One line of text with the columns' ids, so that it can be read by other versions.
    [[nodiscard]] QString toText() const;
    /// Reads what this or another version wrote: ids that are unknown here are skipped, and columns
    /// that the text lacks come in at their defined place, as they are at first. The keyword column
    /// is never hidden. Anything unreadable falls back to the standard.
    static ColumnLayout fromText(const QString &text);

    bool operator==(const ColumnLayout &) const = default;
};

} // namespace veltrix
