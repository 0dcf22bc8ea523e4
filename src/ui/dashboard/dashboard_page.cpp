// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/dashboard_page.h"

#include "ui/dashboard/add_keywords.h"
#include "ui/dashboard/keyword_actions.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/dashboard/keyword_table_view.h"
#include "ui/measuring/measuring_status.h"
#include "ui/preferences/preferences.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/page_toolbar.h"
#include "ui_kit/widgets/text_field.h"

#include <QMenu>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace veltrix
{

namespace
{

/// How long typing must rest before the table is filtered.
constexpr std::chrono::milliseconds searchDelay{150};
/// How often "4 min. ago" is looked at again.
constexpr Seconds timeRefresh{30};
constexpr int searchWidth = 220;

} // namespace

DashboardPage::DashboardPage(ASOStore &store, ArtworkImages &images, Preferences &preferences,
                             FileExchange &files, MeasuringStatus &measuring, QWidget *parent)
    : QWidget(parent), m_store(store), m_images(images), m_preferences(preferences),
      m_measuring(measuring), m_searchStorefront(preferences.preferredStorefrontCountry()),
      m_model(new KeywordTableModel(store, this)),
      m_actions(new KeywordActions(store, *m_model, files, this))
{
    setObjectName(QStringLiteral("dashboardPage"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    // Tab goes through the widgets in the order in which they come into being.
    buildToolbar();
    m_table = new KeywordTableView(*m_model, images, this);
    buildContent();
    m_table->setColumnLayout(ColumnLayout::fromText(preferences.keywordTableColumns()));
    connectStore();
    connectTable();
    updateContent();
    updateCount();
    m_tasks.own(keepTimesCurrent(m_tasks.token()));
}

DashboardPage::~DashboardPage()
{
    // Its running tasks use the model, which is older and would go first.
    delete m_actions;
}

void DashboardPage::buildToolbar()
{
    m_toolbar = new PageToolbar(tr("Keywords"));
    m_search = new TextField(QStringLiteral("keywordSearch"), tr("Search keywords"),
                             QStringLiteral("magnifyingglass"));
    m_search->setMaximumWidth(searchWidth);
    m_search->setMinimumWidth(searchWidth / 2);
    m_filter = new StorefrontPicker(QStringLiteral("storefrontFilter"), tr("Storefront filter"),
                                    StorefrontPicker::Offer::AllAndStorefronts);
    m_refresh = new Button(Button::Kind::Standard, QStringLiteral("arrow.clockwise"), QString());
    nameControl(m_refresh, QStringLiteral("refreshButton"), tr("Refresh"));
    m_refresh->setToolTip(tr("Refresh (F5)"));
    m_add = new Button(Button::Kind::Primary, QStringLiteral("plus"), tr("Add keywords"));
    nameControl(m_add, QStringLiteral("addKeywordsButton"), tr("Add keywords"));
    m_add->setToolTip(tr("Add keywords (Ctrl+N)"));
    for (QWidget *control : {static_cast<QWidget *>(m_search), static_cast<QWidget *>(m_filter),
                             static_cast<QWidget *>(m_refresh), static_cast<QWidget *>(m_add)})
        m_toolbar->addTrailing(control);

    auto *delay = new QTimer(this);
    delay->setSingleShot(true);
    delay->setInterval(searchDelay);
    connect(m_search, &QLineEdit::textChanged, delay, qOverload<>(&QTimer::start));
    const auto search = [this, delay] {
        delay->stop();
        m_model->setSearch(m_search->text());
        updateContent();
    };
    connect(delay, &QTimer::timeout, this, search);
    connect(m_search, &QLineEdit::returnPressed, this, search);
    connect(m_search, &TextField::escaped, this, [this, search] {
        m_search->clear();
        search();
    });
    connect(m_filter, &StorefrontPicker::picked, this,
            [this](const std::optional<QString> &country) {
                m_model->setStorefront(country);
                updateContent();
                Q_EMIT storefrontOfNewKeywordsChanged(storefrontOfNewKeywords());
            });
    connect(m_refresh, &Button::clicked, this, &DashboardPage::refreshAll);
    connect(m_add, &Button::clicked, this, &DashboardPage::openAddKeywords);
}

void DashboardPage::buildContent()
{
    buildNotices();
    m_empty = new EmptyState(QStringLiteral("keywordsEmpty"));
    m_stack = new QStackedWidget;
    m_stack->addWidget(m_table);
    m_stack->addWidget(m_empty);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolbar);
    layout->addWidget(m_importBanner);
    layout->addWidget(m_orphansBanner);
    layout->addWidget(m_stack, 1);

    connect(m_empty, &EmptyState::actionTriggered, this, [this] {
        if (!app())
            Q_EMIT addAppRequested();
        else if (m_model->keywordCount() == 0)
            openAddKeywords();
        else {
            m_search->clear();
            m_filter->setCode(std::nullopt);
            m_model->setSearch(QString());
            m_model->setStorefront(std::nullopt);
            updateContent();
            Q_EMIT storefrontOfNewKeywordsChanged(storefrontOfNewKeywords());
        }
    });
}

void DashboardPage::connectStore()
{
    connect(&m_measuring, &MeasuringStatus::changed, this,
            [this] { m_refresh->setEnabled(m_measuring.mayRefresh()); });
    connect(&m_store, &ASOStore::refreshProgressChanged, this, &DashboardPage::measuringEnded);
    connect(&m_store, &ASOStore::stateRead, this, &DashboardPage::updateContent);
    connect(m_actions, &KeywordActions::statusChanged, this, &DashboardPage::showStatus);
    connect(m_model, &KeywordTableModel::keywordCountChanged, this, [this] {
        updateCount();
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
    connect(m_table, &KeywordTableView::columnLayoutChanged, this, &DashboardPage::saveColumns);
    connect(m_table, &KeywordTableView::columnMenuRequested, this, [this](const QPoint &position) {
        auto *menu = new QMenu(this);
        menu->setObjectName(QStringLiteral("columnMenu"));
        menu->setAttribute(Qt::WA_DeleteOnClose);
        fillColumnMenu(menu);
        menu->popup(position);
    });
}

std::optional<AppProfile> DashboardPage::app() const
{
    return m_appId ? m_store.app(*m_appId) : std::nullopt;
}

void DashboardPage::setApp(std::optional<QUuid> appId)
{
    m_appId = appId;
    m_model->setApp(appId);
    updateCount();
    updateContent();
    updateImportNotice();
}

void DashboardPage::showStatus(const QString &message, StatusBar::Tone tone, const QString &detail)
{
    m_measuring.say(message, tone, detail);
}

void DashboardPage::updateCount()
{
    const int count = m_model->keywordCount();
    m_toolbar->setSubtitle(m_appId ? tr("%L1 tracked").arg(count) : QString());
    Q_EMIT keywordCountChanged(count);
}

void DashboardPage::updateContent()
{
    EmptyState::Content content;
    if (!m_store.isStateRead())
        content = {QStringLiteral("exclamationmark.triangle"), tr("Saved data not loaded"),
                   tr("Your apps and keywords come back as soon as they can be read."), QString()};
    else if (!app())
        content = {QStringLiteral("magnifyingglass"),
                   tr("Add keywords to discover your next opportunity"),
                   tr("Start with an app of yours: its keywords are tracked here."), tr("Add App")};
    else if (m_model->keywordCount() == 0)
        content = {QStringLiteral("magnifyingglass"), tr("No keyword data yet"),
                   tr("Add keywords to run live ranking analysis and discover your next "
                      "opportunity."),
                   tr("Add keywords")};
    else if (m_model->rowCount() == 0)
        content = {QStringLiteral("magnifyingglass"), tr("No matching keywords"),
                   tr("No tracked keyword matches the search and the storefront filter."),
                   tr("Show all keywords")};
    m_empty->setContent(content);
    m_stack->setCurrentWidget(content.title.isEmpty() ? static_cast<QWidget *>(m_table) : m_empty);
}

void DashboardPage::measuringEnded()
{
    // The order may have changed under the new figures; nobody is pointing at a row now.
    if (m_store.refreshProgress().isIdle() && !m_table->underMouse())
        m_model->resort();
}

void DashboardPage::saveColumns()
{
    m_preferences.setKeywordTableColumns(m_table->columnLayout().toText());
}

void DashboardPage::setSearchStorefront(const QString &country)
{
    m_searchStorefront = country;
    if (!m_filter->code())
        Q_EMIT storefrontOfNewKeywordsChanged(country);
}

QString DashboardPage::storefrontOfNewKeywords() const
{
    return m_filter->code().value_or(m_searchStorefront);
}

void DashboardPage::focusSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void DashboardPage::focusContent()
{
    if (m_table->isVisibleTo(this))
        m_table->setFocus(Qt::ShortcutFocusReason);
    else
        m_search->setFocus(Qt::ShortcutFocusReason);
}

void DashboardPage::openAddKeywords()
{
    auto *card = new AddKeywordsCard(storefrontOfNewKeywords());
    Overlay *overlay = Overlay::open(Overlay::Kind::Popover, m_add, card);
    connect(card, &AddKeywordsCard::cancelled, overlay, &Overlay::dismiss);
    connect(card, &AddKeywordsCard::submitted, this,
            [this, card, overlay](const QStringList &keywords, const QString &country) {
                const auto [problem, admission] = m_actions->add(m_appId, keywords, country);
                if (problem) {
                    card->showProblem(*problem);
                    showStatus(*problem, StatusBar::Tone::Error);
                } else if (!admission.refused.isEmpty()) {
                    card->showAdmission(admission);
                } else {
                    overlay->dismiss();
                }
            });
    connect(card, &AddKeywordsCard::importRequested, this, [this, overlay](const QString &country) {
        overlay->dismiss();
        m_actions->importFile(window(), m_appId, country);
    });
}

void DashboardPage::refreshAll()
{
    m_images.retryFailed();
    m_measuring.refresh();
}

void DashboardPage::importKeywords()
{
    m_actions->importFile(window(), m_appId, storefrontOfNewKeywords());
}

void DashboardPage::exportTable()
{
    if (const auto profile = app())
        m_actions->exportTable(window(), profile->appName, m_table->shownTexts());
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
