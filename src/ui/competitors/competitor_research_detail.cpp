// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitor_research_detail.h"

#include "store/aso_store.h"
#include "ui/competitors/keyword_coverage_panel.h"
#include "ui/listing/app_header.h"
#include "ui/listing/screenshot_strip.h"
#include "ui/listing/similar_apps_panel.h"
#include "ui/listing/track_competitor_button.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/app_facts.h"
#include "ui_kit/widgets/card.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/expandable_text.h"
#include "ui_kit/widgets/load_failure.h"
#include "ui_kit/widgets/sheet_frame.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QStackedWidget>

namespace veltrix
{

namespace
{

constexpr int standardControlHeight = 30;
/// Below this width the keywords stand under the listing instead of beside it.
constexpr int twoColumnWidth = 860;
constexpr int keywordColumnWidth = 420;

QWidget *makeScreenshots(const ITunesAppResult &app, ArtworkImages &images)
{
    const QList<Url> pictures = screenshots(app);
    if (!pictures.isEmpty())
        return new ScreenshotStrip(pictures, images, CompetitorResearchDetail::tr("Screenshot "));
    auto *none =
        new TextLabel(TextStyle::Body, TextLabel::Tone::Secondary,
                      CompetitorResearchDetail::tr("No screenshots available in this storefront."));
    none->setObjectName(QStringLiteral("noScreenshots"));
    none->setWrapping(TextLabel::Wrapping::Wrapped);
    return none;
}

} // namespace

CompetitorResearchDetail::CompetitorResearchDetail(const ResearchContext &context,
                                                   const Selection &selection, QWidget *parent)
    : QWidget(parent), m_context(context), m_selection(selection),
      m_coverage(new KeywordCoverage(m_context.store, this)),
      m_similar(new SimilarApps(m_context.store, this)), m_stack(new QStackedWidget),
      m_loading(new EmptyState(QStringLiteral("researchLoading"))), m_failure(new LoadFailure)
{
    setObjectName(QStringLiteral("researchDetail"));
    setAccessibleName(m_selection.name);
    m_stack->addWidget(m_loading);
    m_stack->addWidget(m_failure);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_stack);
    connect(m_failure, &LoadFailure::backRequested, this, &CompetitorResearchDetail::backRequested);
    connect(m_failure, &LoadFailure::retryRequested, this, [this] {
        ++m_loadAttempt;
        load();
    });
    load();
}

CompetitorResearchDetail::~CompetitorResearchDetail() = default;

void CompetitorResearchDetail::load()
{
    const QString name = m_selection.name.isEmpty() ? tr("app") : m_selection.name;
    m_loading->setContent({QString(), tr("Loading %1…").arg(name), QString(), QString()});
    m_stack->setCurrentWidget(m_loading);
    m_tasks.stop();
    m_tasks.own(loadApp(m_tasks.token()));
}

Task<void> CompetitorResearchDetail::loadApp(std::stop_token stop)
{
    try {
        const ITunesAppResult app =
            co_await m_context.store.appDetails(m_selection.trackId, m_selection.country, stop);
        throwIfStopped(stop);
        showApp(app);
    } catch (const Error &error) {
        m_failure->setMessage(error.description());
        m_stack->setCurrentWidget(m_failure);
    }
}

void CompetitorResearchDetail::showApp(const ITunesAppResult &app)
{
    m_selection.name = displayName(app);
    setAccessibleName(m_selection.name);
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(spacing::xxl, spacing::l + 2, spacing::xxl, spacing::xxl);
    layout->setSpacing(spacing::l);
    layout->addWidget(makeHeader(app));
    layout->addWidget(makeFigures(app));
    auto *panel = new KeywordCoveragePanel(m_context.store, *m_coverage, m_selection.country,
                                           m_selection.appId);
    m_columns = new QBoxLayout(QBoxLayout::LeftToRight);
    m_columns->setSpacing(spacing::xl);
    m_columns->addWidget(makeListing(app), 1);
    m_columns->addWidget(panel);
    layout->addLayout(m_columns);
    layout->addStretch(1);

    m_page = new QScrollArea;
    nameControl(m_page, QStringLiteral("researchPage"), m_selection.name);
    m_page->setFrameShape(QFrame::NoFrame);
    m_page->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_page->setWidgetResizable(true);
    m_page->setFocusPolicy(Qt::NoFocus);
    m_page->setWidget(content);
    m_page->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    takeScrollBarFromMargin(*m_page, *layout);
    m_stack->addWidget(m_page);
    m_stack->setCurrentWidget(m_page);
    arrangeColumns();
    startChecks(app);
}

