// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/column_layout.h"

#include <QStringList>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int widestColumn = 4000;

const QString shown = QStringLiteral("shown");
const QString hidden = QStringLiteral("hidden");
/// Of the tags: shown while there are any.
const QString followed = QStringLiteral("auto");
const QString sortWord = QStringLiteral("sort");
const QString excessWord = QStringLiteral("excess");
const QString filterWord = QStringLiteral("filter");
const QString ascending = QStringLiteral("ascending");
const QString descending = QStringLiteral("descending");

ColumnLayout::Column standardColumn(const KeywordColumnInfo &info)
{
    return {info.column, info.defaultWidth, info.isShownAtFirst};
}

bool contains(const ColumnLayout &layout, KeywordColumn column)
{
    return std::any_of(layout.columns.begin(), layout.columns.end(),
                       [column](const auto &entry) { return entry.column == column; });
}

/// Puts a column that was missing after the nearest column before it in the defined order.
void insertAtDefinedPlace(ColumnLayout &layout, const KeywordColumnInfo &info)
{
    auto before = layout.columns.end();
    for (auto it = layout.columns.begin(); it != layout.columns.end(); ++it) {
        if (it->column < info.column &&
            (before == layout.columns.end() || it->column > before->column))
            before = it;
    }
    const auto place = before == layout.columns.end() ? layout.columns.begin() : std::next(before);
    layout.columns.insert(place, standardColumn(info));
}

void readColumn(ColumnLayout &layout, const QStringList &words)
{
    const auto column = keywordColumnOf(words.value(0));
    if (!column || contains(layout, *column))
        return;
    const KeywordColumnInfo &info = keywordColumnInfo(*column);
    ColumnLayout::Column entry = standardColumn(info);
    bool isNumber = false;
    const int width = words.value(1).toInt(&isNumber);
    if (isNumber)
        entry.width = std::clamp(width, info.minimumWidth, widestColumn);
    entry.isVisible = words.value(2) != hidden || *column == KeywordColumn::Keyword;
    if (*column == KeywordColumn::Tags)
        layout.doTagsFollow = words.value(2) == followed;
    layout.columns.push_back(entry);
}

void readExcess(ColumnLayout &layout, const QStringList &words)
{
    layout.excess = std::clamp(words.value(1).toInt(), -widestColumn, widestColumn);
}

void readSorting(ColumnLayout &layout, const QStringList &words)
{
    const auto column = keywordColumnOf(words.value(1));
    if (!column)
        return;
    layout.sortedBy = *column;
    layout.sortOrder = words.value(2) == descending ? Qt::DescendingOrder : Qt::AscendingOrder;
}

void readFilter(ColumnLayout &layout, const QStringList &words)
{
    layout.quickFilter = quickFilterOf(words.value(1)).value_or(QuickFilter::All);
}

} // namespace

ColumnLayout ColumnLayout::standard()
{
    ColumnLayout layout;
    for (const KeywordColumnInfo &info : keywordColumns())
        layout.columns.push_back(standardColumn(info));
    return layout;
}

QString ColumnLayout::toText() const
{
    QStringList entries;
    for (const Column &entry : columns) {
        const bool follows = entry.column == KeywordColumn::Tags && doTagsFollow;
        entries.append(QLatin1String(keywordColumnInfo(entry.column).id) + u' ' +
                       QString::number(entry.width) + u' ' +
                       (follows           ? followed
                        : entry.isVisible ? shown
                                          : hidden));
    }
    entries.append(sortWord + u' ' + QLatin1String(keywordColumnInfo(sortedBy).id) + u' ' +
                   (sortOrder == Qt::AscendingOrder ? ascending : descending));
    if (excess != 0)
        entries.append(excessWord + u' ' + QString::number(excess));
    if (quickFilter != QuickFilter::All)
        entries.append(filterWord + u' ' + QLatin1String(quickFilterId(quickFilter)));
    return entries.join(QStringLiteral("; "));
}

ColumnLayout ColumnLayout::fromText(const QString &text)
{
    ColumnLayout layout;
    for (const QString &entry : text.split(u';')) {
        const QStringList words = entry.simplified().split(u' ');
        if (words.value(0) == sortWord)
            readSorting(layout, words);
        else if (words.value(0) == excessWord)
            readExcess(layout, words);
        else if (words.value(0) == filterWord)
            readFilter(layout, words);
        else
            readColumn(layout, words);
    }
    for (const KeywordColumnInfo &info : keywordColumns()) {
        if (!contains(layout, info.column))
            insertAtDefinedPlace(layout, info);
    }
    return layout;
}

} // namespace veltrix
