// SPDX-License-Identifier: GPL-3.0-or-later
// The keyword table over hours: storefronts beside each other, rows that find their places, columns
// that come back, buttons that stay out of the way, fonts that change.
#include "ui/support/painted_texts.h"
#include "ui/support/ui_test.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class KeywordTableDailyTest : public UiTest
{
protected:
    KeywordTableDailyTest() : m_font(QApplication::font()) { open(); }
    ~KeywordTableDailyTest() override { QApplication::setFont(m_font); }

    QHeaderView &columns() { return *table().horizontalHeader(); }
    int rowOf(const char *keyword)
    {
        return int(shownKeywords().indexOf(QString::fromUtf8(keyword)));
    }
    QRect cellOf(int row, KeywordColumn column)
    {
        return table().visualRect(model().index(row, int(column)));
    }
    /// Moves the pointer from outside of the table, as entering a row does.
    void point(QPoint position)
    {
        QTest::mouseMove(window.get(), QPoint(2, 2));
        QTest::mouseMove(table().viewport(), position);
        settle();
    }
    QWidget *rowButtons() { return find("rowMore")->parentWidget(); }
    /// What stands in a row, as it is painted.
    QStringList paintedIn(const QRect &cell)
    {
        QStringList texts;
        for (const PaintedText &painted : paintedTexts(table().viewport())) {
            if (cell.contains(painted.rect.center().toPoint()))
                texts << painted.text;
        }
        return texts;
    }
    static QFont scaledFont(const QFont &font, double factor)
    {
        QFont scaled = font;
        scaled.setPixelSize(qRound(font.pixelSize() * factor));
        return scaled;
    }
    void setFont(double factor)
    {
        QApplication::setFont(scaledFont(m_font, factor));
        // What the application sends to every widget while its event loop runs.
        for (QWidget *widget : QApplication::allWidgets()) {
            QEvent event(QEvent::ApplicationFontChange);
            QCoreApplication::sendEvent(widget, &event);
        }
        settle();
    }
    void add(const QStringList &keywords, const char *country)
    {
        store().addTrackedKeywords(*window->selectedApp(), keywords, QString::fromLatin1(country));
        settle();
    }

private:
    QFont m_font;
};

// Storefronts

TEST_F(KeywordTableDailyTest, TheStorefrontStandsBehindTheKeywordWhereThereAreSeveral)
{
    window->resize(1024, 700);
    add({QStringLiteral("background eraser and object remover")}, "GB");
    const int row = rowOf("background eraser and object remover");
    const QStringList texts = paintedIn(cellOf(row, KeywordColumn::Keyword));
    EXPECT_TRUE(texts.contains(QStringLiteral("GB"))) << texts.join(u'|').toStdString();
    EXPECT_EQ(paintedTextProblems(&table()), QStringList());
    EXPECT_TRUE(model()
                    .index(row, 0)
                    .data(Qt::ToolTipRole)
                    .toString()
                    .contains(QStringLiteral("United Kingdom")));
    EXPECT_TRUE(model()
                    .index(row, 0)
                    .data(Qt::AccessibleTextRole)
                    .toString()
                    .startsWith(QStringLiteral("background eraser and object remover, United "
                                               "Kingdom, ")));
}

TEST_F(KeywordTableDailyTest, AListOfOneStorefrontDoesNotRepeatIt)
{
    model().setStorefront(QStringLiteral("US"));
    settle();
    for (const PaintedText &painted : paintedTexts(table().viewport()))
        EXPECT_NE(painted.text, QStringLiteral("US"));
    model().setStorefront(std::nullopt);
    settle();
    EXPECT_TRUE(paintedIn(cellOf(0, KeywordColumn::Keyword)).contains(QStringLiteral("DE")));
}

TEST_F(KeywordTableDailyTest, EqualKeywordsStandInTheOrderOfTheirStorefronts)
{
    for (const char *country : {"US", "DE", "JP", "GB", "FR"})
        add({QStringLiteral("aaa")}, country);
    const auto storefronts = [this] {
        QStringList codes;
        for (int row = 0; row < model().rowCount(); ++row) {
            if (model().entryAt(row).row.keyword == QStringLiteral("aaa"))
                codes << model().entryAt(row).row.country;
        }
        return codes.join(u' ');
    };
    EXPECT_EQ(storefronts(), QStringLiteral("DE FR GB JP US"));
    columns().setSortIndicator(int(KeywordColumn::Keyword), Qt::DescendingOrder);
    EXPECT_EQ(storefronts(), QStringLiteral("DE FR GB JP US"));
    columns().setSortIndicator(int(KeywordColumn::Position), Qt::AscendingOrder);
    EXPECT_EQ(storefronts(), QStringLiteral("DE FR GB JP US"));
}

