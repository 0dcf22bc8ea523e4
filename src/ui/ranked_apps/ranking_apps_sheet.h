// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet with the apps that rank for a keyword.
#pragma once

#include "ui/listing/ranked_app_research_row.h"
#include "ui/ranked_apps/ranked_apps_loading.h"
#include "ui_kit/widgets/sheet_frame.h"

#include <vector>

class QStackedWidget;
class QVBoxLayout;

namespace veltrix
{

class Banner;
class EmptyState;
class TextLabel;

class RankingAppsSheet final : public SheetFrame
{
    Q_OBJECT

public:
    /// Makes the row of a result; `rank` is 1-based.
    using MakeRow = std::function<RankedAppResearchRow *(int rank, const ITunesAppResult &result)>;

    RankingAppsSheet(const DashboardKeywordRow &keyword, RankedAppsLoading::Source source,
                     MakeRow makeRow, QWidget *parent = nullptr);

    /// The sheet over a store: saved results, a refresh behind them, rows that open the app's
    /// details over the sheet. `appId` is the user's selected app.
    static RankingAppsSheet *forKeyword(const ResearchContext &context,
                                        const DashboardKeywordRow &keyword,
                                        const std::optional<QUuid> &appId);

    [[nodiscard]] const RankedAppsState &state() const { return m_loading->state(); }

Q_SIGNALS:
    void detailsRequested(const AppDetailSelection &selection);

private:
    void build();
    void showState();
    void showMessage(const RankedAppsState &state);
    void showRows(const RankedAppsState &state);

    MakeRow m_makeRow;
    RankedAppsLoading *m_loading;
    QStackedWidget *m_stack;
    EmptyState *m_message;
    Banner *m_failure;
    TextLabel *m_savedLine;
    TextLabel *m_count;
    QVBoxLayout *m_rowLayout;
    std::vector<RankedAppResearchRow *> m_rows;
    Button *m_more;
};

} // namespace veltrix
