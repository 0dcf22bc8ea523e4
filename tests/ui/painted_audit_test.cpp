// SPDX-License-Identifier: GPL-3.0-or-later
// Reads what tables paint, in every screen that has one: no text is cut or lies over another, and
// what is shortened is told whole by a tool tip.
#include "ui/gallery/scenes.h"
#include "ui/support/painted_texts.h"
#include "ui/support/ui_test.h"

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

namespace veltrix
{
namespace
{

class PaintedAudit : public testing::Test
{
protected:
    PaintedAudit()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        testTheme().set(ColorScheme::Light);
        m_font = QApplication::font();
    }
    ~PaintedAudit() override
    {
        QApplication::setFont(m_font);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static void enlargeFont()
    {
        QFont large = QApplication::font();
        large.setPixelSize(qRound(large.pixelSize() * 1.5));
        QApplication::setFont(large);
    }

    /// The tables of all scenes, one after another.
    static int readTables()
    {
        int tables = 0;
        for (const Scene &scene : galleryScenes()) {
            const Stage stage = settledStage(scene);
            for (QTableView *table : stage.widget->findChildren<QTableView *>()) {
                if (!table->isVisible() || table->model()->rowCount() == 0)
                    continue;
                ++tables;
                const QStringList problems =
                    paintedTextProblems(table) + paintedHeaderProblems(table);
                EXPECT_EQ(problems.join(QStringLiteral("\n  ")).toStdString(), "")
                    << scene.name.toStdString();
            }
        }
        return tables;
    }

private:
    QFont m_font;
};

TEST_F(PaintedAudit, TablesPaintTheirTextsWhole)
{
    EXPECT_GT(readTables(), 30);
}

TEST_F(PaintedAudit, TablesPaintTheirTextsWholeAtOneAndAHalfTimesTheFont)
{
    enlargeFont();
    EXPECT_GT(readTables(), 30);
}

TEST_F(PaintedAudit, HeadersAndBadgesAreNotShortenedInTheStandardColumnsAtOneAndAHalfTimesTheFont)
{
    enlargeFont();
    const auto scenes = galleryScenes();
    const auto dashboard = std::find_if(scenes.begin(), scenes.end(), [](const Scene &scene) {
        return scene.name == QStringLiteral("dashboard");
    });
    ASSERT_NE(dashboard, scenes.end());
    const Stage stage = settledStage(*dashboard);
    auto *table = stage.widget->findChild<KeywordTableView *>();
    ASSERT_TRUE(table);
    int texts = 0;
    for (QWidget *part : {table->viewport(), table->horizontalHeader()->viewport()}) {
        for (const PaintedText &painted : paintedTexts(part)) {
            // Keywords may be of any length.
            const int column = table->columnAt(int(painted.rect.center().x()));
            if (part == table->viewport() && column == int(KeywordColumn::Keyword))
                continue;
            ++texts;
            EXPECT_FALSE(painted.text.endsWith(u'…')) << painted.text.toStdString();
        }
    }
    EXPECT_GT(texts, 30);
}

/// Paints texts where it is told to, whatever the cell.
class CarelessDelegate final : public QStyledItemDelegate
{
public:
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &) const override
    {
        for (const auto &[text, at] : texts)
            painter->drawText(option.rect.bottomLeft() + at, text);
    }
    std::vector<std::pair<QString, QPoint>> texts;
};

class PaintedAuditItself : public PaintedAudit
{
protected:
    PaintedAuditItself()
    {
        model.appendRow(new QStandardItem);
        table.setModel(&model);
        table.setItemDelegate(&delegate);
        table.setColumnWidth(0, 120);
        table.setRowHeight(0, 50);
        table.show();
    }

    QStandardItemModel model;
    CarelessDelegate delegate;
    QTableView table;
};

TEST_F(PaintedAuditItself, IsContentWithAWholeText)
{
    delegate.texts = {{QStringLiteral("whole"), {5, -25}}, {QStringLiteral("below"), {5, -5}}};
    EXPECT_EQ(paintedTextProblems(&table), QStringList());
}

TEST_F(PaintedAuditItself, SeesATextThatIsCut)
{
    delegate.texts = {{QStringLiteral("much too long for a cell of this width"), {5, -25}}};
    EXPECT_EQ(paintedTextProblems(&table).size(), 1);
}

TEST_F(PaintedAuditItself, SeesATextOverAnother)
{
    delegate.texts = {{QStringLiteral("first"), {5, -25}}, {QStringLiteral("second"), {15, -22}}};
    EXPECT_EQ(paintedTextProblems(&table),
              QStringList{QStringLiteral("“second” lies over “first”")});
}

TEST_F(PaintedAuditItself, SeesAShortenedTextWithoutAToolTip)
{
    delegate.texts = {{QStringLiteral("short…"), {5, -25}}};
    EXPECT_EQ(paintedTextProblems(&table).size(), 1);
    model.item(0)->setToolTip(QStringLiteral("shortened"));
    EXPECT_EQ(paintedTextProblems(&table), QStringList());
}

TEST_F(PaintedAuditItself, SeesATextUnderAWidget)
{
    delegate.texts = {{QStringLiteral("hidden"), {5, -25}}};
    QWidget cover(table.viewport());
    cover.setGeometry(0, 0, 60, 50);
    cover.show();
    EXPECT_EQ(paintedTextProblems(&table),
              QStringList{QStringLiteral("“hidden” lies under a widget")});
}

TEST_F(PaintedAuditItself, SeesAShortenedHeaderWithoutAToolTip)
{
    model.setHorizontalHeaderLabels({QStringLiteral("a title that is too long for its column")});
    EXPECT_EQ(paintedHeaderProblems(&table).size(), 1);
}

} // namespace
} // namespace veltrix