QWidget *CompetitorResearchDetail::makeHeader(const ITunesAppResult &app)
{
    auto *header = new AppHeader(m_context.images);
    header->setApp(app);
    auto *open = new Button(Button::Kind::Standard, QStringLiteral("arrow.up.right.square"),
                            tr("Open in App Store"));
    nameControl(open, QStringLiteral("openInAppStore"), tr("Open in App Store"));
    connect(open, &Button::clicked, this, [this] {
        m_context.openUrl(
            appStoreLink(m_context.appStoreUrl, m_selection.country, m_selection.trackId));
    });
    auto *track = new TrackCompetitorButton(m_context.store, Button::Kind::Primary,
                                            TrackCompetitorButton::WhenTracked::Untracks, header);
    track->setApp(app, m_selection.country, m_selection.appId);
    header->addAction(open);
    header->addAction(track);
    return header;
}

QWidget *CompetitorResearchDetail::makeFigures(const ITunesAppResult &app)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::m);
    const auto add = [&](const char *name, const QString &symbol, const QString &caption,
                         const QString &value) {
        auto *tile = new FigureTile(QString::fromLatin1(name));
        tile->setFigure({caption, symbol, value, QString(), false});
        tile->setAccessibleText(caption + QStringLiteral(": ") + value);
        layout->addWidget(tile, 1);
        return tile;
    };
    add("figureRating", QStringLiteral("star.fill"), tr("Rating"), ratingOfFive(app));
    add("figureRatings", QStringLiteral("person.2.fill"), tr("Ratings"), ratingCountText(app));
    m_coverageFigure = add("figureCoverage", QStringLiteral("key.fill"), tr("Keyword coverage"),
                           m_coverage->coverageText());
    add("figureUpdated", QStringLiteral("clock.arrow.circlepath"), tr("Last updated"),
        updatedText(app).value_or(tr("Not available")));
    return row;
}

QWidget *CompetitorResearchDetail::makeListing(const ITunesAppResult &app)
{
    const auto heading = [](const QString &text) {
        return new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, text);
    };
    auto *listing = new QWidget;
    auto *layout = new QVBoxLayout(listing);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::s);
    layout->addWidget(heading(tr("Screenshots")));
    layout->addWidget(makeScreenshots(app, m_context.images));
    layout->addSpacing(spacing::s);
    layout->addWidget(heading(tr("About this app")));
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
    auto *similar = new SimilarAppsPanel(*m_similar, m_context.images);
    connect(similar, &SimilarAppsPanel::opened, this, [this](const ITunesAppResult &other) {
        if (other.trackId)
            Q_EMIT opened(*other.trackId, displayName(other));
    });
    layout->addWidget(similar);
    layout->addStretch(1);
    return listing;
}

void CompetitorResearchDetail::startChecks(const ITunesAppResult &app)
{
    connect(m_coverage, &KeywordCoverage::progressChanged, this,
            &CompetitorResearchDetail::updateCoverageFigure);
    // Both begin with the same phrase. The similar apps wait for the first check, whose answer the
    // research service has then kept, so that one search serves both.
    const auto startSimilar = [this, app] {
        if (m_similar->phase() == SimilarApps::Phase::Idle)
            m_similar->start(app, m_selection.country);
    };
    connect(m_coverage, &KeywordCoverage::checked, this, startSimilar);
    connect(m_coverage, &KeywordCoverage::progressChanged, this, [this, startSimilar] {
        if (m_coverage->phase() != KeywordCoverage::Phase::Checking)
            startSimilar();
    });
    const auto own = m_selection.appId ? m_context.store.app(*m_selection.appId) : std::nullopt;
    m_coverage->start(app, m_selection.country, own ? std::optional(own->trackId) : std::nullopt);
}

void CompetitorResearchDetail::updateCoverageFigure()
{
    const QString value = m_coverage->coverageText();
    m_coverageFigure->setFigure(
        {tr("Keyword coverage"), QStringLiteral("key.fill"), value, QString(), false});
    m_coverageFigure->setAccessibleText(tr("Keyword coverage") + QStringLiteral(": ") + value);
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
    const bool isWide = width() >= scaled(twoColumnWidth);
    m_columns->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    QWidget *keywords = m_columns->itemAt(1)->widget();
    keywords->setMinimumWidth(isWide ? scaled(keywordColumnWidth) : 0);
    keywords->setMaximumWidth(isWide ? scaled(keywordColumnWidth) : QWIDGETSIZE_MAX);
}

} // namespace veltrix
