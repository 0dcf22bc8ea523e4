// SPDX-License-Identifier: GPL-3.0-or-later
// The Competitors workspace: the search for any app, the tracked competitors, the research page.
#pragma once

#include "ui/competitors/competitor_research_detail.h"
#include "ui/competitors/competitor_search.h"

#include <QHash>
#include <QPointer>
#include <QWidget>

class QScrollArea;
class QStackedWidget;
class QVBoxLayout;

namespace veltrix
{

class Button;
class CardGrid;
class EmptyState;
class FailureCard;
class PageToolbar;
class StorefrontPicker;
class TextField;
class TextLabel;
class TrackedCompetitorCard;

class CompetitorsView final : public QWidget
{
    Q_OBJECT

public:
    explicit CompetitorsView(const ResearchContext &context, QWidget *parent = nullptr);
    ~CompetitorsView() override;

    /// The user's app whose competitors are shown.
    void setApp(const std::optional<QUuid> &appId);
    /// The storefront of searches and research.
    void setCountry(const QString &country);
    [[nodiscard]] const QString &country() const { return m_country; }

    /// The shell adds its own controls at the end.
    [[nodiscard]] PageToolbar &toolbar() { return *m_toolbar; }
    void focusSearch();
    /// The search field, or the way back from a research page.
    void focusContent();

    /// Opens the research page of an app in that storefront.
    void openResearch(std::int64_t trackId, const QString &country, const QString &name);
    void closeResearch();
    /// The research page, or null.
    [[nodiscard]] CompetitorResearchDetail *research() const { return m_research; }
    [[nodiscard]] CompetitorSearch &search() { return *m_search; }

Q_SIGNALS:
    /// The user chose another storefront here.
    void countryPicked(const QString &country);

private:
    void buildToolbar();
    void buildOverview();
    void connectSearch();
    void submit();
    void showSearch();
    void showResults(const CompetitorSearch::State &state);
    void showCompetitors();
    void pickCountry(const QString &country);
    void updateToolbar();
    void giveFocusBack();

    ResearchContext m_context;
    std::optional<QUuid> m_appId;
    QString m_country = QStringLiteral("US");
    CompetitorSearch *m_search;
    PageToolbar *m_toolbar;
    Button *m_back;
    StorefrontPicker *m_picker;
    QStackedWidget *m_pages;
    QScrollArea *m_overview;
    TextField *m_field;
    QWidget *m_results;
    TextLabel *m_resultsTitle;
    Button *m_showAll;
    EmptyState *m_searchMessage;
    FailureCard *m_searchFailure;
    QVBoxLayout *m_rows;
    QList<ITunesAppResult> m_shownResults;
    TextLabel *m_competitorsTitle;
    CardGrid *m_grid;
    EmptyState *m_empty;
    QHash<QUuid, TrackedCompetitorCard *> m_cards;
    CompetitorResearchDetail *m_research = nullptr;
    /// What had the focus when the research page was opened.
    QPointer<QWidget> m_openedFrom;
};

} // namespace veltrix
