// SPDX-License-Identifier: GPL-3.0-or-later
// A model of entries that are filtered and sorted, shown through a registry of columns.
#pragma once

#include "model/text_folding.h"
#include "ui_kit/table/column.h"
#include "ui_kit/table/row_model.h"
#include "ui_kit/text/tool_tip_text.h"

#include <QCollator>

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>

namespace veltrix
{

/// Keeps every entry, hidden ones included, in the order in use. An entry that changes stays where
/// it is until the rows are put in order again: nothing moves under the user's hand.
template <class Entry, class Id>
class EntryModel : public RowModel
{
public:
    using Columns = std::span<const Column<Entry, Id>>;

    explicit EntryModel(Columns columns, QObject *parent = nullptr)
        : RowModel(parent), m_columns(columns)
    {
        m_collator.setCaseSensitivity(Qt::CaseInsensitive);
        m_collator.setNumericMode(true);
    }

    [[nodiscard]] const Entry &entryAt(int row) const { return entryOf(rows()[size_t(row)]); }
    /// Entries in all, whatever the filters hide.
    [[nodiscard]] int entryCount() const { return int(m_entries.size()); }

    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_columns.size());
    }
    [[nodiscard]] int defaultWidth(int column) const override
    {
        return m_columns[size_t(column)].defaultWidth;
    }
    [[nodiscard]] int minimumWidth(int column) const override
    {
        return m_columns[size_t(column)].minimumWidth;
    }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] QList<QStringList> texts(const std::vector<int> &rows,
                                           const std::vector<int> &columns) const override;
    /// A column of -1 gives the order of equal entries to all.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override
    {
        if (column >= int(m_columns.size()))
            return;
        setSorting(column, order);
        resort();
    }
    /// Puts the rows in order again; what passes the filters now comes, what does not goes.
    void resort()
    {
        putInOrder();
        const Rows wanted = shown();
        const auto isShownAlready = [](const Row *row) {
            return row->place >= 0;
        };
        if (wanted.size() == rows().size() &&
            std::all_of(wanted.begin(), wanted.end(), isShownAlready))
            arrange(wanted);
        else
            show(wanted);
    }

protected:
    /// An entry and its row.
    struct Kept : Row {
        Entry entry;
        explicit Kept(Entry value) : entry(std::move(value)) {}
    };

    [[nodiscard]] virtual bool isShown(const Entry & /*entry*/) const { return true; }
    /// Of the entries that pass, so many are shown, the first in the order in use; none for all.
    [[nodiscard]] virtual std::optional<size_t> mostShown() const { return std::nullopt; }
    /// The order of entries that the column in use does not part; strict, so that it is the same
    /// each time.
    [[nodiscard]] virtual bool comesFirstOfEquals(const Entry &left, const Entry &right) const = 0;

    /// The place of a text in the order of the user's language, for ColumnSortKey.
    [[nodiscard]] std::shared_ptr<const QCollatorSortKey> collationKey(const QString &text) const
    {
        // Without a language the keys of a collator do not ignore case.
        const bool hasLanguage = m_collator.locale().language() != QLocale::C;
        return std::make_shared<const QCollatorSortKey>(
            m_collator.sortKey(hasLanguage ? text : foldedCase(text)));
    }

    /// Shows these entries instead of all others, and resets the model.
    std::vector<Kept *> reset(std::vector<Entry> entries);
    /// Adds entries where they belong among the ones that are there, which stay in their order.
    /// Returns them in the order given.
    std::vector<Kept *> add(std::vector<Entry> entries);
    template <class IsGone>
    void remove(IsGone &&isGone);
    /// The filter is another: puts the rows in order and shows those that pass.
    void refilter()
    {
        putInOrder();
        show(shown());
    }
    /// Says that cells of a row have changed.
    void announceChange(const Kept &kept, Id first, Id last)
    {
        if (kept.place >= 0)
            Q_EMIT dataChanged(index(kept.place, int(first)), index(kept.place, int(last)));
    }
    [[nodiscard]] Id lastColumn() const { return m_columns.back().column; }
    [[nodiscard]] const std::vector<std::unique_ptr<Kept>> &entries() const { return m_entries; }
    [[nodiscard]] Kept &keptAt(int row) { return static_cast<Kept &>(*rows()[size_t(row)]); }

private:
    static const Entry &entryOf(const Row *row) { return static_cast<const Kept *>(row)->entry; }

    [[nodiscard]] bool comesBefore(const Entry &left, const Entry &right) const;
    /// Whether one kept entry comes before another.
    [[nodiscard]] auto inOrder() const
    {
        return [this](const auto &left, const auto &right) {
            return comesBefore(left->entry, right->entry);
        };
    }
    void putInOrder()
    {
        if (!std::is_sorted(m_entries.begin(), m_entries.end(), inOrder()))
            std::sort(m_entries.begin(), m_entries.end(), inOrder());
    }
    [[nodiscard]] Rows shown() const
    {
        Rows rows;
        const std::optional<size_t> most = mostShown();
        for (const auto &kept : m_entries) {
            if (most && rows.size() >= *most)
                break;
            if (isShown(kept->entry))
                rows.push_back(kept.get());
        }
        return rows;
    }

    Columns m_columns;
    QCollator m_collator;
    std::vector<std::unique_ptr<Kept>> m_entries;
};

