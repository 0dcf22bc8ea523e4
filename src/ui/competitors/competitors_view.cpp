// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitors_view.h"

#include "store/aso_store.h"
#include "ui/competitors/tracked_competitor_card.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/card_grid.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/failure_card.h"
#include "ui_kit/widgets/page_toolbar.h"
#include "ui_kit/widgets/research_app_row.h"
#include "ui_kit/widgets/sheet_frame.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_field.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QStackedWidget>

namespace veltrix
{

CompetitorsView::CompetitorsView(const ResearchContext &context, QWidget *parent)
    : QWidget(parent), m_context(context), m_search(new CompetitorSearch(m_context.store, this)),
      m_pages(new QStackedWidget), m_overview(new QScrollArea)
{
    setObjectName(QStringLiteral("competitorsView"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    buildToolbar();
    buildOverview();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolbar);
    layout->addWidget(m_pages, 1);
    connectSearch();
    connect(&m_context.store, &ASOStore::competitorsChanged, this,
            &CompetitorsView::showCompetitors);
    connect(&m_context.store, &ASOStore::appsChanged, this, &CompetitorsView::showCompetitors);
    connect(&m_context.store, &ASOStore::stateRead, this, &CompetitorsView::showCompetitors);
    showSearch();
    showCompetitors();
}

CompetitorsView::~CompetitorsView() = default;

void CompetitorsView::buildToolbar()
{
    m_toolbar = new PageToolbar(tr("Competitors"));
    m_back = new Button(Button::Kind::Standard, QStringLiteral("chevron.left"), tr("Back to Apps"));
    nameControl(m_back, QStringLiteral("researchBack"), tr("Back to Apps"));
    m_picker = new StorefrontPicker(QStringLiteral("competitorsStorefront"), tr("Storefront"),
                                    StorefrontPicker::Offer::Storefronts);
    m_picker->setCode(m_country);
    m_toolbar->addLeading(m_back);
    m_toolbar->addTrailing(m_picker);
    m_back->hide();
    connect(m_back, &Button::clicked, this, &CompetitorsView::closeResearch);
    connect(m_picker, &StorefrontPicker::picked, this,
            [this](const std::optional<QString> &code) { pickCountry(code.value_or(m_country)); });
}

void CompetitorsView::buildOverview()
{
    m_field = new TextField(QStringLiteral("competitorSearch"), tr("Search any App Store app"),
                            QStringLiteral("magnifyingglass"));
    auto *go = new Button(Button::Kind::Primary, QStringLiteral("magnifyingglass"), tr("Search"));
    nameControl(go, QStringLiteral("competitorSearchSubmit"), tr("Search"));
    connect(go, &Button::clicked, this, &CompetitorsView::submit);
    auto *entry = new QHBoxLayout;
    entry->setSpacing(spacing::s);
    entry->addWidget(m_field, 1);
    entry->addWidget(go);

    m_resultsTitle = new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text);
    m_resultsTitle->setObjectName(QStringLiteral("competitorResultsTitle"));
    m_showAll = new Button(Button::Kind::Link, tr("Show all"));
    nameControl(m_showAll, QStringLiteral("competitorShowAll"), tr("Show all"));
    m_searchMessage = new EmptyState(QStringLiteral("competitorSearchMessage"));
    m_searchFailure =
        new FailureCard(QStringLiteral("competitorSearchFailure"), tr("Retry search"));
    m_rows = new QVBoxLayout;
    m_rows->setSpacing(0);
    m_rows->setContentsMargins(0, 0, 0, 0);
    auto *close = new Button(Button::Kind::Plain, QStringLiteral("xmark"), QString());
    nameControl(close, QStringLiteral("competitorResultsClose"), tr("Close search results"));
    close->setToolTip(tr("Close search results"));
    connect(close, &Button::clicked, this, [this] {
        m_field->clear();
        m_field->setFocus();
    });
    auto *head = new QHBoxLayout;
    head->addWidget(m_resultsTitle, 1);
    head->addWidget(m_showAll);
    head->addWidget(close);
    m_results = new QWidget;
    auto *results = new QVBoxLayout(m_results);
    results->setContentsMargins(0, 0, 0, 0);
    results->setSpacing(spacing::s);
    results->addLayout(head);
    results->addWidget(m_searchFailure);
    results->addWidget(m_searchMessage);
    results->addLayout(m_rows);

    m_competitorsTitle =
        new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, tr("Tracked competitors"));
    m_grid = new CardGrid;
    m_empty = new EmptyState(QStringLiteral("competitorsEmpty"));
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(spacing::xxl, spacing::l + 2, spacing::xxl, spacing::xxl);
    layout->setSpacing(spacing::l);
    layout->addLayout(entry);
    layout->addWidget(m_results);
    layout->addWidget(m_competitorsTitle);
    layout->addWidget(m_grid);
    layout->addWidget(m_empty, 1);
    layout->addStretch(0);

