// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/tag_check_model.h"

#include "model/tag_name.h"
#include "model/text_folding.h"
#include "ui_kit/text/shown_text.h"

#include <algorithm>

namespace veltrix
{

TagCheckModel::TagCheckModel(Offer offer, QObject *parent)
    : QAbstractListModel(parent), m_offer(offer)
{
    show();
}

void TagCheckModel::setTags(const QList<TagState> &tags)
{
    m_tags = tags;
    show();
}

void TagCheckModel::setUntagged(bool isChecked)
{
    m_isUntaggedChecked = isChecked;
    show();
}

void TagCheckModel::setFilter(const QString &text)
{
    m_filter = text.trimmed();
    show();
}

int TagCheckModel::rowOf(const QString &tag) const
{
    const QString folded = foldedCase(tag);
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows[row].kind == Row::Kind::Tag && foldedCase(m_rows[row].name) == folded)
            return row;
    }
    return -1;
}

QList<TagCheckModel::Row> TagCheckModel::wantedRows() const
{
    QList<Row> rows;
    const QString searched = foldedForSearch(m_filter);
    const auto typed = usableTagName(m_filter);
    bool isKnown = false;
    for (const TagState &tag : m_tags) {
        if (foldedForSearch(tag.name).contains(searched))
            rows.append({Row::Kind::Tag, tag.name, tag.state, TagChip::of(tag.name)});
        isKnown = isKnown || (typed && foldedCase(tag.name) == foldedCase(*typed));
    }
    if (m_offer == Offer::Untagged && m_filter.isEmpty()) {
        rows.append({Row::Kind::Untagged,
                     tr("Without a tag"),
                     m_isUntaggedChecked ? Qt::Checked : Qt::Unchecked,
                     {}});
    }
    if (m_offer == Offer::NewTag && typed && !isKnown)
        rows.prepend({Row::Kind::NewTag, *typed, Qt::Unchecked, TagChip::of(*typed)});
    return rows;
}

void TagCheckModel::show()
{
    const QList<Row> wanted = wantedRows();
    const auto isSame = [](const Row &left, const Row &right) {
        return left.kind == right.kind && left.name == right.name;
    };
    if (std::equal(wanted.begin(), wanted.end(), m_rows.begin(), m_rows.end(), isSame)) {
        // The list stays where it was scrolled to.
        m_rows = wanted;
        if (!m_rows.isEmpty())
            Q_EMIT dataChanged(index(0), index(int(m_rows.size()) - 1));
        return;
    }
    beginResetModel();
    m_rows = wanted;
    endResetModel();
}

int TagCheckModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant TagCheckModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = m_rows[index.row()];
    const bool isNew = row.kind == Row::Kind::NewTag;
    switch (role) {
    case Qt::DisplayRole:
        return isNew ? tr("Add “%1”").arg(inSentence(row.name)) : shownLine(row.name);
    case Qt::AccessibleTextRole: {
        const QString text = data(index, Qt::DisplayRole).toString();
        if (isNew)
            return text;
        return (row.state == Qt::Checked     ? tr("%1, checked")
                : row.state == Qt::Unchecked ? tr("%1, not checked")
                                             : tr("%1, partly checked"))
            .arg(text);
    }
    case Qt::CheckStateRole:
        return isNew ? QVariant() : QVariant(row.state);
    default:
        return {};
    }
}

Qt::ItemFlags TagCheckModel::flags(const QModelIndex &index) const
{
    return QAbstractListModel::flags(index) | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren;
}

} // namespace veltrix
