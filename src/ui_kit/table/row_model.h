// SPDX-License-Identifier: GPL-3.0-or-later
// Rows that come, go and change places one by one, however many there are: nothing is reset, so
// scroll position, selection and current row stay.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include <vector>

namespace veltrix
{

/// The rows of a table as identities in an order; EntryModel adds what they show.
class RowModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// What `data` has for painting: a CellPainter.
    static constexpr int PaintRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;
    ~RowModel() override;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// -1 while the rows are in the order in which none is sorted.
    [[nodiscard]] int sortColumn() const { return m_sortColumn; }
    [[nodiscard]] Qt::SortOrder sortOrder() const { return m_sortOrder; }

    /// Pixels at the standard font.
    [[nodiscard]] virtual int defaultWidth(int column) const = 0;
    [[nodiscard]] virtual int minimumWidth(int column) const = 0;
    /// The given rows and columns as text, with a header line.
    [[nodiscard]] virtual QList<QStringList> texts(const std::vector<int> &rows,
                                                   const std::vector<int> &columns) const = 0;

Q_SIGNALS:
    /// Around rows that come, go and move together. Sorting is not announced: whoever sorts wants
    /// to see what comes first.
    void rowsAboutToDiffer();
    void rowsDiffer();

protected:
    /// A row's identity, which stays where it is in memory. Its owner keeps it while it is shown.
    struct Row {
        /// Its place in the table, or -1 while it is not shown.
        int place = -1;
        /// Its place after the change that is being made, or -1.
        int wanted = -1;
    };
    using Rows = std::vector<Row *>;

    [[nodiscard]] const Rows &rows() const { return m_rows; }
    /// Makes the rows these, in this order, by removals, insertions and a change of the order.
    void show(const Rows &wanted);
    /// Brings the same rows into another order.
    void arrange(Rows order);
    /// Shows these rows as new: the model was reset.
    void resetRows(Rows rows);
    void setSorting(int column, Qt::SortOrder order);
    /// How the column in use is sorted, and then its help, for a screen reader.
    [[nodiscard]] QString sortedText(const QString &help) const;

private:
    void removeUnwanted();
    void insertMissing(const Rows &wanted);
    void renumber(size_t from);

    Rows m_rows;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};

} // namespace veltrix
