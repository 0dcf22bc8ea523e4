// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/app_selector.h"

#include "ui/shell/app_list_model.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/theme/veltrix_style.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

/// Apps shown before the list scrolls.
constexpr int mostVisibleApps = 6;
constexpr qreal markSize = 14;

void paintAppLine(QPainter &painter, const AppLineGeometry &geometry, const AppProfile &app,
                  ArtworkImages &images, const Tokens &tokens, const QFont &nameFont,
                  const QFont &countryFont)
{
    paintArtwork(painter, geometry.icon, app.iconURL ? images.image(*app.iconURL) : QImage(),
                 QStringLiteral("app.fill"), tokens);
    painter.setFont(nameFont);
    painter.setPen(tokens[Token::Text]);
    painter.drawText(
        geometry.name, Qt::AlignVCenter | Qt::TextSingleLine,
        QFontMetricsF(nameFont).elidedText(app.appName, Qt::ElideRight, geometry.name.width()));
    painter.setFont(countryFont);
    painter.setPen(tokens[Token::Secondary]);
    painter.drawText(
        geometry.country, Qt::AlignVCenter | Qt::TextSingleLine,
        QFontMetricsF(countryFont)
            .elidedText(storefrontName(app.country), Qt::ElideRight, geometry.country.width()));
}

} // namespace

AppLineGeometry layoutAppLine(const QRectF &rect, qreal nameHeight, qreal countryHeight,
                              qreal iconSize)
{
    AppLineGeometry geometry;
    const qreal middle = rect.center().y();
    const qreal top = std::round(middle - (nameHeight + countryHeight) / 2);
    geometry.icon = QRectF(rect.x(), std::round(middle - iconSize / 2), iconSize, iconSize);
    geometry.mark =
        QRectF(rect.right() - markSize, std::round(middle - markSize / 2), markSize, markSize);
    const qreal left = geometry.icon.right() + 10;
    const qreal width = std::max(0.0, geometry.mark.x() - spacing::s - left);
    geometry.name = QRectF(left, top, width, nameHeight);
    geometry.country = QRectF(left, top + nameHeight, width, countryHeight);
    return geometry;
}

AppSelectorButton::AppSelectorButton(ArtworkImages &images, QWidget *parent)
    : QAbstractButton(parent), m_images(images)
{
    setObjectName(QStringLiteral("appSelector"));
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    connect(&images, &ArtworkImages::ready, this, QOverload<>::of(&QWidget::update));
    setApp(std::nullopt);
    setExpanded(false);
}

void AppSelectorButton::setApp(const std::optional<AppProfile> &app)
{
    m_app = app;
    const QString name = app ? app->appName : m_loaded ? tr("none") : tr("not loaded");
    setAccessibleName(tr("Choose app, currently ") + name);
    setToolTip(app ? app->appName : QString());
    update();
}

void AppSelectorButton::setLoaded(bool loaded)
{
    m_loaded = loaded;
    setApp(m_app);
}

void AppSelectorButton::setExpanded(bool expanded)
{
    m_expanded = expanded;
    setAccessibleDescription(expanded ? tr("Expanded") : tr("Collapsed"));
    update();
}

QSize AppSelectorButton::sizeHint() const
{
    return {200, twoLineRowHeight(font()) + 2};
}

void AppSelectorButton::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    const bool lit = underMouse() || isDown();
    drawRoundedRect(painter, rect(), radius::card, tokens[lit ? Token::Hover : Token::Surface],
                    tokens[Token::Hairline]);
    const QFont nameFont = fontFor(TextStyle::BodySemibold, font());
    const QFont countryFont = fontFor(TextStyle::Secondary, font());
    const AppLineGeometry geometry = layoutAppLine(
        QRectF(rect()).adjusted(9, 0, -9, 0), std::ceil(QFontMetricsF(nameFont).height()),
        std::ceil(QFontMetricsF(countryFont).height()), std::round(height() * 32.0 / 54.0));
    if (m_app) {
        paintAppLine(painter, geometry, *m_app, m_images, tokens, nameFont, countryFont);
    } else {
        paintArtwork(painter, geometry.icon, QImage(), QStringLiteral("app.dashed"), tokens);
        painter.setFont(nameFont);
        painter.setPen(tokens[Token::Secondary]);
        painter.drawText(geometry.name.united(geometry.country),
                         Qt::AlignVCenter | Qt::TextSingleLine,
                         m_loaded ? tr("No app yet") : tr("Not loaded"));
    }
    drawSymbol(painter, geometry.mark,
               m_expanded ? QStringLiteral("chevron.up") : QStringLiteral("chevron.down"),
               tokens[Token::Secondary]);
    QStyleOptionButton option;
    option.initFrom(this);
    if (showsFocus(option))
        drawFocusRing(painter, rect(), radius::card, tokens[Token::Accent]);
}

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
    else if (option.state & QStyle::State_MouseOver)
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

