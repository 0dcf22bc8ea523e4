// SPDX-License-Identifier: GPL-3.0-or-later
// The research page of one app: figures, screenshots, similar apps, keyword coverage.
#pragma once

#include "ui/competitors/app_research.h"
#include "ui/listing/research_context.h"

#include <QWidget>

class QBoxLayout;

namespace veltrix
{

class AppHeader;
class ComparisonPanel;
class FigureTile;
class KeywordCoveragePanel;
class LoadableView;
class SimilarAppsPanel;
class TrackCompetitorButton;
struct Figure;

/// Shows an AppResearch of its own. Closing the page, which deletes it, stops the research.
class CompetitorResearchDetail final : public QWidget
{
    Q_OBJECT

public:
    CompetitorResearchDetail(const ResearchContext &context, const ResearchSelection &selection,
                             const std::optional<QUuid> &appId, QWidget *parent = nullptr);

    void start() { m_research.start(); }
    /// Nothing new is searched for a page that is not looked at.
    void pause() { m_research.pause(); }
    void unpause() { m_research.unpause(); }
    /// Another app of the user's.
    void setApp(const std::optional<QUuid> &appId);
    [[nodiscard]] const ResearchSelection &selection() const { return m_research.selection(); }

Q_SIGNALS:
    void backRequested();
    /// The app is loaded and called that.
    void named(const QString &name);
    /// The ranking history of a keyword is wanted, with the line of that competitor.
    void historyRequested(const DashboardKeywordRow &keyword, QUuid competitorId);
    /// Another app is to be researched.
    void opened(std::int64_t trackId, const QString &name);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void showState();
    [[nodiscard]] QWidget *makePage(const ITunesAppResult &app);
    [[nodiscard]] QWidget *makeHeader(const ITunesAppResult &app);
    [[nodiscard]] QWidget *makeComparison(const ITunesAppResult &app);
    [[nodiscard]] QWidget *makeFigures(const ITunesAppResult &app);
    [[nodiscard]] QWidget *makeListing(const ITunesAppResult &app);
    [[nodiscard]] Figure coverageFigure();
    void showOwnApp();
    void arrangeColumns();

    ResearchContext m_context;
    AppResearch m_research;
    LoadableView *m_view;
    QBoxLayout *m_columns = nullptr;
    AppHeader *m_header = nullptr;
    TrackCompetitorButton *m_track = nullptr;
    ComparisonPanel *m_comparison = nullptr;
    SimilarAppsPanel *m_similar = nullptr;
    KeywordCoveragePanel *m_keywords = nullptr;
    FigureTile *m_coverageFigure = nullptr;
};

} // namespace veltrix
