// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_table_view.h"

#include "ui/dashboard/keyword_delegate.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/dashboard/row_actions.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/table/table_header.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/theme/veltrix_style.h"
#include "ui_kit/widgets/artwork_images.h"

#include <QContextMenuEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>

#include <algorithm>

namespace veltrix
{

KeywordTableView::KeywordTableView(KeywordTableModel &model, ArtworkImages &images, QWidget *parent)
    : QTableView(parent), m_model(model), m_delegate(new KeywordDelegate(images, this)),
      m_header(new TableHeader(this)), m_rowActions(new RowActions(viewport()))
{
    nameControl(this, QStringLiteral("keywordTable"), tr("Keywords"));
    setHorizontalHeader(m_header);
    m_header->setObjectName(QStringLiteral("keywordTableHeader"));
    m_header->setAccessibleName(tr("Columns"));
    setModel(&m_model);
    setItemDelegate(m_delegate);
    setProperty(ownRowsProperty, true);
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);
    setMinimumHeight(6 * twoLineRowHeight(font()));
    setMouseTracking(true);
    setCornerButtonEnabled(false);
    setEditTriggers(NoEditTriggers);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_header->setContextMenuPolicy(Qt::CustomContextMenu);
    m_rowActions->hide();
    applyRowHeight();
    keepSelectionOverReset();

    connect(m_header, &QHeaderView::sortIndicatorChanged, this,
            [this](int section, Qt::SortOrder order) {
                if (m_isArranging)
                    return;
                m_model.sort(section, order);
                Q_EMIT columnLayoutChanged();
            });
    const auto arranged = [this] {
        placeRowActions();
        if (m_isArranging)
            return;
        m_excess = m_header->length() - viewport()->width();
        Q_EMIT columnLayoutChanged();
    };
    connect(m_header, &QHeaderView::sectionResized, this, arranged);
    connect(m_header, &QHeaderView::sectionMoved, this, arranged);
    connect(m_header, &QWidget::customContextMenuRequested, this, [this](const QPoint &position) {
        Q_EMIT columnMenuRequested(m_header->mapToGlobal(position));
    });
    connect(m_rowActions, &RowActions::rankedAppsRequested, this,
            [this] { Q_EMIT rankedAppsRequested(m_actionsRow); });
    connect(m_rowActions, &RowActions::historyRequested, this,
            [this] { Q_EMIT historyRequested(m_actionsRow); });
    connect(m_rowActions, &RowActions::menuRequested, this, [this](const QPoint &position) {
        if (!selectionModel()->isRowSelected(m_actionsRow))
            QTableView::selectRow(m_actionsRow);
        Q_EMIT menuRequested(position);
    });
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex &index) {
        // The first click on the icons has opened the ranked apps already.
        if (!isAppsCell(visualRect(index).center()))
            Q_EMIT opened(index.row());
    });
    connect(&images, &ArtworkImages::ready, viewport(), QOverload<>::of(&QWidget::update));
    setColumnLayout(ColumnLayout::standard());
}

void KeywordTableView::applyRowHeight()
{
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(twoLineRowHeight(font()));
}

void KeywordTableView::setColumnLayout(const ColumnLayout &layout)
{
    m_isArranging = true;
    for (size_t place = 0; place < layout.columns.size(); ++place) {
        const ColumnLayout::Column &column = layout.columns[place];
        const int section = int(column.column);
        m_header->moveSection(m_header->visualIndex(section), int(place));
        m_header->setSectionHidden(section, false);
        m_header->resizeSection(section, column.width);
        m_header->setSectionHidden(section, !column.isVisible);
    }
    m_header->setSortIndicator(int(layout.sortedBy), layout.sortOrder);
    m_model.sort(int(layout.sortedBy), layout.sortOrder);
    m_isArranging = false;
    m_excess = 0;
    fillWidth();
}

ColumnLayout KeywordTableView::columnLayout() const
{
    ColumnLayout layout;
    for (int place = 0; place < m_header->count(); ++place) {
        const int section = m_header->logicalIndex(place);
        const auto column = static_cast<KeywordColumn>(section);
        const bool hidden = m_header->isSectionHidden(section);
        int width = m_header->sectionSize(section);
        if (hidden)
            width = keywordColumnInfo(column).defaultWidth;
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
    m_header->setSectionHidden(int(column), !visible);
    m_isArranging = false;
    m_excess = 0;
    fillWidth();
    Q_EMIT columnLayoutChanged();
}

std::vector<KeywordColumn> KeywordTableView::shownColumns() const
{
    std::vector<KeywordColumn> columns;
    for (int place = 0; place < m_header->count(); ++place) {
        const int section = m_header->logicalIndex(place);
        if (!m_header->isSectionHidden(section))
            columns.push_back(static_cast<KeywordColumn>(section));
    }
    return columns;
}

std::vector<int> KeywordTableView::selectedRows() const
{
    std::vector<int> rows;
    const QModelIndexList selected = selectionModel()->selectedRows();
    for (const QModelIndex &index : selected)
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
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

void KeywordTableView::fillWidth()
{
    // The keyword column takes what the others leave, so that they keep the widths they have.
    const int keyword = int(KeywordColumn::Keyword);
    const int others = m_header->length() - m_header->sectionSize(keyword);
    const int width = std::max(viewport()->width() + m_excess - others,
                               keywordColumnInfo(KeywordColumn::Keyword).minimumWidth);
    const bool wasArranging = std::exchange(m_isArranging, true);
    m_header->resizeSection(keyword, width);
    m_isArranging = wasArranging;
}

void KeywordTableView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    fillWidth();
    placeRowActions();
}

void KeywordTableView::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        applyRowHeight();
}

