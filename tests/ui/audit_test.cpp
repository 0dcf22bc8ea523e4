// SPDX-License-Identifier: GPL-3.0-or-later
// Walks every screen in every state and fails on an unnamed control, a clipped text, a contrast
// below the rule, a wrong order of Tab, a focus that is not seen, or a way around a sheet.
#include "ui/gallery/scenes.h"
#include "ui/support/audit.h"
#include "ui/support/focus_audit.h"
#include "ui/support/ui_test.h"
#include "ui_kit/accessibility/cover.h"

#include <QApplication>

namespace veltrix
{

// Names the scene in the list of tests.
void PrintTo(const Scene &scene, std::ostream *out)
{
    *out << scene.name.toStdString();
}

namespace
{

class Audit : public testing::TestWithParam<Scene>
{
protected:
    Audit()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        testTheme().set(ColorScheme::Light);
        m_font = QApplication::font();
    }
    ~Audit() override
    {
        QApplication::setFont(m_font);
        testTheme().set(ColorScheme::Light);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static std::string lines(const QStringList &problems)
    {
        return problems.join(QStringLiteral("\n  ")).toStdString();
    }

private:
    QFont m_font;
};

/// Makes a window as small as it gets, as a user may while a sheet is open.
void shrink(QWidget &window)
{
    if (!qobject_cast<MainWindow *>(&window))
        return;
    window.resize(window.minimumSize());
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        window.grab();
    }
}

/// The part of a screen whose texts are to be read: under a sheet the window is dimmed on purpose.
QWidget *readablePart(QWidget *window)
{
    QWidget *part = window;
    for (const Overlay *overlay :
         window->findChildren<Overlay *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (overlay->isVisible() && overlay->kind() == Overlay::Kind::Sheet)
            part = overlay->content();
    }
    return part;
}

TEST_P(Audit, ControlsAreNamedAndTextsWholeAndReadable)
{
    const Stage stage = settledStage(GetParam());
    EXPECT_EQ(lines(unnamedControls(stage.widget.get())), "");
    EXPECT_EQ(lines(clippedTexts(stage.widget.get())), "");
    EXPECT_EQ(lines(faintTexts(readablePart(stage.widget.get()))), "");
}

TEST_P(Audit, TextsAreReadableInTheDark)
{
    testTheme().set(ColorScheme::Dark);
    const Stage stage = settledStage(GetParam());
    EXPECT_EQ(lines(faintTexts(readablePart(stage.widget.get()))), "");
}

TEST_P(Audit, TextsAreWholeAtOneAndAHalfTimesTheFont)
{
    QFont large = QApplication::font();
    large.setPixelSize(qRound(large.pixelSize() * 1.5));
    QApplication::setFont(large);
    const Stage stage = settledStage(GetParam());
    EXPECT_EQ(lines(clippedTexts(stage.widget.get())), "");
}

TEST_P(Audit, TextsAreWholeInTheSmallestWindow)
{
    const Stage stage = settledStage(GetParam());
    shrink(*stage.widget);
    EXPECT_EQ(lines(clippedTexts(stage.widget.get())), "");
}

TEST_P(Audit, TextsAreWholeInTheSmallestWindowAtOneAndAHalfTimesTheFont)
{
    QFont large = QApplication::font();
    large.setPixelSize(qRound(large.pixelSize() * 1.5));
    QApplication::setFont(large);
    const Stage stage = settledStage(GetParam());
    shrink(*stage.widget);
    EXPECT_EQ(lines(clippedTexts(stage.widget.get())), "");
}

TEST_P(Audit, TabFollowsReadingOrderAndItsStopsShowTheFocus)
{
    const Stage stage = settledStage(GetParam());
    QWidget *window = stage.widget.get();
    if (window->windowFlags().testFlag(Qt::Popup))
        return; // A menu has no stops.
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    EXPECT_EQ(lines(stopsOutOfOrder(tabStops(window))), "");
    EXPECT_EQ(lines(stopsWithoutVisibleFocus(window)), "");
}

TEST_P(Audit, WhatLiesBehindASheetIsOutOfReach)
{
    const Stage stage = settledStage(GetParam());
    QWidget *window = stage.widget.get();
    EXPECT_EQ(lines(reachableBehindSheet(window)), "");
    if (const Overlay *top = Overlay::topOf(window)) {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        for (const QWidget *stop : tabStops(window))
            EXPECT_TRUE(top == stop || top->isAncestorOf(stop)) << stop->objectName().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, Audit, testing::ValuesIn(galleryScenes()),
                         [](const auto &tested) {
                             QString name = tested.param.name;
                             return name.replace(u'-', u'_').toStdString();
                         });

TEST(AuditItself, SeesAnUnnamedControl)
{
    QWidget window;
    QPushButton button(&window);
    window.show();
    EXPECT_EQ(unnamedControls(&window).size(), 2);
    button.setAccessibleName(QStringLiteral("Go"));
    button.setObjectName(QStringLiteral("go"));
    EXPECT_TRUE(unnamedControls(&window).isEmpty());
}

TEST(AuditItself, SeesAClippedText)
{
    QWidget window;
    window.resize(400, 100);
    QLabel label(QStringLiteral("A text that needs room"), &window);
    label.setGeometry(0, 0, 300, 40);
    window.show();
    EXPECT_TRUE(clippedTexts(&window).isEmpty());
    label.setGeometry(0, 0, 30, 40);
    EXPECT_EQ(clippedTexts(&window).size(), 1);
    label.setGeometry(0, 0, 300, 5);
    EXPECT_EQ(clippedTexts(&window).size(), 1);
}

TEST(AuditItself, SeesAFaintText)
{
    QWidget window;
    window.resize(300, 100);
    QPalette palette = window.palette();
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::black);
    window.setPalette(palette);
    QLabel label(QStringLiteral("Readable?"), &window);
    label.setGeometry(20, 20, 200, 30);
    window.show();
    EXPECT_TRUE(faintTexts(&window).isEmpty());
    palette.setColor(QPalette::WindowText, QColor(0xAA, 0xAA, 0xAA));
    window.setPalette(palette);
    EXPECT_EQ(faintTexts(&window).size(), 1);
}

/// A window with two fields and a button, in a column.
struct FocusWindow {
    FocusWindow()
    {
        window.resize(300, 200);
        for (QWidget *widget : {static_cast<QWidget *>(&first), static_cast<QWidget *>(&second)})
            widget->setParent(&window);
        button.setParent(&window);
        first.setGeometry(10, 10, 100, 30);
        second.setGeometry(10, 60, 100, 30);
        button.setGeometry(150, 60, 100, 30);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QWidget window;
    QLineEdit first;
    QLineEdit second;
    Button button{Button::Kind::Standard, QStringLiteral("Go")};
};

TEST(AuditItself, SeesAStopOutOfOrder)
{
    FocusWindow made;
    EXPECT_EQ(tabStops(&made.window).size(), 3);
    EXPECT_TRUE(stopsOutOfOrder(tabStops(&made.window)).isEmpty());
    QWidget::setTabOrder(&made.second, &made.first);
    EXPECT_EQ(stopsOutOfOrder(tabStops(&made.window)).size(), 1) << "above";
    QWidget::setTabOrder(&made.first, &made.button);
    QWidget::setTabOrder(&made.button, &made.second);
    EXPECT_EQ(stopsOutOfOrder(tabStops(&made.window)).size(), 1) << "beside";
}

TEST(AuditItself, SeesAStopThatDoesNotShowTheFocus)
{
    FocusWindow made;
    EXPECT_TRUE(stopsWithoutVisibleFocus(&made.window).isEmpty());
    QWidget silent(&made.window);
    silent.setGeometry(10, 110, 100, 30);
    silent.setFocusPolicy(Qt::StrongFocus);
    silent.show();
    EXPECT_EQ(stopsWithoutVisibleFocus(&made.window).size(), 1);
}

TEST(AuditItself, SeesWhatCanBeReachedBehindASheet)
{
    testTheme(); // Makes covers effective.
    FocusWindow made;
    auto *card = new QWidget;
    card->resize(100, 100);
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, &made.button, card);
    QCoreApplication::processEvents();
    // A bare window shows its covered children as lifeless nodes.
    const auto isUse = [](const QString &line) {
        return !line.endsWith(QStringLiteral("is in the tree"));
    };
    QStringList found = reachableBehindSheet(&made.window);
    EXPECT_EQ(std::count_if(found.begin(), found.end(), isUse), 0);
    setCover(&made.window, nullptr);
    QCoreApplication::processEvents();
    found = reachableBehindSheet(&made.window);
    EXPECT_GE(std::count_if(found.begin(), found.end(), isUse), 6);
    overlay->dismiss();
}

} // namespace
} // namespace veltrix
