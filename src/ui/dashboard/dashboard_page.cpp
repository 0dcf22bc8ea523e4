// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/dashboard_page.h"

#include "ui/dashboard/add_keywords.h"
#include "ui/dashboard/dashboard_notices.h"
#include "ui/dashboard/keyword_actions.h"
#include "ui/dashboard/keyword_controls.h"
#include "ui/dashboard/keyword_filter.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/dashboard/keyword_table_view.h"
#include "ui/dashboard/quick_filter_bar.h"
#include "ui/dashboard/tag_checklist.h"
#include "ui/dashboard/tag_editor.h"
#include "ui/dashboard/tag_filter_button.h"
#include "ui/measuring/measuring_status.h"
#include "ui/preferences/preferences.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/page_toolbar.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

#include <utility>

namespace veltrix
{

namespace
{

/// How often "4 min. ago" is looked at again.
constexpr Seconds timeRefresh{30};
/// How long after the first of several changes the columns are saved: a drag makes many.
constexpr Seconds columnsDelay{0.5};

QString unreadTags()
{
    return DashboardPage::tr("The saved tags have not been read yet.");
}

} // namespace

// The widgets come into being in the order in which Tab goes through them.
DashboardPage::DashboardPage(ASOStore &store, ArtworkImages &images, Preferences &preferences,
                             FileExchange &files, MeasuringStatus &measuring,
                             std::shared_ptr<AutocompleteSuggesting> suggestions, QWidget *parent)
    : QWidget(parent), m_store(store), m_images(images), m_preferences(preferences),
      m_measuring(measuring),
      m_filter(new KeywordFilter(preferences.preferredStorefrontCountry(), this)),
      m_notices(new DashboardNotices(store, this)), m_model(new KeywordTableModel(store, this)),
      m_actions(
          new KeywordActions(store, *m_model, files, measuring, std::move(suggestions), this)),
      m_toolbar(new PageToolbar(tr("Keywords"))),
      m_controls(new KeywordControls(*m_toolbar, *m_filter)), m_quickFilters(new QuickFilterBar),
      m_tagFilter(new TagFilterButton), m_table(new KeywordTableView(*m_model, images, this)),
      m_importBanner(new Banner(QStringLiteral("importBanner"),
                                QStringLiteral("exclamationmark.triangle"), tr("Copy refused"))),
      m_orphansBanner(new Banner(QStringLiteral("orphansBanner"), QStringLiteral("info.circle"),
                                 tr("Remove…"))),
      m_stack(new QStackedWidget), m_empty(new EmptyState(QStringLiteral("keywordsEmpty")))
{
    setObjectName(QStringLiteral("dashboardPage"));
    layOut();
    const auto layout = ColumnLayout::fromText(preferences.keywordTableColumns());
    m_table->setColumnLayout(layout);
    connectControls();
    connectQuickFilters(layout.quickFilter);
    connectTable();
    connectNotices();
    connectTags();
    connect(&m_store, &ASOStore::refreshProgressChanged, this, &DashboardPage::measuringEnded);
    connect(&m_store, &ASOStore::stateRead, this, &DashboardPage::updateContent);
    connect(m_empty, &EmptyState::actionTriggered, this, &DashboardPage::goOn);
    updateContent();
    updateCount();
    m_tasks.own(keepTimesCurrent(m_tasks.token()));
    m_tasks.own(tellWhenTagsAreRead(m_tasks.token()));
}

DashboardPage::~DashboardPage()
{
    if (m_hasChangedColumns)
        saveColumns();
    // Its running tasks use the model, which is older and would go first.
    delete m_actions;
}

void DashboardPage::layOut()
{
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    m_importBanner->setActionSymbol(QStringLiteral("doc.on.doc"));
    m_importBanner->makeDismissible();
    m_orphansBanner->setActionSymbol(QStringLiteral("trash"));
    m_quickFilters->setOtherFilter(m_tagFilter);
    m_stack->addWidget(m_table);
    m_stack->addWidget(m_empty);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolbar);
    layout->addWidget(m_importBanner);
    layout->addWidget(m_orphansBanner);
    layout->addWidget(m_quickFilters);
    layout->addWidget(m_stack, 1);
    // In a low window the table makes room for a banner, which cannot be scrolled.
    m_stack->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
}

