// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of apps, and what is pressed as one.
#include "ui_kit/widgets/app_row_list.h"

#include "ui/support/ui_test.h"
#include "ui_kit/widgets/artwork_images.h"

#include <QAccessible>

namespace veltrix
{
namespace
{

class AppRowTest : public testing::Test
{
protected:
    AppRowTest()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        testTheme().set(ColorScheme::Light);
    }
    ~AppRowTest() override
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    FakeArtwork loading;
    ArtworkImages images{loading};
};

TEST_F(AppRowTest, TheTextsOfAFullRowFollowTheLocale)
{
    const ITunesAppResult app = sampleResults().first();
    const AppRowTexts texts = AppRowTexts::of(app, AppRowLook::Full);
    EXPECT_EQ(texts.name, QStringLiteral("Lumen Photo Editor"));
    EXPECT_EQ(texts.rating, QStringLiteral("4.8"));
    EXPECT_EQ(texts.ratingCount, QStringLiteral("128,402 ratings"));
    EXPECT_TRUE(texts.details.contains(QStringLiteral(" · Updated ")));
    EXPECT_TRUE(texts.details.endsWith(QStringLiteral(", 2026"))) << texts.details.toStdString();
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(AppRowTexts::of(app, AppRowLook::Full).ratingCount,
              QStringLiteral("128.402 ratings"));
}

TEST_F(AppRowTest, AShortRowTellsItsRankAndTheRatingAlone)
{
    const AppRowTexts texts = AppRowTexts::of(sampleResults().first(), AppRowLook::Padded, 3);
    EXPECT_EQ(texts.ratingCount, QString());
    EXPECT_TRUE(texts.description.startsWith(QStringLiteral("Rank 3, ")));
    EXPECT_TRUE(texts.description.endsWith(QStringLiteral(", rated 4.8")));
    EXPECT_FALSE(texts.details.contains(QStringLiteral("Updated")));
}

TEST_F(AppRowTest, ARowWithoutFactsShowsNoZeroes)
{
    const AppRowTexts none{QStringLiteral("Unknown App"), {}, {}, {}, {}};
    for (const AppRowLook look : {AppRowLook::Full, AppRowLook::Padded, AppRowLook::Flush})
        EXPECT_EQ(AppRowTexts::of(ITunesAppResult(), look), none);
}

TEST_F(AppRowTest, AnAppWithoutRatingsSaysSoWithoutAStar)
{
    ITunesAppResult app = sampleResults().at(1);
    app.averageUserRating = 0;
    app.userRatingCount = 0;
    const AppRowTexts shortTexts = AppRowTexts::of(app, AppRowLook::Padded, 3);
    EXPECT_EQ(shortTexts.rating, QStringLiteral("No ratings"));
    EXPECT_EQ(shortTexts.description, QStringLiteral("Rank 3, Brass Lens Studio, No ratings"));
    const AppRowTexts full = AppRowTexts::of(app, AppRowLook::Full);
    EXPECT_EQ(full.rating, QStringLiteral("No ratings"));
    EXPECT_EQ(full.ratingCount, QString());

    AppRow row(AppRowLook::Padded, images);
    row.setApp(app);
    row.resize(500, row.sizeHint().height());
    const QColor star = Tokens(ColorScheme::Light)[Token::Yellow];
    const auto hasStar = [&] {
        const QImage picture = row.grab().toImage();
        for (int x = picture.width() / 2; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                if (picture.pixelColor(x, y) == star)
                    return true;
            }
        }
        return false;
    };
    EXPECT_FALSE(hasStar());
    app.averageUserRating = 4.5;
    app.userRatingCount = 7;
    row.setApp(app);
    EXPECT_TRUE(hasStar());
}

TEST_F(AppRowTest, TheOwnAppIsMarkedWhereverItMovesInTheList)
{
    AppRowList list(QStringLiteral("row"), AppRowLook::Padded, AppRowList::Ranks::Shown, images);
    const QList<ITunesAppResult> apps = sampleResults();
    list.setOwnApp(apps[2].trackId);
    list.setApps(apps);
    const auto own = [&] {
        QStringList marked;
        for (const AppRow *row : list.findChildren<AppRow *>()) {
            if (row->isOwn() && !row->isHidden())
                marked << row->objectName() + u' ' + row->accessibleDescription();
        }
        return marked.join(u'|');
    };
    EXPECT_EQ(own(), QStringLiteral("row3 Your app, Rank 3, Northlight Labs, rated 4.6"));
    list.setApps({apps[2], apps[0]});
    EXPECT_TRUE(own().startsWith(QStringLiteral("row1 Your app, Rank 1")));
    list.setOwnApp(apps[0].trackId);
    EXPECT_TRUE(own().startsWith(QStringLiteral("row2 Your app, Rank 2")));
    list.setOwnApp(std::nullopt);
    EXPECT_EQ(own(), QString());
    ITunesAppResult unknown;
    list.setApps({unknown});
    EXPECT_EQ(own(), QString()) << "an app without an id is nobody's";
}

