// SPDX-License-Identifier: GPL-3.0-or-later
// The sheets that open over the window.
#include "ui/shell/main_window.h"

#include "ui/analysis/keyword_analysis_sheet.h"
#include "ui/app_search/app_search_sheet.h"
#include "ui/competitors/above_you_sheet.h"
#include "ui/competitors/competitors_view.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/dashboard/keyword_filter.h"
#include "ui/history/ranking_history_sheet.h"
#include "ui/measuring/measuring_status.h"
#include "ui/overview/overview_page.h"
#include "ui/ranked_apps/ranking_apps_sheet.h"
#include "ui/settings/settings_sheet.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/widgets/overlay.h"

namespace veltrix
{

void MainWindow::connectSheets()
{
    connect(m_dashboard, &DashboardPage::analysisRequested, this,
            [this](const DashboardKeywordRow &keyword) {
                openSheet(this,
                          new KeywordAnalysisSheet(m_with.store, keyword, m_with.suggestions));
            });
    const auto openHistory = [this](const DashboardKeywordRow &keyword) {
        openSheet(this, new RankingHistorySheet(m_with.store, m_with.files, keyword));
    };
    connect(m_dashboard, &DashboardPage::historyRequested, this, openHistory);
    connect(m_overview, &OverviewPage::historyRequested, this, openHistory);
    connect(m_competitors, &CompetitorsView::historyRequested, this,
            [this](const DashboardKeywordRow &keyword, const QUuid &competitorId) {
                openSheet(this, new RankingHistorySheet(m_with.store, m_with.files, keyword,
                                                        competitorId));
            });
    connect(m_dashboard, &DashboardPage::aboveYouRequested, this,
            [this](const DashboardKeywordRow &keyword) {
                const ResearchContext research{m_with.store, *m_images, m_with.openUrl,
                                               m_with.appStoreUrl};
                openSheet(this, new AboveYouSheet(research, keyword));
            });
    connect(m_dashboard, &DashboardPage::rankedAppsRequested, this,
            [this](const DashboardKeywordRow &keyword) {
                const ResearchContext research{m_with.store, *m_images, m_with.openUrl,
                                               m_with.appStoreUrl};
                openSheet(this, new RankingAppsSheet(research, keyword, selectedApp()));
            });
}

void MainWindow::openAppSearch()
{
    auto *sheet = new AppSearchSheet(m_with.store, *m_images, searchStorefront());
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, this, sheet);
    connect(sheet, &AppSearchSheet::closeRequested, overlay, &Overlay::dismiss);
    connect(sheet, &AppSearchSheet::storefrontChanged, &m_dashboard->filter(),
            &KeywordFilter::setSearchStorefront);
    connect(sheet, &AppSearchSheet::appTracked, this, [this](const AppProfile &app) {
        selectApp(app.id);
        m_measuring->say(tr("Added %1").arg(inSentence(app.appName)));
    });
}

void MainWindow::openSettings()
{
    auto *sheet = new SettingsSheet(m_with.preferences, m_with.information, *m_daily,
                                    m_with.updater, {m_with.openUrl, m_with.showDataFolder});
    connect(sheet, &SettingsSheet::themeChanged, this, m_with.applyTheme);
    connect(sheet, &SettingsSheet::preferredStorefrontChanged, &m_dashboard->filter(),
            &KeywordFilter::setSearchStorefront);
    openSheet(this, sheet);
}

void MainWindow::askToDeleteApp(QUuid id)
{
    const auto app = m_with.store.app(id);
    if (!app)
        return;
    const ConfirmSheet::Question question{
        tr("Delete App?"),
        tr("This will delete %1 and all of its saved keywords and ranking snapshots.\n"
           "This action cannot be undone.")
            .arg(inSentence(app->appName)),
        tr("Delete App")};
    ConfirmSheet::ask(this, question, [this, id] { m_with.store.removeApp(id); });
}

void MainWindow::askToQuitWithoutSaving()
{
    if (isMinimized())
        showNormal();
    Overlay *sheet = ConfirmSheet::ask(
        this, m_closing.question(),
        [this] {
            m_closing.giveUpChange();
            close();
        },
        // Closing saves first, and asks again when that fails.
        [this] { close(); });
    connect(sheet, &Overlay::dismissed, this, [this] { m_closing.questionClosed(); });
}

} // namespace veltrix
