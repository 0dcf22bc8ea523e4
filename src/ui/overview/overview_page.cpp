// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/overview/overview_page.h"

#include "model/text_folding.h"
#include "ui/measuring/measuring_status.h"
#include "ui/overview/movers_table.h"
#include "ui/overview/overview_card.h"
#include "ui/overview/rank_overview.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/card_grid.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/page_toolbar.h"
#include "ui_kit/widgets/segmented_control.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int cardWidth = 220;
/// More apps than these show two rows of cards at first.
constexpr int fewApps = 8;
constexpr int searchWidth = 216;
/// Below this the toolbar has no room for the periods.
constexpr int leastToolbarWidth = 540;
/// How long typing must rest before cards and movers are filtered.
constexpr std::chrono::milliseconds searchDelay{150};
/// How often "4 min. ago" is looked at again.
constexpr Seconds timeRefresh{30};

} // namespace

// The widgets come into being in the order in which Tab goes through them.
OverviewPage::OverviewPage(ASOStore &store, ArtworkImages &images, MeasuringStatus &measuring,
                           QWidget *parent)
    : QWidget(parent), m_store(store), m_images(images), m_measuring(measuring),
      m_overview(new RankOverview(store, this)), m_movers(new MoversModel(store, this)),
      m_toolbar(new PageToolbar(tr("Overview"))),
      m_search(new TextField(QStringLiteral("overviewSearch"), tr("Search apps and keywords"),
                             QStringLiteral("magnifyingglass"))),
      m_periodControls{makePeriodControl(QStringLiteral("overviewPeriod")), nullptr},
      m_refresh(new Button(Button::Kind::Standard, QStringLiteral("arrow.clockwise"), QString())),
      m_stack(new QStackedWidget), m_grid(new CardGrid(cardWidth)),
      m_showAll(new Button(Button::Kind::Link, QString())),
      m_moversTitle(makeHeading(tr("Movers"))),
      m_moversCount(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_table(new MoversTable(*m_movers, images)),
      m_nothingMoved(makeParagraph(TextStyle::Body, TextLabel::Tone::Secondary, QString(),
                                   QStringLiteral("nothingMoved"))),
      m_empty(new EmptyState(QStringLiteral("overviewEmpty")))
{
    setObjectName(QStringLiteral("overviewPage"));
    // Tab comes to the toolbar before the page below it.
    addControls();
    layOut();
    connectSearch();
    follow();
    m_tasks.own(keepTimesCurrent(m_tasks.token()));
}

OverviewPage::~OverviewPage() = default;

void OverviewPage::layOut()
{
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    m_showAll->setObjectName(QStringLiteral("showAllApps"));
    m_moversCount->setObjectName(QStringLiteral("moversCount"));
    auto *heading = makeRow(spacing::s);
    heading->addWidget(m_moversTitle);
    heading->addWidget(m_moversCount, 1);
    auto *more = makeRow(0);
    more->addWidget(m_showAll);
    more->addStretch(1);
    auto *content = new QWidget;
    auto *layout =
        makeColumn(spacing::m, content, {spacing::xxl, spacing::l, spacing::xxl, spacing::xxl});
    layout->addWidget(m_grid);
    layout->addLayout(more);
    layout->addSpacing(spacing::s);
    layout->addLayout(heading);
    layout->addWidget(m_table);
    layout->addWidget(m_nothingMoved);
    layout->addStretch(1);
    m_scroll = makeScrollPage(QStringLiteral("overviewScroll"), tr("Overview"), content);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    takeScrollBarFromMargin(*m_scroll, *layout);
    m_grid->installEventFilter(this);
    m_stack->addWidget(m_scroll);
    m_stack->addWidget(m_empty);
    m_periodControls[1] = makePeriodControl(QStringLiteral("overviewPeriodBelow"));
    auto *below = makeRow(0, nullptr, {spacing::xxl, spacing::s, spacing::xxl, 0});
    below->addWidget(m_periodControls[1]);
    below->addStretch(1);
    auto *page = makeColumn(0, this);
    page->addWidget(m_toolbar);
    page->addLayout(below);
    page->addWidget(m_stack, 1);
}

SegmentedControl *OverviewPage::makePeriodControl(const QString &objectName)
{
    auto *control =
        new SegmentedControl(objectName, tr("Period"), objectName + QStringLiteral("Choice"),
                             {{tr("Since yesterday"), tr("Since yesterday")},
                              {tr("7 days"), tr("In 7 days")},
                              {tr("30 days"), tr("In 30 days")}});
    connect(control, &SegmentedControl::changed, this, &OverviewPage::choosePeriod);
    return control;
}

void OverviewPage::placePeriods()
{
    const bool isNarrow = width() < scaledToFont(leastToolbarWidth, font());
    m_periodControls[0]->setVisible(!isNarrow);
    m_periodControls[1]->setVisible(isNarrow);
}

void OverviewPage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placePeriods();
}

void OverviewPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        placePeriods();
}

void OverviewPage::addControls()
{
    m_search->setMaximumWidth(searchWidth);
    m_search->setMinimumWidth(searchWidth / 2);
    nameControl(m_refresh, QStringLiteral("overviewRefresh"), tr("Refresh"));
    m_refresh->setToolTip(tr("Refresh (F5)"));
    for (QWidget *control :
         {static_cast<QWidget *>(m_search), static_cast<QWidget *>(m_periodControls[0]),
          static_cast<QWidget *>(m_refresh)})
        m_toolbar->addTrailing(control);
    connect(m_refresh, &Button::clicked, this, &OverviewPage::refreshRequested);
    connect(&m_measuring, &MeasuringStatus::changed, this,
            [this] { m_refresh->setEnabled(m_measuring.mayRefresh()); });
    connect(m_showAll, &Button::clicked, this, [this] {
        m_showsAll = true;
        showCards();
        focusContent();
    });
    connect(m_empty, &EmptyState::actionTriggered, this, &OverviewPage::goOn);
    connect(m_table, &MoversTable::opened, this, &OverviewPage::openHistory);
}

void OverviewPage::connectSearch()
{
    auto *delay = new QTimer(this);
    delay->setSingleShot(true);
    delay->setInterval(searchDelay);
    connect(m_search, &QLineEdit::textChanged, delay, qOverload<>(&QTimer::start));
    const auto searchNow = [this, delay] {
        delay->stop();
        search();
    };
    connect(delay, &QTimer::timeout, this, searchNow);
    connect(m_search, &QLineEdit::returnPressed, this, searchNow);
    connect(m_search, &TextField::escaped, this, [this, delay] {
        delay->stop();
        clearSearch();
    });
}

void OverviewPage::follow()
{
    connect(m_overview, &RankOverview::appsChanged, this, [this] {
        m_movers->forgetApps();
        showCards();
    });
    connect(m_overview, &RankOverview::standingChanged, this, &OverviewPage::showStanding);
    connect(m_overview, &RankOverview::keywordsChanged, this, [this](const QSet<QUuid> &ids) {
        m_movers->update(ids);
        showCounts();
        showContent();
    });
    connect(m_movers, &MoversModel::countChanged, this, &OverviewPage::showMovers);
    connect(&m_store, &ASOStore::refreshProgressChanged, this, [this] {
        // While measuring goes on, every row changes where it stands.
        if (m_store.refreshProgress().isIdle())
            m_movers->resort();
    });
}

void OverviewPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_overview->setActive(true);
    showContent();
}

void OverviewPage::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_overview->setActive(false);
}

