// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ranked_apps/ranking_apps_sheet.h"

#include "ui/listing/track_competitor_button.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/app_row_list.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/loadable_view.h"
#include "ui_kit/widgets/text_label.h"

#include <QScrollArea>

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{700, 720};

RankedAppsLoading::Source sourceOf(ASOStore &store, const DashboardKeywordRow &keyword)
{
    return {.saved = [&store, keyword](
                         std::stop_token stop) { return store.savedRankedApps(keyword, stop); },
            .load =
                [&store, keyword](std::stop_token stop) {
                    return store.rankedApps(keyword, stop);
                }};
}

} // namespace

RankingAppsSheet::RankingAppsSheet(const ResearchContext &context,
                                   const DashboardKeywordRow &keyword,
                                   const std::optional<QUuid> &appId, QWidget *parent)
    : SheetFrame(QStringLiteral("rankedAppsSheet"),
                 tr("Top Apps “%1” in %2")
                     .arg(inSentence(keyword.keyword), storefrontName(keyword.country)),
                 Body::Fixed, preferredSize, parent),
      m_context(context), m_country(keyword.country), m_appId(appId),
      m_loading(sourceOf(m_context.store, keyword)),
      m_failure(new Banner(QStringLiteral("rankedAppsFailure"),
                           QStringLiteral("exclamationmark.triangle"), tr("Retry refresh"))),
      m_savedLine(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_count(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_rows(new AppRowList(QStringLiteral("rankedAppRow"), AppRowLook::Padded,
                            AppRowList::Ranks::Shown, m_context.images,
                            [this](AppRow &row) { updateTrackButton(row); })),
      m_more(new Button(Button::Kind::Standard, QString())),
      m_view(new LoadableView(QStringLiteral("rankedAppsMessage"))), m_list(makeList())
{
    addCloseButton(QStringLiteral("rankedAppsClose"), QStringLiteral("xmark.circle.fill"),
                   QString(), tr("Close ranked apps"))
        ->setFocus();
    const auto own = m_appId ? m_context.store.app(*m_appId) : std::nullopt;
    m_rows->setOwnApp(own ? std::optional(own->trackId) : std::nullopt);
    m_view->addWidget(m_list);
    body()->setContentsMargins(0, 0, 0, 0);
    body()->addWidget(m_view, 1);
    connect(&m_loading, &RankedAppsLoading::changed, this, &RankingAppsSheet::showState);
    connect(m_view, &LoadableView::retryRequested, &m_loading, &RankedAppsLoading::retry);
    connect(m_failure, &Banner::actionTriggered, &m_loading, &RankedAppsLoading::retry);
    connect(m_more, &Button::clicked, &m_loading, &RankedAppsLoading::showMore);
    connect(m_rows, &AppRowList::pressed, this, &RankingAppsSheet::openDetails);
    m_loading.start();
}

QWidget *RankingAppsSheet::makeList()
{
    m_savedLine->setObjectName(QStringLiteral("rankedAppsSaved"));
    m_count->setObjectName(QStringLiteral("rankedAppsCount"));
    m_more->setObjectName(QStringLiteral("rankedAppsMore"));
    auto *rows = new QWidget;
    auto *column = makeColumn(0, rows, {spacing::m, 0, spacing::m, spacing::l});
    column->addWidget(m_rows);
    column->addSpacing(spacing::m);
    column->addWidget(m_more, 0, Qt::AlignHCenter);
    column->addStretch(1);
    QScrollArea *scroll = makeScrollPage(QStringLiteral("rankedAppsScroll"), tr("Top Apps"), rows);
    scroll->setFocusPolicy(Qt::NoFocus);

    auto *lines = new QHBoxLayout;
    lines->setContentsMargins(spacing::xl, spacing::m, spacing::xl, spacing::s);
    lines->addWidget(m_count);
    lines->addStretch(1);
    lines->addWidget(m_savedLine);
    auto *list = new QWidget;
    auto *layout = makeColumn(0, list);
    layout->addWidget(m_failure);
    layout->addLayout(lines);
    layout->addWidget(scroll, 1);
    return list;
}

void RankingAppsSheet::showState()
{
    const RankedAppsState state = m_loading.state();
    const LoadingWords words{tr("Loading ranked apps…"), tr("Couldn't load apps"), tr("Try again")};
    if (const auto message = words.messageOf(state.apps)) {
        m_view->showMessage(*message);
        return;
    }
    if (state.results().isEmpty()) {
        m_view->showMessage({QStringLiteral("magnifyingglass"), tr("No apps found"),
                             tr("No results were returned for this keyword and storefront."),
                             QString()});
        return;
    }
    m_rows->setApps(state.results().mid(0, state.shown()));
    m_failure->setMessage(state.failureText());
    m_savedLine->setText(state.savedText());
    m_count->setText(state.countText());
    m_more->setText(state.moreText());
    m_more->setAccessibleName(state.moreText());
    m_more->setVisible(state.more() > 0);
    m_view->showPage(m_list);
}

void RankingAppsSheet::updateTrackButton(AppRow &row)
{
    auto *track = row.findChild<TrackCompetitorButton *>();
    if (!track) {
        row.setPurpose(tr("View details for %1"));
        track = new TrackCompetitorButton(m_context.store, Button::Kind::Link,
                                          TrackCompetitorButton::WhenTracked::Confirms, &row);
        row.setTrailing(track);
    }
    track->setApp(row.app(), m_country, m_appId);
}

void RankingAppsSheet::openDetails(const ITunesAppResult &app)
{
    // A result without an id has no details.
    if (app.trackId)
        openSheet(this, new AppDetailsSheet(m_context, {*app.trackId, m_country, m_appId}));
}

} // namespace veltrix
