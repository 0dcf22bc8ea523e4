// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/table/row_table.h"

#include "ui_kit/table/cell_painting.h"
#include "ui_kit/table/table_header.h"
#include "ui_kit/text/csv.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/theme/veltrix_style.h"
#include "ui_kit/widgets/artwork_images.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>
#include <QStyledItemDelegate>

#include <algorithm>
#include <numeric>

namespace veltrix
{

/// Has each cell painted by its column.
class RowTable::CellDelegate final : public QStyledItemDelegate
{
public:
    explicit CellDelegate(RowTable &table) : QStyledItemDelegate(&table), m_table(table) {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        const Tokens tokens = Tokens::of(option.palette);
        const QRectF content = contentIn(option.rect, m_table.coveredEnd(index));
        const CellPainting cell{*painter,
                                option,
                                tokens,
                                content,
                                index.data(Qt::TextAlignmentRole).value<Qt::Alignment>(),
                                tokens[m_table.fillOf(index.row())],
                                m_table.m_images};
        painter->save();
        painter->setClipRect(option.rect);
        index.data(RowModel::PaintRole).value<CellPainter>()(cell);
        painter->restore();
    }
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &,
                                 const QModelIndex &index) const override
    {
        return {scaledToFont(m_table.m_model.defaultWidth(index.column()), m_table.font()),
                m_table.verticalHeader()->defaultSectionSize()};
    }
    static QRectF contentIn(const QRect &cell, qreal coveredEnd)
    {
        QRectF content = QRectF(cell).adjusted(spacing::m, 0, -(spacing::s + coveredEnd), 0);
        content.setWidth(std::max(0.0, content.width()));
        return content;
    }
    bool editorEvent(QEvent *, QAbstractItemModel *, const QStyleOptionViewItem &,
                     const QModelIndex &) override
    {
        // What a click on a row does, the table says.
        return false;
    }

private:
    RowTable &m_table;
};

RowTable::RowTable(RowModel &model, RowHeight rowHeight, ArtworkImages *images, QWidget *parent)
    : QTableView(parent), m_model(model), m_rowHeight(rowHeight), m_images(images),
      m_header(new TableHeader(this))
{
    setHorizontalHeader(m_header);
    setModel(&m_model);
    setItemDelegate(new CellDelegate(*this));
    setProperty(ownRowsProperty, true);
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setSelectionBehavior(SelectRows);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);
    setMouseTracking(true);
    setCornerButtonEnabled(false);
    setEditTriggers(NoEditTriggers);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    applyRowHeight();
    connect(&m_model, &RowModel::rowsAboutToDiffer, this, &RowTable::rememberSeenRows);
    connect(&m_model, &RowModel::rowsDiffer, this, &RowTable::keepSeenRows);
    connect(&m_model, &RowModel::modelReset, this, &RowTable::keepSeenRows);
    connect(&m_model, &RowModel::layoutChanged, this, [this] { rowsPlaced(); });
    if (m_images)
        connect(m_images, &ArtworkImages::ready, viewport(), QOverload<>::of(&QWidget::update));
}

RowTable::~RowTable() = default;

void RowTable::applyRowHeight()
{
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(
        m_rowHeight == RowHeight::TwoLines ? twoLineRowHeight(font()) : oneLineRowHeight(font()));
}

