// SPDX-License-Identifier: GPL-3.0-or-later
// Walks every screen in every state where the user's language writes other digits, and fails on a
// text that has some.
#include "ui/gallery/scenes.h"
#include "ui/support/ui_test.h"
#include "ui_kit/text/figures.h"

#include <QAbstractButton>
#include <QAbstractItemView>

namespace veltrix
{
namespace
{

/// What a widget shows or lets a screen reader say.
QStringList textsOf(const QWidget &widget)
{
    QStringList texts{widget.accessibleName(), widget.accessibleDescription(), widget.toolTip()};
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        texts << label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        texts << button->text();
    const auto *view = qobject_cast<const QAbstractItemView *>(&widget);
    const QAbstractItemModel *model = view ? view->model() : nullptr;
    for (int row = 0; model && row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column) {
            for (const int role : {int(Qt::DisplayRole), int(Qt::ToolTipRole),
                                   int(Qt::AccessibleTextRole), int(Qt::AccessibleDescriptionRole)})
                texts << model->index(row, column).data(role).toString();
        }
    }
    return texts;
}

TEST(Digits, AreOfOneKindOnEveryScreen)
{
    testTheme();
    setUserLocale(QLocale(QLocale::Persian, QLocale::Iran));
    int read = 0;
    for (const Scene &scene : galleryScenes()) {
        const Stage stage = settledStage(scene);
        QList<QWidget *> widgets = stage.widget->findChildren<QWidget *>();
        widgets.append(stage.widget.get());
        for (const QWidget *widget : std::as_const(widgets)) {
            for (const QString &text : textsOf(*widget)) {
                EXPECT_EQ(text, withPlainDigits(text)) << scene.name.toStdString();
                read += text.isEmpty() ? 0 : 1;
            }
        }
    }
    EXPECT_GT(read, 1000);
    setUserLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace
} // namespace veltrix
