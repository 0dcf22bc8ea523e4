// SPDX-License-Identifier: GPL-3.0-or-later
// The Overview workspace: how each app stands, and what has moved.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"
#include "ui/dashboard/quick_filter.h"
#include "ui/overview/app_standing.h"
#include "ui_kit/text/relative_time.h"
#include "ui_kit/widgets/empty_state.h"

#include <QHash>
#include <QWidget>

class QScrollArea;
class QStackedWidget;

namespace veltrix
{

class ArtworkImages;
class Button;
class CardGrid;
class MeasuringStatus;
class MoversModel;
class MoversTable;
class OverviewCard;
class PageToolbar;
class RankOverview;
class SegmentedControl;
class TextField;
class TextLabel;

/// Cards of apps over the movers of all of them. Nothing of it is worked out while it is hidden.
class OverviewPage final : public QWidget
{
    Q_OBJECT

public:
    OverviewPage(ASOStore &store, ArtworkImages &images, MeasuringStatus &measuring,
                 QWidget *parent = nullptr);
    ~OverviewPage() override;

    /// The shell adds its own controls at the end.
    [[nodiscard]] PageToolbar &toolbar() { return *m_toolbar; }
    [[nodiscard]] MoversModel &movers() { return *m_movers; }
    [[nodiscard]] MoversTable &table() { return *m_table; }
    void focusSearch();
    /// The first card, or the search field when there is none.
    void focusContent();

Q_SIGNALS:
    void addAppRequested();
    void refreshRequested();
    /// A card was pressed, or its risen or fallen.
    void keywordsRequested(QUuid appId, veltrix::QuickFilter filter);
    void historyRequested(const DashboardKeywordRow &row);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layOut();
    void addControls();
    void connectSearch();
    void follow();
    void search();
    void clearSearch();
    SegmentedControl *makePeriodControl(const QString &objectName);
    void choosePeriod(int index);
    /// The toolbar has no room for the periods in a narrow window: they go below it.
    void placePeriods();
    void showCards();
    void showStanding(const QUuid &appId);
    void fillCard(OverviewCard &card, const AppStanding &standing) const;
    OverviewCard *cardOf(const QUuid &appId);
    void showMovers();
    void showCounts();
    void showContent();
    void goOn();
    [[nodiscard]] std::optional<EmptyState::Content> placeholder() const;
    void openHistory(QUuid keywordId);
    Task<void> keepTimesCurrent(std::stop_token stop);

    ASOStore &m_store;
    ArtworkImages &m_images;
    MeasuringStatus &m_measuring;
    RelativeTime m_times;
    RankOverview *m_overview;
    MoversModel *m_movers;
    PageToolbar *m_toolbar;
    TextField *m_search;
    /// One in the toolbar, one below it; one of them shows.
    std::array<SegmentedControl *, 2> m_periodControls;
    Button *m_refresh;
    QStackedWidget *m_stack;
    QScrollArea *m_scroll = nullptr;
    CardGrid *m_grid;
    Button *m_showAll;
    TextLabel *m_moversTitle;
    TextLabel *m_moversCount;
    MoversTable *m_table;
    TextLabel *m_nothingMoved;
    EmptyState *m_empty;
    Period m_period = Period::Yesterday;
    /// As foldedForSearch() makes it.
    QString m_folded;
    /// Apps that the search leaves.
    QList<QUuid> m_found;
    QHash<QUuid, OverviewCard *> m_cards;
    bool m_showsAll = false;
    TaskScope m_tasks;
};

} // namespace veltrix