void DashboardPage::connectControls()
{
    connect(m_controls, &KeywordControls::refreshRequested, this, &DashboardPage::refreshAll);
    connect(m_controls, &KeywordControls::addRequested, this, &DashboardPage::openAddKeywords);
    connect(&m_measuring, &MeasuringStatus::changed, this,
            [this] { m_controls->setRefreshEnabled(m_measuring.mayRefresh()); });
    connect(m_filter, &KeywordFilter::changed, this, [this] {
        m_model->setSearch(m_filter->search());
        m_model->setStorefront(m_filter->storefront());
        m_model->setTagFilter(m_filter->tags());
        m_model->setQuickFilter(m_filter->quick());
        updateContent();
    });
}

void DashboardPage::connectQuickFilters(QuickFilter saved)
{
    connect(m_quickFilters, &QuickFilterBar::changed, m_filter, &KeywordFilter::setQuick);
    connect(m_filter, &KeywordFilter::changed, this,
            [this] { m_quickFilters->choose(m_filter->quick()); });
    m_filter->setQuick(saved);
    connect(m_quickFilters, &QuickFilterBar::changed, this, &DashboardPage::columnsChanged);
    connect(m_model, &KeywordTableModel::quickFilterCountsChanged, this, [this] {
        m_quickFilters->setCounts(m_model->quickFilterCounts());
        updateContent();
    });
}

void DashboardPage::connectTable()
{
    const auto rowSignal = [this](void (DashboardPage::*signal)(const DashboardKeywordRow &)) {
        return [this, signal](int row) {
            if (row >= 0 && row < m_model->rowCount())
                Q_EMIT(this->*signal)(m_model->entryAt(row).row);
        };
    };
    connect(m_table, &KeywordTableView::opened, this, rowSignal(&DashboardPage::analysisRequested));
    connect(m_table, &KeywordTableView::rankedAppsRequested, this,
            rowSignal(&DashboardPage::rankedAppsRequested));
    connect(m_table, &KeywordTableView::historyRequested, this,
            rowSignal(&DashboardPage::historyRequested));
    connect(m_table, &KeywordTableView::removeRequested, this, &DashboardPage::removeSelected);
    connect(m_table, &KeywordTableView::menuRequested, this, &DashboardPage::showRowMenu);
    connect(m_table, &KeywordTableView::columnLayoutChanged, this, &DashboardPage::columnsChanged);
    connect(m_table, &KeywordTableView::columnMenuRequested, this, [this](const QPoint &position) {
        auto *menu = new QMenu(this);
        menu->setObjectName(QStringLiteral("columnMenu"));
        menu->setAttribute(Qt::WA_DeleteOnClose);
        fillColumnMenu(menu);
        menu->popup(position);
    });
    connect(m_model, &KeywordTableModel::keywordCountChanged, this, [this] {
        updateCount();
        updateContent();
    });
}

void DashboardPage::connectNotices()
{
    const auto show = [this] {
        m_importBanner->setMessage(m_notices->importNotice());
        m_orphansBanner->setMessage(m_notices->orphansNotice());
    };
    connect(m_notices, &DashboardNotices::changed, this, show);
    connect(m_actions, &KeywordActions::imported, m_notices, &DashboardNotices::setImported);
    connect(m_importBanner, &Banner::actionTriggered, this,
            [this] { m_actions->copyRefusals(m_notices->refused()); });
    connect(m_importBanner, &Banner::dismissed, m_notices, &DashboardNotices::dismissImported);
    connect(m_orphansBanner, &Banner::actionTriggered, this,
            [this] { askToRemove(m_notices->orphans()); });
    show();
}

