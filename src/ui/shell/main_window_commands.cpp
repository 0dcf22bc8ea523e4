// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the window: its keys, the controls that every page ends with, and their menu.
#include "ui/shell/main_window.h"

#include "ui/competitors/competitors_view.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/overview/overview_page.h"
#include "ui/settings/updater_interface.h"
#include "ui/shell/app_selector.h"
#include "ui/shell/removals.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/page_toolbar.h"

#include <QMenu>

namespace veltrix
{

void MainWindow::buildActions()
{
    m_checkForUpdates = new QAction(tr("Check for Updates…"), this);
    const auto updateCheck = [this] {
        m_checkForUpdates->setEnabled(m_with.updater && m_with.updater->canCheckForUpdates());
    };
    if (m_with.updater) {
        connect(m_checkForUpdates, &QAction::triggered, this, [this] {
            m_with.updater->checkForUpdates();
            openSettings();
        });
        connect(m_with.updater, &UpdaterInterface::changed, this, updateCheck);
    }
    updateCheck();
    buildKeys();
    buildAppKeys();
}

void MainWindow::buildKeys()
{
    addKey(tr("Refresh"), Qt::Key_F5, [this] { m_dashboard->refreshAll(); });
    addKey(tr("Search"), QKeySequence::Find, [this] {
        switch (m_workspace) {
        case Workspace::Overview:
            return m_overview->focusSearch();
        case Workspace::Keywords:
            return m_dashboard->focusSearch();
        case Workspace::Competitors:
            return m_competitors->focusSearch();
        }
    });
    addKey(tr("Add keywords"), QKeySequence(Qt::CTRL | Qt::Key_N), [this] {
        showWorkspace(Workspace::Keywords);
        m_dashboard->openAddKeywords();
    });
    addKey(tr("Tags"), QKeySequence(Qt::CTRL | Qt::Key_T), [this] {
        if (m_workspace == Workspace::Keywords)
            m_dashboard->editTags();
    });
    addKey(tr("Overview"), QKeySequence(Qt::CTRL | Qt::Key_0),
           [this] { showWorkspace(Workspace::Overview); });
    addKey(tr("Keywords"), QKeySequence(Qt::CTRL | Qt::Key_1),
           [this] { showWorkspace(Workspace::Keywords); });
    addKey(tr("Competitors"), QKeySequence(Qt::CTRL | Qt::Key_2),
           [this] { showWorkspace(Workspace::Competitors); });
    addKey(tr("Settings"), QKeySequence(Qt::CTRL | Qt::Key_Comma), [this] { openSettings(); });
    // A text field with the focus keeps the key for itself.
    addKey(tr("Undo"), QKeySequence::Undo, [this] { m_removals->undo(); });

    // These two know of sheets.
    const auto addOwn = [this](const QString &text, const QKeySequence &key, auto act) {
        auto *action = new QAction(text, this);
        action->setShortcut(key);
        addAction(action);
        connect(action, &QAction::triggered, this, act);
    };
    addOwn(tr("Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), &MainWindow::close);
    addOwn(tr("Close"), QKeySequence(Qt::CTRL | Qt::Key_W), &MainWindow::closeTop);
}

void MainWindow::buildAppKeys()
{
    m_addApp = addKey(tr("Add App…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N),
                      [this] { openAppSearch(); });
    m_nextApp = addKey(tr("Next App"), QKeySequence(Qt::CTRL | Qt::Key_PageDown),
                       [this] { m_selection->selectNeighbour(AppSelection::Neighbour::Next); });
    m_previousApp = addKey(tr("Previous App"), QKeySequence(Qt::CTRL | Qt::Key_PageUp), [this] {
        m_selection->selectNeighbour(AppSelection::Neighbour::Previous);
    });
    m_addApp->setIcon(symbolIcon(QStringLiteral("plus")));
    const auto followApps = [this] {
        const bool hasSeveral = m_with.store.apps().size() > 1;
        m_nextApp->setEnabled(hasSeveral);
        m_previousApp->setEnabled(hasSeveral);
    };
    connect(&m_with.store, &ASOStore::appsChanged, this, followApps);
    followApps();
    m_sidebar->appSelector().setKeys(
        {m_addApp->shortcut(), m_nextApp->shortcut(), m_previousApp->shortcut()});
}

void MainWindow::closeTop()
{
    if (Overlay *overlay = Overlay::topOf(this))
        overlay->dismiss();
    else
        close();
}

QAction *MainWindow::addKey(const QString &text, const QKeySequence &key, std::function<void()> act)
{
    auto *action = new QAction(text, this);
    action->setShortcut(key);
    addAction(action);
    connect(action, &QAction::triggered, this, [this, act = std::move(act)] {
        // A sheet is modal: the window below takes no commands.
        if (!Overlay::isOpenOver(this))
            act();
    });
    return action;
}

void MainWindow::addShellControls(PageToolbar &toolbar)
{
    auto *settings = new Button(Button::Kind::Standard, QStringLiteral("gearshape"), QString());
    nameControl(settings, QStringLiteral("settingsButton"), tr("Settings"));
    settings->setToolTip(tr("Settings (Ctrl+,)"));
    connect(settings, &Button::clicked, this, &MainWindow::openSettings);
    auto *more = new Button(Button::Kind::Standard, QStringLiteral("ellipsis"), QString());
    nameControl(more, QStringLiteral("moreButton"), tr("More"));
    more->setToolTip(tr("More"));
    connect(more, &Button::clicked, this, [this, more] {
        auto *menu = new QMenu(this);
        menu->setObjectName(QStringLiteral("moreMenu"));
        menu->setAccessibleName(tr("More"));
        menu->setAttribute(Qt::WA_DeleteOnClose);
        fillMoreMenu(menu);
        const int width = menu->sizeHint().width();
        menu->popup(more->mapToGlobal(QPoint(more->width() - width, more->height() + 4)));
    });
    toolbar.addTrailing(settings);
    toolbar.addTrailing(more);
}

void MainWindow::fillMoreMenu(QMenu *menu)
{
    const bool hasApp = selectedApp().has_value();
    const auto add = [&](const QString &symbol, const QString &text, bool enabled, auto act) {
        QAction *action = menu->addAction(symbolIcon(symbol), text);
        action->setEnabled(enabled);
        connect(action, &QAction::triggered, this, act);
    };
    if (m_workspace == Workspace::Keywords) {
        add(QStringLiteral("square.and.arrow.down"), tr("Import Keywords…"), hasApp,
            [this] { m_dashboard->importKeywords(); });
        add(QStringLiteral("square.and.arrow.up"), tr("Export…"), hasApp,
            [this] { m_dashboard->exportTable(); });
        add(QStringLiteral("square.and.arrow.up"), tr("Export All Apps…"), hasApp,
            [this] { m_dashboard->exportAllApps(); });
        add(QStringLiteral("clock.arrow.circlepath"), tr("Export History…"), hasApp,
            [this] { m_dashboard->exportHistory(); });
        menu->addSeparator();
        m_dashboard->fillSortMenu(menu->addMenu(tr("Sort By")));
        m_dashboard->fillColumnMenu(menu->addMenu(tr("Columns")));
        menu->addSeparator();
    }
    menu->addActions({m_addApp, m_nextApp, m_previousApp});
    menu->addSeparator();
    menu->addAction(m_checkForUpdates);
}

} // namespace veltrix
