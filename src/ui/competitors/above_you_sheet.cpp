// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/above_you_sheet.h"

#include "ui/competitors/above_you_table.h"
#include "ui/listing/app_details_sheet.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/loadable_view.h"
#include "ui_kit/widgets/text_label.h"

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{840, 640};

} // namespace

AboveYouSheet::AboveYouSheet(const ResearchContext &context, const DashboardKeywordRow &keyword,
                             QWidget *parent)
    : SheetFrame(QStringLiteral("aboveYouSheet"), tr("Who is above you"), Body::Scrolled,
                 preferredSize, parent),
      m_context(context), m_keyword(keyword), m_loading(context.store, keyword),
      m_view(new LoadableView(QStringLiteral("aboveYouMessage"))),
      m_problem(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Red, QString(),
                              QStringLiteral("aboveYouProblem"))),
      m_empty(makeParagraph(TextStyle::Body, TextLabel::Tone::Secondary, QString(),
                            QStringLiteral("aboveYouEmpty"))),
      m_note(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                           QStringLiteral("aboveYouNote"))),
      m_model(new AboveYouModel(this)), m_table(new AboveYouTable(*m_model, m_context.images)),
      m_tracking(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                               QStringLiteral("aboveYouTracking"))),
      m_details(
          new Button(Button::Kind::Standard, QStringLiteral("info.circle"), tr("App details"))),
      m_track(new Button(Button::Kind::Standard, QStringLiteral("plus"), tr("Track competitor")))
{
    addCloseButton(QStringLiteral("aboveYouDone"), QString(), tr("Done"), tr("Done"))->setFocus();
    m_page = makePage();
    m_view->addWidget(m_page);
    body()->addWidget(m_view, 1);
    addFooter();
    connect(m_view, &LoadableView::retryRequested, &m_loading, &AboveYouLoading::retry);
    connect(&m_loading, &AboveYouLoading::changed, this, &AboveYouSheet::showState);
    connect(&m_loading, &AboveYouLoading::trackingChanged, this, &AboveYouSheet::showTracking);
    connect(&m_loading, &AboveYouLoading::keywordGone, this, &AboveYouSheet::dismissed);
    connect(m_table, &AboveYouTable::currentAppChanged, this, &AboveYouSheet::showTracking);
    connect(m_table, &OpenableTable::rowOpened, this, &AboveYouSheet::openDetails);
    m_loading.start();
}

QWidget *AboveYouSheet::makePage()
{
    auto *page = new QWidget;
    auto *layout = makeColumn(spacing::m, page);
    for (QWidget *part : std::initializer_list<QWidget *>{m_problem, m_empty, m_table, m_note})
        layout->addWidget(part);
    layout->addStretch(1);
    return page;
}

void AboveYouSheet::addFooter()
{
    nameControl(m_details, QStringLiteral("aboveYouDetails"), tr("App details"));
    nameControl(m_track, QStringLiteral("aboveYouTrack"), tr("Track competitor"));
    footer()->addWidget(m_tracking, 1);
    footer()->addWidget(m_details);
    footer()->addWidget(m_track);
    connect(m_details, &Button::clicked, this, &AboveYouSheet::openDetails);
    connect(m_track, &Button::clicked, this, &AboveYouSheet::trackCurrent);
}

void AboveYouSheet::showState()
{
    const LoadingWords words{tr("Reading the kept ranks…"), tr("The kept ranks can't be read"),
                             tr("Try again")};
    const AboveYou above = m_loading.above();
    QStringList about{QStringLiteral("“%1”").arg(inSentence(m_keyword.keyword)),
                      storefrontName(m_keyword.country), above.ownText()};
    about.removeAll(QString());
    setSubtitle(about.join(QStringLiteral(" · ")));
    showTracking();
    if (const auto message = words.messageOf(m_loading.state())) {
        m_view->showMessage(*message);
        return;
    }
    const QString problem = m_loading.state().error();
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    m_empty->setText(above.emptyText());
    m_empty->setVisible(!above.emptyText().isEmpty());
    m_note->setText(above.noteText());
    m_model->setApps(above.apps, m_context.store.clock().now());
    m_table->setVisible(!above.apps.empty());
    m_view->showPage(m_page);
    showTracking();
}

bool AboveYouSheet::canTrack() const
{
    const AppAbove *app = m_table->current();
    return app && app->trackId != 0 && !app->isTracked && !m_loading.isLookingUp();
}

void AboveYouSheet::showTracking()
{
    const AppAbove *app = m_table->current();
    const QString name = app ? inSentence(app->shownName()) : QString();
    m_details->setEnabled(app && app->trackId != 0);
    m_details->setAccessibleDescription(name);
    m_track->setEnabled(canTrack());
    m_track->setAccessibleDescription(name);
    m_tracking->setTone(m_loading.isTrackingFailed() ? TextLabel::Tone::Red
                                                     : TextLabel::Tone::Secondary);
    const QString before = m_tracking->text();
    m_tracking->setText(m_loading.trackingText());
    m_tracking->setAccessibleName(m_tracking->text());
    if (m_tracking->text() != before && !m_tracking->text().isEmpty())
        announceNameChange(m_tracking);
}

void AboveYouSheet::trackCurrent()
{
    if (const AppAbove *app = canTrack() ? m_table->current() : nullptr)
        m_loading.track(AppAbove(*app));
}

void AboveYouSheet::openDetails()
{
    const AppAbove *app = m_table->current();
    const auto keyword = m_context.store.trackedKeyword(m_keyword.id);
    if (!app || app->trackId == 0 || !keyword)
        return;
    openSheet(this,
              new AppDetailsSheet(m_context, {app->trackId, m_keyword.country, keyword->appId}));
}

} // namespace veltrix
