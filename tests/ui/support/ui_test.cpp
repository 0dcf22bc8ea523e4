// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/ui_test.h"

#include <QApplication>

namespace veltrix
{

FakeColorScheme &testTheme()
{
    static FakeColorScheme scheme;
    static const ThemeController theme(scheme);
    return scheme;
}

namespace
{

/// Fails the test when something other than a window of the program shows as one: a part that is
/// shown before it has a parent flashes up on its own and takes the focus.
class StrayWindowWatch : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Show || !watched->isWidgetType())
            return false;
        const auto *widget = static_cast<QWidget *>(watched);
        const bool isExpected = qobject_cast<const MainWindow *>(widget) ||
                                widget->windowFlags().testAnyFlags(Qt::Popup | Qt::ToolTip) ||
                                widget->metaObject() == &QWidget::staticMetaObject;
        if (widget->isWindow() && !isExpected)
            ADD_FAILURE() << "a stray window: " << widget->metaObject()->className() << ' '
                          << widget->objectName().toStdString();
        return false;
    }
};

} // namespace

UiTest::UiTest() : m_watch(std::make_unique<StrayWindowWatch>())
{
    qApp->installEventFilter(m_watch.get());
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    testTheme().set(ColorScheme::Light);
}

UiTest::~UiTest()
{
    window.reset();
    settle();
}

void UiTest::open()
{
    open(sampleState(VirtualClock().now(), FakePopularity().version));
}

void UiTest::open(const PersistedState &state)
{
    window.reset();
    world = std::make_unique<UiWorld>(state);
    window = std::make_unique<MainWindow>(world->collaborators());
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

void UiTest::reopen()
{
    window->close();
    window.reset();
    settle();
    world->restartStore();
    window = std::make_unique<MainWindow>(world->collaborators());
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

void UiTest::click(const char *name)
{
    auto *button = find<QAbstractButton>(name);
    ASSERT_TRUE(button);
    ASSERT_TRUE(button->isVisible()) << name;
    ASSERT_TRUE(button->isEnabled()) << name;
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void UiTest::type(const char *field, const QString &text)
{
    auto *widget = find(field);
    ASSERT_TRUE(widget);
    widget->setFocus();
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        QTest::keyClick(widget, Qt::Key_Delete);
    else
        QTest::keyClicks(widget, text);
}

void UiTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QWidget *target = QApplication::focusWidget() ? QApplication::focusWidget() : window.get();
    QTest::keyClick(target, key, modifiers);
    settle();
}

void UiTest::settle()
{
    if (world && world->store)
        world->store->waitUntilSaved();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QStringList UiTest::shownKeywords()
{
    QStringList keywords;
    for (int row = 0; row < model().rowCount(); ++row)
        keywords << model().entryAt(row).row.keyword;
    return keywords;
}

QString UiTest::cell(const char *keyword, KeywordColumn column, int role)
{
    for (int row = 0; row < model().rowCount(); ++row) {
        if (model().entryAt(row).row.keyword == QString::fromUtf8(keyword))
            return model().index(row, int(column)).data(role).toString();
    }
    ADD_FAILURE() << "no row for " << keyword;
    return {};
}

QString UiTest::work()
{
    const auto &shown = find<StatusBar>("statusBar")->work();
    return shown ? shown->text : QString();
}

void UiTest::selectKeywords(const QStringList &keywords)
{
    table().clearSelection();
    for (int row = 0; row < model().rowCount(); ++row) {
        if (keywords.contains(model().entryAt(row).row.keyword)) {
            const QModelIndex index = model().index(row, 0);
            table().selectionModel()->setCurrentIndex(index, QItemSelectionModel::Select |
                                                                 QItemSelectionModel::Rows);
        }
    }
    table().setFocus();
}

void UiTest::choose(const char *menuName, const QString &entry)
{
    auto *menu = find<QMenu>(menuName);
    ASSERT_TRUE(menu);
    for (QAction *action : menu->actions()) {
        if (action->text().section(u'\t', 0, 0) == entry) {
            action->trigger();
            menu->close();
            settle();
            return;
        }
    }
    ADD_FAILURE() << "no entry " << entry.toStdString();
}

} // namespace veltrix