template <class Entry, class Id>
bool EntryModel<Entry, Id>::comesBefore(const Entry &left, const Entry &right) const
{
    if (sortColumn() >= 0) {
        const auto key = m_columns[size_t(sortColumn())].sortKey;
        const int order = compare(key(left), key(right), sortOrder());
        if (order != 0)
            return order < 0;
    }
    return comesFirstOfEquals(left, right);
}

template <class Entry, class Id>
auto EntryModel<Entry, Id>::reset(std::vector<Entry> entries) -> std::vector<Kept *>
{
    beginResetModel();
    resetRows({});
    m_entries.clear();
    std::vector<Kept *> made;
    for (Entry &entry : entries)
        made.push_back(m_entries.emplace_back(std::make_unique<Kept>(std::move(entry))).get());
    putInOrder();
    resetRows(shown());
    endResetModel();
    return made;
}

template <class Entry, class Id>
auto EntryModel<Entry, Id>::add(std::vector<Entry> entries) -> std::vector<Kept *>
{
    std::vector<Kept *> made;
    std::vector<std::unique_ptr<Kept>> added;
    for (Entry &entry : entries)
        made.push_back(added.emplace_back(std::make_unique<Kept>(std::move(entry))).get());
    std::sort(added.begin(), added.end(), inOrder());
    // Entries that have changed in place may stand out of order; each new one goes before the
    // first that it comes before, and that is what merging does.
    std::vector<std::unique_ptr<Kept>> all;
    all.reserve(m_entries.size() + added.size());
    std::merge(std::make_move_iterator(m_entries.begin()), std::make_move_iterator(m_entries.end()),
               std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()),
               std::back_inserter(all), inOrder());
    m_entries = std::move(all);
    show(shown());
    return made;
}

template <class Entry, class Id>
template <class IsGone>
void EntryModel<Entry, Id>::remove(IsGone &&isGone)
{
    const auto stays = [&](const auto &kept) {
        return !isGone(kept->entry);
    };
    const auto gone = std::stable_partition(m_entries.begin(), m_entries.end(), stays);
    std::vector<std::unique_ptr<Kept>> removed(std::make_move_iterator(gone),
                                               std::make_move_iterator(m_entries.end()));
    m_entries.erase(gone, m_entries.end());
    // The views let go of the rows before the entries go.
    show(shown());
}

template <class Entry, class Id>
QVariant EntryModel<Entry, Id>::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Entry &entry = entryAt(index.row());
    const Column<Entry, Id> &column = m_columns[size_t(index.column())];
    switch (role) {
    case Qt::DisplayRole:
        return column.text ? column.text(entry) : QVariant();
    case Qt::AccessibleTextRole:
        return column.accessibleText(entry);
    case Qt::AccessibleDescriptionRole:
        return column.hintFor(entry);
    case Qt::ToolTipRole:
        return column.toolTipFor(entry);
    case Qt::TextAlignmentRole:
        return QVariant(column.alignment);
    case PaintRole:
        return QVariant::fromValue(CellPainter(
            [&column, &entry](const CellPainting &cell) { column.paint(cell, entry); }));
    default:
        return {};
    }
}

template <class Entry, class Id>
QVariant EntryModel<Entry, Id>::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= int(m_columns.size()))
        return {};
    const Column<Entry, Id> &column = m_columns[size_t(section)];
    switch (role) {
    case Qt::DisplayRole:
        return column.headerText();
    case Qt::AccessibleTextRole:
        return column.title();
    case Qt::ToolTipRole:
        return toolTipText(column.helpText());
    case Qt::AccessibleDescriptionRole:
        return section == sortColumn() ? sortedText(column.helpText()) : column.helpText();
    case Qt::TextAlignmentRole:
        return QVariant(column.alignment);
    default:
        return {};
    }
}

template <class Entry, class Id>
QList<QStringList> EntryModel<Entry, Id>::texts(const std::vector<int> &rows,
                                                const std::vector<int> &columns) const
{
    std::vector<TextColumn<Entry>> textColumns;
    for (const int place : columns) {
        const Column<Entry, Id> &column = m_columns[size_t(place)];
        if (column.text)
            textColumns.push_back({column.title, column.text});
        if (column.exportedAlong.text)
            textColumns.push_back(column.exportedAlong);
    }
    std::vector<std::reference_wrapper<const Entry>> chosen;
    for (const int row : rows)
        chosen.push_back(std::cref(entryAt(row)));
    return tableOfText(textColumns, chosen);
}

} // namespace veltrix
