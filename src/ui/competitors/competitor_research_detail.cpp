// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitor_research_detail.h"

#include "store/aso_store.h"
#include "ui/competitors/comparison_panel.h"
#include "ui/competitors/keyword_coverage_panel.h"
#include "ui/listing/app_header.h"
#include "ui/listing/screenshot_strip.h"
#include "ui/listing/similar_apps_panel.h"
#include "ui/listing/track_competitor_button.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/app_facts.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/widgets/card.h"
#include "ui_kit/widgets/card_grid.h"
#include "ui_kit/widgets/expandable_text.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/loadable_view.h"

#include <QScrollArea>

namespace veltrix
{

namespace
{

constexpr int standardControlHeight = 30;
/// Below this width the keywords stand under the listing instead of beside it.
constexpr int twoColumnWidth = 860;
constexpr int keywordColumnWidth = 420;
/// Below this the change log stands under the shared keywords.
constexpr int logBesideWidth = 960;
/// Four of them stand abreast where the change log stands beside the shared keywords.
constexpr int leastFigureWidth = 216;

Figure figure(const QString &caption, const QString &value, const QString &symbol)
{
    return {caption, value, QString(), false, symbol};
}

QWidget *makeScreenshots(const ITunesAppResult &app, ArtworkImages &images)
{
    const QList<Url> pictures = screenshots(app);
    if (!pictures.isEmpty())
        return new ScreenshotStrip(pictures, images, CompetitorResearchDetail::tr("Screenshot "));
    return makeParagraph(
        TextStyle::Body, TextLabel::Tone::Secondary,
        CompetitorResearchDetail::tr("No screenshots available in this storefront."),
        QStringLiteral("noScreenshots"));
}

} // namespace

CompetitorResearchDetail::CompetitorResearchDetail(const ResearchContext &context,
                                                   const ResearchSelection &selection,
                                                   const std::optional<QUuid> &appId,
                                                   QWidget *parent)
    : QWidget(parent), m_context(context), m_research(m_context.store, selection, appId),
      m_view(new LoadableView(QStringLiteral("researchMessage")))
{
    nameControl(this, QStringLiteral("researchDetail"), selection.name);
    auto *back = new Button(Button::Kind::Link, tr("Back"));
    nameControl(back, QStringLiteral("researchFailureBack"), tr("Back"));
    m_view->addWayOut(back);
    makeColumn(0, this)->addWidget(m_view);
    connect(back, &Button::clicked, this, &CompetitorResearchDetail::backRequested);
    connect(m_view, &LoadableView::retryRequested, &m_research, &AppResearch::retry);
    connect(&m_research, &AppResearch::changed, this, &CompetitorResearchDetail::showState);
    const auto showProgress = [this] {
        if (!m_coverageFigure)
            return;
        m_coverageFigure->setFigure(coverageFigure());
        m_similar->setFailureTold(m_research.isSimilarFailureTold());
    };
    connect(&m_research.coverage(), &KeywordCoverage::progressChanged, this, showProgress);
    connect(&m_research.similar(), &SimilarApps::changed, this, showProgress);
}

void CompetitorResearchDetail::setApp(const std::optional<QUuid> &appId)
{
    m_research.setApp(appId);
    if (m_keywords)
        showOwnApp();
}

void CompetitorResearchDetail::showOwnApp()
{
    const auto own = m_research.ownTrackId();
    m_header->setOwn(own == selection().trackId);
    m_track->setApp(*m_research.app().value(), selection().country, m_research.appId());
    m_comparison->setApp(m_research.appId());
    m_similar->setOwnApp(own);
    m_keywords->setApp(m_research.appId());
}

void CompetitorResearchDetail::showState()
{
    const QString &name = selection().name;
    const LoadingWords words{tr("Loading %1…").arg(name.isEmpty() ? tr("app") : inSentence(name)),
                             tr("Couldn't load app"), tr("Try again")};
    if (const auto message = words.messageOf(m_research.app())) {
        m_view->showMessage(*message);
        return;
    }
    setAccessibleName(name);
    m_view->showPage(makePage(*m_research.app().value()));
    arrangeColumns();
    Q_EMIT named(name);
}

QWidget *CompetitorResearchDetail::makePage(const ITunesAppResult &app)
{
    m_keywords = new KeywordCoveragePanel(m_context.store, m_research.coverage(),
                                          selection().country, m_research.appId());
    connect(m_keywords, &KeywordCoveragePanel::retryRequested, &m_research,
            &AppResearch::retryChecks);
    auto *content = new QWidget;
    auto *layout =
        makeColumn(spacing::l, content, {spacing::xxl, spacing::l + 2, spacing::xxl, spacing::xxl});
    layout->addWidget(makeHeader(app));
    layout->addWidget(makeFigures(app));
    layout->addWidget(makeComparison(app));
    m_columns = makeRow(spacing::xl);
    m_columns->addWidget(makeListing(app), 1);
    m_columns->addWidget(m_keywords);
    layout->addLayout(m_columns);
    layout->addStretch(1);
    QScrollArea *page = makeScrollPage(QStringLiteral("researchPage"), selection().name, content);
    page->setFocusPolicy(Qt::NoFocus);
    takeScrollBarFromMargin(*page, *layout);
    showOwnApp();
    return page;
}

QWidget *CompetitorResearchDetail::makeHeader(const ITunesAppResult &app)
{
    m_header = new AppHeader(m_context.images);
    m_header->setApp(app);
    auto *open = new Button(Button::Kind::Standard, QStringLiteral("arrow.up.right.square"),
                            tr("Open in App Store"));
    nameControl(open, QStringLiteral("openInAppStore"), tr("Open in App Store"));
    connect(open, &Button::clicked, this, [this] {
        m_context.openUrl(
            appStoreLink(m_context.appStoreUrl, selection().country, selection().trackId));
    });
    // Before the next one is made, so that Tab comes to it first.
    m_header->addAction(open);
    m_track = new TrackCompetitorButton(m_context.store, Button::Kind::Primary,
                                        TrackCompetitorButton::WhenTracked::Untracks, m_header);
    m_header->addAction(m_track);
    return m_header;
}

QWidget *CompetitorResearchDetail::makeFigures(const ITunesAppResult &app)
{
    QList<QWidget *> tiles;
    const auto add = [&](const char *name, const Figure &figure) {
        auto *tile = new FigureTile(QString::fromLatin1(name));
        tile->setFigure(figure);
        tiles << tile;
        return tile;
    };
    add("figureRating", figure(tr("Rating"), ratingOfFive(app), QStringLiteral("star.fill")));
    add("figureRatings",
        figure(tr("Ratings"), ratingCountText(app), QStringLiteral("person.2.fill")));
    m_coverageFigure = add("figureCoverage", coverageFigure());
    add("figureUpdated", figure(tr("Last updated"), updatedText(app).value_or(tr("Not available")),
                                QStringLiteral("clock.arrow.circlepath")));
    auto *grid = new CardGrid(leastFigureWidth, CardGrid::Width::OfTheCards);
    grid->setCards(tiles);
    return grid;
}

QWidget *CompetitorResearchDetail::makeComparison(const ITunesAppResult &app)
{
    ITunesAppResult rival = app;
    rival.trackId = selection().trackId;
    m_comparison =
        new ComparisonPanel(m_context.store, m_context.images, rival, m_research.appId());
    connect(m_comparison, &ComparisonPanel::historyRequested, this,
            &CompetitorResearchDetail::historyRequested);
    return m_comparison;
}

QWidget *CompetitorResearchDetail::makeListing(const ITunesAppResult &app)
{
    auto *listing = new QWidget;
    auto *layout = makeColumn(spacing::s, listing);
    layout->addWidget(makeHeading(tr("Screenshots")));
    layout->addWidget(makeScreenshots(app, m_context.images));
    layout->addSpacing(spacing::s);
    layout->addWidget(makeHeading(tr("About this app")));
    auto *about = new ExpandableText(QStringLiteral("about"));
    about->setText(descriptionText(app));
    layout->addWidget(about);
    if (const auto date = updatedText(app)) {
        auto *updated = new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary,
                                      tr("Updated %1").arg(*date));
        updated->setObjectName(QStringLiteral("aboutUpdated"));
        layout->addWidget(updated);
    }
    layout->addSpacing(spacing::s);
    m_similar = new SimilarAppsPanel(m_research.similar(), m_context.images);
    connect(m_similar, &SimilarAppsPanel::opened, this, [this](const ITunesAppResult &other) {
        if (other.trackId)
            Q_EMIT opened(*other.trackId, shownName(other));
    });
    layout->addWidget(m_similar);
    layout->addStretch(1);
    return listing;
}

Figure CompetitorResearchDetail::coverageFigure()
{
    return figure(tr("Keyword coverage"), m_research.coverage().coverageText(),
                  QStringLiteral("key.fill"));
}

void CompetitorResearchDetail::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrangeColumns();
}

void CompetitorResearchDetail::arrangeColumns()
{
    if (!m_columns)
        return;
    const auto scaled = [this](int width) {
        return width * controlHeight(font()) / standardControlHeight;
    };
    m_comparison->placeLog(width() >= scaled(logBesideWidth) ? ComparisonPanel::Log::Beside
                                                             : ComparisonPanel::Log::Below);
    const bool isWide = width() >= scaled(twoColumnWidth);
    m_columns->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_keywords->setMinimumWidth(isWide ? scaled(keywordColumnWidth) : 0);
    m_keywords->setMaximumWidth(isWide ? scaled(keywordColumnWidth) : QWIDGETSIZE_MAX);
}

} // namespace veltrix
