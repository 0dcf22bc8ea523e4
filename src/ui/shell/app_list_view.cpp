// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/app_list_view.h"

#include "ui/shell/app_line.h"
#include "ui/shell/app_list_model.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/theme/veltrix_style.h"
#include "ui_kit/widgets/artwork_images.h"

#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace veltrix
{

AppListDelegate::AppListDelegate(ArtworkImages &images, QObject *parent)
    : QStyledItemDelegate(parent), m_images(images)
{
}

QSize AppListDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return {100, twoLineRowHeight(option.font) - 6};
}

void AppListDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    const auto *model = static_cast<const AppListModel *>(index.model());
    const Tokens tokens = Tokens::of(option.palette);
    const bool selected = model->isSelected(index.row());
    if (selected)
        painter->fillRect(option.rect, tokens[Token::Selected]);
    else if (option.state & (QStyle::State_MouseOver | QStyle::State_HasFocus))
        painter->fillRect(option.rect, tokens[Token::Hover]);
    const QFont nameFont = fontFor(TextStyle::BodyMedium, option.font);
    const QFont countryFont = fontFor(TextStyle::Secondary, option.font);
    const AppLineGeometry geometry = layoutAppLine(QRectF(option.rect).adjusted(10, 0, -11, 0),
                                                   std::ceil(QFontMetricsF(nameFont).height()),
                                                   std::ceil(QFontMetricsF(countryFont).height()),
                                                   std::round(option.rect.height() * 24.0 / 46.0));
    paintAppLine(*painter, geometry, model->appAt(index.row()), m_images, tokens, nameFont,
                 countryFont);
    if (selected)
        drawSymbol(*painter, geometry.mark, QStringLiteral("checkmark"), tokens[Token::Accent]);
    if (showsFocus(option))
        drawFocusRing(*painter, QRectF(option.rect).adjusted(2, 1, -2, -1), 5,
                      tokens[Token::Accent]);
}

AppListView::AppListView(AppListModel &model, ArtworkImages &images, QWidget *parent)
    : QListView(parent), m_model(model)
{
    nameControl(this, QStringLiteral("appList"), tr("Apps"));
    setModel(&m_model);
    setItemDelegate(new AppListDelegate(images, this));
    setProperty(ownRowsProperty, true);
    setFrameShape(QFrame::NoFrame);
    setUniformItemSizes(true);
    setMouseTracking(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setTabKeyNavigation(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    viewport()->setAutoFillBackground(false);
    const auto choose = [this](const QModelIndex &index) {
        Q_EMIT appChosen(m_model.appAt(index.row()).id);
    };
    connect(this, &QListView::clicked, this, choose);
    connect(this, &QWidget::customContextMenuRequested, this, &AppListView::showMenu);
    connect(&images, &ArtworkImages::ready, viewport(), QOverload<>::of(&QWidget::update));
    connect(&m_model, &AppListModel::modelReset, this, &AppListView::followCount);
    connect(&m_model, &AppListModel::rowsInserted, this, &AppListView::followCount);
    connect(&m_model, &AppListModel::rowsRemoved, this, &AppListView::followCount);
    followCount();
}

int AppListView::heightOfRows(int count) const
{
    return (twoLineRowHeight(font()) - 6) * count;
}

QSize AppListView::sizeHint() const
{
    return {200, heightOfRows(m_model.rowCount())};
}

QSize AppListView::minimumSizeHint() const
{
    return {100, heightOfRows(std::min(m_model.rowCount(), 1))};
}

void AppListView::followCount()
{
    setMaximumHeight(heightOfRows(m_model.rowCount()));
    updateGeometry();
}

void AppListView::changeEvent(QEvent *event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        scheduleDelayedItemsLayout();
        followCount();
    }
}

void AppListView::showSelected()
{
    const QModelIndex selected = m_model.index(m_model.selectedRow(), 0);
    if (!selected.isValid())
        return;
    setCurrentIndex(selected);
    scrollTo(selected);
}

void AppListView::resizeEvent(QResizeEvent *event)
{
    QListView::resizeEvent(event);
    // A list that gets lower would lose what is selected.
    if (event->size().height() != event->oldSize().height())
        scrollTo(m_model.index(m_model.selectedRow(), 0));
}

void AppListView::keyPressEvent(QKeyEvent *event)
{
    const QModelIndex current = currentIndex();
    const int key = event->key();
    const bool isPlain = event->modifiers().testFlag(Qt::NoModifier);
    if (current.isValid() && key == Qt::Key_Delete) {
        Q_EMIT deleteRequested(m_model.appAt(current.row()).id);
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
        if (current.isValid() && !event->isAutoRepeat())
            Q_EMIT appChosen(m_model.appAt(current.row()).id);
    } else if (isPlain && (key == Qt::Key_Escape || (key == Qt::Key_Up && current.row() <= 0))) {
        Q_EMIT leftByKey();
    } else {
        QListView::keyPressEvent(event);
    }
}

void AppListView::showMenu(const QPoint &position)
{
    QModelIndex index = indexAt(position);
    if (!index.isValid())
        index = currentIndex();
    if (!index.isValid())
        return;
    const QUuid id = m_model.appAt(index.row()).id;
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("appMenu"));
    menu->setAccessibleName(shownLine(m_model.appAt(index.row()).appName));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *remove = menu->addAction(symbolIcon(QStringLiteral("trash")), tr("Delete App"));
    connect(remove, &QAction::triggered, this, [this, id] { Q_EMIT deleteRequested(id); });
    menu->popup(viewport()->mapToGlobal(position));
}

} // namespace veltrix
