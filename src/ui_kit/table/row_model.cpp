// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/table/row_model.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace veltrix
{

namespace
{

/// With more stretches than this it is quicker to change the order once, so that all of them are
/// one stretch at the end, than to tell the views of each.
constexpr size_t mostStretches = 16;

/// Places that follow each other, the last one included.
struct Stretch {
    int first;
    int last;
};

template <class Row, class IsPartOf>
std::vector<Stretch> stretchesOf(const std::vector<Row *> &rows, IsPartOf &&isPartOf)
{
    std::vector<Stretch> stretches;
    for (int place = 0; place < int(rows.size()); ++place) {
        if (!isPartOf(rows[size_t(place)]))
            continue;
        if (stretches.empty() || stretches.back().last != place - 1)
            stretches.push_back({place, place});
        stretches.back().last = place;
    }
    return stretches;
}

} // namespace

RowModel::~RowModel() = default;

int RowModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

Qt::ItemFlags RowModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                           : Qt::NoItemFlags;
}

void RowModel::setSorting(int column, Qt::SortOrder order)
{
    m_sortColumn = column;
    m_sortOrder = order;
}

QString RowModel::sortedText(const QString &help) const
{
    const QString order =
        m_sortOrder == Qt::AscendingOrder ? tr("Sorted ascending.") : tr("Sorted descending.");
    return QString(order + u' ' + help).trimmed();
}

void RowModel::renumber(size_t from)
{
    for (size_t place = from; place < m_rows.size(); ++place)
        m_rows[place]->place = int(place);
}

void RowModel::resetRows(Rows rows)
{
    m_rows = std::move(rows);
    renumber(0);
}

void RowModel::show(const Rows &wanted)
{
    if (wanted == m_rows)
        return;
    Q_EMIT rowsAboutToDiffer();
    for (Row *row : m_rows)
        row->wanted = -1;
    for (size_t place = 0; place < wanted.size(); ++place)
        wanted[place]->wanted = int(place);
    removeUnwanted();
    insertMissing(wanted);
    Q_EMIT rowsDiffer();
}

void RowModel::removeUnwanted()
{
    const auto isUnwanted = [](const Row *row) {
        return row->wanted < 0;
    };
    std::vector<Stretch> stretches = stretchesOf(m_rows, isUnwanted);
    if (stretches.size() > mostStretches) {
        Rows order = m_rows;
        std::stable_partition(order.begin(), order.end(),
                              [&](const Row *row) { return !isUnwanted(row); });
        arrange(std::move(order));
        stretches = stretchesOf(m_rows, isUnwanted);
    }
    for (auto stretch = stretches.rbegin(); stretch != stretches.rend(); ++stretch) {
        beginRemoveRows({}, stretch->first, stretch->last);
        const auto first = m_rows.begin() + stretch->first;
        const auto end = m_rows.begin() + stretch->last + 1;
        std::for_each(first, end, [](Row *row) { row->place = -1; });
        m_rows.erase(first, end);
        renumber(size_t(stretch->first));
        endRemoveRows();
    }
}

void RowModel::insertMissing(const Rows &wanted)
{
    const auto isShown = [](const Row *row) {
        return row->place >= 0;
    };
    const std::vector<Stretch> stretches =
        stretchesOf(wanted, [&](const Row *row) { return !isShown(row); });
    const auto insert = [&](size_t place, Rows::const_iterator first, Rows::const_iterator end) {
        beginInsertRows({}, int(place), int(place) + int(end - first) - 1);
        m_rows.insert(m_rows.begin() + std::ptrdiff_t(place), first, end);
        renumber(place);
        endInsertRows();
    };
    Rows order;
    if (stretches.size() > mostStretches) {
        std::copy_if(wanted.begin(), wanted.end(), std::back_inserter(order), std::not_fn(isShown));
        insert(m_rows.size(), order.begin(), order.end());
        arrange(wanted);
        return;
    }
    std::copy_if(wanted.begin(), wanted.end(), std::back_inserter(order), isShown);
    arrange(std::move(order));
    for (const Stretch &stretch : stretches)
        insert(size_t(stretch.first), wanted.begin() + stretch.first,
               wanted.begin() + stretch.last + 1);
}

void RowModel::arrange(Rows order)
{
    if (order == m_rows)
        return;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    const Rows before = std::exchange(m_rows, std::move(order));
    renumber(0);
    const QModelIndexList old = persistentIndexList();
    QModelIndexList moved;
    moved.reserve(old.size());
    for (const QModelIndex &index : old)
        moved.append(createIndex(before[size_t(index.row())]->place, index.column()));
    changePersistentIndexList(old, moved);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

} // namespace veltrix
