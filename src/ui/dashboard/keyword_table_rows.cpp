// SPDX-License-Identifier: GPL-3.0-or-later
// What keeps the keyword table calm: rows that come, go or are rebuilt move neither what the user
// looks at nor what is selected.
#include "ui/dashboard/keyword_table_view.h"

#include "ui/dashboard/keyword_table_model.h"

#include <QHeaderView>
#include <QScrollBar>

namespace veltrix
{

void KeywordTableView::rowsInserted(const QModelIndex &parent, int start, int end)
{
    // What the user looks at stays where it is when rows come in above it.
    const int firstVisible = rowAt(0);
    const int offset = verticalScrollBar()->value();
    QTableView::rowsInserted(parent, start, end);
    if (offset > 0 && firstVisible >= 0 && start <= firstVisible) {
        updateGeometries();
        verticalScrollBar()->setValue(offset +
                                      (end - start + 1) * verticalHeader()->defaultSectionSize());
    }
    setHoveredRow(-1);
}

void KeywordTableView::rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end)
{
    const int firstVisible = rowAt(0);
    const int offset = verticalScrollBar()->value();
    QTableView::rowsAboutToBeRemoved(parent, start, end);
    if (offset > 0 && end < firstVisible)
        verticalScrollBar()->setValue(offset -
                                      (end - start + 1) * verticalHeader()->defaultSectionSize());
    setHoveredRow(-1);
}

void KeywordTableView::keepSelectionOverReset()
{
    connect(&m_model, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        setHoveredRow(-1);
        m_selectedBeforeReset = selectedIds();
        m_currentBeforeReset =
            currentIndex().isValid() ? m_model.entryAt(currentIndex().row()).row.id : QUuid();
        m_scrollBeforeReset = verticalScrollBar()->value();
    });
    connect(&m_model, &QAbstractItemModel::modelReset, this, [this] {
        QItemSelection selection;
        for (const QUuid &id : std::as_const(m_selectedBeforeReset)) {
            const int row = m_model.rowOf(id);
            if (row >= 0)
                selection.select(m_model.index(row, 0), m_model.index(row, keywordColumnCount - 1));
        }
        const int current = m_model.rowOf(m_currentBeforeReset);
        if (current >= 0)
            selectionModel()->setCurrentIndex(m_model.index(current, 0),
                                              QItemSelectionModel::NoUpdate);
        selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        updateGeometries();
        verticalScrollBar()->setValue(m_scrollBeforeReset);
        placeRowActions();
    });
}

} // namespace veltrix
