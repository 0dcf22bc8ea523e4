// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_table_view.h"

#include "ui/dashboard/keyword_table_model.h"
#include "ui/dashboard/row_actions.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/table/table_header.h"
#include "ui_kit/theme/typography.h"

#include <QContextMenuEvent>

namespace veltrix
{

KeywordTableView::KeywordTableView(KeywordTableModel &model, ArtworkImages &images, QWidget *parent)
    : RowTable(model, RowHeight::TwoLines, &images, parent), m_model(model),
      m_rowActions(new RowActions(viewport()))
{
    nameControl(this, QStringLiteral("keywordTable"), tr("Keywords"));
    header().setObjectName(QStringLiteral("keywordTableHeader"));
    header().setAccessibleName(tr("Columns"));
    header().setContextMenuPolicy(Qt::CustomContextMenu);
    setSelectionMode(ExtendedSelection);
    setMinimumHeight(6 * twoLineRowHeight(font()));
    m_rowActions->hide();
    connectHeader();
    connectRowActions();
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex &index) {
        // The first click on the icons has opened the ranked apps already.
        if (!isAppsCell(visualRect(index).center()))
            Q_EMIT opened(index.row());
    });
    setColumnLayout(ColumnLayout::standard());
}

void KeywordTableView::connectHeader()
{
    connect(&header(), &QHeaderView::sortIndicatorChanged, this,
            [this](int section, Qt::SortOrder order) {
                if (m_isArranging)
                    return;
                m_model.sort(section, order);
                Q_EMIT columnLayoutChanged();
            });
    const auto arranged = [this] {
        rowsPlaced();
        if (m_isArranging)
            return;
        m_excess = header().length() - viewport()->width();
        Q_EMIT columnLayoutChanged();
    };
    connect(&header(), &QHeaderView::sectionResized, this, arranged);
    connect(&header(), &QHeaderView::sectionMoved, this, arranged);
    connect(&header(), &QWidget::customContextMenuRequested, this, [this](const QPoint &position) {
        Q_EMIT columnMenuRequested(header().mapToGlobal(position));
    });
}

void KeywordTableView::connectRowActions()
{
    connect(m_rowActions, &RowActions::rankedAppsRequested, this,
            [this] { Q_EMIT rankedAppsRequested(m_actionsRow); });
    connect(m_rowActions, &RowActions::historyRequested, this,
            [this] { Q_EMIT historyRequested(m_actionsRow); });
    connect(m_rowActions, &RowActions::menuRequested, this, [this](const QPoint &position) {
        if (!selectionModel()->isRowSelected(m_actionsRow))
            QTableView::selectRow(m_actionsRow);
        Q_EMIT menuRequested(position);
    });
}

void KeywordTableView::setColumnLayout(const ColumnLayout &layout)
{
    m_isArranging = true;
    for (size_t place = 0; place < layout.columns.size(); ++place) {
        const ColumnLayout::Column &column = layout.columns[place];
        const int section = int(column.column);
        header().moveSection(header().visualIndex(section), int(place));
        header().setSectionHidden(section, false);
        header().resizeSection(section, column.width);
        header().setSectionHidden(section, !column.isVisible);
    }
    header().setSortIndicator(int(layout.sortedBy), layout.sortOrder);
    m_model.sort(int(layout.sortedBy), layout.sortOrder);
    m_isArranging = false;
    m_excess = 0;
    fillWithKeywords();
}

ColumnLayout KeywordTableView::columnLayout() const
{
    ColumnLayout layout;
    for (int place = 0; place < header().count(); ++place) {
        const int section = header().logicalIndex(place);
        const auto column = static_cast<KeywordColumn>(section);
        const bool hidden = header().isSectionHidden(section);
        const int width =
            hidden ? keywordColumnInfo(column).defaultWidth : header().sectionSize(section);
        layout.columns.push_back({column, width, !hidden});
    }
    layout.sortedBy = m_model.sortedBy();
    layout.sortOrder = m_model.sortOrder();
    return layout;
}

void KeywordTableView::setColumnVisible(KeywordColumn column, bool visible)
{
    if (column == KeywordColumn::Keyword)
        return;
    m_isArranging = true;
    header().setSectionHidden(int(column), !visible);
    m_isArranging = false;
    m_excess = 0;
    fillWithKeywords();
    Q_EMIT columnLayoutChanged();
}

std::vector<KeywordColumn> KeywordTableView::shownColumns() const
{
    std::vector<KeywordColumn> columns;
    for (const int section : shownSections())
        columns.push_back(static_cast<KeywordColumn>(section));
    return columns;
}