void DashboardPage::connectTags()
{
    m_tagFilter->setSource([this] { return m_appId ? m_store.allTags(*m_appId) : QStringList(); });
    connect(m_tagFilter, &TagFilterButton::picked, m_filter, &KeywordFilter::setTags);
    connect(m_filter, &KeywordFilter::changed, this,
            [this] { m_tagFilter->setChosen(m_filter->tags()); });
    connect(m_table, &KeywordTableView::tagRequested, this,
            [this](const QString &tag) { m_filter->setTags(TagFilter::only(tag)); });
    connect(m_model, &KeywordTableModel::tagsChanged, this, &DashboardPage::updateTags);
    connect(m_model, &KeywordTableModel::keywordCountChanged, this, &DashboardPage::updateTags);
    m_tagFilter->setProblem(unreadTags());
}

void DashboardPage::updateTags()
{
    m_table->setHasTags(m_model->hasTags());
    updateContent();
}

Task<void> DashboardPage::tellWhenTagsAreRead(std::stop_token stop)
{
    co_await m_store.annotationsRead(stop);
    m_areTagsRead = true;
    m_tagFilter->setProblem({});
}

void DashboardPage::editTags()
{
    if (!m_table->isVisible())
        return;
    m_table->selectCurrentIfNone();
    const QList<QUuid> ids = m_table->selectedIds();
    if (ids.isEmpty()) {
        m_measuring.say(tr("Select keywords to tag."));
        return;
    }
    const QModelIndex current = m_table->currentIndex();
    const bool isCurrent = m_table->selectionModel()->isRowSelected(current.row());
    const int row = isCurrent ? current.row() : m_table->selectedRows().front();
    m_table->scrollTo(m_model->index(row, int(KeywordColumn::Keyword)));
    // A popover opens at a widget, under its end; rows are none. It stands under the keyword.
    auto *anchor = new QWidget(m_table->viewport());
    const QRect cell = m_table->visualRect(m_model->index(row, int(KeywordColumn::Keyword)));
    anchor->setGeometry(cell.x(), cell.y(), std::max(cell.width(), TagChecklist::widthFor(font())),
                        cell.height());
    openTagEditor(m_store, anchor, ids, m_areTagsRead ? QString() : unreadTags(),
                  [this](const TagChange &change) { Q_EMIT tagsEdited(change); });
    connect(Overlay::topOf(window()), &QObject::destroyed, anchor, &QObject::deleteLater);
}

std::optional<AppProfile> DashboardPage::app() const
{
    return m_appId ? m_store.app(*m_appId) : std::nullopt;
}

void DashboardPage::setApp(std::optional<QUuid> appId)
{
    m_appId = appId;
    m_model->setApp(appId);
    m_notices->setApp(appId);
    // Another app has other tags.
    TagFilter tags = m_filter->tags();
    tags.keepOnly(m_appId ? m_store.allTags(*m_appId) : QStringList());
    m_filter->setTags(tags);
    updateCount();
    updateTags();
}

void DashboardPage::updateCount()
{
    const int count = m_model->keywordCount();
    m_toolbar->setSubtitle(m_appId ? tr("%L1 tracked").arg(count) : QString());
    Q_EMIT keywordCountChanged(count);
}

std::optional<DashboardPlaceholder> DashboardPage::placeholder() const
{
    const QuickFilterCounts &counts = m_model->quickFilterCounts();
    return dashboardPlaceholder({m_store.isStateRead(), app().has_value(), m_model->keywordCount(),
                                 m_model->rowCount(), m_filter->quick(),
                                 counts[size_t(QuickFilter::All)], m_filter->tags(),
                                 !m_filter->search().isEmpty() || m_filter->storefront()});
}

