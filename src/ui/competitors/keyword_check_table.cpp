// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_check_table.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/table/table_header.h"
#include "ui_kit/text/csv.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/position_badge.h"
#include "ui_kit/widgets/score_ring.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QWheelEvent>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int standardControlHeight = 30;
constexpr int chosenWidth = 40;
constexpr int rankWidth = 104;
constexpr int difficultyWidth = 84;
constexpr int leastKeywordWidth = 90;

QRectF cellContent(const QRect &cell)
{
    return QRectF(cell).adjusted(spacing::m, 0, -spacing::xs, 0);
}

void paintCheck(QPainter &painter, const QStyleOptionViewItem &option,
                const KeywordCheckModel::Row &row)
{
    QStyleOption check;
    check.palette = option.palette;
    check.state = row.isTracked ? QStyle::State_None : QStyle::State_Enabled;
    check.state |= row.isChosen || row.isTracked ? QStyle::State_On : QStyle::State_Off;
    const QStyle *style = QApplication::style();
    const int side = style->pixelMetric(QStyle::PM_IndicatorWidth, &check, option.widget);
    check.rect = QRect(0, 0, side, side);
    check.rect.moveCenter(option.rect.center());
    painter.save();
    if (row.isTracked)
        painter.setOpacity(0.5);
    style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &check, &painter, option.widget);
    painter.restore();
}

} // namespace

void KeywordCheckDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const
{
    const auto *model = static_cast<const KeywordCheckModel *>(index.model());
    const KeywordCheckModel::Row &row = model->rowAt(index.row());
    const Tokens tokens = Tokens::of(option.palette);
    const QRectF content = cellContent(option.rect);
    painter->save();
    painter->setClipRect(option.rect);
    switch (static_cast<CheckColumn>(index.column())) {
    case CheckColumn::Chosen:
        paintCheck(*painter, option, row);
        break;
    case CheckColumn::Keyword: {
        const QFont font = fontFor(TextStyle::Body, option.font);
        painter->setFont(font);
        painter->setPen(tokens[Token::Text]);
        const auto alignment =
            QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter);
        painter->drawText(
            content, int(alignment) | Qt::TextSingleLine,
            QFontMetricsF(font).elidedText(row.check.keyword, Qt::ElideRight, content.width()));
        break;
    }
    case CheckColumn::Rank:
        paintPosition(*painter, content, {row.check.position}, std::nullopt, tokens, option.font);
        break;
    case CheckColumn::Difficulty:
        paintScoreRing(*painter, content, {row.check.difficulty, ScoreRing::Mode::Difficulty},
                       tokens, option.font);
        break;
    }
    painter->restore();
}

bool KeywordCheckDelegate::editorEvent(QEvent *, QAbstractItemModel *, const QStyleOptionViewItem &,
                                       const QModelIndex &)
{
    // The whole row is the check box; the view toggles it.
    return false;
}

KeywordCheckTable::KeywordCheckTable(KeywordCheckModel &model, QWidget *parent)
    : QTableView(parent), m_model(model), m_header(new TableHeader(this))
{
    nameControl(this, QStringLiteral("keywordChecks"), tr("Keywords"));
    setHorizontalHeader(m_header);
    nameControl(m_header, QStringLiteral("keywordChecksHeader"), tr("Columns"));
    m_header->setSectionsMovable(false);
    m_header->setMinimumSectionSize(20);
    m_header->setSortIndicatorClearable(true);
    m_header->setSortIndicator(-1, Qt::AscendingOrder);
    setModel(&m_model);
    setItemDelegate(new KeywordCheckDelegate(this));
    setSortingEnabled(true);
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setSelectionMode(NoSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setMouseTracking(true);
    setCornerButtonEnabled(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    applyRowHeight();
    const auto resized = [this] {
        updateGeometry();
    };
    connect(&m_model, &QAbstractItemModel::rowsInserted, this, resized);
    connect(&m_model, &QAbstractItemModel::rowsRemoved, this, resized);
    connect(&m_model, &QAbstractItemModel::modelReset, this, resized);
}

void KeywordCheckTable::applyRowHeight()
{
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(oneLineRowHeight(font()));
}

QSize KeywordCheckTable::sizeHint() const
{
    return {400, m_header->sizeHint().height() +
                     m_model.rowCount() * verticalHeader()->defaultSectionSize()};
}

QSize KeywordCheckTable::minimumSizeHint() const
{
    return {260, sizeHint().height()};
}

void KeywordCheckTable::fitColumns()
{
    const auto scaled = [this](int width) {
        return width * controlHeight(font()) / standardControlHeight;
    };
    const int fixed = scaled(chosenWidth) + scaled(rankWidth) + scaled(difficultyWidth);
    m_header->resizeSection(int(CheckColumn::Chosen), scaled(chosenWidth));
    m_header->resizeSection(int(CheckColumn::Rank), scaled(rankWidth));
    m_header->resizeSection(int(CheckColumn::Difficulty), scaled(difficultyWidth));
    m_header->resizeSection(int(CheckColumn::Keyword),
                            std::max(leastKeywordWidth, viewport()->width() - fixed));
}

void KeywordCheckTable::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    fitColumns();
}

void KeywordCheckTable::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    applyRowHeight();
    fitColumns();
    updateGeometry();
}

void KeywordCheckTable::paintEvent(QPaintEvent *event)
{
    const Tokens tokens = Tokens::of(this);
    {
        QPainter painter(viewport());
        for (int row = 0; row < m_model.rowCount(); ++row) {
            const QRect rect(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
            if (m_model.rowAt(row).isChosen)
                painter.fillRect(rect, tokens[Token::Selected]);
            else if (row == m_hoveredRow && !m_model.rowAt(row).isTracked)
                painter.fillRect(rect, tokens[Token::Hover]);
            drawHorizontalHairline(painter, 0, rect.width(), rect.bottom(),
                                   tokens[Token::Hairline]);
        }
    }
    QTableView::paintEvent(event);
    QStyleOption option;
    option.initFrom(this);
    if (showsFocus(option) && currentIndex().isValid()) {
        QPainter painter(viewport());
        const int row = currentIndex().row();
        const QRect rect(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
        drawFocusRing(painter, QRectF(rect).adjusted(2, 1, -2, -2), 5, tokens[Token::Accent]);
    }
}

bool KeywordCheckTable::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::Leave) {
        const int row = event->type() == QEvent::Leave
                            ? -1
                            : rowAt(int(static_cast<QMouseEvent *>(event)->position().y()));
        if (std::exchange(m_hoveredRow, row) != row)
            viewport()->update();
    }
    return QTableView::viewportEvent(event);
}

void KeywordCheckTable::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid())
        m_model.toggle(index.row());
}

void KeywordCheckTable::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && currentIndex().isValid())
        m_model.toggle(currentIndex().row());
    else if (event->matches(QKeySequence::SelectAll))
        m_model.chooseAll();
    else if (event->matches(QKeySequence::Copy))
        QGuiApplication::clipboard()->setText(toTabSeparated(m_model.table()));
    else
        QTableView::keyPressEvent(event);
}

void KeywordCheckTable::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

void KeywordCheckTable::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    viewport()->update();
}

} // namespace veltrix