TEST_F(AppRowTest, ANameFromRightToLeftDoesNotTurnWhatPressingDoes)
{
    AppRow row(AppRowLook::Padded, images);
    ITunesAppResult app = sampleResults().at(1);
    app.trackName = QStringLiteral("עורך %1\u202E");
    row.setApp(app);
    row.setPurpose(QStringLiteral("View details for %1"));
    EXPECT_EQ(row.accessibleName(), QStringLiteral("View details for \u2068עורך %1\u2069"));
}

TEST_F(AppRowTest, AFullRowIsAnItemOfAListAndNotPressed)
{
    AppRow row(AppRowLook::Full, images);
    row.setApp(sampleResults().at(1), 2);
    EXPECT_EQ(row.accessibleName(), QStringLiteral("Foxglove Film Camera"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&row)->role(), QAccessible::ListItem);
    EXPECT_EQ(row.focusPolicy(), Qt::NoFocus);
}

TEST_F(AppRowTest, ARowIsNamedByWhatPressingItDoes)
{
    AppRow row(AppRowLook::Padded, images);
    row.setApp(sampleResults().at(1), 2);
    EXPECT_EQ(row.accessibleName(), QStringLiteral("Research Foxglove Film Camera"));
    row.setPurpose(QStringLiteral("View details for %1"));
    EXPECT_EQ(row.accessibleName(), QStringLiteral("View details for Foxglove Film Camera"));
}

TEST_F(AppRowTest, ARowIsPressedByMouseEnterSpaceAndAssistiveTechnology)
{
    AppRow row(AppRowLook::Padded, images);
    row.setApp(sampleResults().at(1));
    row.resize(500, row.sizeHint().height());
    row.show();
    const QSignalSpy pressed(&row, &AppRow::clicked);
    QTest::mouseClick(&row, Qt::LeftButton, {}, QPoint(100, 20));
    EXPECT_EQ(pressed.size(), 1);
    QTest::mouseClick(&row, Qt::RightButton, {}, QPoint(100, 20));
    QTest::mousePress(&row, Qt::LeftButton, {}, QPoint(100, 20));
    QTest::mouseRelease(&row, Qt::LeftButton, {}, QPoint(100, 200));
    EXPECT_EQ(pressed.size(), 1) << "another button, and a release elsewhere";
    row.setFocus();
    QTest::keyClick(&row, Qt::Key_Return);
    QTest::keyClick(&row, Qt::Key_Enter);
    QTest::keyClick(&row, Qt::Key_Space);
    EXPECT_EQ(pressed.size(), 4);
    QAccessibleInterface *told = QAccessible::queryAccessibleInterface(&row);
    EXPECT_EQ(told->role(), QAccessible::Button);
    told->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(pressed.size(), 5);
}

TEST_F(AppRowTest, ArrowsAreLeftToWhatScrollsAroundIt)
{
    AppRow row(AppRowLook::Padded, images);
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&row, &event);
        EXPECT_FALSE(event.isAccepted());
    }
}

TEST_F(AppRowTest, AControlOfTheRowKeepsItsOwnPresses)
{
    AppRow row(AppRowLook::Padded, images);
    row.setApp(sampleResults().at(1));
    auto *control = new Button(Button::Kind::Link, QStringLiteral("Track"));
    row.setTrailing(control);
    row.resize(500, row.sizeHint().height());
    row.show();
    const QSignalSpy rowPressed(&row, &AppRow::clicked);
    const QSignalSpy controlPressed(control, &Button::clicked);
    QTest::mouseClick(control, Qt::LeftButton);
    EXPECT_EQ(controlPressed.size(), 1);
    EXPECT_EQ(rowPressed.size(), 0);
}

TEST_F(AppRowTest, TheRowsOfAListKeepTheirPlaces)
{
    AppRowList list(QStringLiteral("row"), AppRowLook::Flush, AppRowList::Ranks::Hidden, images);
    const QList<ITunesAppResult> apps = sampleResults();
    list.setApps(apps);
    const auto before = list.findChildren<AppRow *>();
    ASSERT_EQ(before.size(), apps.size());
    list.setApps({apps.last(), apps.first()});
    EXPECT_EQ(before[0]->app(), apps.last());
    EXPECT_EQ(before[1]->app(), apps.first());
    EXPECT_TRUE(before[2]->isHidden());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(list.findChildren<AppRow *>(), before.mid(0, 2));
    list.setApps({});
    EXPECT_TRUE(list.isHidden());
}

