// SPDX-License-Identifier: GPL-3.0-or-later
// The checked phrases of a researched app as rows that can be sorted and chosen.
#pragma once

#include "ui/competitors/keyword_check_column.h"
#include "ui_kit/table/entry_model.h"

#include <QSet>

namespace veltrix
{

/// In the order of the listing until it is sorted.
class KeywordCheckModel final : public EntryModel<CheckEntry, CheckColumn>
{
    Q_OBJECT

public:
    explicit KeywordCheckModel(QObject *parent = nullptr);

    void clear();
    /// Adds a phrase where it belongs in the order in use; at the end while unsorted.
    void add(const AppKeywordCheck &check);
    /// The same phrases in the order in which they were added, checked for another app.
    void setChecks(const QList<AppKeywordCheck> &checks);
    /// The texts that are tracked; they are compared ignoring case.
    void setTracked(const QSet<QString> &keywords);

    void setChosen(int row, bool isChosen);
    void toggle(int row) { setChosen(row, !entryAt(row).isChosen); }
    void chooseAll();
    /// Chosen texts in the order of the listing.
    [[nodiscard]] QStringList chosen() const;

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

Q_SIGNALS:
    void chosenChanged();

protected:
    [[nodiscard]] bool comesFirstOfEquals(const CheckEntry &left,
                                          const CheckEntry &right) const override
    {
        return left.order < right.order;
    }

private:
    [[nodiscard]] bool isTracked(const AppKeywordCheck &check) const;

    QSet<QString> m_tracked;
};

} // namespace veltrix
