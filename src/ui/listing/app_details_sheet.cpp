// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/app_details_sheet.h"

#include "store/aso_store.h"
#include "ui/listing/app_header.h"
#include "ui/listing/screenshot_strip.h"
#include "ui/listing/track_competitor_button.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/app_facts.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/text_label.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{700, 760};

TextLabel *heading(const QString &text)
{
    return new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, text);
}

TextLabel *paragraph(const QString &objectName, TextLabel::Tone tone, const QString &text)
{
    auto *label = new TextLabel(TextStyle::Body, tone, text);
    label->setObjectName(objectName);
    label->setWrapping(TextLabel::Wrapping::Wrapped);
    return label;
}

} // namespace

AppDetailsSheet::AppDetailsSheet(const ResearchContext &context,
                                 const AppDetailSelection &selection, QWidget *parent)
    : SheetFrame(QStringLiteral("appDetailsSheet"), tr("App details"), Body::Scrolled,
                 preferredSize, parent),
      m_context(context), m_selection(selection), m_stack(new QStackedWidget),
      m_message(new EmptyState(QStringLiteral("appDetailsMessage")))
{
    setSubtitle(storefrontName(m_selection.country));
    addCloseButton(QStringLiteral("appDetailsDone"), QString(), tr("Done"), tr("Done"))->setFocus();
    m_stack->addWidget(m_message);
    body()->addWidget(m_stack, 1);
    connect(m_message, &EmptyState::actionTriggered, this, [this] {
        ++m_attempt;
        load();
    });
    load();
}

AppDetailsSheet::~AppDetailsSheet() = default;

void AppDetailsSheet::load()
{
    m_tasks.stop();
    m_message->setContent({QString(), tr("Loading app details…"), QString(), QString()});
    m_stack->setCurrentWidget(m_message);
    m_tasks.own(loadDetails(m_tasks.token()));
}

Task<void> AppDetailsSheet::loadDetails(std::stop_token stop)
{
    try {
        const ITunesAppResult result =
            co_await m_context.store.appDetails(m_selection.trackId, m_selection.country, stop);
        throwIfStopped(stop);
        showResult(result);
    } catch (const Error &error) {
        m_message->setContent({QStringLiteral("wifi.exclamationmark"), tr("Couldn't load app"),
                               error.description(), tr("Try again")});
    }
}

void AppDetailsSheet::showResult(const ITunesAppResult &result)
{
    m_page = new QWidget;
    auto *layout = new QVBoxLayout(m_page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::m);
    auto *header = new AppHeader(m_context.images);
    header->setApp(result);
    layout->addWidget(header);
    layout->addSpacing(spacing::xs);
    layout->addWidget(heading(tr("Screenshots")));
    const QList<Url> pictures = screenshots(result);
    if (pictures.isEmpty())
        layout->addWidget(paragraph(QStringLiteral("appDetailsNoScreenshots"),
                                    TextLabel::Tone::Secondary,
                                    tr("No screenshots available for this storefront.")));
    else
        layout->addWidget(new ScreenshotStrip(pictures, m_context.images, tr("App screenshot ")));
    layout->addSpacing(spacing::xs);
    layout->addWidget(heading(tr("About")));
    layout->addWidget(paragraph(QStringLiteral("appDetailsAbout"), TextLabel::Tone::Text,
                                descriptionText(result)));
    layout->addSpacing(spacing::xs);
    layout->addWidget(makeFacts(result));
    layout->addStretch(1);
    m_stack->addWidget(m_page);
    m_stack->setCurrentWidget(m_page);
    addActions(result);
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
        auto *value = new TextLabel(TextStyle::BodyMedium, TextLabel::Tone::Text, fact.value);
        value->setWrapping(TextLabel::Wrapping::Wrapped);
        value->setAccessibleName(fact.label + QStringLiteral(": ") + fact.value);
        value->setObjectName(QStringLiteral("appFact%1").arg(row));
        grid->addWidget(value, row++, 1);
    }
    return facts;
}

} // namespace veltrix
