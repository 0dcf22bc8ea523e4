// SPDX-License-Identifier: GPL-3.0-or-later
// The table of checked phrases: one click or the space bar chooses a row.
#pragma once

#include "ui/competitors/keyword_check_model.h"

#include <QStyledItemDelegate>
#include <QTableView>

namespace veltrix
{

class TableHeader;

/// Draws the cells of the table.
class KeywordCheckDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;
};

/// As high as its rows: the page around it scrolls.
class KeywordCheckTable final : public QTableView
{
    Q_OBJECT

public:
    explicit KeywordCheckTable(KeywordCheckModel &model, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    bool viewportEvent(QEvent *event) override;

private:
    void fitColumns();
    void applyRowHeight();

    KeywordCheckModel &m_model;
    TableHeader *m_header;
    int m_hoveredRow = -1;
};

} // namespace veltrix