bool OverviewPage::eventFilter(QObject *watched, QEvent *event)
{
    // As many cards as two rows hold; another width holds others.
    if (watched == m_grid && event->type() == QEvent::Resize && isVisible())
        QMetaObject::invokeMethod(this, &OverviewPage::showCards, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}

void OverviewPage::search()
{
    const QString folded = foldedForSearch(m_search->text().trimmed());
    if (std::exchange(m_folded, folded) == folded)
        return;
    m_movers->setSearch(folded);
    showCards();
    showMovers();
    showContent();
}

void OverviewPage::clearSearch()
{
    m_search->clear();
    search();
}

void OverviewPage::choosePeriod(int index)
{
    if (m_period == periods[size_t(index)])
        return;
    m_period = periods[size_t(index)];
    for (SegmentedControl *control : m_periodControls)
        control->choose(index);
    m_movers->setPeriod(m_period);
    for (auto card = m_cards.cbegin(); card != m_cards.cend(); ++card)
        showStanding(card.key());
    showMovers();
}

OverviewCard *OverviewPage::cardOf(const QUuid &appId)
{
    if (OverviewCard *known = m_cards.value(appId))
        return known;
    auto *card = new OverviewCard(m_images, m_grid);
    connect(card, &OverviewCard::clicked, this,
            [this, appId] { Q_EMIT keywordsRequested(appId, QuickFilter::All); });
    connect(card, &OverviewCard::risenPressed, this,
            [this, appId] { Q_EMIT keywordsRequested(appId, QuickFilter::Risen); });
    connect(card, &OverviewCard::fallenPressed, this,
            [this, appId] { Q_EMIT keywordsRequested(appId, QuickFilter::Fallen); });
    card->show();
    return card;
}

void OverviewPage::showCards()
{
    m_found.clear();
    for (const QUuid &id : m_overview->apps()) {
        if (m_folded.isEmpty() || m_overview->matches(id, m_folded))
            m_found.append(id);
    }
    const qsizetype inTwoRows = 2 * m_grid->columns();
    const bool isLong = !m_showsAll && m_found.size() > fewApps && m_found.size() > inTwoRows;
    const QList<QUuid> shown = isLong ? m_found.mid(0, inTwoRows) : m_found;
    QList<QWidget *> cards;
    QHash<QUuid, OverviewCard *> kept;
    for (const QUuid &id : shown) {
        OverviewCard *card = cardOf(id);
        if (const AppStanding *standing = m_overview->standing(id))
            fillCard(*card, *standing);
        kept.insert(id, card);
        cards.append(card);
    }
    m_cards = kept;
    if (m_grid->cards() != cards)
        m_grid->setCards(cards);
    m_grid->setVisible(!cards.isEmpty());
    m_showAll->setText(tr("Show all %L1 apps").arg(m_found.size()));
    m_showAll->setAccessibleName(m_showAll->text());
    m_showAll->setVisible(isLong);
    showCounts();
    showContent();
}

void OverviewPage::fillCard(OverviewCard &card, const AppStanding &standing) const
{
    const QString ago = standing.measuredAt
                            ? m_times.sinceUpdate(*standing.measuredAt, m_store.clock().now())
                            : QString();
    card.setStanding(standing, m_period, ago);
}

void OverviewPage::showStanding(const QUuid &appId)
{
    OverviewCard *card = m_cards.value(appId);
    const AppStanding *standing = m_overview->standing(appId);
    if (card && standing)
        fillCard(*card, *standing);
}

void OverviewPage::showCounts()
{
    const int apps = int(m_overview->apps().size());
    const int keywords = m_overview->keywordCount();
    const QString appText = apps == 1 ? tr("1 app") : tr("%L1 apps").arg(apps);
    const QString keywordText = keywords == 1 ? tr("1 keyword") : tr("%L1 keywords").arg(keywords);
    m_toolbar->setSubtitle(apps == 0 ? QString() : appText + QStringLiteral(" · ") + keywordText);
}

void OverviewPage::showMovers()
{
    const int all = m_movers->entryCount();
    const int shown = m_movers->rowCount();
    m_table->setVisible(shown > 0);
    m_moversCount->setText(
        all == 0   ? QString()
        : all == 1 ? tr("1 keyword moved %1").arg(sentenceOf(m_period))
                   : tr("%1 keywords moved %2").arg(QLocale().toString(all), sentenceOf(m_period)));
    m_nothingMoved->setText(all > 0 ? tr("No mover contains the text.")
                            : m_overview->canCompare(m_period)
                                ? tr("Nothing moved %1.").arg(sentenceOf(m_period))
                                : tr("No checks to compare %1.").arg(sentenceOf(m_period)));
    m_nothingMoved->setVisible(shown == 0);
}

std::optional<EmptyState::Content> OverviewPage::placeholder() const
{
    if (!m_store.isStateRead())
        return EmptyState::Content{
            QStringLiteral("exclamationmark.triangle"), tr("Saved data not loaded"),
            tr("Your apps come back as soon as they can be read."), QString()};
    if (m_store.apps().isEmpty())
        return EmptyState::Content{QStringLiteral("chart.bar"), tr("No apps yet"),
                                   tr("Add an app to see how its keywords stand."), tr("Add App")};
    if (m_found.isEmpty() && !m_folded.isEmpty())
        return EmptyState::Content{QStringLiteral("magnifyingglass"), tr("No matches"),
                                   tr("No app and no keyword contains the text."),
                                   tr("Show all apps")};
    return std::nullopt;
}

void OverviewPage::showContent()
{
    const auto instead = placeholder();
    if (instead)
        m_empty->setContent(*instead);
    turnTo(*m_stack, instead ? static_cast<QWidget *>(m_empty) : m_scroll);
}

void OverviewPage::goOn()
{
    if (m_store.apps().isEmpty())
        Q_EMIT addAppRequested();
    else
        clearSearch();
}

void OverviewPage::openHistory(QUuid keywordId)
{
    if (const auto keyword = m_store.trackedKeyword(keywordId))
        Q_EMIT historyRequested(m_store.dashboardRow(*keyword));
}

void OverviewPage::focusSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void OverviewPage::focusContent()
{
    if (m_scroll->isVisibleTo(this) && !m_grid->cards().isEmpty())
        m_grid->cards().constFirst()->setFocus(Qt::ShortcutFocusReason);
    else
        m_search->setFocus(Qt::ShortcutFocusReason);
}

Task<void> OverviewPage::keepTimesCurrent(std::stop_token stop)
{
    for (;;) {
        co_await m_store.clock().sleep(timeRefresh, stop);
        if (!isVisible())
            continue;
        for (auto card = m_cards.cbegin(); card != m_cards.cend(); ++card)
            showStanding(card.key());
    }
}

} // namespace veltrix