std::vector<int> RowTable::selectedRows() const
{
    std::vector<int> rows;
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

std::vector<int> RowTable::shownSections() const
{
    std::vector<int> sections;
    for (int place = 0; place < m_header->count(); ++place) {
        const int section = m_header->logicalIndex(place);
        if (!m_header->isSectionHidden(section))
            sections.push_back(section);
    }
    return sections;
}

QList<QStringList> RowTable::shownTexts() const
{
    std::vector<int> rows(size_t(m_model.rowCount()));
    std::iota(rows.begin(), rows.end(), 0);
    return m_model.texts(rows, shownSections());
}

void RowTable::copy() const
{
    const std::vector<int> selected = selectedRows();
    if (selectionMode() == NoSelection)
        QGuiApplication::clipboard()->setText(toTabSeparated(shownTexts()));
    else if (!selected.empty())
        QGuiApplication::clipboard()->setText(
            toTabSeparated(m_model.texts(selected, shownSections())));
}

void RowTable::fillWidth(int column, int excess)
{
    const int others = m_header->length() - m_header->sectionSize(column);
    m_header->resizeSection(column,
                            std::max(viewport()->width() + excess - others, minimumWidth(column)));
}

int RowTable::minimumWidth(int column) const
{
    return scaledToFont(m_model.minimumWidth(column), font());
}

QRectF RowTable::contentOf(const QModelIndex &index) const
{
    return CellDelegate::contentIn(visualRect(index), coveredEnd(index));
}

QRect RowTable::rowRect(int row) const
{
    return {0, rowViewportPosition(row), viewport()->width(), rowHeight(row)};
}

bool RowTable::isMarked(int row) const
{
    return selectionModel()->isRowSelected(row);
}

bool RowTable::isPointable(int) const
{
    return true;
}

qreal RowTable::coveredEnd(const QModelIndex &) const
{
    return 0;
}

void RowTable::rowsPlaced() {}

Token RowTable::fillOf(int row) const
{
    if (isMarked(row))
        return Token::Selected;
    return row == m_hoveredRow && isPointable(row) ? Token::Hover : Token::Surface;
}

void RowTable::paintRows(QPainter &painter, const QRect &area)
{
    const Tokens tokens = Tokens::of(this);
    for (int row = std::max(0, rowAt(area.top())); row < m_model.rowCount(); ++row) {
        QRect rect = rowRect(row);
        if (rect.top() > area.bottom())
            break;
        rect.setLeft(area.left());
        rect.setRight(area.right());
        const Token fill = fillOf(row);
        if (fill != Token::Surface)
            painter.fillRect(rect, tokens[fill]);
        drawHorizontalHairline(painter, rect.left(), rect.right() + 1, rect.bottom(),
                               tokens[Token::Hairline]);
    }
}

void RowTable::holdColumn(int column)
{
    m_header->holdSection(column);
    connect(m_header, &TableHeader::ownPlaceWanted, horizontalScrollBar(), &QScrollBar::setValue);
    connect(m_header, &TableHeader::sectionResized, viewport(), qOverload<>(&QWidget::update));
}

QRect RowTable::heldArea() const
{
    QRect area = m_header->heldRect();
    area.setHeight(area.isEmpty() ? 0 : viewport()->height());
    return area;
}

void RowTable::paintHeldColumn(const QRect &area)
{
    const QRect held = heldArea();
    const QRect part = held.intersected(area);
    if (part.isEmpty())
        return;
    QPainter painter(viewport());
    painter.fillRect(held, Tokens::of(this)[Token::Surface]);
    paintRows(painter, QRect(held.left(), part.top(), held.width(), part.height()));
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    for (int row = std::max(0, rowAt(part.top())); row < m_model.rowCount(); ++row) {
        const QModelIndex index = m_model.index(row, m_header->heldSection());
        option.rect = visualRect(index);
        if (option.rect.top() > part.bottom())
            break;
        itemDelegate()->paint(&painter, option, index);
    }
    m_header->paintHeldEdge(painter, held);
}

QModelIndex RowTable::indexAt(const QPoint &position) const
{
    const QRect held = heldArea();
    if (held.isEmpty() || position.x() < held.left() || position.x() > held.right())
        return QTableView::indexAt(position);
    const int row = rowAt(position.y());
    return row < 0 ? QModelIndex() : m_model.index(row, m_header->heldSection());
}

QRect RowTable::visualRect(const QModelIndex &index) const
{
    QRect rect = QTableView::visualRect(index);
    const QRect held = heldArea();
    if (!held.isEmpty() && index.column() == m_header->heldSection())
        rect.moveLeft(held.left());
    return rect;
}

void RowTable::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    const QRect before = heldArea();
    const int offset = horizontalScrollBar()->value();
    QTableView::scrollTo(index, hint);
    if (!before.isEmpty() && index.column() == m_header->heldSection()) {
        // It is in view already.
        horizontalScrollBar()->setValue(offset);
        return;
    }
    const QRect held = heldArea();
    if (held.isEmpty())
        return;
    const QRect cell = QTableView::visualRect(index);
    const int covered =
        isRightToLeft() ? cell.right() - held.left() + 1 : held.right() - cell.left() + 1;
    if (covered > 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - covered);
}

