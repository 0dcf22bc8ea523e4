// SPDX-License-Identifier: GPL-3.0-or-later
// The keyword table: whole rows that are hovered, selected, opened, copied and removed.
#pragma once

#include "ui/dashboard/column_layout.h"

#include <QTableView>

namespace veltrix
{

class ArtworkImages;
class KeywordDelegate;
class KeywordTableModel;
class RowActions;
class TableHeader;

class KeywordTableView final : public QTableView
{
    Q_OBJECT

public:
    KeywordTableView(KeywordTableModel &model, ArtworkImages &images, QWidget *parent = nullptr);

    void setColumnLayout(const ColumnLayout &layout);
    [[nodiscard]] ColumnLayout columnLayout() const;
    void setColumnVisible(KeywordColumn column, bool visible);

    /// Visible columns in the order on screen.
    [[nodiscard]] std::vector<KeywordColumn> shownColumns() const;
    /// Selected rows from top to bottom.
    [[nodiscard]] std::vector<int> selectedRows() const;
    /// Keywords of the selected rows, top to bottom.
    [[nodiscard]] QList<QUuid> selectedIds() const;
    void selectRow(QUuid id);

Q_SIGNALS:
    void opened(int row);
    void rankedAppsRequested(int row);
    void historyRequested(int row);
    void removeRequested();
    void copyRequested();
    /// The context menu for the selected rows is wanted.
    void menuRequested(const QPoint &globalPosition);
    void columnMenuRequested(const QPoint &globalPosition);
    void columnLayoutChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void setHoveredRow(int row);
    void placeRowActions();
    void applyRowHeight();
    void keepSelectionOverReset();
    void selectCurrentIfNone();
    void fillWidth();
    [[nodiscard]] bool isAppsCell(const QPoint &position) const;

    KeywordTableModel &m_model;
    KeywordDelegate *m_delegate;
    TableHeader *m_header;
    RowActions *m_rowActions;
    int m_hoveredRow = -1;
    int m_actionsRow = -1;
    /// How much wider than the table the user has made all columns together; negative: narrower.
    int m_excess = 0;
    bool m_isArranging = false;
    QPersistentModelIndex m_pressedApps;
    QList<QUuid> m_selectedBeforeReset;
    QUuid m_currentBeforeReset;
    int m_scrollBeforeReset = 0;
};

} // namespace veltrix
