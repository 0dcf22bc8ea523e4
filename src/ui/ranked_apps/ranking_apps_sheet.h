// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet with the apps that rank for a keyword.
#pragma once

#include "ui/listing/app_details_sheet.h"
#include "ui/ranked_apps/ranked_apps_loading.h"

namespace veltrix
{

class AppRow;
class AppRowList;
class Banner;
class LoadableView;
class TextLabel;

/// A keyword's ranked apps, saved ones at once and fresh ones behind them. A row opens the app's
/// details over the sheet and tracks it as a competitor.
class RankingAppsSheet final : public SheetFrame
{
    Q_OBJECT

public:
    /// `appId` is the user's selected app.
    RankingAppsSheet(const ResearchContext &context, const DashboardKeywordRow &keyword,
                     const std::optional<QUuid> &appId, QWidget *parent = nullptr);

private:
    [[nodiscard]] QWidget *makeList();
    void showState();
    /// The button of a row that has got another app.
    void updateTrackButton(AppRow &row);
    void openDetails(const ITunesAppResult &app);

    ResearchContext m_context;
    QString m_country;
    std::optional<QUuid> m_appId;
    RankedAppsLoading m_loading;
    Banner *m_failure;
    TextLabel *m_savedLine;
    TextLabel *m_count;
    AppRowList *m_rows;
    Button *m_more;
    LoadableView *m_view;
    QWidget *m_list;
};

} // namespace veltrix