void DashboardPage::updateContent()
{
    const auto instead = placeholder();
    if (instead)
        m_empty->setContent(instead->content);
    // What is not shown asks for no room: what stands above the table may need it.
    m_empty->setSizePolicy(QSizePolicy::Preferred,
                           instead ? QSizePolicy::Preferred : QSizePolicy::Ignored);
    // Where there is no keyword at all, there is none to choose from.
    m_quickFilters->setVisible(m_model->keywordCount() > 0);
    turnTo(*m_stack, instead ? static_cast<QWidget *>(m_empty) : m_table);
}

void DashboardPage::goOn()
{
    using WayOn = DashboardPlaceholder::WayOn;
    const auto instead = placeholder();
    switch (instead ? instead->wayOn : WayOn::None) {
    case WayOn::None:
        break;
    case WayOn::AddApp:
        Q_EMIT addAppRequested();
        break;
    case WayOn::AddKeywords:
        openAddKeywords();
        break;
    case WayOn::ShowAllKeywords:
        showOnly(QuickFilter::All);
        break;
    }
}

void DashboardPage::showOnly(QuickFilter filter)
{
    m_controls->showOnly(filter);
}

void DashboardPage::keyPressEvent(QKeyEvent *event)
{
    const QWidget *focused = QApplication::focusWidget();
    const bool isAmongKeywords =
        focused && (m_stack->isAncestorOf(focused) || m_quickFilters->isAncestorOf(focused));
    if (event->key() == Qt::Key_Escape && isAmongKeywords && m_filter->quick() != QuickFilter::All)
        m_filter->setQuick(QuickFilter::All);
    else
        QWidget::keyPressEvent(event);
}

void DashboardPage::measuringEnded()
{
    // While measuring goes on, every row changes where it stands; with the new figures each goes to
    // its place at once. Selection and scroll position stay.
    if (!m_store.refreshProgress().isIdle())
        return;
    m_model->resort();
    updateContent();
}

void DashboardPage::columnsChanged()
{
    if (!std::exchange(m_hasChangedColumns, true))
        m_tasks.own(saveColumnsSoon(m_tasks.token()));
}

Task<void> DashboardPage::saveColumnsSoon(std::stop_token stop)
{
    co_await m_store.clock().sleep(columnsDelay, stop);
    saveColumns();
}

void DashboardPage::saveColumns()
{
    m_hasChangedColumns = false;
    ColumnLayout layout = m_table->columnLayout();
    layout.quickFilter = m_filter->quick();
    m_preferences.setKeywordTableColumns(layout.toText());
}

void DashboardPage::focusSearch()
{
    m_controls->focusSearch();
}

void DashboardPage::focusContent()
{
    if (m_table->isVisibleTo(this))
        m_table->setFocus(Qt::ShortcutFocusReason);
    else
        m_controls->focusSearch();
}

AddKeywordsCard *DashboardPage::openAddKeywords()
{
    return AddKeywordsCard::open(m_controls->addButton(), *m_actions, m_appId,
                                 m_filter->storefrontOfNewKeywords());
}

void DashboardPage::refreshAll()
{
    m_images.retryFailed();
    m_measuring.refresh();
}

void DashboardPage::importKeywords()
{
    m_actions->chooseFile(window(), [self = QPointer(this)](const FileExchange::OpenedFile &file) {
        if (self)
            self->openAddKeywords()->showFile(file);
    });
}

void DashboardPage::exportTable()
{
    const auto profile = app();
    if (!profile)
        return;
    QList<QUuid> ids;
    for (int row = 0; row < m_model->rowCount(); ++row)
        ids.append(m_model->entryAt(row).row.id);
    m_actions->exportKeywords(window(), profile->appName, ids);
}

void DashboardPage::exportAllApps()
{
    m_actions->exportAllApps(window());
}

void DashboardPage::exportHistory()
{
    if (const auto profile = app())
        m_actions->exportHistory(window(), profile->id, profile->appName);
}

Task<void> DashboardPage::keepTimesCurrent(std::stop_token stop)
{
    for (;;) {
        co_await m_store.clock().sleep(timeRefresh, stop);
        m_model->timeHasPassed();
    }
}

} // namespace veltrix
