// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_table_view.h"

#include "ui/dashboard/keyword_cells.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/dashboard/row_actions.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/table/table_header.h"
#include "ui_kit/theme/typography.h"

#include <QApplication>
#include <QContextMenuEvent>

namespace veltrix
{

namespace
{

constexpr int standardControlHeight = 30;
/// Rows that are in view however low the window is and whatever is to be said above them.
constexpr int leastRows = 1;

} // namespace

KeywordTableView::KeywordTableView(KeywordTableModel &model, ArtworkImages &images, QWidget *parent)
    : RowTable(model, RowHeight::TwoLines, &images, parent), m_model(model),
      m_rowActions(new RowActions(viewport()))
{
    nameControl(this, QStringLiteral("keywordTable"), tr("Keywords"));
    header().setObjectName(QStringLiteral("keywordTableHeader"));
    header().setAccessibleName(tr("Columns"));
    header().setContextMenuPolicy(Qt::CustomContextMenu);
    setSelectionMode(ExtendedSelection);
    holdColumn(int(KeywordColumn::Keyword));
    m_rowActions->hide();
    connectHeader();
    connectRowActions();
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex &index) {
        // The first click on the icons or a tag has done what they are for.
        if (!isAppsCell(index) && m_pressedTag.isEmpty())
            Q_EMIT opened(index.row());
    });
    // The current row has its buttons while the table has the focus.
    connect(qApp, &QApplication::focusChanged, this, [this] { rowsPlaced(); });
    setColumnLayout(ColumnLayout::standard());
}

KeywordTableView::~KeywordTableView()
{
    // The focus leaves a row's buttons as they are deleted, when this is no such table any more.
    disconnect(qApp, nullptr, this, nullptr);
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
    arrangeColumns(layout);
    header().setSortIndicator(int(layout.sortedBy), layout.sortOrder);
    m_model.sort(int(layout.sortedBy), layout.sortOrder);
    m_isArranging = false;
    fillWithKeywords();
}

void KeywordTableView::arrangeColumns(const ColumnLayout &layout)
{
    m_arrangedFont = font();
    m_hiddenWidths.clear();
    m_excess = scaledLength(layout.excess);
    m_doTagsFollow = layout.doTagsFollow;
    for (size_t place = 0; place < layout.columns.size(); ++place) {
        const ColumnLayout::Column &column = layout.columns[place];
        const int section = int(column.column);
        header().moveSection(header().visualIndex(section), int(place));
        header().setSectionHidden(section, false);
        header().resizeSection(section, scaledLength(column.width));
        const bool follows = m_doTagsFollow && column.column == KeywordColumn::Tags;
        const bool isVisible = follows ? m_hasTags : column.isVisible;
        header().setSectionHidden(section, !isVisible);
        if (!isVisible)
            m_hiddenWidths.insert(column.column, column.width);
    }
}

int KeywordTableView::scaledLength(int atStandard) const
{
    return qRound(double(atStandard) * controlHeight(m_arrangedFont) / standardControlHeight);
}

int KeywordTableView::toStandardFont(int pixels) const
{
    return qRound(double(pixels) * standardControlHeight / controlHeight(m_arrangedFont));
}

ColumnLayout KeywordTableView::columnLayout() const
{
    ColumnLayout layout;
    for (int place = 0; place < header().count(); ++place) {
        const int section = header().logicalIndex(place);
        const auto column = static_cast<KeywordColumn>(section);
        const bool isHidden = header().isSectionHidden(section);
        const int width =
            isHidden ? m_hiddenWidths.value(column) : toStandardFont(header().sectionSize(section));
        const bool follows = m_doTagsFollow && column == KeywordColumn::Tags;
        layout.columns.push_back({column, width, follows || !isHidden});
    }
    layout.sortedBy = m_model.sortedBy();
    layout.sortOrder = m_model.sortOrder();
    layout.excess = toStandardFont(m_excess);
    layout.doTagsFollow = m_doTagsFollow;
    return layout;
}

void KeywordTableView::fontChanged()
{
    // What was arranged for the other font, at this one.
    const ColumnLayout layout = columnLayout();
    const bool wasArranging = std::exchange(m_isArranging, true);
    arrangeColumns(layout);
    m_isArranging = wasArranging;
    fillWithKeywords();
}

void KeywordTableView::setColumnVisible(KeywordColumn column, bool visible)
{
    if (column == KeywordColumn::Keyword || header().isSectionHidden(int(column)) != visible)
        return;
    if (column == KeywordColumn::Tags)
        m_doTagsFollow = false;
    m_excess = 0;
    showColumn(column, visible);
    Q_EMIT columnLayoutChanged();
}

void KeywordTableView::setHasTags(bool hasTags)
{
    m_hasTags = hasTags;
    if (m_doTagsFollow && header().isSectionHidden(int(KeywordColumn::Tags)) == hasTags)
        showColumn(KeywordColumn::Tags, hasTags);
}

