// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/app_details_sheet.h"

#include "store/aso_store.h"
#include "ui/listing/app_header.h"
#include "ui/listing/screenshot_strip.h"
#include "ui/listing/track_competitor_button.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/app_facts.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/loadable_view.h"
#include "ui_kit/widgets/text_label.h"

#include <QGridLayout>

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{700, 760};

} // namespace

AppDetailsSheet::AppDetailsSheet(const ResearchContext &context,
                                 const AppDetailSelection &selection, QWidget *parent)
    : SheetFrame(QStringLiteral("appDetailsSheet"), tr("App details"), Body::Scrolled,
                 preferredSize, parent),
      m_context(context), m_selection(selection),
      m_view(new LoadableView(QStringLiteral("appDetailsMessage")))
{
    setSubtitle(storefrontName(m_selection.country));
    addCloseButton(QStringLiteral("appDetailsDone"), QString(), tr("Done"), tr("Done"))->setFocus();
    body()->addWidget(m_view, 1);
    connect(m_view, &LoadableView::retryRequested, &m_details, &Loader<ITunesAppResult>::retry);
    connect(&m_details, &LoaderSignals::changed, this, &AppDetailsSheet::showState);
    m_details.ask([&store = m_context.store, selection](std::stop_token stop) {
        return store.appDetails(selection.trackId, selection.country, stop);
    });
}

void AppDetailsSheet::showState()
{
    const LoadingWords words{tr("Loading app details…"), tr("Couldn't load app"), tr("Try again")};
    if (const auto message = words.messageOf(m_details.state())) {
        m_view->showMessage(*message);
        return;
    }
    const ITunesAppResult &result = *m_details.state().value();
    m_view->showPage(makePage(result));
    addActions(result);
}

QWidget *AppDetailsSheet::makePage(const ITunesAppResult &result)
{
    auto *page = new QWidget;
    auto *layout = makeColumn(spacing::m, page);
    auto *header = new AppHeader(m_context.images);
    header->setApp(result);
    const auto own = m_selection.appId ? m_context.store.app(*m_selection.appId) : std::nullopt;
    header->setOwn(own && own->trackId == m_selection.trackId);
    layout->addWidget(header);
    layout->addSpacing(spacing::xs);
    layout->addWidget(makeHeading(tr("Screenshots")));
    const QList<Url> pictures = screenshots(result);
    if (pictures.isEmpty())
        layout->addWidget(makeParagraph(TextStyle::Body, TextLabel::Tone::Secondary,
                                        tr("No screenshots available for this storefront."),
                                        QStringLiteral("appDetailsNoScreenshots")));
    else
        layout->addWidget(new ScreenshotStrip(pictures, m_context.images, tr("App screenshot ")));
    layout->addSpacing(spacing::xs);
    layout->addWidget(makeHeading(tr("About")));
    layout->addWidget(makeParagraph(TextStyle::Body, TextLabel::Tone::Text, descriptionText(result),
                                    QStringLiteral("appDetailsAbout")));
    layout->addSpacing(spacing::xs);
    layout->addWidget(makeFacts(result));
    layout->addStretch(1);
    return page;
}

void AppDetailsSheet::addActions(const ITunesAppResult &result)
{
    auto *view = new Button(Button::Kind::Standard, QStringLiteral("arrow.up.right.square"),
                            tr("View in App Store"));
    nameControl(view, QStringLiteral("appDetailsStore"), tr("View in App Store"));
    connect(view, &Button::clicked, this, [this] {
        m_context.openUrl(
            appStoreLink(m_context.appStoreUrl, m_selection.country, m_selection.trackId));
    });
    auto *track = new TrackCompetitorButton(m_context.store, Button::Kind::Primary,
                                            TrackCompetitorButton::WhenTracked::Confirms, this);
    track->setApp(result, m_selection.country, m_selection.appId);
    footer()->addWidget(view);
    footer()->addStretch(1);
    footer()->addWidget(track);
    setTabOrder(view, track);
}

QWidget *AppDetailsSheet::makeFacts(const ITunesAppResult &result)
{
    auto *facts = new QWidget;
    facts->setObjectName(QStringLiteral("appDetailsFacts"));
    auto *grid = new QGridLayout(facts);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(spacing::xl);
    grid->setVerticalSpacing(spacing::s);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (const AppFact &fact : appFacts(result)) {
        grid->addWidget(new TextLabel(TextStyle::Body, TextLabel::Tone::Secondary, fact.label), row,
                        0);
        auto *value = makeParagraph(TextStyle::BodyMedium, TextLabel::Tone::Text, fact.value,
                                    QStringLiteral("appFact%1").arg(row));
        value->setAccessibleName(fact.label + QStringLiteral(": ") + fact.value);
        grid->addWidget(value, row++, 1);
    }
    return facts;
}

} // namespace veltrix
