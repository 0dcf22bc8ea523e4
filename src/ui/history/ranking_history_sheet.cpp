// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/ranking_history_sheet.h"

#include "ui/history/history_export.h"
#include "ui/history/history_notes.h"
#include "ui/history/note_popover.h"
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
#include <QKeyEvent>
#include <QPointer>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{840, 760};

}

RankingHistorySheet::RankingHistorySheet(ASOStore &store, FileExchange &files,
                                         const DashboardKeywordRow &keyword,
                                         std::optional<QUuid> competitorId, QWidget *parent)
    : SheetFrame(QStringLiteral("historySheet"), tr("Ranking history"), Body::Scrolled,
                 preferredSize, parent),
      m_store(store), m_files(files), m_keyword(keyword), m_content(new RankingHistoryContent),
      m_copy(new FeedbackButton(QStringLiteral("historyCopyImage"), Button::Kind::Standard,
                                QStringLiteral("doc.on.doc"), tr("Copy as image"), tr("Copied"))),
      m_export(new FeedbackButton(QStringLiteral("historyExport"), Button::Kind::Standard,
                                  QStringLiteral("square.and.arrow.down"), tr("Export CSV"),
                                  tr("Exported"))),
      m_problem(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Red)),
      m_offer(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_undo(new Button(Button::Kind::Link, tr("Undo")))
{
    if (const auto tracked = m_store.trackedKeyword(m_keyword.id))
        m_appId = tracked->appId;
    m_notes = new HistoryNotes(m_store, m_appId, this);
    for (const TrackedCompetitor &competitor : competitors()) {
        if (competitor.id == competitorId)
            m_content->choose(competitor.trackId);
    }
    build();
    connect(m_copy, &Button::clicked, this, &RankingHistorySheet::copyImage);
    connect(m_export, &Button::clicked, this, &RankingHistorySheet::exportCsv);
    connect(m_content, &RankingHistoryContent::stateChanged, this, [this] {
        m_copy->setEnabled(m_content->hasChart());
        m_export->setEnabled(!historyTable({}, {}, m_content->compared()).mid(1).isEmpty());
    });
    connect(m_content, &RankingHistoryContent::noteRequested, this,
            [this](std::int64_t day, QWidget *anchor) { openNote(m_notes->newNote(day), anchor); });
    connect(m_content, &RankingHistoryContent::notePressed, this,
            [this](QUuid id, QWidget *anchor) {
                if (const auto note = m_notes->note(id))
                    openNote(*note, anchor);
            });
    connect(m_notes, &HistoryNotes::offerChanged, this, &RankingHistorySheet::showOffer);
    connect(m_notes, &HistoryNotes::failed, this, &RankingHistorySheet::tell);
    connect(m_undo, &Button::clicked, m_notes, &HistoryNotes::undo);
    followStore();
    loadTimeline();
    loadStandings();
    loadListings();
}

void RankingHistorySheet::build()
{
    setSubtitle(inSentence(m_keyword.keyword) + QStringLiteral(" · ") +
                storefrontName(m_keyword.country));
    addCloseButton(QStringLiteral("historyDone"), QString(), tr("Done"), tr("Done"))->setFocus();
    m_problem->setObjectName(QStringLiteral("historyProblem"));
    m_problem->setWrapping(TextLabel::Wrapping::Wrapped);
    m_offer->setObjectName(QStringLiteral("historyOffer"));
    // "Undo" follows its text, which gives way when there is little room.
    m_offer->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    nameControl(m_undo, QStringLiteral("historyUndo"), tr("Undo"));
    m_undo->setToolTip(tr("Undo (Ctrl+Z)"));
    // Before the buttons below it, so that Tab comes to it first.
    body()->addWidget(m_content, 1);
    footer()->addWidget(m_copy);
    footer()->addWidget(m_export);
    footer()->addWidget(m_offer);
    footer()->addWidget(m_undo);
    footer()->addWidget(m_problem, 1);
    showOffer();
}

void RankingHistorySheet::followStore()
{
    connect(&m_store, &ASOStore::keywordChanged, this, [this](QUuid id) {
        if (id == m_keyword.id)
            loadTimeline();
    });
    connect(&m_store, &ASOStore::standingsKept, this, [this](const QList<QUuid> &ids) {
        if (ids.contains(m_keyword.id))
            loadStandings();
    });
    connect(&m_store, &ASOStore::listingsChanged, this, [this](const QList<QUuid> &ids) {
        const QList<QUuid> shown = shownOwners();
        if (std::ranges::any_of(ids, [&](const QUuid &id) { return shown.contains(id); }))
            loadListings();
    });
    connect(&m_store, &ASOStore::competitorsChanged, this, [this] {
        showTimeline();
        // One that is back has its ranks and changes back.
        loadStandings();
        loadListings();
    });
    connect(&m_store, &ASOStore::appsChanged, this, &RankingHistorySheet::showTimeline);
    connect(m_notes, &HistoryNotes::changed, this, &RankingHistorySheet::showTimeline);
    connect(&m_timeline, &LoaderSignals::changed, this, &RankingHistorySheet::showTimeline);
    connect(&m_standings, &LoaderSignals::changed, this, &RankingHistorySheet::showTimeline);
    connect(&m_listings, &LoaderSignals::changed, this, &RankingHistorySheet::showTimeline);
}

QList<TrackedCompetitor> RankingHistorySheet::competitors() const
{
    return m_store.competitorsOfApp(m_appId);
}

void RankingHistorySheet::loadTimeline()
{
    m_timeline.refresh([this](std::stop_token stop) {
        return m_store.rankingTimeline(m_keyword.id, std::move(stop));
    });
}

void RankingHistorySheet::loadStandings()
{
    m_standings.refresh(
        [this](std::stop_token stop) { return m_store.standings(m_keyword.id, std::move(stop)); });
}

void RankingHistorySheet::loadListings()
{
    m_listings.refresh(
        [this](std::stop_token stop) { return readListings(shownOwners(), std::move(stop)); });
}

QList<QUuid> RankingHistorySheet::shownOwners() const
{
    QList<QUuid> ids{m_appId};
    for (const TrackedCompetitor &competitor : competitors())
        ids.append(competitor.id);
    return ids;
}

Task<RankingHistorySheet::Listings> RankingHistorySheet::readListings(QList<QUuid> ids,
                                                                      std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    Listings listings;
    for (const QUuid &id : ids) {
        ListingHistory listing = co_await m_store.listingHistory(id, stop);
        listings.insert(id, std::move(listing));
    }
    co_return listings;
}

Comparison RankingHistorySheet::comparison() const
{
    Comparison compared;
    if (const auto app = m_store.app(m_appId))
        compared.appName = app->appName;
    compared.storefront = m_keyword.country;
    compared.competitors = competitors();
    compared.notes = m_notes->all();
    if (const auto *standings = m_standings.state().value())
        compared.standings = *standings;
    if (const auto *listings = m_listings.state().value()) {
        compared.rivalListings = *listings;
        compared.listing = listings->value(m_appId);
    }
    const QString standingsError = m_standings.state().error();
    const QString error = standingsError.isEmpty() ? m_listings.state().error() : standingsError;
    // Of a history that cannot be read is told once.
    if (!error.isEmpty() && m_timeline.state().error().isEmpty())
        compared.problem = tr("Ranks and changes of competitors couldn’t be read. %1").arg(error);
    return compared;
}

void RankingHistorySheet::showTimeline()
{
    const auto &timeline = m_timeline.state();
    // What is read together is shown together.
    if (timeline.isUnderWay() || m_standings.state().isUnderWay() ||
        m_listings.state().isUnderWay())
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
    state.comparison = comparison();
    m_content->setState(state);
}

void RankingHistorySheet::openNote(const AppNote &note, QWidget *anchor)
{
    const QString appName = m_store.app(m_appId).value_or(AppProfile()).appName;
    NotePopover::open(anchor,
                      {note, dayText(startOfUtcDay(note.day), DayFormat::DayAndYear), appName,
                       [notes = m_notes](const AppNote &written) { notes->save(written); },
                       [notes = m_notes](QUuid id) {
                           notes->remove(id);
                       }});
}

void RankingHistorySheet::showOffer()
{
    const QString &offer = m_notes->offer();
    m_offer->setVisible(!offer.isEmpty());
    m_undo->setVisible(!offer.isEmpty());
    if (offer.isEmpty())
        return;
    tell(QString());
    m_offer->setText(offer + QStringLiteral(" ·"));
    m_offer->setAccessibleName(offer);
    m_undo->setAccessibleDescription(offer);
    announceNameChange(m_offer);
}

void RankingHistorySheet::tell(const QString &problem)
{
    m_problem->setText(problem);
    m_problem->setAccessibleName(problem);
    announceNameChange(m_problem);
}

bool RankingHistorySheet::event(QEvent *event)
{
    // Before the window behind the sheet takes the key for itself.
    if (event->type() == QEvent::ShortcutOverride && m_notes->canUndo() &&
        static_cast<QKeyEvent *>(event)->matches(QKeySequence::Undo)) {
        event->accept();
        return true;
    }
    return SheetFrame::event(event);
}

void RankingHistorySheet::keyPressEvent(QKeyEvent *event)
{
    if (m_notes->canUndo() && event->matches(QKeySequence::Undo))
        m_notes->undo();
    else
        SheetFrame::keyPressEvent(event);
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
        toCsvFile(historyTable(m_keyword.keyword, m_keyword.country, m_content->compared()));
    m_files.save(window(), request, table,
                 [self = QPointer(this)](const QString &, const std::optional<QString> &error) {
                     if (!self)
                         return;
                     self->tell(error.value_or(QString()));
                     if (!error)
                         self->m_export->confirm();
                 });
}

} // namespace veltrix
