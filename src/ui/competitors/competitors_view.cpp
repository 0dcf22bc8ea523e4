// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitors_view.h"

#include "store/aso_store.h"
#include "ui/competitors/competitor_overview.h"
#include "ui/competitors/competitor_search_panel.h"
#include "ui/competitors/tracked_competitor_card.h"
#include "ui/suggestions/keyword_ideas_sheet.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/app_facts.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/tool_tip_text.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/card_grid.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/page_toolbar.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_label.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollArea>
#include <QShortcut>
#include <QStackedWidget>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int leastCardWidth = 250;
/// Letters of an app's name that a button shows.
constexpr qsizetype longestName = 24;

/// A name as the text of a button.
QString buttonText(const QString &name)
{
    QString text = name;
    if (text.size() > longestName) {
        text.truncate(text[longestName - 1].isHighSurrogate() ? longestName - 1 : longestName);
        text = text.trimmed() + u'…';
    }
    return inSentence(text.replace(u'&', QStringLiteral("&&")));
}

} // namespace

CompetitorsView::CompetitorsView(const ResearchContext &context, QWidget *parent)
    : QWidget(parent), m_context(context), m_search(m_context.store),
      m_toolbar(new PageToolbar(tr("Competitors"))),
      m_back(
          new Button(Button::Kind::Standard, QStringLiteral("chevron.left"), tr("Back to Apps"))),
      m_backBelow(new Button(Button::Kind::Plain, QStringLiteral("chevron.left"), QString())),
      m_backKey(new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Left), this)),
      m_picker(new StorefrontPicker(QStringLiteral("competitorsStorefront"), tr("Storefront"),
                                    StorefrontPicker::Offer::Storefronts)),
      m_pages(new QStackedWidget),
      m_searchPanel(new CompetitorSearchPanel(m_search, m_context.images)),
      m_competitorsTitle(makeHeading(tr("Tracked competitors"))),
      m_ideas(new Button(Button::Kind::Link, QStringLiteral("lightbulb"), tr("Keyword ideas"))),
      m_grid(new CardGrid(leastCardWidth)),
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
                    openResearch(*app.trackId, m_search.country(), shownName(app));
            });
    // The results come later than the cards, which stand below them.
    connect(&m_search, &CompetitorSearch::changed, m_grid, &CardGrid::followInTabOrder);
    connect(&m_open, &OpenResearch::pageChanged, this, &CompetitorsView::showPage);
    connect(&m_open, &OpenResearch::appChanged, this, &CompetitorsView::showApp);
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

CompetitorResearchDetail *CompetitorsView::research() const
{
    return m_openPages.value(m_shownId).page;
}

void CompetitorsView::showApp()
{
    const auto own = m_open.appId() ? m_context.store.app(*m_open.appId()) : std::nullopt;
    m_searchPanel->setOwnApp(own ? std::optional(own->trackId) : std::nullopt);
    for (const OpenPage &open : std::as_const(m_openPages))
        open.page->setApp(m_open.appId());
    showCompetitors();
}

void CompetitorsView::buildToolbar()
{
    nameControl(m_back, QStringLiteral("researchBack"), tr("Back to Apps"));
    m_backBelow->setObjectName(QStringLiteral("researchBackBelow"));
    m_toolbar->addLeading(m_back);
    m_toolbar->addLeading(m_backBelow);
    m_toolbar->addTrailing(m_picker);
    // Buttons take arrow keys for themselves, so a plain key event would not come up here.
    m_backKey->setContext(Qt::WidgetWithChildrenShortcut);
    connect(m_back, &Button::clicked, &m_open, &OpenResearch::close);
    connect(m_backBelow, &Button::clicked, &m_open, &OpenResearch::back);
    connect(m_backKey, &QShortcut::activated, &m_open, &OpenResearch::back);
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
    nameControl(m_ideas, QStringLiteral("keywordIdeas"),
                tr("Keyword ideas from the listings of your competitors"));
    connect(m_ideas, &Button::clicked, this, [this] {
        if (m_open.appId())
            openSheet(this, new KeywordIdeasSheet(m_context.store, *m_open.appId()));
    });
    auto *heading = makeRow(spacing::m);
    heading->addWidget(m_competitorsTitle, 1);
    heading->addWidget(m_ideas);
    layout->addLayout(heading);
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
    if (research())
        m_back->setFocus(Qt::ShortcutFocusReason);
    else
        m_searchPanel->focusField(Qt::ShortcutFocusReason);
}

