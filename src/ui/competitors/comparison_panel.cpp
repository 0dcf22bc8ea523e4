// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/comparison_panel.h"

#include "ui/competitors/change_log_view.h"
#include "ui/competitors/shared_keywords_table.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/app_facts.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/text_label.h"

#include <QEvent>

namespace veltrix
{

namespace
{

constexpr int logWidth = 336;

} // namespace

ComparisonPanel::ComparisonPanel(ASOStore &store, ArtworkImages &images, const ITunesAppResult &app,
                                 const std::optional<QUuid> &appId, QWidget *parent)
    : QWidget(parent), m_store(store), m_app(app), m_comparison(store, *app.trackId, appId),
      m_lead(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_heading(makeHeading(tr("Where both rank"))),
      m_compare(new Button(Button::Kind::Standard, QStringLiteral("chart.xyaxis.line"),
                           tr("Compare over time"))),
      m_failure(Banner::makeFailureCard(QStringLiteral("comparisonFailure"), tr("Try again"))),
      m_message(makeParagraph(TextStyle::Body, TextLabel::Tone::Secondary, QString(),
                              QStringLiteral("comparisonMessage"))),
      m_older(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                            QStringLiteral("comparisonOlder"))),
      m_model(new SharedKeywordsModel(this)), m_table(new SharedKeywordsTable(*m_model, images)),
      m_more(new Button(Button::Kind::Link, QString())), m_log(new ChangeLogView(images)),
      m_columns(makeRow(spacing::xxl + spacing::s, this))
{
    build();
    connect(&m_comparison, &CompetitorComparison::competitorsChanged, this,
            &ComparisonPanel::showTracked);
    connect(&m_comparison, &CompetitorComparison::sharedChanged, this,
            &ComparisonPanel::showShared);
    connect(&m_comparison, &CompetitorComparison::pastChanged, this, &ComparisonPanel::showLog);
    connect(m_failure, &Banner::actionTriggered, &m_comparison, &CompetitorComparison::retry);
    connect(m_log, &ChangeLogView::retryRequested, &m_comparison, &CompetitorComparison::retry);
    connect(m_compare, &Button::clicked, this, &ComparisonPanel::compareOverTime);
    connect(m_table, &OpenableTable::rowOpened, this, &ComparisonPanel::open);
    connect(m_more, &Button::clicked, this, [this] {
        m_model->showAll();
        showShared();
    });
    showTracked();
    showShared();
    showLog();
}

void ComparisonPanel::build()
{
    setObjectName(QStringLiteral("comparisonPanel"));
    m_lead->setObjectName(QStringLiteral("comparisonLead"));
    m_more->setObjectName(QStringLiteral("sharedMore"));
    nameControl(m_compare, QStringLiteral("compareOverTime"), tr("Compare over time"));
    auto *head = makeRow(spacing::s);
    head->addWidget(m_heading);
    head->addWidget(m_lead, 1);
    head->addWidget(m_compare);
    auto *more = makeRow(0);
    more->addWidget(m_more);
    more->addStretch(1);
    auto *ranks = new QWidget;
    auto *column = makeColumn(spacing::s, ranks);
    column->addLayout(head);
    for (QWidget *part : std::initializer_list<QWidget *>{m_failure, m_message, m_older, m_table})
        column->addWidget(part);
    column->addLayout(more);
    column->addStretch(1);
    m_columns->addWidget(ranks, 1);
    m_columns->addWidget(m_log);
    placeLog(Log::Below);
}

void ComparisonPanel::placeLog(Log place)
{
    m_place = place;
    const bool isBeside = place == Log::Beside;
    m_columns->setDirection(isBeside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_columns->setSpacing(isBeside ? spacing::xxl + spacing::s : spacing::l);
    const int width = scaledToFont(logWidth, font());
    // The head has a button, but not while there is nothing to compare.
    m_heading->setMinimumHeight(controlHeight(font()));
    m_log->setHeadHeight(isBeside ? controlHeight(font()) : 0);
    m_log->setMinimumWidth(isBeside ? width : 0);
    m_log->setMaximumWidth(isBeside ? width : QWIDGETSIZE_MAX);
}

void ComparisonPanel::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        placeLog(m_place);
}

void ComparisonPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_comparison.unpause();
}

void ComparisonPanel::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_comparison.pause();
}

void ComparisonPanel::showTracked()
{
    // Without a parent yet, showing would open a window.
    if (!m_comparison.isTracked() || parentWidget())
        setVisible(m_comparison.isTracked());
}

void ComparisonPanel::showShared()
{
    const SharedKeywords &shared = m_comparison.shared();
    const bool isThere = m_comparison.checks().value() != nullptr;
    const QString error = m_comparison.checks().error();
    RivalIcons icons = m_comparison.icons();
    // The record has the icon of the day on which it was tracked.
    if (const auto listed = iconUrl(m_app))
        icons.theirs = listed;
    m_model->setKeywords(shared.keywords, icons);
    m_lead->setText(shared.leadText());
    m_lead->setAccessibleName(shared.leadText());
    m_compare->setVisible(!shared.keywords.empty());
    m_failure->setMessage(error.isEmpty() ? QString() : tr("The kept ranks can't be read."), error);
    QString message = isThere ? shared.emptyText(shownName(m_app)) : QString();
    if (!isThere && error.isEmpty())
        message = tr("Reading the kept ranks…");
    m_message->setText(message);
    m_message->setVisible(!message.isEmpty());
    m_older->setText(shared.olderText());
    m_older->setVisible(!shared.olderText().isEmpty());
    m_table->setVisible(!shared.keywords.empty());
    m_more->setVisible(m_model->hiddenCount() > 0);
    m_more->setText(tr("Show all %L1 keywords").arg(m_model->entryCount()));
    m_more->setAccessibleName(m_more->text());
}

void ComparisonPanel::showLog()
{
    m_log->showLog(m_comparison.past(), m_comparison.log(), m_comparison.checks().error());
}

void ComparisonPanel::compareOverTime()
{
    const std::vector<int> selected = m_table->selectedRows();
    open(selected.empty() ? 0 : selected.front());
}

void ComparisonPanel::open(int row)
{
    if (row >= m_model->rowCount())
        return;
    const SharedKeyword &shared = m_model->entryAt(row).shared;
    if (const auto keyword = m_store.trackedKeyword(shared.id))
        Q_EMIT historyRequested(m_store.dashboardRow(*keyword), shared.competitorId);
}

} // namespace veltrix
