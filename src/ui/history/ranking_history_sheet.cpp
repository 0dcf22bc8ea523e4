// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/ranking_history_sheet.h"

#include "ui/history/history_export.h"
#include "ui/history/ranking_history_content.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/csv.h"
#include "ui_kit/text/file_name.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/feedback_button.h"
#include "ui_kit/widgets/file_exchange.h"
#include "ui_kit/widgets/text_label.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{760, 680};

}

RankingHistorySheet::RankingHistorySheet(ASOStore &store, FileExchange &files,
                                         const DashboardKeywordRow &keyword,
                                         std::optional<QUuid> competitorId, QWidget *parent)
    : SheetFrame(QStringLiteral("historySheet"), tr("Ranking history"), Body::Scrolled,
                 preferredSize, parent),
      m_store(store), m_files(files), m_keyword(keyword), m_competitorId(competitorId),
      m_content(new RankingHistoryContent),
      m_copy(new FeedbackButton(QStringLiteral("historyCopyImage"), Button::Kind::Standard,
                                QStringLiteral("doc.on.doc"), tr("Copy as image"), tr("Copied"))),
      m_export(new FeedbackButton(QStringLiteral("historyExport"), Button::Kind::Standard,
                                  QStringLiteral("square.and.arrow.down"), tr("Export CSV"),
                                  tr("Exported"))),
      m_problem(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Red))
{
    setSubtitle(inSentence(m_keyword.keyword) + QStringLiteral(" · ") +
                storefrontName(m_keyword.country));
    addCloseButton(QStringLiteral("historyDone"), QString(), tr("Done"), tr("Done"))->setFocus();
    m_problem->setObjectName(QStringLiteral("historyProblem"));
    m_problem->setWrapping(TextLabel::Wrapping::Wrapped);
    // Before the buttons below it, so that Tab comes to it first.
    body()->addWidget(m_content, 1);
    footer()->addWidget(m_copy);
    footer()->addWidget(m_export);
    footer()->addWidget(m_problem, 1);

    connect(m_copy, &Button::clicked, this, &RankingHistorySheet::copyImage);
    connect(m_export, &Button::clicked, this, &RankingHistorySheet::exportCsv);
    connect(m_content, &RankingHistoryContent::stateChanged, this, [this] {
        m_copy->setEnabled(m_content->hasChart());
        m_export->setEnabled(!historyTable({}, {}, m_content->data()).mid(1).isEmpty());
    });
    connect(&m_store, &ASOStore::keywordChanged, this, [this](QUuid id) {
        if (id == m_keyword.id)
            loadTimeline();
    });
    connect(&m_timeline, &LoaderSignals::changed, this, &RankingHistorySheet::showTimeline);
    loadTimeline();
}

void RankingHistorySheet::loadTimeline()
{
    m_timeline.refresh([this](std::stop_token stop) {
        return m_store.rankingTimeline(m_keyword.id, std::move(stop));
    });
}

void RankingHistorySheet::showTimeline()
{
    const auto &timeline = m_timeline.state();
    if (timeline.isUnderWay())
        return;
    RankingHistoryContent::State state;
    state.now = m_store.clock().now();
    const QString error = timeline.error();
    if (error.isEmpty() && timeline.value()) {
        state.timeline = *timeline.value();
    } else {
        // What the state file has can be shown all the same.
        state.timeline = m_store.recentTimeline(m_keyword.id);
        (state.timeline.observations.empty() ? state.error : state.missing) = error;
    }
    m_content->setState(state);
}

void RankingHistorySheet::copyImage()
{
    const QString heading =
        inSentence(m_keyword.keyword) + QStringLiteral(" · ") + storefrontName(m_keyword.country);
    QGuiApplication::clipboard()->setImage(m_content->picture(heading));
    m_copy->confirm();
}

void RankingHistorySheet::exportCsv()
{
    const FileExchange::Request request{tr("Export Ranking History"),
                                        suggestedFileName(m_keyword.keyword, tr("ranking history")),
                                        tr("CSV files (*.csv)")};
    const QByteArray table =
        toCsvFile(historyTable(m_keyword.keyword, m_keyword.country, m_content->data()));
    m_files.save(window(), request, table,
                 [self = QPointer(this)](const QString &, const std::optional<QString> &error) {
                     if (!self)
                         return;
                     self->m_problem->setText(error.value_or(QString()));
                     self->m_problem->setAccessibleName(error.value_or(QString()));
                     announceNameChange(self->m_problem);
                     if (!error)
                         self->m_export->confirm();
                 });
}

} // namespace veltrix