void CompetitorsView::openResearch(std::int64_t trackId, const QString &country,
                                   const QString &name)
{
    m_open.open(trackId, country, shownLine(name));
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
    setShown(*m_grid, !cards.isEmpty());
    m_competitorsTitle->setVisible(!cards.isEmpty());
    setShown(*m_ideas, !cards.isEmpty());
    m_empty->setContent(overview.empty);
    setShown(*m_empty, cards.isEmpty());
    updateToolbar();
}

void CompetitorsView::rememberFocus()
{
    QWidget *focused = QApplication::focusWidget();
    if (const auto shown = m_openPages.find(m_shownId); shown != m_openPages.end())
        shown->focus = focused;
    else
        m_openedFrom = focused;
}

void CompetitorsView::closePagesGone()
{
    m_openPages.removeIf([this](const std::pair<const int &, OpenPage &> open) {
        const auto isIt = [&](const OpenResearch::Page &page) {
            return page.id == open.first;
        };
        if (std::ranges::any_of(m_open.pages(), isIt))
            return false;
        open.second.page->hide();
        open.second.page->deleteLater();
        return true;
    });
}

CompetitorResearchDetail *CompetitorsView::makePage(const OpenResearch::Page &opened)
{
    auto *page = new CompetitorResearchDetail(m_context, opened.about, m_open.appId(), m_pages);
    connect(page, &CompetitorResearchDetail::backRequested, &m_open, &OpenResearch::back);
    connect(page, &CompetitorResearchDetail::historyRequested, this,
            &CompetitorsView::historyRequested);
    connect(page, &CompetitorResearchDetail::named, &m_open,
            [this, id = opened.id](const QString &name) { m_open.setName(id, name); });
    connect(page, &CompetitorResearchDetail::opened, this,
            [this, country = opened.about.country](std::int64_t other, const QString &name) {
                openResearch(other, country, name);
            });
    m_pages->addWidget(page);
    return page;
}

void CompetitorsView::showPage()
{
    rememberFocus();
    if (CompetitorResearchDetail *before = research())
        before->pause();
    const OpenResearch::Page *top = m_open.page();
    m_shownId = top ? top->id : 0;
    const bool isNew = top && !m_openPages.contains(top->id);
    if (isNew)
        m_openPages.insert(top->id, {makePage(*top), nullptr});
    if (top)
        m_pages->setCurrentWidget(research());
    else
        m_pages->setCurrentIndex(0);
    closePagesGone();
    updateToolbar();
    const QWidget *shown = m_pages->currentWidget();
    QWidget *focus = top ? m_openPages.value(top->id).focus.data() : m_openedFrom.data();
    if (focus && shown->isAncestorOf(focus) && focus->isVisibleTo(this))
        focus->setFocus();
    else if (!top)
        m_searchPanel->focusField();
    else
        (m_open.pageBelow() ? m_backBelow : m_back)->setFocus();
    if (isNew)
        research()->start();
    else if (top)
        research()->unpause();
}

void CompetitorsView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && research())
        m_open.back();
    else
        QWidget::keyPressEvent(event);
}

void CompetitorsView::updateToolbar()
{
    const bool isOpen = research() != nullptr;
    const OpenResearch::Page *below = m_open.pageBelow();
    m_back->setVisible(isOpen);
    m_backKey->setEnabled(isOpen);
    m_backBelow->setVisible(below != nullptr);
    if (below) {
        const QString name = below->about.name.isEmpty() ? tr("app") : below->about.name;
        const QString text = tr("Back to %1").arg(inSentence(name));
        m_backBelow->setText(buttonText(name));
        m_backBelow->setAccessibleName(text);
        m_backBelow->setToolTip(toolTipText(text));
    }
    m_toolbar->setTitle(isOpen ? QString() : tr("Competitors"));
    m_toolbar->setSubtitle(isOpen ? QString() : m_count);
    m_picker->setCode(m_open.shownCountry());
}

} // namespace veltrix
