// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/tracked_competitor_card.h"

#include "store/aso_store.h"
#include "ui/listing/app_header.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/widgets/button.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

namespace veltrix
{

namespace
{

constexpr int iconSide = 40;

}

TrackedCompetitorCard::TrackedCompetitorCard(ASOStore &store, ArtworkImages &images,
                                             const TrackedCompetitor &competitor, QWidget *parent)
    : Card(QStringLiteral("competitorCard"), parent), m_store(store), m_competitor(competitor),
      m_country(competitor.country),
      m_icon(new ArtworkView(images, iconSide, QStringLiteral("app.dashed"))),
      m_name(new ElidedLabel(TextStyle::BodyMedium, TextLabel::Tone::Text)),
      m_developer(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_manage(new Button(Button::Kind::Plain, QStringLiteral("gearshape"), QString()))
{
    setAccessibleRole(this, QAccessible::Button);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    m_developer->setObjectName(QStringLiteral("competitorDeveloper"));
    m_manage->setObjectName(QStringLiteral("competitorManage"));
    m_manage->setCursor(Qt::ArrowCursor);
    auto *titles = new QVBoxLayout;
    titles->setSpacing(1);
    titles->addWidget(m_name);
    titles->addWidget(m_developer);
    auto *line = new QHBoxLayout;
    line->setSpacing(spacing::m);
    line->addWidget(m_icon);
    line->addLayout(titles, 1);
    line->addWidget(m_manage);
    content()->setContentsMargins(spacing::m, spacing::m, spacing::s, spacing::m);
    content()->addLayout(line);
    connect(m_manage, &Button::clicked, this,
            [this] { openMenu(m_manage->mapToGlobal(QPoint(0, m_manage->height()))); });
    setCompetitor(competitor);
}

TrackedCompetitorCard::~TrackedCompetitorCard() = default;

void TrackedCompetitorCard::setCompetitor(const TrackedCompetitor &competitor)
{
    m_competitor = competitor;
    m_icon->setUrl(m_competitor.iconURL);
    m_name->setText(m_competitor.name);
    setAccessibleName(tr("Research %1").arg(m_competitor.name));
    const QString manage = tr("Manage %1").arg(m_competitor.name);
    m_manage->setAccessibleName(manage);
    m_manage->setToolTip(manage);
    showTexts();
}

void TrackedCompetitorCard::setCountry(const QString &country)
{
    m_country = country;
    showTexts();
}

QString TrackedCompetitorCard::developerText() const
{
    if (m_competitor.sellerName)
        return *m_competitor.sellerName;
    return m_isLookingUp || !m_hasLookedUp ? tr("Loading developer…") : tr("Developer unavailable");
}

void TrackedCompetitorCard::showTexts()
{
    QString text = developerText();
    if (m_competitor.country != m_country)
        text += QStringLiteral(" · ") + storefrontName(m_competitor.country);
    m_developer->setText(text);
    m_developer->setAccessibleName(text);
    setAccessibleDescription(text);
}

Task<void> TrackedCompetitorCard::lookUpDeveloper(std::stop_token stop)
{
    m_isLookingUp = true;
    showTexts();
    try {
        co_await m_store.updateCompetitorSeller(m_competitor.id, stop);
    } catch (const Error &) {
        // "Developer unavailable" says it; the next start tries again.
    }
    throwIfStopped(stop);
    m_isLookingUp = false;
    showTexts();
}

void TrackedCompetitorCard::openMenu(const QPoint &globalPosition)
{
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("competitorMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *remove = menu->addAction(symbolIcon(QStringLiteral("trash")), tr("Remove competitor"));
    remove->setObjectName(QStringLiteral("removeCompetitor"));
    connect(remove, &QAction::triggered, this, &TrackedCompetitorCard::removeRequested);
    menu->popup(globalPosition);
}

void TrackedCompetitorCard::showEvent(QShowEvent *event)
{
    Card::showEvent(event);
    if (!m_competitor.sellerName && !std::exchange(m_hasLookedUp, true))
        m_tasks.own(lookUpDeveloper(m_tasks.token()));
}

bool TrackedCompetitorCard::event(QEvent *event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    return Card::event(event);
}

void TrackedCompetitorCard::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    drawRoundedRect(painter, rect(), radius::card,
                    tokens[underMouse() ? Token::Hover : Token::Surface], tokens[Token::Hairline]);
    QStyleOption option;
    option.initFrom(this);
    if (showsFocus(option))
        drawFocusRing(painter, rect(), radius::card, tokens[Token::Accent]);
}

void TrackedCompetitorCard::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
        Q_EMIT opened();
    else
        Card::keyPressEvent(event);
}

void TrackedCompetitorCard::mousePressEvent(QMouseEvent *event)
{
    m_isPressed = event->button() == Qt::LeftButton;
}

void TrackedCompetitorCard::mouseReleaseEvent(QMouseEvent *event)
{
    const bool wasPressed = std::exchange(m_isPressed, false);
    if (wasPressed && event->button() == Qt::LeftButton &&
        rect().contains(event->position().toPoint()))
        Q_EMIT opened();
}

void TrackedCompetitorCard::contextMenuEvent(QContextMenuEvent *event)
{
    openMenu(event->globalPos());
}

} // namespace veltrix
