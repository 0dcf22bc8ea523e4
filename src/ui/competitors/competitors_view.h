// SPDX-License-Identifier: GPL-3.0-or-later
// The Competitors workspace: the search for any app, the tracked competitors, the research page.
#pragma once

#include "ui/competitors/competitor_research_detail.h"
#include "ui/competitors/competitor_search.h"
#include "ui/competitors/open_research.h"

#include <QHash>
#include <QPointer>

class QShortcut;
class QStackedWidget;

namespace veltrix
{

class Button;
class CardGrid;
class CompetitorSearchPanel;
class EmptyState;
class PageToolbar;
class StorefrontPicker;
class TextLabel;
class TrackedCompetitorCard;

/// Search and competitors on one page, the research of apps on others over it. Escape and Alt+Left
/// lead back by one.
class CompetitorsView final : public QWidget
{
    Q_OBJECT

public:
    explicit CompetitorsView(const ResearchContext &context, QWidget *parent = nullptr);

    /// The user's app whose competitors are shown.
    void setApp(const std::optional<QUuid> &appId) { m_open.setApp(appId); }
    /// The storefront of searches and research.
    void setCountry(const QString &country) { m_open.setCountry(country); }
    [[nodiscard]] const QString &country() const { return m_open.country(); }

    /// The shell adds its own controls at the end.
    [[nodiscard]] PageToolbar &toolbar() { return *m_toolbar; }
    void focusSearch();
    /// The search field, or the way back from a research page.
    void focusContent();

    /// Opens the research page of an app in that storefront.
    void openResearch(std::int64_t trackId, const QString &country, const QString &name);
    /// The research page on top, or null.
    [[nodiscard]] CompetitorResearchDetail *research() const;

Q_SIGNALS:
    /// The ranking history of a keyword is wanted, with the line of that competitor.
    void historyRequested(const DashboardKeywordRow &keyword, QUuid competitorId);
    /// The user chose another storefront here.
    void countryPicked(const QString &country);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// A research page that is open, and what had the focus in it when another came on top.
    struct OpenPage {
        CompetitorResearchDetail *page = nullptr;
        QPointer<QWidget> focus;
    };

    void buildToolbar();
    [[nodiscard]] QWidget *makeOverview();
    void showCompetitors();
    [[nodiscard]] TrackedCompetitorCard *cardOf(const TrackedCompetitor &competitor);
    void showApp();
    void showPage();
    void rememberFocus();
    void closePagesGone();
    [[nodiscard]] CompetitorResearchDetail *makePage(const OpenResearch::Page &opened);
    void updateToolbar();

    ResearchContext m_context;
    OpenResearch m_open;
    CompetitorSearch m_search;
    PageToolbar *m_toolbar;
    Button *m_back;
    /// To the page that the one on top was opened from.
    Button *m_backBelow;
    QShortcut *m_backKey;
    StorefrontPicker *m_picker;
    QStackedWidget *m_pages;
    CompetitorSearchPanel *m_searchPanel;
    TextLabel *m_competitorsTitle;
    Button *m_ideas;
    CardGrid *m_grid;
    EmptyState *m_empty;
    QHash<QUuid, TrackedCompetitorCard *> m_cards;
    /// "5 tracked"
    QString m_count;
    /// By the ids of their pages.
    QHash<int, OpenPage> m_openPages;
    /// The page that is shown; 0 for none.
    int m_shownId = 0;
    /// What had the focus when the first research page was opened.
    QPointer<QWidget> m_openedFrom;
};

} // namespace veltrix