QList<QUuid> KeywordTableView::selectedIds() const
{
    QList<QUuid> ids;
    for (const int row : selectedRows())
        ids.append(m_model.entryAt(row).row.id);
    return ids;
}

void KeywordTableView::selectRow(QUuid id)
{
    const int row = m_model.rowOf(id);
    if (row >= 0)
        QTableView::selectRow(row);
}

void KeywordTableView::fillWithKeywords()
{
    // The keyword column takes what the others leave, so that they keep the widths they have.
    const bool wasArranging = std::exchange(m_isArranging, true);
    fillWidth(int(KeywordColumn::Keyword), m_excess);
    m_isArranging = wasArranging;
}

void KeywordTableView::resizeEvent(QResizeEvent *event)
{
    RowTable::resizeEvent(event);
    fillWithKeywords();
    rowsPlaced();
}

bool KeywordTableView::isAppsCell(const QPoint &position) const
{
    const QModelIndex index = indexAt(position);
    return index.isValid() && index.column() == int(KeywordColumn::Apps) &&
           !m_model.entryAt(index.row()).row.appsInRanking.isEmpty();
}

bool KeywordTableView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::MouseMove) {
        const QPoint position = static_cast<QMouseEvent *>(event)->position().toPoint();
        viewport()->setCursor(isAppsCell(position) ? Qt::PointingHandCursor : Qt::ArrowCursor);
    }
    return RowTable::viewportEvent(event);
}

qreal KeywordTableView::coveredEnd(const QModelIndex &index) const
{
    const bool hasActions =
        index.row() == m_actionsRow && index.column() == int(KeywordColumn::Keyword);
    return hasActions ? m_rowActions->sizeHint().width() : 0;
}

void KeywordTableView::rowsPlaced()
{
    int row = hoveredRow();
    if (row < 0 && hasFocus() && currentIndex().isValid() &&
        selectionModel()->isRowSelected(currentIndex().row()))
        row = currentIndex().row();
    const bool shown = row >= 0 && row < m_model.rowCount();
    m_actionsRow = shown ? row : -1;
    m_rowActions->setVisible(shown);
    if (!shown)
        return;
    m_rowActions->setRow(m_model.entryAt(row).row);
    const QSize size = m_rowActions->sizeHint();
    const int keyword = int(KeywordColumn::Keyword);
    const int right = columnViewportPosition(keyword) + columnWidth(keyword) - spacing::s;
    const int top = rowViewportPosition(row) + (rowHeight(row) - size.height()) / 2;
    m_rowActions->setGeometry(QRect(QPoint(right - size.width(), top), size));
}

void KeywordTableView::mousePressEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    m_pressedApps = event->button() == Qt::LeftButton && isAppsCell(position)
                        ? QPersistentModelIndex(indexAt(position))
                        : QPersistentModelIndex();
    RowTable::mousePressEvent(event);
}

void KeywordTableView::mouseReleaseEvent(QMouseEvent *event)
{
    RowTable::mouseReleaseEvent(event);
    const QPersistentModelIndex pressed = std::exchange(m_pressedApps, {});
    if (pressed.isValid() && indexAt(event->position().toPoint()) == pressed &&
        event->modifiers() == Qt::NoModifier)
        Q_EMIT rankedAppsRequested(pressed.row());
}

void KeywordTableView::selectCurrentIfNone()
{
    // Who comes by Tab sees a ring around the current row, which nothing has selected yet.
    if (currentIndex().isValid() && selectedRows().empty())
        QTableView::selectRow(currentIndex().row());
}

void KeywordTableView::keyPressEvent(QKeyEvent *event)
{
    const bool hasCurrent = currentIndex().isValid();
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && hasCurrent) {
        Q_EMIT opened(currentIndex().row());
        return;
    }
    if (event->key() == Qt::Key_Delete && hasCurrent) {
        selectCurrentIfNone();
        Q_EMIT removeRequested();
        return;
    }
    if (event->matches(QKeySequence::Copy))
        selectCurrentIfNone();
    RowTable::keyPressEvent(event);
}

void KeywordTableView::contextMenuEvent(QContextMenuEvent *event)
{
    QPoint position = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        if (!currentIndex().isValid())
            return;
        selectCurrentIfNone();
        position = viewport()->mapToGlobal(visualRect(currentIndex()).center());
    }
    if (!selectedRows().empty())
        Q_EMIT menuRequested(position);
}

} // namespace veltrix
