// SPDX-License-Identifier: GPL-3.0-or-later
// Walks every screen in every state and fails on an unnamed control, a clipped text or a contrast
// below the rule.
#include "ui/gallery/scenes.h"
#include "ui/support/audit.h"
#include "ui/support/ui_test.h"

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

} // namespace
} // namespace veltrix
