// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ranked_apps/ranking_apps_sheet.h"

#include "ui/listing/app_details_sheet.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/text_label.h"

#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{700, 720};

}

RankingAppsSheet::RankingAppsSheet(const DashboardKeywordRow &keyword,
                                   RankedAppsLoading::Source source, MakeRow makeRow,
                                   QWidget *parent)
    : SheetFrame(QStringLiteral("rankedAppsSheet"),
                 tr("Top Apps “%1” in %2").arg(keyword.keyword, storefrontName(keyword.country)),
                 Body::Fixed, preferredSize, parent),
      m_makeRow(std::move(makeRow)), m_loading(new RankedAppsLoading(std::move(source), this)),
      m_stack(new QStackedWidget), m_message(new EmptyState(QStringLiteral("rankedAppsMessage"))),
      m_failure(new Banner(QStringLiteral("rankedAppsFailure"),
                           QStringLiteral("exclamationmark.triangle"), tr("Retry refresh"))),
      m_savedLine(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_count(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_rowLayout(new QVBoxLayout), m_more(new Button(Button::Kind::Standard, QString()))
{
    addCloseButton(QStringLiteral("rankedAppsClose"), QStringLiteral("xmark.circle.fill"),
                   QString(), tr("Close ranked apps"))
        ->setFocus();
    build();
    connect(m_loading, &RankedAppsLoading::changed, this, &RankingAppsSheet::showState);
    connect(m_message, &EmptyState::actionTriggered, m_loading, &RankedAppsLoading::retry);
    connect(m_failure, &Banner::actionTriggered, m_loading, &RankedAppsLoading::retry);
    connect(m_more, &Button::clicked, m_loading, &RankedAppsLoading::showMore);
    m_loading->start();
}

RankingAppsSheet *RankingAppsSheet::forKeyword(const ResearchContext &context,
                                               const DashboardKeywordRow &keyword,
                                               const std::optional<QUuid> &appId)
{
    ASOStore &store = context.store;
    RankedAppsLoading::Source source{[&store, keyword] { return store.savedRankedApps(keyword); },
                                     [&store, keyword](std::stop_token stop) {
                                         return store.rankedApps(keyword, stop);
                                     }};
    auto *sheet = new RankingAppsSheet(
        keyword, std::move(source),
        [context, keyword, appId](int rank, const ITunesAppResult &result) {
            return new RankedAppResearchRow(context, rank, result, keyword.country, appId);
        });
    connect(sheet, &RankingAppsSheet::detailsRequested, sheet,
            [sheet, context](const AppDetailSelection &selection) {
                openSheet(sheet, new AppDetailsSheet(context, selection));
            });
    return sheet;
}

void RankingAppsSheet::build()
{
    m_savedLine->setObjectName(QStringLiteral("rankedAppsSaved"));
    m_count->setObjectName(QStringLiteral("rankedAppsCount"));
    m_more->setObjectName(QStringLiteral("rankedAppsMore"));

    auto *list = new QWidget;
    auto *column = new QVBoxLayout(list);
    column->setContentsMargins(spacing::m, 0, spacing::m, spacing::l);
    column->setSpacing(0);
    m_rowLayout->setSpacing(0);
    column->addLayout(m_rowLayout);
    column->addSpacing(spacing::m);
    column->addWidget(m_more, 0, Qt::AlignHCenter);
    column->addStretch(1);
    auto *scroll = new QScrollArea;
    nameControl(scroll, QStringLiteral("rankedAppsScroll"), tr("Top Apps"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(list);
    scroll->viewport()->setAutoFillBackground(false);
    list->setAutoFillBackground(false);

    auto *lines = new QHBoxLayout;
    lines->setContentsMargins(spacing::xl, spacing::m, spacing::xl, spacing::s);
    lines->addWidget(m_count);
    lines->addStretch(1);
    lines->addWidget(m_savedLine);
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_failure);
    layout->addLayout(lines);
    layout->addWidget(scroll, 1);
    m_stack->addWidget(m_message);
    m_stack->addWidget(page);
    body()->setContentsMargins(0, 0, 0, 0);
    body()->addWidget(m_stack, 1);
}

void RankingAppsSheet::showState()
{
    const RankedAppsState &state = m_loading->state();
    if (state.screen() == RankedAppsState::Screen::List)
        showRows(state);
    else
        showMessage(state);
}

void RankingAppsSheet::showMessage(const RankedAppsState &state)
{
    EmptyState::Content content;
    if (state.screen() == RankedAppsState::Screen::Loading)
        content.title = tr("Loading ranked apps…");
    else if (state.screen() == RankedAppsState::Screen::Failed)
        content = {QStringLiteral("wifi.exclamationmark"), tr("Couldn't load apps"),
                   state.errorMessage.value_or(QString()), tr("Try again")};
    else
        content = {QStringLiteral("magnifyingglass"), tr("No apps found"),
                   tr("No results were returned for this keyword and storefront."), QString()};
    m_message->setContent(content);
    m_stack->setCurrentIndex(0);
}

void RankingAppsSheet::showRows(const RankedAppsState &state)
{
    // Rows keep their places: a refresh changes what they show, not where they are.
    for (qsizetype i = 0; i < state.shown(); ++i) {
        if (size_t(i) < m_rows.size()) {
            m_rows[size_t(i)]->setResult(state.results[i]);
            continue;
        }
        RankedAppResearchRow *row = m_makeRow(int(i) + 1, state.results[i]);
        connect(row, &RankedAppResearchRow::detailsRequested, this,
                &RankingAppsSheet::detailsRequested);
        m_rowLayout->addWidget(row);
        m_rows.push_back(row);
    }
    while (m_rows.size() > size_t(state.shown())) {
        delete m_rows.back();
        m_rows.pop_back();
    }
    m_failure->setMessage(state.failureText());
    m_savedLine->setText(state.savedText());
    m_count->setText(state.countText());
    m_more->setText(state.moreText());
    m_more->setAccessibleName(state.moreText());
    m_more->setVisible(state.more() > 0);
    m_stack->setCurrentIndex(1);
}

} // namespace veltrix