void KeywordTableView::showColumn(KeywordColumn column, bool visible)
{
    const int section = int(column);
    m_isArranging = true;
    if (!visible)
        m_hiddenWidths.insert(column, toStandardFont(header().sectionSize(section)));
    else
        m_hiddenWidths.remove(column);
    header().setSectionHidden(section, !visible);
    m_isArranging = false;
    fillWithKeywords();
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

bool KeywordTableView::isAppsCell(const QModelIndex &index) const
{
    return index.isValid() && index.column() == int(KeywordColumn::Apps) &&
           !m_model.entryAt(index.row()).row.appsInRanking.isEmpty();
}

QString KeywordTableView::tagAt(const QPoint &position) const
{
    const QModelIndex index = indexAt(position);
    if (!index.isValid() || index.column() != int(KeywordColumn::Tags))
        return {};
    const KeywordEntry &entry = m_model.entryAt(index.row());
    const TagRowGeometry tags = layoutTagRow(contentOf(index), entry.tagChips, font());
    for (qsizetype i = 0; i < tags.chips.size(); ++i) {
        if (tags.chips[i].contains(position))
            return entry.tags[i];
    }
    return {};
}

bool KeywordTableView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::MouseMove) {
        m_pointer = static_cast<QMouseEvent *>(event)->position().toPoint();
        const bool isPressable = isAppsCell(indexAt(m_pointer)) || !tagAt(m_pointer).isEmpty();
        viewport()->setCursor(isPressable ? Qt::PointingHandCursor : Qt::ArrowCursor);
    }
    const bool isHandled = RowTable::viewportEvent(event);
    // Buttons that had to wait for the pointer to leave their place.
    if (event->type() == QEvent::MouseMove && m_actionsRow != hoveredRow())
        rowsPlaced();
    return isHandled;
}

qreal KeywordTableView::coveredEnd(const QModelIndex &index) const
{
    const bool hasActions =
        index.row() == m_actionsRow && index.column() == int(KeywordColumn::Keyword);
    return hasActions ? m_rowActions->width() : 0;
}

QSize KeywordTableView::minimumSizeHint() const
{
    return {RowTable::minimumSizeHint().width(),
            header().sizeHint().height() + leastRows * twoLineRowHeight(font())};
}

int KeywordTableView::rowOfActions() const
{
    int row = hoveredRow();
    if (row < 0 && hasFocus() && currentIndex().isValid() &&
        selectionModel()->isRowSelected(currentIndex().row()))
        row = currentIndex().row();
    return row < m_model.rowCount() ? row : -1;
}

QRect KeywordTableView::placeActions(int row)
{
    const QRect cell = visualRect(m_model.index(row, int(KeywordColumn::Keyword)));
    // Half of the cell belongs to the keyword.
    const int room = cell.width() / 2 - spacing::s;
    const auto extent = m_rowActions->widthOf(RowActions::Extent::All) <= room
                            ? RowActions::Extent::All
                            : RowActions::Extent::More;
    const QSize size(m_rowActions->widthOf(extent), controlHeight(font()));
    const QRect place(QPoint(cell.right() + 1 - spacing::s - size.width(),
                             cell.top() + (cell.height() - size.height()) / 2),
                      size);
    // Whoever points at a keyword is not to press a button that has come up there.
    const qreal textEnd = cell.left() + spacing::m + keywordCellWidth(m_model.entryAt(row), font());
    const bool comesUp = row != m_actionsRow && row == hoveredRow();
    if (comesUp && place.contains(m_pointer) && m_pointer.x() < textEnd)
        return {};
    m_rowActions->setExtent(extent);
    return place;
}

void KeywordTableView::rowsPlaced()
{
    const int row = rowOfActions();
    const QRect place = row < 0 ? QRect() : placeActions(row);
    const int before = std::exchange(m_actionsRow, place.isEmpty() ? -1 : row);
    if (m_actionsRow >= 0) {
        m_rowActions->setRow(m_model.entryAt(row).row);
        m_rowActions->setGeometry(place);
    }
    m_rowActions->setVisible(m_actionsRow >= 0);
    if (m_actionsRow != before)
        viewport()->update();
}

void KeywordTableView::mousePressEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    m_pressedApps = event->button() == Qt::LeftButton && isAppsCell(indexAt(position))
                        ? QPersistentModelIndex(indexAt(position))
                        : QPersistentModelIndex();
    m_isTagSent = false;
    m_pressedTag = event->button() == Qt::LeftButton ? tagAt(position) : QString();
    RowTable::mousePressEvent(event);
}

void KeywordTableView::mouseReleaseEvent(QMouseEvent *event)
{
    RowTable::mouseReleaseEvent(event);
    const QPersistentModelIndex pressed = std::exchange(m_pressedApps, {});
    if (pressed.isValid() && indexAt(event->position().toPoint()) == pressed &&
        event->modifiers() == Qt::NoModifier)
        Q_EMIT rankedAppsRequested(pressed.row());
    // The second press of a double click finds it pressed already.
    const bool isTag = !m_pressedTag.isEmpty() && !std::exchange(m_isTagSent, true) &&
                       tagAt(event->position().toPoint()) == m_pressedTag;
    if (isTag && event->modifiers() == Qt::NoModifier)
        Q_EMIT tagRequested(m_pressedTag);
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
