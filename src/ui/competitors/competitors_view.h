// SPDX-License-Identifier: GPL-3.0-or-later
// The Competitors workspace: the search for any app, the tracked competitors, the research page.
#pragma once

#include "ui/competitors/competitor_research_detail.h"
#include "ui/competitors/competitor_search.h"
#include "ui/competitors/open_research.h"

#include <QHash>
#include <QPointer>

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

/// Search and competitors on one page, the research of an app on another over it.
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
    /// The research page, or null.
    [[nodiscard]] CompetitorResearchDetail *research() const { return m_research; }

Q_SIGNALS:
    /// The user chose another storefront here.
    void countryPicked(const QString &country);

private:
    void buildToolbar();
    [[nodiscard]] QWidget *makeOverview();
    void showCompetitors();
    [[nodiscard]] TrackedCompetitorCard *cardOf(const TrackedCompetitor &competitor);
    void showPage();
    void updateToolbar();

    ResearchContext m_context;
    OpenResearch m_open;
    CompetitorSearch m_search;
    PageToolbar *m_toolbar;
    Button *m_back;
    StorefrontPicker *m_picker;
    QStackedWidget *m_pages;
    CompetitorSearchPanel *m_searchPanel;
    TextLabel *m_competitorsTitle;
    CardGrid *m_grid;
    EmptyState *m_empty;
    QHash<QUuid, TrackedCompetitorCard *> m_cards;
    /// "5 tracked"
    QString m_count;
    CompetitorResearchDetail *m_research = nullptr;
    /// What had the focus when the research page was opened.
    QPointer<QWidget> m_openedFrom;
};

} // namespace veltrix
