// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/app_selector.h"

#include "ui/shell/app_list_model.h"
#include "ui/shell/app_list_view.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/pressable.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QVBoxLayout>

#include <cmath>

namespace veltrix
{

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
    const QString name = app ? shownLine(app->appName) : m_loaded ? tr("none") : tr("not loaded");
    setAccessibleName(tr("Choose app, currently ") + name);
    setToolTip(app && !m_hint.isEmpty() ? name + u'\n' + m_hint : app ? name : m_hint);
    update();
}

void AppSelectorButton::setHint(const QString &hint)
{
    m_hint = hint;
    setApp(m_app);
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
    setExpandedState(this, expanded);
    update();
}

QSize AppSelectorButton::sizeHint() const
{
    return {200, twoLineRowHeight(font()) + 2};
}

void AppSelectorButton::keyPressEvent(QKeyEvent *event)
{
    if (!pressByEnter(*this, *event))
        QAbstractButton::keyPressEvent(event);
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

AppSelector::AppSelector(ASOStore &store, ArtworkImages &images, QWidget *parent)
    : QWidget(parent), m_model(new AppListModel(store, this)),
      m_header(new AppSelectorButton(images)), m_card(new QWidget),
      m_search(new TextField(QStringLiteral("appSelectorSearch"), tr("Search apps"),
                             QStringLiteral("magnifyingglass"))),
      m_searchRow(new QWidget), m_list(new AppListView(*m_model, images)),
      m_noMatch(
          new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary, tr("No matching apps."))),
      m_add(new Button(Button::Kind::Link, QStringLiteral("plus"), tr("Add App")))
{
    m_header->setLoaded(store.isStateRead());
    connect(&store, &ASOStore::stateRead, this,
            [this, &store] { m_header->setLoaded(store.isStateRead()); });
    nameControl(m_add, QStringLiteral("addAppButton"), tr("Add App"));
    m_noMatch->setObjectName(QStringLiteral("noMatchingApps"));

    auto *card = new QVBoxLayout(m_card);
    card->setContentsMargins(1, 1, 1, 1);
    card->setSpacing(0);
    m_searchRow->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
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
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, m_model, &AppListModel::setSearch);
    connect(m_search, &TextField::escaped, m_search, &QLineEdit::clear);
    connect(m_search, &QLineEdit::returnPressed, this, &AppSelector::chooseFound);
    connect(m_add, &Button::clicked, this, &AppSelector::addAppRequested);
    connect(m_list, &AppListView::appChosen, this, &AppSelector::choose);
    connect(m_list, &AppListView::deleteRequested, this, &AppSelector::deleteAppRequested);
    connect(m_list, &AppListView::leftByKey, m_search, [this] { m_search->setFocus(); });
    connect(m_model, &AppListModel::modelReset, this, &AppSelector::updateList);
    connect(m_model, &AppListModel::rowsInserted, this, &AppSelector::updateList);
    connect(m_model, &AppListModel::rowsRemoved, this, &AppSelector::updateList);
    setExpanded(true);
    updateList();
}

void AppSelector::setKeys(const Keys &keys)
{
    const auto text = [](const QKeySequence &key) {
        return key.toString(QKeySequence::NativeText);
    };
    m_add->setToolTip(tr("Add App (%1)").arg(text(keys.add)));
    m_header->setHint(
        tr("Next app: %1\nPrevious app: %2").arg(text(keys.next), text(keys.previous)));
}

void AppSelector::setApp(const std::optional<AppProfile> &app)
{
    m_header->setApp(app);
    m_model->setSelected(app ? std::optional(app->id) : std::nullopt);
    m_list->showSelected();
}

void AppSelector::setExpanded(bool expanded)
{
    m_expanded = expanded;
    m_header->setExpanded(expanded);
    setShown(*m_card, expanded);
    if (expanded)
        m_list->showSelected();
    else
        m_search->clear();
}

void AppSelector::updateList()
{
    const int count = m_model->rowCount();
    m_list->setVisible(count > 0);
    const bool isFiltered = !m_search->text().trimmed().isEmpty();
    m_searchRow->setVisible(count > 0 || isFiltered);
    m_noMatch->setVisible(count == 0 && isFiltered);
    if (!isFiltered)
        m_list->showSelected();
}

void AppSelector::choose(QUuid id)
{
    Q_EMIT appChosen(id);
    // The whole list again, with the chosen one in view.
    m_search->clear();
}

void AppSelector::chooseFound()
{
    const bool isFiltered = !m_search->text().trimmed().isEmpty();
    if (isFiltered && m_model->rowCount() > 0)
        choose(m_model->appAt(0).id);
}

bool AppSelector::eventFilter(QObject *watched, QEvent *event)
{
    // Down goes from the field into the list.
    if (watched == m_search && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Down && m_model->rowCount() > 0) {
        const bool isFiltered = !m_search->text().trimmed().isEmpty();
        if (isFiltered || !m_list->currentIndex().isValid())
            m_list->setCurrentIndex(m_model->index(0, 0));
        m_list->setFocus(Qt::TabFocusReason);
        return true;
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
