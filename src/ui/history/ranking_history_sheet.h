// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet with a keyword's ranking history.
#pragma once

#include "store/aso_store.h"
#include "ui/history/compared_history.h"
#include "ui_kit/loading/loader.h"
#include "ui_kit/widgets/sheet_frame.h"

namespace veltrix
{

class Button;
class ElidedLabel;
class FeedbackButton;
class FileExchange;
class HistoryNotes;
class RankingHistoryContent;
class TextLabel;

/// Reads the store and follows it: a check, a competitor, a note or a noticed change that arrives
/// while the sheet is open is charted at once.
class RankingHistorySheet final : public SheetFrame
{
    Q_OBJECT

public:
    /// With a TrackedCompetitor's id its line is on when the sheet opens, beside the own one.
    RankingHistorySheet(ASOStore &store, FileExchange &files, const DashboardKeywordRow &keyword,
                        std::optional<QUuid> competitorId = std::nullopt,
                        QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    using Listings = QHash<QUuid, ListingHistory>;

    void build();
    void followStore();
    void loadTimeline();
    void loadStandings();
    void loadListings();
    Task<Listings> readListings(QList<QUuid> ids, std::stop_token callersStop);
    void showTimeline();
    [[nodiscard]] Comparison comparison() const;
    [[nodiscard]] QList<TrackedCompetitor> competitors() const;
    /// The user's app and its competitors.
    [[nodiscard]] QList<QUuid> shownOwners() const;
    void openNote(const AppNote &note, QWidget *anchor);
    void showOffer();
    void tell(const QString &problem);
    void copyImage();
    void exportCsv();

    ASOStore &m_store;
    FileExchange &m_files;
    DashboardKeywordRow m_keyword;
    /// The user's app.
    QUuid m_appId;
    RankingHistoryContent *m_content;
    FeedbackButton *m_copy;
    FeedbackButton *m_export;
    TextLabel *m_problem;
    ElidedLabel *m_offer;
    Button *m_undo;
    HistoryNotes *m_notes;
    Loader<RankingTimeline> m_timeline;
    Loader<std::vector<KeywordStandings>> m_standings;
    Loader<Listings> m_listings;
    TaskScope m_tasks;
};

} // namespace veltrix
