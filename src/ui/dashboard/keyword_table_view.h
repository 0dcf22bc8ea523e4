// SPDX-License-Identifier: GPL-3.0-or-later
// The keyword table: rows that are selected, opened, copied and removed, in columns that the user
// arranges.
#pragma once

#include "ui/dashboard/column_layout.h"
#include "ui_kit/table/row_table.h"

#include <QHash>

namespace veltrix
{

class KeywordTableModel;
class RowActions;

class KeywordTableView final : public RowTable
{
    Q_OBJECT

public:
    KeywordTableView(KeywordTableModel &model, ArtworkImages &images, QWidget *parent = nullptr);
    ~KeywordTableView() override;

    void setColumnLayout(const ColumnLayout &layout);
    [[nodiscard]] ColumnLayout columnLayout() const;
    /// What the user wants to see.
    void setColumnVisible(KeywordColumn column, bool visible);
    /// Whether there are tags to show, where the user has not said that they are, or are not.
    void setHasTags(bool hasTags);

    /// Visible columns in the order on screen.
    [[nodiscard]] std::vector<KeywordColumn> shownColumns() const;
    /// Keywords of the selected rows, top to bottom.
    [[nodiscard]] QList<QUuid> selectedIds() const;
    void selectRow(QUuid id);
    void selectCurrentIfNone();

Q_SIGNALS:
    void opened(int row);
    void rankedAppsRequested(int row);
    void historyRequested(int row);
    void removeRequested();
    /// A tag was pressed.
    void tagRequested(const QString &tag);
    /// The context menu for the selected rows is wanted.
    void menuRequested(const QPoint &globalPosition);
    void columnMenuRequested(const QPoint &globalPosition);
    void columnLayoutChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] qreal coveredEnd(const QModelIndex &index) const override;
    void rowsPlaced() override;
    void fontChanged() override;

private:
    void connectHeader();
    void connectRowActions();
    void fillWithKeywords();
    /// Gives every column the layout's place, width and visibility.
    void arrangeColumns(const ColumnLayout &layout);
    /// The row whose buttons are wanted, or -1.
    [[nodiscard]] int rowOfActions() const;
    /// Where the row's buttons go; empty where they would come up under the pointer.
    [[nodiscard]] QRect placeActions(int row);
    [[nodiscard]] int scaledLength(int atStandard) const;
    [[nodiscard]] int toStandardFont(int pixels) const;
    [[nodiscard]] bool isAppsCell(const QModelIndex &index) const;
    /// The tag that is shown there, or an empty text.
    [[nodiscard]] QString tagAt(const QPoint &position) const;
    void showColumn(KeywordColumn column, bool visible);

    KeywordTableModel &m_model;
    RowActions *m_rowActions;
    int m_actionsRow = -1;
    /// How much wider than the table the user has made all columns together; negative: narrower.
    int m_excess = 0;
    bool m_isArranging = false;
    /// Of the font that the columns have their widths for.
    QFont m_arrangedFont;
    /// Of hidden columns, as they were when they were shown; at the standard font.
    QHash<KeywordColumn, int> m_hiddenWidths;
    QPoint m_pointer;
    QPersistentModelIndex m_pressedApps;
    /// The tag of the last press, and whether it was acted on.
    QString m_pressedTag;
    bool m_isTagSent = false;
    bool m_hasTags = false;
    bool m_doTagsFollow = true;
};

} // namespace veltrix