void RowTable::paintFocus()
{
    if (!hasFocus() || !currentIndex().isValid())
        return;
    QStyleOption option;
    option.initFrom(this);
    // A current row that could be selected and is not would not be seen otherwise.
    const bool isUnseen = selectionMode() != NoSelection && !isMarked(currentIndex().row());
    if (!showsFocus(option) && !isUnseen)
        return;
    QPainter painter(viewport());
    drawFocusRing(painter, QRectF(rowRect(currentIndex().row())).adjusted(2, 1, -2, -2), 5,
                  Tokens::of(this)[Token::Accent]);
}

void RowTable::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(viewport());
        paintRows(painter, {0, event->rect().top(), viewport()->width(), event->rect().height()});
    }
    QTableView::paintEvent(event);
    paintHeldColumn(event->rect());
    paintFocus();
}

void RowTable::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        applyRowHeight();
        fontChanged();
        rowsPlaced();
    }
}

void RowTable::fontChanged() {}

bool RowTable::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::MouseMove)
        setHoveredRow(rowAt(int(static_cast<QMouseEvent *>(event)->position().y())));
    else if (event->type() == QEvent::Leave)
        setHoveredRow(-1);
    return QTableView::viewportEvent(event);
}

void RowTable::setHoveredRow(int row)
{
    if (m_hoveredRow == row)
        return;
    m_hoveredRow = row;
    rowsPlaced();
    viewport()->update();
}

void RowTable::hoverUnderPointer()
{
    setHoveredRow(underMouse() ? rowAt(viewport()->mapFromGlobal(QCursor::pos()).y()) : -1);
}

void RowTable::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        copy();
    else
        QTableView::keyPressEvent(event);
}

void RowTable::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (underMouse())
        hoverUnderPointer();
    rowsPlaced();
    // Rows are filled over the whole width, so scrolled pixels cannot be reused as they are; nor
    // can those of a header with a held column.
    viewport()->update();
    if (dx != 0)
        m_header->viewport()->update();
}

void RowTable::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    rowsPlaced();
    viewport()->update();
}

void RowTable::rememberSeenRows()
{
    m_seen.clear();
    const int height = viewport()->height();
    const auto remember = [&](int row) {
        const QRect rect = rowRect(row);
        if (rect.top() < height && rect.bottom() >= 0)
            m_seen.push_back({m_model.index(row, 0), rect.top()});
    };
    if (currentIndex().isValid())
        remember(currentIndex().row());
    // The top of the table stays the top: what comes in there is to be seen.
    m_wasAtTop = verticalScrollBar()->value() == 0;
    if (m_wasAtTop)
        return;
    for (int row = std::max(0, rowAt(0)); row < m_model.rowCount(); ++row) {
        if (rowViewportPosition(row) >= height)
            break;
        remember(row);
    }
}

void RowTable::keepSeenRows()
{
    const std::vector<SeenRow> seen = std::exchange(m_seen, {});
    const auto kept = std::find_if(seen.begin(), seen.end(),
                                   [](const SeenRow &row) { return row.index.isValid(); });
    if (kept != seen.end()) {
        updateGeometries();
        const QRect rect = rowRect(kept->index.row());
        const bool isInView = rect.top() >= 0 && rect.bottom() < viewport()->height();
        if (!m_wasAtTop || !isInView)
            verticalScrollBar()->setValue(verticalScrollBar()->value() + rect.top() - kept->top);
    }
    hoverUnderPointer();
    rowsPlaced();
    viewport()->update();
}

} // namespace veltrix
