// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/tracked_competitor_card.h"

#include "store/aso_store.h"
#include "ui/listing/app_header.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/text_label.h"

#include <QContextMenuEvent>
#include <QMenu>

namespace veltrix
{

namespace
{

constexpr int iconSide = 40;

}

TrackedCompetitorCard::TrackedCompetitorCard(ASOStore &store, ArtworkImages &images,
                                             const TrackedCompetitor &competitor, QWidget *parent)
    : Pressable(parent), m_store(store), m_competitor(competitor), m_country(competitor.country),
      m_icon(new ArtworkView(images, iconSide, QStringLiteral("app.dashed"))),
      m_name(new ElidedLabel(TextStyle::BodyMedium, TextLabel::Tone::Text)),
      m_developer(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_manage(new Button(Button::Kind::Plain, QStringLiteral("gearshape"), QString()))
{
    setObjectName(QStringLiteral("competitorCard"));
    m_developer->setObjectName(QStringLiteral("competitorDeveloper"));
    m_manage->setObjectName(QStringLiteral("competitorManage"));
    m_manage->setCursor(Qt::ArrowCursor);
    auto *titles = makeColumn(1);
    titles->addWidget(m_name);
    titles->addWidget(m_developer);
    auto *line = makeRow(spacing::m, this, {spacing::m, spacing::m, spacing::s, spacing::m});
    line->addWidget(m_icon);
    line->addLayout(titles, 1);
    line->addWidget(m_manage);
    connect(&m_lookUp, &LoaderSignals::changed, this, &TrackedCompetitorCard::showTexts);
    connect(m_manage, &Button::clicked, this,
            [this] { openMenu(m_manage->mapToGlobal(QPoint(0, m_manage->height()))); });
    setCompetitor(competitor);
}

void TrackedCompetitorCard::setCompetitor(const TrackedCompetitor &competitor)
{
    m_competitor = competitor;
    m_icon->setUrl(m_competitor.iconURL);
    m_name->setText(shownLine(m_competitor.name));
    const QString name = inSentence(m_competitor.name);
    setAccessibleName(tr("Research %1").arg(name));
    const QString manage = tr("Manage %1").arg(name);
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
        return inSentence(*m_competitor.sellerName);
    const bool isAwaited = m_lookUp.state().is<NotAsked>() || m_lookUp.state().isUnderWay();
    return isAwaited ? tr("Loading developer…") : tr("Developer unavailable");
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

Task<Done> TrackedCompetitorCard::lookUpDeveloper(std::stop_token stop)
{
    co_await m_store.updateCompetitorSeller(m_competitor.id, stop);
    co_return Done();
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
    Pressable::showEvent(event);
    // Once: "Developer unavailable" says that it failed; the next start tries again.
    if (!m_competitor.sellerName && m_lookUp.state().is<NotAsked>())
        m_lookUp.ask([this](std::stop_token stop) { return lookUpDeveloper(stop); });
}

void TrackedCompetitorCard::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    drawRoundedRect(painter, rect(), radius::card,
                    tokens[isHovered() ? Token::Hover : Token::Surface], tokens[Token::Hairline]);
    paintFocusRing(painter, radius::card);
}

void TrackedCompetitorCard::contextMenuEvent(QContextMenuEvent *event)
{
    openMenu(event->globalPos());
}

} // namespace veltrix
