// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet with a keyword's ranking history.
#pragma once

#include "store/aso_store.h"
#include "ui_kit/loading/loader.h"
#include "ui_kit/widgets/sheet_frame.h"

namespace veltrix
{

class FeedbackButton;
class FileExchange;
class RankingHistoryContent;
class TextLabel;

/// Reads the store and follows the keyword: a check that arrives while the sheet is open is charted
/// at once.
class RankingHistorySheet final : public SheetFrame
{
    Q_OBJECT

public:
    /// With a TrackedCompetitor's id its line is on when the sheet opens, beside the own one.
    RankingHistorySheet(ASOStore &store, FileExchange &files, const DashboardKeywordRow &keyword,
                        std::optional<QUuid> competitorId = std::nullopt,
                        QWidget *parent = nullptr);

private:
    void loadTimeline();
    void showTimeline();
    void copyImage();
    void exportCsv();

    ASOStore &m_store;
    FileExchange &m_files;
    DashboardKeywordRow m_keyword;
    std::optional<QUuid> m_competitorId;
    RankingHistoryContent *m_content;
    FeedbackButton *m_copy;
    FeedbackButton *m_export;
    TextLabel *m_problem;
    Loader<RankingTimeline> m_timeline;
};

} // namespace veltrix
