// SPDX-License-Identifier: GPL-3.0-or-later
// The checked phrases of a researched app as rows that can be sorted and chosen.
#pragma once

#include "scoring/app_keyword_check.h"

#include <QAbstractTableModel>
#include <QCollator>
#include <QSet>

#include <array>
#include <vector>

namespace veltrix
{

enum class CheckColumn {
    /// Whether the phrase is to be tracked.
    Chosen,
    Keyword,
    Rank,
    Difficulty,
};

inline constexpr int checkColumnCount = 4;

class KeywordCheckModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Row {
        AppKeywordCheck check;
        bool isChosen = false;
        /// Tracked already for the user's app, so it cannot be chosen.
        bool isTracked = false;
        /// Place in the listing.
        int order = 0;
    };

    explicit KeywordCheckModel(QObject *parent = nullptr);

    void clear();
    /// Adds a phrase where it belongs in the order in use; at the end while unsorted.
    void add(const AppKeywordCheck &check);
    /// The texts that are tracked; they are compared ignoring case.
    void setTracked(const QSet<QString> &keywords);

    [[nodiscard]] const Row &rowAt(int row) const { return m_rows[size_t(row)]; }
    void setChosen(int row, bool isChosen);
    void toggle(int row) { setChosen(row, !rowAt(row).isChosen); }
    void chooseAll();
    /// Chosen texts in the order of the listing.
    [[nodiscard]] QStringList chosen() const;

    /// The shown rows with a header line.
    [[nodiscard]] QList<QStringList> table() const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// A column of -1 gives the order of the listing. Missing figures come last either way.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

Q_SIGNALS:
    void chosenChanged();

private:
    [[nodiscard]] bool comesBefore(const Row &left, const Row &right) const;
    [[nodiscard]] QString accessibleText(const Row &row, CheckColumn column) const;

    std::vector<Row> m_rows;
    QSet<QString> m_tracked;
    QCollator m_collator;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};

} // namespace veltrix