    nameControl(m_overview, QStringLiteral("competitorsOverview"), tr("Competitors"));
    m_overview->setFrameShape(QFrame::NoFrame);
    m_overview->setFocusPolicy(Qt::NoFocus);
    m_overview->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_overview->setWidgetResizable(true);
    m_overview->setWidget(content);
    m_overview->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    takeScrollBarFromMargin(*m_overview, *layout);
    m_pages->addWidget(m_overview);
}

void CompetitorsView::connectSearch()
{
    connect(m_field, &QLineEdit::returnPressed, this, &CompetitorsView::submit);
    connect(m_field, &QLineEdit::textChanged, this, [this](const QString &text) {
        // An emptied field gives the competitors their place back.
        if (text.isEmpty())
            m_search->clear();
    });
    connect(m_search, &CompetitorSearch::changed, this, &CompetitorsView::showSearch);
    connect(m_searchFailure, &FailureCard::actionTriggered, m_search, &CompetitorSearch::retry);
    connect(m_searchMessage, &EmptyState::actionTriggered, m_search, &CompetitorSearch::retry);
    connect(m_showAll, &Button::clicked, m_search, &CompetitorSearch::showAll);
}

void CompetitorsView::setApp(const std::optional<QUuid> &appId)
{
    if (appId == m_appId)
        return;
    m_appId = appId;
    if (m_research) {
        const CompetitorResearchDetail::Selection shown = m_research->selection();
        openResearch(shown.trackId, shown.country, shown.name);
    }
    showCompetitors();
}

void CompetitorsView::setCountry(const QString &country)
{
    if (country == m_country)
        return;
    m_country = country;
    for (TrackedCompetitorCard *card : std::as_const(m_cards))
        card->setCountry(m_country);
    if (!m_search->state().lastSearchTerm.isEmpty())
        m_search->submit(m_search->state().lastSearchTerm, m_country);
    updateToolbar();
}

void CompetitorsView::pickCountry(const QString &country)
{
    setCountry(country);
    if (m_research) {
        const CompetitorResearchDetail::Selection shown = m_research->selection();
        openResearch(shown.trackId, country, shown.name);
    }
    Q_EMIT countryPicked(country);
}

