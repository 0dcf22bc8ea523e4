// SPDX-License-Identifier: GPL-3.0-or-later
// The Keywords workspace: toolbar, the table or what stands in its place.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"
#include "ui/dashboard/keyword_column.h"
#include "ui_kit/widgets/status_bar.h"

#include <QWidget>

class QMenu;
class QStackedWidget;

namespace veltrix
{

class ArtworkImages;
class Banner;
class Button;
class EmptyState;
class FileExchange;
class KeywordActions;
class KeywordTableModel;
class KeywordTableView;
class MeasuringStatus;
class PageToolbar;
class Preferences;
class StorefrontPicker;
class TextField;

class DashboardPage final : public QWidget
{
    Q_OBJECT

public:
    DashboardPage(ASOStore &store, ArtworkImages &images, Preferences &preferences,
                  FileExchange &files, MeasuringStatus &measuring, QWidget *parent = nullptr);
    ~DashboardPage() override;

    void setApp(std::optional<QUuid> appId);
    /// The storefront of app searches; new keywords go there while no filter is set.
    void setSearchStorefront(const QString &country);
    /// The storefront filter when it is set, else the storefront of app searches.
    [[nodiscard]] QString storefrontOfNewKeywords() const;
    void showStatus(const QString &message, StatusBar::Tone tone = StatusBar::Tone::Normal,
                    const QString &detail = QString());

    /// The shell adds its own controls at the end.
    [[nodiscard]] PageToolbar &toolbar() { return *m_toolbar; }
    [[nodiscard]] KeywordTableModel &model() { return *m_model; }
    [[nodiscard]] KeywordTableView &table() { return *m_table; }
    [[nodiscard]] KeywordActions &actions() { return *m_actions; }

    void focusSearch();
    /// The table, or the search field when there is none.
    void focusContent();
    void openAddKeywords();
    void refreshAll();
    void removeSelected();
    void importKeywords();
    void exportTable();
    void exportHistory();
    /// "Sort by" and the columns to show, for menus.
    void fillSortMenu(QMenu *menu);
    void fillColumnMenu(QMenu *menu);

Q_SIGNALS:
    void addAppRequested();
    void analysisRequested(const DashboardKeywordRow &row);
    void rankedAppsRequested(const DashboardKeywordRow &row);
    void historyRequested(const DashboardKeywordRow &row);
    void keywordCountChanged(int count);
    void storefrontOfNewKeywordsChanged(const QString &country);

private:
    void buildToolbar();
    void buildContent();
    void connectStore();
    void connectTable();
    void buildNotices();
    void showImported(QUuid appId, const KeywordAdmission &admission);
    void updateImportNotice();
    void findKeywordsWithoutApp();
    void forgetKeywordWithoutApp(QUuid id);
    void showKeywordsWithoutApp();
    void askToRemove(const QList<QUuid> &ids);
    void showRowMenu(const QPoint &globalPosition);
    void updateContent();
    void updateCount();
    void measuringEnded();
    void saveColumns();
    [[nodiscard]] std::optional<AppProfile> app() const;
    Task<void> keepTimesCurrent(std::stop_token stop);

    ASOStore &m_store;
    ArtworkImages &m_images;
    Preferences &m_preferences;
    MeasuringStatus &m_measuring;
    std::optional<QUuid> m_appId;
    QString m_searchStorefront;
    KeywordTableModel *m_model;
    KeywordTableView *m_table;
    KeywordActions *m_actions;
    PageToolbar *m_toolbar;
    TextField *m_search;
    StorefrontPicker *m_filter;
    Button *m_refresh;
    Button *m_add;
    Banner *m_importBanner;
    Banner *m_orphansBanner;
    /// What of the last import was refused, and for which app.
    QUuid m_importedApp;
    KeywordAdmission m_imported;
    /// Keywords whose app is not tracked.
    QList<TrackedKeyword> m_orphans;
    QStackedWidget *m_stack;
    EmptyState *m_empty;
    TaskScope m_tasks;
};

} // namespace veltrix