// Refreshing

TEST_F(KeywordTableDailyTest, RowsGoToTheirPlacesAfterARefreshAlsoUnderThePointer)
{
    QStringList many;
    for (int i = 0; i < 60; ++i)
        many << QStringLiteral("m%1").arg(i, 4, 10, QLatin1Char('0'));
    add(many, "US");
    columns().setSortIndicator(int(KeywordColumn::Position), Qt::AscendingOrder);
    QScrollBar *bar = table().verticalScrollBar();
    bar->setValue(20 * table().rowHeight(0) + 7);
    const int scrolled = bar->value();
    point(QPoint(60, 100));
    selectKeywords({QStringLiteral("m0030")});
    bar->setValue(scrolled);
    const QList<QUuid> selected = table().selectedIds();
    world->client->results = {};
    for (int place = 1; place < 40; ++place)
        world->client->results.append(appResult(5000 + place, "Somebody"));
    page().refreshAll();
    settle();
    ASSERT_TRUE(store().refreshProgress().isIdle());
    bool isSorted = true;
    std::int64_t before = 0;
    for (int row = 0; row < model().rowCount(); ++row) {
        const std::int64_t position = model().entryAt(row).row.position.value_or(1000);
        isSorted = isSorted && position >= before;
        before = position;
    }
    EXPECT_TRUE(isSorted);
    EXPECT_EQ(bar->value(), scrolled);
    EXPECT_EQ(table().selectedIds(), selected);
}

// Columns

TEST_F(KeywordTableDailyTest, TheWidthOfTheKeywordColumnComesBack)
{
    columns().resizeSection(int(KeywordColumn::Keyword), 420);
    columns().resizeSection(int(KeywordColumn::Target), 140);
    const int excess = columns().length() - table().viewport()->width();
    reopen();
    EXPECT_EQ(columns().sectionSize(int(KeywordColumn::Keyword)), 420);
    EXPECT_EQ(columns().sectionSize(int(KeywordColumn::Target)), 140);
    EXPECT_EQ(columns().length() - table().viewport()->width(), excess);
}

TEST_F(KeywordTableDailyTest, AHiddenColumnKeepsItsWidth)
{
    columns().resizeSection(int(KeywordColumn::Position), 222);
    table().setColumnVisible(KeywordColumn::Position, false);
    reopen();
    table().setColumnVisible(KeywordColumn::Position, true);
    EXPECT_EQ(columns().sectionSize(int(KeywordColumn::Position)), 222);
}

TEST_F(KeywordTableDailyTest, ColumnsAreSavedSoonAfterTheyChangeAndOnceForADrag)
{
    const QString before = world->preferences.columns;
    for (int width = 150; width < 200; ++width)
        columns().resizeSection(int(KeywordColumn::Target), width);
    EXPECT_EQ(world->preferences.columns, before);
    world->clock->advance(Seconds(1));
    EXPECT_TRUE(world->preferences.columns.contains(QStringLiteral("target 199 shown")))
        << world->preferences.columns.toStdString();
    columns().resizeSection(int(KeywordColumn::Target), 180);
    world->clock->advance(Seconds(1));
    EXPECT_TRUE(world->preferences.columns.contains(QStringLiteral("target 180 shown")));
}

// The row's buttons

TEST_F(KeywordTableDailyTest, AClickInTheMiddleOfAKeywordCellSelectsItAtEveryWidth)
{
    const QSignalSpy opened(&page(), &DashboardPage::rankedAppsRequested);
    const QSignalSpy history(&page(), &DashboardPage::historyRequested);
    for (const int width : {800, 900, 1024, 1280, 1600}) {
        window->resize(width, 700);
        settle();
        for (const char *keyword : {"passport photo booth", "collage maker"}) {
            const int row = rowOf(keyword);
            const QPoint middle = cellOf(row, KeywordColumn::Keyword).center();
            point(middle);
            QWidget *hit = table().viewport()->childAt(middle);
            QTest::mouseClick(hit ? hit : table().viewport(), Qt::LeftButton, {},
                              hit ? hit->mapFrom(table().viewport(), middle) : middle);
            EXPECT_EQ(table().selectedRows(), std::vector{row}) << width;
        }
    }
    EXPECT_EQ(opened.size() + history.size(), 0);
}

