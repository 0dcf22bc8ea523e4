// SPDX-License-Identifier: GPL-3.0-or-later
// A column of a row table as data: all that a table, a copy, a file and a screen reader show of it.
#pragma once

#include "ui_kit/table/cell_painting.h"

#include <QCollatorSortKey>
#include <QList>
#include <QStringList>

#include <span>

namespace veltrix
{

/// A place in the order of a column. Keys of a higher group ("no value") come after all others in
/// both directions; within a group the text decides where both keys have one, else the number.
struct ColumnSortKey {
    int group = 0;
    double number = 0;
    /// Belongs to the entry; null where the number decides.
    const QCollatorSortKey *text = nullptr;

    /// Missing figures come last.
    template <class Number>
    static ColumnSortKey of(const std::optional<Number> &value)
    {
        return value ? ColumnSortKey{.number = double(*value)} : ColumnSortKey{.group = 1};
    }
};

/// Below zero when `left` comes before `right` in that direction, above when it comes after it,
/// zero when neither does.
int compare(const ColumnSortKey &left, const ColumnSortKey &right, Qt::SortOrder order);

/// A column of a table of text: a copy or a file.
template <class Entry>
struct TextColumn {
    QString (*title)() = nullptr;
    QString (*text)(const Entry &entry) = nullptr;
};

/// A column of a table on screen. `Entry` is what a row shows, `Id` the enumeration whose values
/// are the places of the columns in their registry.
template <class Entry, class Id>
struct Column {
    Id column{};
    /// Stable name for saved layouts; may be null where none is saved.
    const char *id = nullptr;
    QString (*title)() = nullptr;
    /// The header of a column that is known by its cells shows no title.
    bool isTitleShown = true;
    /// Explains the header; null for one that explains itself.
    QString (*help)() = nullptr;
    /// Pixels.
    int defaultWidth = 0;
    int minimumWidth = 0;
    /// Whether the user sees it without having asked for it.
    bool isShownAtFirst = true;
    Qt::Alignment alignment = Qt::AlignLeading | Qt::AlignVCenter;

    ColumnSortKey (*sortKey)(const Entry &entry) = nullptr;
    /// The cell as plain text, for copies and exports; null for a column that they leave out.
    QString (*text)(const Entry &entry) = nullptr;
    /// What copies and exports have after this column; null where nothing goes along.
    TextColumn<Entry> exportedAlong = {};
    /// The cell as a screen reader says it.
    QString (*accessibleText)(const Entry &entry) = nullptr;
    /// More for a screen reader; may be null, and its text empty.
    QString (*accessibleHint)(const Entry &entry) = nullptr;
    /// Null where the hint is the tool tip too.
    QString (*toolTip)(const Entry &entry) = nullptr;
    /// Whether the cell is told when the row is read as one sentence.
    bool isInSentence = true;
    void (*paint)(const CellPainting &cell, const Entry &entry) = nullptr;

    [[nodiscard]] QString headerText() const { return isTitleShown ? title() : QString(); }
    [[nodiscard]] QString helpText() const { return help ? help() : QString(); }
    [[nodiscard]] QString hintFor(const Entry &entry) const
    {
        return accessibleHint ? accessibleHint(entry) : QString();
    }
    [[nodiscard]] QString toolTipFor(const Entry &entry) const
    {
        return toolTip ? toolTip(entry) : hintFor(entry);
    }
};

/// A header line, and a line for each entry.
template <class Entries, class Entry>
QList<QStringList> tableOfText(const std::vector<TextColumn<Entry>> &columns,
                               const Entries &entries)
{
    QList<QStringList> table(1);
    for (const TextColumn<Entry> &column : columns)
        table[0].append(column.title());
    for (const Entry &entry : entries) {
        QStringList line;
        for (const TextColumn<Entry> &column : columns)
            line.append(column.text(entry));
        table.append(line);
    }
    return table;
}

} // namespace veltrix
