// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/table/numbers_model.h"

#include <array>

namespace veltrix
{

namespace
{

QString numberOf(const NumberEntry &entry)
{
    return entry.number ? QString::number(*entry.number) : QString();
}

constexpr std::array columns{
    Column<NumberEntry, NumberColumn>{
        .column = NumberColumn::Name,
        .id = "name",
        .title = [] { return QStringLiteral("Name"); },
        .help = [] { return QStringLiteral("What it is called."); },
        .defaultWidth = 120,
        .minimumWidth = 60,
        .sortKey =
            [](const NumberEntry &entry) { return ColumnSortKey{.number = double(entry.id)}; },
        .text = nameOf,
        .exportedAlong = {[] { return QStringLiteral("Id"); },
                          [](const NumberEntry &entry) {
                              return QString::number(entry.id);
                          }},
        .accessibleText = nameOf,
        .paint =
            [](const CellPainting &cell, const NumberEntry &entry) {
                paintCellText(cell, cell.content, nameOf(entry), cell.base(), Qt::black);
            },
    },
    Column<NumberEntry, NumberColumn>{
        .column = NumberColumn::Number,
        .id = "number",
        .title = [] { return QStringLiteral("Number"); },
        .defaultWidth = 80,
        .minimumWidth = 40,
        .alignment = Qt::AlignTrailing | Qt::AlignVCenter,
        .sortKey = [](const NumberEntry &entry) { return ColumnSortKey::of(entry.number); },
        .text = numberOf,
        .accessibleText = numberOf,
        .accessibleHint = [](const NumberEntry &) { return QStringLiteral("a hint"); },
        .paint =
            [](const CellPainting &cell, const NumberEntry &entry) {
                paintCellText(cell, cell.content, numberOf(entry), cell.base(), Qt::black);
            },
    },
};

} // namespace

QString nameOf(const NumberEntry &entry)
{
    return QStringLiteral("name %1").arg(entry.id);
}

std::span<const Column<NumberEntry, NumberColumn>> numberColumns()
{
    return columns;
}

void NumbersModel::addTo(int count)
{
    std::vector<NumberEntry> added;
    for (int id = entryCount(); id < count; ++id)
        added.push_back({id, id * 7919 % 1000});
    addAll(added);
}

void NumbersModel::change(int id, std::optional<int> number)
{
    for (const auto &kept : entries()) {
        if (kept->entry.id != id)
            continue;
        kept->entry.number = number;
        announceChange(*kept, NumberColumn::Number, NumberColumn::Number);
    }
}

int NumbersModel::rowOf(int id) const
{
    for (const auto &kept : entries()) {
        if (kept->entry.id == id)
            return kept->place;
    }
    return -1;
}

std::vector<int> NumbersModel::shownIds() const
{
    std::vector<int> ids;
    for (int row = 0; row < rowCount(); ++row)
        ids.push_back(entryAt(row).id);
    return ids;
}

} // namespace veltrix