void CompetitorsView::focusSearch()
{
    closeResearch();
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

void CompetitorsView::focusContent()
{
    if (m_research)
        m_back->setFocus(Qt::ShortcutFocusReason);
    else
        m_field->setFocus(Qt::ShortcutFocusReason);
}

void CompetitorsView::submit()
{
    m_search->submit(m_field->text(), m_country);
}

void CompetitorsView::showSearch()
{
    const CompetitorSearch::State &state = m_search->state();
    const bool isAsked = !state.lastSearchTerm.isEmpty();
    m_results->setVisible(isAsked);
    if (!isAsked) {
        showResults(state);
        return;
    }
    EmptyState::Content message;
    if (state.results.isEmpty()) {
        if (state.isLoading)
            message.title = tr("Searching apps…");
        else if (state.error)
            message = {QStringLiteral("wifi.exclamationmark"), tr("Couldn't load app"),
                       *state.error, tr("Retry search")};
        else
            message = {QStringLiteral("magnifyingglass"), tr("No apps found"), QString(),
                       QString()};
    }
    m_searchMessage->setContent(message);
    m_searchMessage->setVisible(!message.title.isEmpty());
    m_searchFailure->setMessage(state.results.isEmpty() ? QString()
                                                        : state.error.value_or(QString()));
    const QString place = storefrontName(state.country);
    m_resultsTitle->setText(state.results.isEmpty()
                                ? tr("“%1” in %2").arg(state.lastSearchTerm, place)
                                : tr("%L1 results for “%2” in %3")
                                      .arg(state.results.size())
                                      .arg(state.lastSearchTerm, place));
    m_showAll->setVisible(state.mayHaveMore() || (state.isLoading && !state.results.isEmpty()));
    m_showAll->setEnabled(!state.isLoading);
    m_showAll->setText(state.isLoading ? tr("Searching apps…") : tr("Show all"));
    showResults(state);
}

void CompetitorsView::showResults(const CompetitorSearch::State &state)
{
    if (m_shownResults == state.results)
        return;
    m_shownResults = state.results;
    // Rows keep their places, so that what is being looked at stays there.
    for (qsizetype i = 0; i < state.results.size(); ++i) {
        if (i < m_rows->count()) {
            static_cast<ResearchAppRow *>(m_rows->itemAt(int(i))->widget())
                ->setApp(state.results[i]);
            continue;
        }
        auto *row = new ResearchAppRow(state.results[i], m_context.images);
        row->setObjectName(QStringLiteral("searchResult%1").arg(i + 1));
        row->setEnds(ResearchAppRow::Ends::Flush);
        connect(row, &ResearchAppRow::opened, this, [this, row] {
            if (const auto trackId = row->app().trackId)
                openResearch(*trackId, m_search->state().country, displayName(row->app()));
        });
        m_rows->addWidget(row);
    }
    while (m_rows->count() > state.results.size()) {
        QLayoutItem *item = m_rows->takeAt(m_rows->count() - 1);
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
}

void CompetitorsView::showCompetitors()
{
    const QList<TrackedCompetitor> competitors =
        m_appId ? m_context.store.competitorsOfApp(*m_appId) : QList<TrackedCompetitor>();
    QList<QWidget *> cards;
    QHash<QUuid, TrackedCompetitorCard *> known;
    for (const TrackedCompetitor &competitor : competitors) {
        TrackedCompetitorCard *card = m_cards.value(competitor.id);
        if (card) {
            card->setCompetitor(competitor);
        } else {
            card = new TrackedCompetitorCard(m_context.store, m_context.images, competitor, m_grid);
            card->setCountry(m_country);
            connect(card, &TrackedCompetitorCard::opened, this, [this, card] {
                const TrackedCompetitor &chosen = card->competitor();
                openResearch(chosen.trackId, chosen.country, chosen.name);
            });
            connect(card, &TrackedCompetitorCard::removeRequested, this,
                    [this, card] { m_context.store.removeCompetitor(card->competitor().id); });
            card->show();
        }
        known.insert(competitor.id, card);
        cards.append(card);
    }
    m_cards = known;
    m_grid->setCards(cards);
    m_grid->setVisible(!cards.isEmpty());
    m_competitorsTitle->setVisible(!cards.isEmpty());
    const bool hasApp = m_appId && m_context.store.app(*m_appId);
    if (!m_context.store.isStateRead())
        m_empty->setContent(
            {QStringLiteral("exclamationmark.triangle"), tr("Saved data not loaded"),
             tr("Your competitors come back as soon as they can be read."), QString()});
    else
        m_empty->setContent(
            {QStringLiteral("person.2"),
             hasApp ? tr("No competitors yet")
                    : tr("Research any app and discover keyword opportunities"),
             hasApp ? tr("Search for an app above, then track it to add it here.") : QString(),
             QString()});
    m_empty->setVisible(cards.isEmpty());
    updateToolbar();
}

void CompetitorsView::openResearch(std::int64_t trackId, const QString &country,
                                   const QString &name)
{
    if (!m_research)
        m_openedFrom = QApplication::focusWidget();
    else
        m_research->deleteLater();
    m_research =
        new CompetitorResearchDetail(m_context, {trackId, country, m_appId, name}, m_pages);
    connect(m_research, &CompetitorResearchDetail::backRequested, this,
            &CompetitorsView::closeResearch);
    connect(m_research, &CompetitorResearchDetail::opened, this,
            [this, country](std::int64_t other, const QString &otherName) {
                openResearch(other, country, otherName);
            });
    m_pages->addWidget(m_research);
    m_pages->setCurrentWidget(m_research);
    updateToolbar();
    m_back->setFocus();
}

void CompetitorsView::closeResearch()
{
    if (!m_research)
        return;
    m_pages->setCurrentWidget(m_overview);
    m_research->deleteLater();
    m_research = nullptr;
    updateToolbar();
    giveFocusBack();
}

void CompetitorsView::giveFocusBack()
{
    if (m_openedFrom && m_openedFrom->isVisibleTo(this))
        m_openedFrom->setFocus();
    else
        m_field->setFocus();
}

void CompetitorsView::updateToolbar()
{
    m_back->setVisible(m_research != nullptr);
    m_toolbar->setTitle(m_research ? QString() : tr("Competitors"));
    m_toolbar->setSubtitle(m_research || m_cards.isEmpty() ? QString()
                                                           : tr("%L1 tracked").arg(m_cards.size()));
    m_picker->setCode(m_research ? m_research->selection().country : m_country);
}

} // namespace veltrix