AppSelector::AppSelector(ASOStore &store, ArtworkImages &images, QWidget *parent)
    : QWidget(parent), m_model(new AppListModel(store, this)),
      m_header(new AppSelectorButton(images)), m_card(new QWidget),
      m_search(new TextField(QStringLiteral("appSelectorSearch"), tr("Search apps"),
                             QStringLiteral("magnifyingglass"))),
      m_searchRow(new QWidget), m_list(new QListView),
      m_noMatch(
          new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary, tr("No matching apps."))),
      m_add(new Button(Button::Kind::Link, QStringLiteral("plus"), tr("Add App")))
{
    m_header->setLoaded(store.isStateRead());
    connect(&store, &ASOStore::stateRead, this,
            [this, &store] { m_header->setLoaded(store.isStateRead()); });
    nameControl(m_list, QStringLiteral("appList"), tr("Apps"));
    nameControl(m_add, QStringLiteral("addAppButton"), tr("Add App"));
    m_noMatch->setObjectName(QStringLiteral("noMatchingApps"));
    m_list->setModel(m_model);
    m_list->setItemDelegate(new AppListDelegate(images, m_list));
    m_list->setProperty(ownRowsProperty, true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setUniformItemSizes(true);
    m_list->setMouseTracking(true);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->setTabKeyNavigation(false);
    m_list->viewport()->setAutoFillBackground(false);
    m_list->installEventFilter(this);

    auto *card = new QVBoxLayout(m_card);
    card->setContentsMargins(1, 1, 1, 1);
    card->setSpacing(0);
    auto *searchRow = new QHBoxLayout(m_searchRow);
    searchRow->setContentsMargins(8, 8, 8, 8);
    searchRow->addWidget(m_search);
    auto *addRow = new QHBoxLayout;
    addRow->setContentsMargins(6, 4, 6, 2);
    addRow->addWidget(m_add);
    addRow->addStretch(1);
    m_noMatch->setContentsMargins(spacing::m, spacing::xs, spacing::m, spacing::m);
    card->addWidget(m_searchRow);
    card->addWidget(m_list);
    card->addWidget(m_noMatch);
    card->addLayout(addRow);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::m);
    layout->addWidget(m_header);
    layout->addWidget(m_card);

    connect(m_header, &QAbstractButton::clicked, this, [this] { setExpanded(!m_expanded); });
    connect(m_search, &QLineEdit::textChanged, m_model, &AppListModel::setSearch);
    connect(m_add, &Button::clicked, this, &AppSelector::addAppRequested);
    connect(m_list, &QListView::clicked, this, &AppSelector::chooseCurrent);
    connect(m_list, &QListView::activated, this, &AppSelector::chooseCurrent);
    connect(m_list, &QWidget::customContextMenuRequested, this, &AppSelector::showMenu);
    connect(&images, &ArtworkImages::ready, m_list->viewport(), QOverload<>::of(&QWidget::update));
    connect(m_model, &AppListModel::modelReset, this, &AppSelector::updateList);
    connect(m_model, &AppListModel::rowsInserted, this, &AppSelector::updateList);
    connect(m_model, &AppListModel::rowsRemoved, this, &AppSelector::updateList);
    setExpanded(true);
    updateList();
}

void AppSelector::setApp(const std::optional<AppProfile> &app)
{
    m_header->setApp(app);
    m_model->setSelected(app ? std::optional(app->id) : std::nullopt);
}

void AppSelector::setExpanded(bool expanded)
{
    m_expanded = expanded;
    m_header->setExpanded(expanded);
    m_card->setVisible(expanded);
    if (!expanded)
        m_search->clear();
}

void AppSelector::updateList()
{
    const int count = m_model->rowCount();
    const int row = twoLineRowHeight(font()) - 6;
    m_list->setFixedHeight(row * std::min(count, mostVisibleApps));
    m_list->setVisible(count > 0);
    const bool isFiltered = !m_search->text().trimmed().isEmpty();
    m_searchRow->setVisible(count > 0 || isFiltered);
    m_noMatch->setVisible(count == 0 && isFiltered);
}

void AppSelector::chooseCurrent(const QModelIndex &index)
{
    if (index.isValid())
        Q_EMIT appChosen(m_model->appAt(index.row()).id);
}

void AppSelector::showMenu(const QPoint &position)
{
    QModelIndex index = m_list->indexAt(position);
    if (!index.isValid())
        index = m_list->currentIndex();
    if (!index.isValid())
        return;
    const QUuid id = m_model->appAt(index.row()).id;
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("appMenu"));
    menu->setAccessibleName(m_model->appAt(index.row()).appName);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *remove = menu->addAction(symbolIcon(QStringLiteral("trash")), tr("Delete App"));
    connect(remove, &QAction::triggered, this, [this, id] { Q_EMIT deleteAppRequested(id); });
    menu->popup(m_list->viewport()->mapToGlobal(position));
}

bool AppSelector::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        const QModelIndex current = m_list->currentIndex();
        if (current.isValid() && key == Qt::Key_Delete) {
            Q_EMIT deleteAppRequested(m_model->appAt(current.row()).id);
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
            chooseCurrent(current);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void AppSelector::paintEvent(QPaintEvent *)
{
    if (!m_expanded)
        return;
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    drawRoundedRect(painter, m_card->geometry(), radius::card, tokens[Token::Surface],
                    tokens[Token::Hairline]);
    if (m_model->rowCount() > 0) {
        const int y = m_card->y() + m_add->y() - 4;
        drawHorizontalHairline(painter, m_card->x() + 1, m_card->geometry().right(), y,
                               tokens[Token::Hairline]);
    }
}

} // namespace veltrix