void KeywordTableView::paintEvent(QPaintEvent *event)
{
    const Tokens tokens = Tokens::of(this);
    {
        QPainter painter(viewport());
        const int width = viewport()->width();
        const int first = std::max(0, rowAt(event->rect().top()));
        for (int row = first; row < m_model.rowCount(); ++row) {
            const QRect rect(0, rowViewportPosition(row), width, rowHeight(row));
            if (rect.top() > event->rect().bottom())
                break;
            if (selectionModel()->isRowSelected(row))
                painter.fillRect(rect, tokens[Token::Selected]);
            else if (row == m_hoveredRow)
                painter.fillRect(rect, tokens[Token::Hover]);
            drawHorizontalHairline(painter, 0, width, rect.bottom(), tokens[Token::Hairline]);
        }
    }
    QTableView::paintEvent(event);

    QStyleOption option;
    option.initFrom(this);
    // A current row that is not selected would not be seen otherwise.
    const bool ring =
        hasFocus() && currentIndex().isValid() &&
        (showsFocus(option) || !selectionModel()->isRowSelected(currentIndex().row()));
    if (ring) {
        QPainter painter(viewport());
        const int row = currentIndex().row();
        const QRect rect(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
        drawFocusRing(painter, QRectF(rect).adjusted(2, 1, -2, -2), 5, tokens[Token::Accent]);
    }
}

bool KeywordTableView::isAppsCell(const QPoint &position) const
{
    const QModelIndex index = indexAt(position);
    return index.isValid() && index.column() == int(KeywordColumn::Apps) &&
           !m_model.entryAt(index.row()).row.appsInRanking.isEmpty();
}

bool KeywordTableView::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseMove: {
        const QPoint position = static_cast<QMouseEvent *>(event)->position().toPoint();
        setHoveredRow(rowAt(position.y()));
        viewport()->setCursor(isAppsCell(position) ? Qt::PointingHandCursor : Qt::ArrowCursor);
        break;
    }
    case QEvent::Leave:
        setHoveredRow(-1);
        break;
    default:
        break;
    }
    return QTableView::viewportEvent(event);
}

void KeywordTableView::setHoveredRow(int row)
{
    if (m_hoveredRow == row)
        return;
    m_hoveredRow = row;
    m_delegate->setHoveredRow(row);
    placeRowActions();
    viewport()->update();
}

void KeywordTableView::placeRowActions()
{
    int row = m_hoveredRow;
    if (row < 0 && hasFocus() && currentIndex().isValid() &&
        selectionModel()->isRowSelected(currentIndex().row()))
        row = currentIndex().row();
    const bool shown = row >= 0 && row < m_model.rowCount();
    m_actionsRow = shown ? row : -1;
    const QSize size = m_rowActions->sizeHint();
    m_delegate->setButtonsAt(m_actionsRow, size.width());
    m_rowActions->setVisible(shown);
    if (!shown)
        return;
    m_rowActions->setRow(m_model.entryAt(row).row);
    const int keyword = int(KeywordColumn::Keyword);
    const int right = columnViewportPosition(keyword) + columnWidth(keyword) - spacing::s;
    const int top = rowViewportPosition(row) + (rowHeight(row) - size.height()) / 2;
    m_rowActions->setGeometry(QRect(QPoint(right - size.width(), top), size));
}

void KeywordTableView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (underMouse())
        setHoveredRow(rowAt(viewport()->mapFromGlobal(QCursor::pos()).y()));
    placeRowActions();
    // Rows are filled over the whole width, so scrolled pixels cannot be reused as they are.
    viewport()->update();
}

void KeywordTableView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    placeRowActions();
    viewport()->update();
}

void KeywordTableView::mousePressEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    m_pressedApps = event->button() == Qt::LeftButton && isAppsCell(position)
                        ? QPersistentModelIndex(indexAt(position))
                        : QPersistentModelIndex();
    QTableView::mousePressEvent(event);
}

void KeywordTableView::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
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
    if (event->matches(QKeySequence::Copy)) {
        selectCurrentIfNone();
        Q_EMIT copyRequested();
        return;
    }
    QTableView::keyPressEvent(event);
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
