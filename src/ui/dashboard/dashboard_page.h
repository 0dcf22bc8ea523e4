// SPDX-License-Identifier: GPL-3.0-or-later
// The Keywords workspace: toolbar, the table or what stands in its place.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"
#include "ui/dashboard/dashboard_placeholder.h"
#include "ui/dashboard/tag_change.h"

#include <QWidget>

#include <memory>

class QMenu;
class QStackedWidget;

namespace veltrix
{

class AddKeywordsCard;
class ArtworkImages;
class AutocompleteSuggesting;
class Banner;
class DashboardNotices;
class EmptyState;
class FileExchange;
class KeywordActions;
class KeywordControls;
class KeywordFilter;
class KeywordTableModel;
class KeywordTableView;
class MeasuringStatus;
class PageToolbar;
class Preferences;
class QuickFilterBar;
class TagFilterButton;

class DashboardPage final : public QWidget
{
    Q_OBJECT

public:
    DashboardPage(ASOStore &store, ArtworkImages &images, Preferences &preferences,
                  FileExchange &files, MeasuringStatus &measuring,
                  std::shared_ptr<AutocompleteSuggesting> suggestions, QWidget *parent = nullptr);
    ~DashboardPage() override;

    void setApp(std::optional<QUuid> appId);

    /// The shell adds its own controls at the end.
    [[nodiscard]] PageToolbar &toolbar() { return *m_toolbar; }
    [[nodiscard]] KeywordFilter &filter() { return *m_filter; }
    [[nodiscard]] KeywordTableModel &model() { return *m_model; }
    [[nodiscard]] KeywordTableView &table() { return *m_table; }
    [[nodiscard]] KeywordActions &actions() { return *m_actions; }

    /// Shows the keywords that pass the quick filter, whatever was searched or filtered before.
    void showOnly(QuickFilter filter);
    void focusSearch();
    /// The table, or the search field when there is none.
    void focusContent();
    AddKeywordsCard *openAddKeywords();
    void refreshAll();
    void removeSelected();
    /// Opens the tags of the selected keywords.
    void editTags();
    void importKeywords();
    /// The keywords that are shown, in their order.
    void exportTable();
    void exportAllApps();
    void exportHistory();
    /// "Sort by" and the columns to show, for menus.
    void fillSortMenu(QMenu *menu);
    void fillColumnMenu(QMenu *menu);

Q_SIGNALS:
    void addAppRequested();
    void analysisRequested(const DashboardKeywordRow &row);
    void rankedAppsRequested(const DashboardKeywordRow &row);
    void historyRequested(const DashboardKeywordRow &row);
    void aboveYouRequested(const DashboardKeywordRow &row);
    void keywordCountChanged(int count);
    /// The user has changed tags, and has done with it.
    void tagsEdited(const TagChange &change);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void layOut();
    void connectControls();
    void connectQuickFilters(QuickFilter saved);
    void connectTable();
    void connectNotices();
    void connectTags();
    void updateTags();
    Task<void> tellWhenTagsAreRead(std::stop_token stop);
    void askToRemove(const QList<QUuid> &ids);
    void showRowMenu(const QPoint &globalPosition);
    void updateContent();
    void goOn();
    void updateCount();
    void measuringEnded();
    void columnsChanged();
    void saveColumns();
    Task<void> saveColumnsSoon(std::stop_token stop);
    [[nodiscard]] std::optional<AppProfile> app() const;
    [[nodiscard]] std::optional<DashboardPlaceholder> placeholder() const;
    Task<void> keepTimesCurrent(std::stop_token stop);

    ASOStore &m_store;
    ArtworkImages &m_images;
    Preferences &m_preferences;
    MeasuringStatus &m_measuring;
    std::optional<QUuid> m_appId;
    bool m_areTagsRead = false;
    KeywordFilter *m_filter;
    DashboardNotices *m_notices;
    KeywordTableModel *m_model;
    KeywordActions *m_actions;
    PageToolbar *m_toolbar;
    KeywordControls *m_controls;
    QuickFilterBar *m_quickFilters;
    TagFilterButton *m_tagFilter;
    KeywordTableView *m_table;
    Banner *m_importBanner;
    Banner *m_orphansBanner;
    QStackedWidget *m_stack;
    EmptyState *m_empty;
    /// The columns have changed and are not saved yet.
    bool m_hasChangedColumns = false;
    TaskScope m_tasks;
};

} // namespace veltrix