TEST_F(AppRowTest, AListTellsWhichAppWasPressed)
{
    AppRowList list(QStringLiteral("row"), AppRowLook::Flush, AppRowList::Ranks::Shown, images);
    QList<ITunesAppResult> pressed;
    QObject::connect(&list, &AppRowList::pressed, &list,
                     [&](const ITunesAppResult &app) { pressed << app; });
    list.setApps(sampleResults());
    list.findChild<AppRow *>(QStringLiteral("row2"))->click();
    EXPECT_EQ(pressed, QList<ITunesAppResult>{sampleResults().at(1)});
}

const QRectF wide(0, 0, 600, 48);

AppRowMetrics metrics(bool hasRatingCount)
{
    return {.nameHeight = 16,
            .detailsHeight = 15,
            .iconSide = 31,
            .iconGap = 10,
            .rankWidth = 24,
            .ratingWidth = 60,
            .hasRatingCount = hasRatingCount,
            .trailing = 150,
            .padding = 8};
}

TEST(AppRowGeometry, GivesTheNameWhatTheRestLeaves)
{
    const AppRowGeometry geometry = layoutAppRow(wide, metrics(false), Qt::LeftToRight);
    EXPECT_LT(geometry.rank.right(), geometry.icon.left());
    EXPECT_LT(geometry.icon.right(), geometry.name.left());
    EXPECT_LT(geometry.name.right(), geometry.star.left());
    EXPECT_LT(geometry.star.right(), geometry.rating.left());
    EXPECT_DOUBLE_EQ(geometry.rating.right(), 600 - 8 - 150);
    EXPECT_DOUBLE_EQ(geometry.name.bottom(), geometry.details.top());
    EXPECT_DOUBLE_EQ(geometry.rating.height(), 48);
    EXPECT_TRUE(geometry.ratingCount.isEmpty());
}

TEST(AppRowGeometry, ACountStandsBelowItsRating)
{
    const AppRowGeometry geometry = layoutAppRow(wide, metrics(true), Qt::LeftToRight);
    EXPECT_DOUBLE_EQ(geometry.rating.top(), geometry.name.top());
    EXPECT_DOUBLE_EQ(geometry.ratingCount.top(), geometry.details.top());
    EXPECT_DOUBLE_EQ(geometry.ratingCount.left(), geometry.star.left());
    EXPECT_TRUE(wide.contains(geometry.icon));
}

TEST(AppRowGeometry, ABadgeStandsBehindTheNameAndNeverUnderTheRating)
{
    AppRowMetrics marked = metrics(false);
    marked.nameWidth = 90;
    marked.badgeWidth = 40;
    const AppRowGeometry geometry = layoutAppRow(wide, marked, Qt::LeftToRight);
    EXPECT_DOUBLE_EQ(geometry.name.width(), 90);
    EXPECT_DOUBLE_EQ(geometry.badge.left(), geometry.name.right() + 8);
    EXPECT_DOUBLE_EQ(geometry.badge.width(), 40);
    marked.nameWidth = 1000;
    const AppRowGeometry crowded = layoutAppRow(wide, marked, Qt::LeftToRight);
    EXPECT_LT(crowded.badge.right(), crowded.star.left());
    EXPECT_LT(crowded.name.right(), crowded.badge.left());
}

TEST(AppRowGeometry, IsMirroredForRightToLeft)
{
    const auto left = layoutAppRow(wide, metrics(false), Qt::LeftToRight);
    const auto right = layoutAppRow(wide, metrics(false), Qt::RightToLeft);
    EXPECT_DOUBLE_EQ(right.icon.left(), 600 - left.icon.right());
    EXPECT_DOUBLE_EQ(right.name.left(), 600 - left.name.right());
    EXPECT_DOUBLE_EQ(right.name.width(), left.name.width());
}

TEST(AppRowGeometry, NeverGivesANegativeWidth)
{
    for (const bool hasRatingCount : {false, true}) {
        const auto geometry =
            layoutAppRow(QRectF(0, 0, 60, 48), metrics(hasRatingCount), Qt::LeftToRight);
        EXPECT_GE(geometry.name.width(), 0);
        EXPECT_GE(geometry.rating.width(), 0);
        EXPECT_GE(geometry.ratingCount.width(), 0);
    }
}

} // namespace
} // namespace veltrix
