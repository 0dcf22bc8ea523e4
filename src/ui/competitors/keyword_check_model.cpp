// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_check_model.h"

#include "model/text_folding.h"
#include "ui_kit/widgets/position_badge.h"
#include "ui_kit/widgets/score_ring.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// Whether one figure comes before the other; nothing means that they are equal. A missing figure
/// comes after every other, in either order.
std::optional<bool> comesBeforeBy(const std::optional<std::int64_t> &left,
                                  const std::optional<std::int64_t> &right, Qt::SortOrder order)
{
    if (left == right)
        return std::nullopt;
    if (!left || !right)
        return left.has_value();
    return order == Qt::AscendingOrder ? *left < *right : *left > *right;
}

} // namespace

KeywordCheckModel::KeywordCheckModel(QObject *parent) : QAbstractTableModel(parent)
{
    m_collator.setNumericMode(true);
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
}

void KeywordCheckModel::clear()
{
    beginResetModel();
    m_rows.clear();
    endResetModel();
    Q_EMIT chosenChanged();
}

void KeywordCheckModel::add(const AppKeywordCheck &check)
{
    const Row row{check, false, m_tracked.contains(foldedCase(check.keyword)), int(m_rows.size())};
    const auto place =
        std::ranges::upper_bound(m_rows, row, [this](const Row &left, const Row &right) {
            return comesBefore(left, right);
        });
    const int index = int(place - m_rows.begin());
    beginInsertRows({}, index, index);
    m_rows.insert(place, row);
    endInsertRows();
}

void KeywordCheckModel::setTracked(const QSet<QString> &keywords)
{
    m_tracked.clear();
    for (const QString &keyword : keywords)
        m_tracked.insert(foldedCase(keyword));
    bool hadChosen = false;
    for (Row &row : m_rows) {
        row.isTracked = m_tracked.contains(foldedCase(row.check.keyword));
        hadChosen = hadChosen || (row.isTracked && row.isChosen);
        row.isChosen = row.isChosen && !row.isTracked;
    }
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, checkColumnCount - 1));
    if (hadChosen)
        Q_EMIT chosenChanged();
}

void KeywordCheckModel::setChosen(int row, bool isChosen)
{
    Row &changed = m_rows[size_t(row)];
    if (changed.isTracked || changed.isChosen == isChosen)
        return;
    changed.isChosen = isChosen;
    Q_EMIT dataChanged(index(row, 0), index(row, checkColumnCount - 1));
    Q_EMIT chosenChanged();
}

void KeywordCheckModel::chooseAll()
{
    for (int row = 0; row < rowCount(); ++row)
        setChosen(row, true);
}

QStringList KeywordCheckModel::chosen() const
{
    std::vector<const Row *> rows;
    for (const Row &row : m_rows) {
        if (row.isChosen)
            rows.push_back(&row);
    }
    std::ranges::sort(rows, {}, &Row::order);
    QStringList texts;
    for (const Row *row : rows)
        texts.append(row->check.keyword);
    return texts;
}

QList<QStringList> KeywordCheckModel::table() const
{
    QList<QStringList> table{{tr("Keyword"), tr("Rank"), tr("Diff")}};
    for (const Row &row : m_rows)
        table.append({row.check.keyword, PositionBadge{row.check.position}.text(),
                      row.check.difficulty ? QString::number(*row.check.difficulty) : QString()});
    return table;
}

int KeywordCheckModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int KeywordCheckModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : checkColumnCount;
}

QString KeywordCheckModel::accessibleText(const Row &row, CheckColumn column) const
{
    switch (column) {
    case CheckColumn::Chosen:
        return row.isTracked  ? tr("Already tracking")
               : row.isChosen ? tr("Chosen")
                              : tr("Not chosen");
    case CheckColumn::Keyword:
        return row.check.keyword;
    case CheckColumn::Rank: {
        QString text = PositionBadge{row.check.position}.accessibleText();
        if (row.check.ownPosition)
            text += QStringLiteral(", ") + tr("your app ranks %1").arg(*row.check.ownPosition);
        return text;
    }
    case CheckColumn::Difficulty:
        return ScoreRing{row.check.difficulty, ScoreRing::Mode::Difficulty}.accessibleText();
    }
    Q_UNREACHABLE();
}

