// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_check_model.h"

#include "model/text_folding.h"

#include <algorithm>

namespace veltrix
{

KeywordCheckModel::KeywordCheckModel(QObject *parent) : EntryModel(checkColumns(), parent) {}

void KeywordCheckModel::clear()
{
    reset({});
    Q_EMIT chosenChanged();
}

bool KeywordCheckModel::isTracked(const AppKeywordCheck &check) const
{
    return m_tracked.contains(foldedCase(check.keyword));
}

void KeywordCheckModel::add(const AppKeywordCheck &check)
{
    EntryModel::add({{check, false, isTracked(check), entryCount(), collationKey(check.keyword)}});
}

void KeywordCheckModel::setChecks(const QList<AppKeywordCheck> &checks)
{
    for (const auto &kept : entries())
        kept->entry.check = checks[kept->entry.order];
    resort();
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, int(lastColumn())));
}

void KeywordCheckModel::setTracked(const QSet<QString> &keywords)
{
    m_tracked.clear();
    for (const QString &keyword : keywords)
        m_tracked.insert(foldedCase(keyword));
    bool hadChosen = false;
    for (const auto &kept : entries()) {
        CheckEntry &entry = kept->entry;
        entry.isTracked = isTracked(entry.check);
        hadChosen = hadChosen || (entry.isTracked && entry.isChosen);
        entry.isChosen = entry.isChosen && !entry.isTracked;
    }
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, int(lastColumn())));
    if (hadChosen)
        Q_EMIT chosenChanged();
}

void KeywordCheckModel::setChosen(int row, bool isChosen)
{
    Kept &changed = keptAt(row);
    if (changed.entry.isTracked || changed.entry.isChosen == isChosen)
        return;
    changed.entry.isChosen = isChosen;
    announceChange(changed, CheckColumn::Chosen, lastColumn());
    Q_EMIT chosenChanged();
}

void KeywordCheckModel::chooseAll()
{
    for (int row = 0; row < rowCount(); ++row)
        setChosen(row, true);
}

QStringList KeywordCheckModel::chosen() const
{
    std::vector<const CheckEntry *> rows;
    for (const auto &kept : entries()) {
        if (kept->entry.isChosen)
            rows.push_back(&kept->entry);
    }
    std::ranges::sort(rows, {}, &CheckEntry::order);
    QStringList texts;
    for (const CheckEntry *row : rows)
        texts.append(row->check.keyword);
    return texts;
}

QVariant KeywordCheckModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::CheckStateRole && index.isValid() && index.column() == int(CheckColumn::Chosen))
        return entryAt(index.row()).isChecked() ? Qt::Checked : Qt::Unchecked;
    return EntryModel::data(index, role);
}

bool KeywordCheckModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !(flags(index) & Qt::ItemIsUserCheckable))
        return false;
    setChosen(index.row(), value.toInt() == Qt::Checked);
    return true;
}

Qt::ItemFlags KeywordCheckModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = EntryModel::flags(index);
    if (index.isValid() && index.column() == int(CheckColumn::Chosen) &&
        !entryAt(index.row()).isTracked)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

} // namespace veltrix
