// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitors_view.h"

#include "store/aso_store.h"
#include "ui/competitors/competitor_overview.h"
#include "ui/competitors/competitor_search_panel.h"
#include "ui/competitors/tracked_competitor_card.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/card_grid.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/page_toolbar.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_label.h"

#include <QApplication>
#include <QScrollArea>
#include <QStackedWidget>

namespace veltrix
{

CompetitorsView::CompetitorsView(const ResearchContext &context, QWidget *parent)
    : QWidget(parent), m_context(context), m_search(m_context.store),
      m_toolbar(new PageToolbar(tr("Competitors"))),
      m_back(
          new Button(Button::Kind::Standard, QStringLiteral("chevron.left"), tr("Back to Apps"))),
      m_picker(new StorefrontPicker(QStringLiteral("competitorsStorefront"), tr("Storefront"),
                                    StorefrontPicker::Offer::Storefronts)),
      m_pages(new QStackedWidget),
      m_searchPanel(new CompetitorSearchPanel(m_search, m_context.images)),
      m_competitorsTitle(makeHeading(tr("Tracked competitors"))), m_grid(new CardGrid),
      m_empty(new EmptyState(QStringLiteral("competitorsEmpty")))
{
    setObjectName(QStringLiteral("competitorsView"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    m_search.setCountry(m_open.country());
    buildToolbar();
    m_pages->addWidget(makeOverview());
    auto *layout = makeColumn(0, this);
    layout->addWidget(m_toolbar);
    layout->addWidget(m_pages, 1);
    connect(m_searchPanel, &CompetitorSearchPanel::opened, this,
            [this](const ITunesAppResult &app) {
                if (app.trackId)
                    openResearch(*app.trackId, m_search.country(), displayName(app));
            });
    connect(&m_open, &OpenResearch::pageChanged, this, &CompetitorsView::showPage);
    connect(&m_open, &OpenResearch::appChanged, this, &CompetitorsView::showCompetitors);
    connect(&m_open, &OpenResearch::countryChanged, this, [this] {
        for (TrackedCompetitorCard *card : std::as_const(m_cards))
            card->setCountry(country());
        m_search.setCountry(country());
        updateToolbar();
    });
    for (const auto changed :
         {&ASOStore::competitorsChanged, &ASOStore::appsChanged, &ASOStore::stateRead})
        connect(&m_context.store, changed, this, &CompetitorsView::showCompetitors);
    showCompetitors();
}

void CompetitorsView::buildToolbar()
{
    nameControl(m_back, QStringLiteral("researchBack"), tr("Back to Apps"));
    m_toolbar->addLeading(m_back);
    m_toolbar->addTrailing(m_picker);
    connect(m_back, &Button::clicked, &m_open, &OpenResearch::close);
    connect(m_picker, &StorefrontPicker::picked, this, [this](const std::optional<QString> &code) {
        m_open.pickCountry(code.value_or(country()));
        Q_EMIT countryPicked(country());
    });
}

QWidget *CompetitorsView::makeOverview()
{
    auto *content = new QWidget;
    auto *layout =
        makeColumn(spacing::l, content, {spacing::xxl, spacing::l + 2, spacing::xxl, spacing::xxl});
    layout->addLayout(m_searchPanel->makeEntry());
    layout->addWidget(m_searchPanel);
    layout->addWidget(m_competitorsTitle);
    layout->addWidget(m_grid);
    layout->addWidget(m_empty, 1);
    layout->addStretch(0);
    QScrollArea *overview =
        makeScrollPage(QStringLiteral("competitorsOverview"), tr("Competitors"), content);
    overview->setFocusPolicy(Qt::NoFocus);
    takeScrollBarFromMargin(*overview, *layout);
    return overview;
}

void CompetitorsView::focusSearch()
{
    m_open.close();
    m_searchPanel->focusWholeField();
}

void CompetitorsView::focusContent()
{
    if (m_research)
        m_back->setFocus(Qt::ShortcutFocusReason);
    else
        m_searchPanel->focusField(Qt::ShortcutFocusReason);
}

void CompetitorsView::openResearch(std::int64_t trackId, const QString &country,
                                   const QString &name)
{
    m_open.open(trackId, country, name);
}

TrackedCompetitorCard *CompetitorsView::cardOf(const TrackedCompetitor &competitor)
{
    if (TrackedCompetitorCard *known = m_cards.value(competitor.id)) {
        known->setCompetitor(competitor);
        return known;
    }
    auto *card = new TrackedCompetitorCard(m_context.store, m_context.images, competitor, m_grid);
    card->setCountry(country());
    connect(card, &TrackedCompetitorCard::clicked, this, [this, card] {
        const TrackedCompetitor &chosen = card->competitor();
        openResearch(chosen.trackId, chosen.country, chosen.name);
    });
    connect(card, &TrackedCompetitorCard::removeRequested, this,
            [this, card] { m_context.store.removeCompetitor(card->competitor().id); });
    card->show();
    return card;
}

void CompetitorsView::showCompetitors()
{
    const auto overview = CompetitorOverview::of(m_context.store, m_open.appId());
    QList<QWidget *> cards;
    QHash<QUuid, TrackedCompetitorCard *> shown;
    for (const TrackedCompetitor &competitor : overview.competitors) {
        TrackedCompetitorCard *card = cardOf(competitor);
        shown.insert(competitor.id, card);
        cards.append(card);
    }
    m_cards = shown;
    m_count = overview.count;
    m_grid->setCards(cards);
    m_grid->setVisible(!cards.isEmpty());
    m_competitorsTitle->setVisible(!cards.isEmpty());
    m_empty->setContent(overview.empty);
    m_empty->setVisible(cards.isEmpty());
    updateToolbar();
}

void CompetitorsView::showPage()
{
    const bool wasOpen = m_research != nullptr;
    if (wasOpen)
        m_research->deleteLater();
    m_research = nullptr;
    if (const auto &page = m_open.page()) {
        if (!wasOpen)
            m_openedFrom = QApplication::focusWidget();
        m_research = new CompetitorResearchDetail(m_context, *page, m_pages);
        connect(m_research, &CompetitorResearchDetail::backRequested, &m_open,
                &OpenResearch::close);
        connect(m_research, &CompetitorResearchDetail::named, &m_open, &OpenResearch::setName);
        connect(m_research, &CompetitorResearchDetail::opened, this,
                [this, country = page->country](std::int64_t other, const QString &name) {
                    openResearch(other, country, name);
                });
        m_pages->addWidget(m_research);
        m_pages->setCurrentWidget(m_research);
        m_research->start();
        updateToolbar();
        m_back->setFocus();
        return;
    }
    m_pages->setCurrentIndex(0);
    updateToolbar();
    if (m_openedFrom && m_openedFrom->isVisibleTo(this))
        m_openedFrom->setFocus();
    else
        m_searchPanel->focusField();
}

void CompetitorsView::updateToolbar()
{
    m_back->setVisible(m_research != nullptr);
    m_toolbar->setTitle(m_research ? QString() : tr("Competitors"));
    m_toolbar->setSubtitle(m_research ? QString() : m_count);
    m_picker->setCode(m_open.shownCountry());
}

} // namespace veltrix