QVariant KeywordCheckModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = rowAt(index.row());
    const auto column = static_cast<CheckColumn>(index.column());
    switch (role) {
    case Qt::DisplayRole:
        switch (column) {
        case CheckColumn::Chosen:
            return {};
        case CheckColumn::Keyword:
            return row.check.keyword;
        case CheckColumn::Rank:
            return PositionBadge{row.check.position}.text();
        case CheckColumn::Difficulty:
            return ScoreRing{row.check.difficulty, ScoreRing::Mode::Difficulty}.text();
        }
        break;
    case Qt::CheckStateRole:
        if (column == CheckColumn::Chosen)
            return row.isChosen || row.isTracked ? Qt::Checked : Qt::Unchecked;
        break;
    case Qt::AccessibleTextRole:
        return accessibleText(row, column);
    case Qt::ToolTipRole:
        if (row.isTracked)
            return tr("Already tracking");
        if (column == CheckColumn::Rank && row.check.ownPosition)
            return tr("Your app: %1").arg(PositionBadge{row.check.ownPosition}.text());
        break;
    default:
        break;
    }
    return {};
}

bool KeywordCheckModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole ||
        static_cast<CheckColumn>(index.column()) != CheckColumn::Chosen ||
        rowAt(index.row()).isTracked)
        return false;
    setChosen(index.row(), value.toInt() == Qt::Checked);
    return true;
}

QVariant KeywordCheckModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= checkColumnCount)
        return {};
    const auto column = static_cast<CheckColumn>(section);
    if (role == Qt::AccessibleTextRole && column == CheckColumn::Chosen)
        return tr("Chosen");
    if (role == Qt::ToolTipRole && column == CheckColumn::Difficulty)
        return tr("Difficulty (est.)");
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    switch (column) {
    case CheckColumn::Chosen:
        return QString();
    case CheckColumn::Keyword:
        return tr("Keyword");
    case CheckColumn::Rank:
        return tr("Rank");
    case CheckColumn::Difficulty:
        return tr("Diff");
    }
    Q_UNREACHABLE();
}

Qt::ItemFlags KeywordCheckModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    if (static_cast<CheckColumn>(index.column()) == CheckColumn::Chosen &&
        !rowAt(index.row()).isTracked)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

bool KeywordCheckModel::comesBefore(const Row &left, const Row &right) const
{
    std::optional<bool> before;
    if (m_sortColumn == int(CheckColumn::Rank)) {
        before = comesBeforeBy(left.check.position, right.check.position, m_sortOrder);
    } else if (m_sortColumn == int(CheckColumn::Difficulty)) {
        before = comesBeforeBy(left.check.difficulty, right.check.difficulty, m_sortOrder);
    } else if (m_sortColumn == int(CheckColumn::Keyword)) {
        const int compared = m_collator.compare(left.check.keyword, right.check.keyword);
        if (compared != 0)
            before = (compared < 0) == (m_sortOrder == Qt::AscendingOrder);
    } else if (m_sortColumn == int(CheckColumn::Chosen) && left.isChosen != right.isChosen) {
        before = left.isChosen == (m_sortOrder == Qt::AscendingOrder);
    }
    return before.value_or(left.order < right.order);
}

void KeywordCheckModel::sort(int column, Qt::SortOrder order)
{
    m_sortColumn = column;
    m_sortOrder = order;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    const std::vector<Row> before = m_rows;
    std::ranges::stable_sort(
        m_rows, [this](const Row &left, const Row &right) { return comesBefore(left, right); });
    std::vector<int> placeOf(m_rows.size());
    for (size_t place = 0; place < m_rows.size(); ++place)
        placeOf[size_t(m_rows[place].order)] = int(place);
    const QModelIndexList old = persistentIndexList();
    QModelIndexList moved;
    for (const QModelIndex &index : old)
        moved.append(
            createIndex(placeOf[size_t(before[size_t(index.row())].order)], index.column()));
    changePersistentIndexList(old, moved);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

} // namespace veltrix