TEST_F(KeywordTableDailyTest, ButtonsDoNotComeUpUnderThePointerOverTheKeyword)
{
    add({QStringLiteral("a keyword that is long enough to fill its whole cell and more")}, "US");
    const QRect cell = cellOf(0, KeywordColumn::Keyword);
    point(QPoint(cell.right() - 40, cell.center().y()));
    EXPECT_FALSE(isShown("rowMore"));
    QTest::mouseMove(table().viewport(), cell.center() - QPoint(60, 0));
    EXPECT_TRUE(isShown("rowMore"));
    QTest::mouseMove(table().viewport(), QPoint(cell.right() - 40, cell.center().y()));
    EXPECT_TRUE(isShown("rowMore")) << "buttons that are there can be reached";
}

TEST_F(KeywordTableDailyTest, ANarrowRowHasItsActionsInOneMenu)
{
    window->resize(900, 700);
    settle();
    point(cellOf(1, KeywordColumn::Target).center());
    EXPECT_TRUE(isShown("rowMore"));
    EXPECT_FALSE(isShown("rowHistory"));
    EXPECT_EQ(paintedTextProblems(&table()), QStringList());
    window->resize(1280, 700);
    settle();
    point(cellOf(1, KeywordColumn::Target).center());
    EXPECT_TRUE(isShown("rowHistory"));
}

// Texts

TEST_F(KeywordTableDailyTest, MovementIsPaintedOnlyBesideARank)
{
    const int row = rowOf("passport photo booth");
    ASSERT_FALSE(model().entryAt(row).row.position.has_value());
    ASSERT_TRUE(model().entryAt(row).movement.has_value());
    const QString painted = paintedIn(cellOf(row, KeywordColumn::Position)).join(QString());
    EXPECT_EQ(QString(painted).remove(u' '), QStringLiteral("Notranked"));
    EXPECT_TRUE(model()
                    .index(row, int(KeywordColumn::Position))
                    .data(Qt::ToolTipRole)
                    .toString()
                    .contains(QStringLiteral("Left results")));
}

TEST_F(KeywordTableDailyTest, ToolTipsOfHeadersWrap)
{
    const QString help =
        model()
            .headerData(int(KeywordColumn::Popularity), Qt::Horizontal, Qt::ToolTipRole)
            .toString();
    for (const QString &line : help.split(u'\n'))
        EXPECT_LE(line.size(), 80);
    EXPECT_EQ(QString(help).replace(u'\n', u' '),
              QStringLiteral("Estimated search popularity from the Quorvin model, not official "
                             "Apple data. Its calibration used US data; unavailable does not mean "
                             "low demand."));
}

TEST_F(KeywordTableDailyTest, StatusTextsKeepPlaceholdersAndDirections)
{
    world->client->holds = true;
    const KeywordAdmission added = store().addTrackedKeywords(
        *window->selectedApp(), {QStringLiteral("%2 of %1"), QStringLiteral("מצלמה")},
        QStringLiteral("US"));
    store().queueKeywordRefreshes(added.kept);
    settle();
    EXPECT_EQ(work(), QStringLiteral("Measuring “%2 of %1” · 1 of 2"));
    world->client->release();
    settle();
    EXPECT_EQ(work(), QStringLiteral("Measuring “\u2068מצלמה\u2069” · 2 of 2"));
}

// Fonts

TEST_F(KeywordTableDailyTest, AFontThatChangesWhileRunningTakesEffectWhole)
{
    selectKeywords({QStringLiteral("collage maker")});
    const auto picture = [this] {
        settle();
        QTest::mouseMove(window.get(), QPoint(2, 2));
        table().setFocus();
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::processEvents();
            page().grab();
        }
        return page().grab().toImage();
    };
    const QImage standard = picture();
    setFont(1.5);
    const QImage changed = picture();
    setFont(1);
    EXPECT_EQ(picture(), standard);
    setFont(1.5);
    reopen();
    selectKeywords({QStringLiteral("collage maker")});
    const QImage started = picture();
    EXPECT_EQ(changed.size(), started.size());
    EXPECT_EQ(changed, started);
}

TEST_F(KeywordTableDailyTest, ColumnsKeepTheirProportionsAtAnotherFont)
{
    columns().resizeSection(int(KeywordColumn::Target), 140);
    setFont(1.5);
    EXPECT_NEAR(columns().sectionSize(int(KeywordColumn::Target)), 210, 10);
    setFont(1);
    EXPECT_NEAR(columns().sectionSize(int(KeywordColumn::Target)), 140, 1);
}

} // namespace
} // namespace veltrix
