// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/app_details_sheet.h"

#include "ui/listing/screenshot_strip.h"
#include "ui/support/research_test.h"
#include "ui_kit/widgets/expandable_text.h"

namespace veltrix
{
namespace
{

class AppDetailsSheetTest : public ResearchTest
{
protected:
    void openFor(std::int64_t trackId, const char *country = "US")
    {
        const ResearchContext context{store(), window->images(), [this](const QUrl &url) {
                                          world->openedUrls.append(url);
                                      }};
        openSheet(window.get(), new AppDetailsSheet(context, {trackId, text(country), appId()}));
        settle();
        window->grab();
    }
    QString label(const char *name) { return find<QLabel>(name)->text(); }
};

TEST_F(AppDetailsSheetTest, ShowsTheWholeListing)
{
    openFor(201);
    QWidget *sheet = topSheet();
    EXPECT_TRUE(shows(sheet, text("App details")));
    EXPECT_TRUE(shows(sheet, text("Foxglove Film Camera")));
    EXPECT_TRUE(shows(sheet, text("Screenshots")));
    EXPECT_TRUE(shows(sheet, text("About")));
    EXPECT_TRUE(label("appDetailsAbout").startsWith(text("Foxglove gives every photo")));
    EXPECT_EQ(find("appFact0")->accessibleName(), text("Rating: 4.7 / 5"));
    EXPECT_EQ(find("appFact5")->accessibleName(), text("Requires iOS: 16.0"));
    EXPECT_EQ(find("screenshot1")->accessibleName(), text("App screenshot 1"));
}

TEST_F(AppDetailsSheetTest, SaysWhatIsMissing)
{
    ITunesAppResult bare;
    bare.trackId = 7;
    appStore().apps.insert(7, bare);
    openFor(7);
    EXPECT_TRUE(shows(topSheet(), text("Unknown App")));
    EXPECT_EQ(label("appDetailsNoScreenshots"),
              text("No screenshots available for this storefront."));
    EXPECT_EQ(label("appDetailsAbout"), text("No description available."));
    for (int fact = 0; fact < 7; ++fact)
        EXPECT_EQ(label(qPrintable(QStringLiteral("appFact%1").arg(fact))), text("Not available"));
    EXPECT_FALSE(topSheet()->findChild<ScreenshotStrip *>());
}

TEST_F(AppDetailsSheetTest, LoadsInTheStorefrontAndTellsAFailure)
{
    appStore().holds = true;
    openFor(201, "DE");
    EXPECT_EQ(emptyTitle("appDetailsMessage"), text("Loading app details…"));
    EXPECT_EQ(appStore().lookups, QStringList{text("201/DE")});
    press(Qt::Key_Escape);
    EXPECT_EQ(appStore().inFlight, 0);

    appStore().holds = false;
    appStore().fails = [](const QString &) {
        return true;
    };
    openFor(201);
    EXPECT_EQ(emptyTitle("appDetailsMessage"), text("Couldn't load app"));
    EXPECT_EQ(emptyText("appDetailsMessage"), text("The network is down."));
    appStore().fails = nullptr;
    click("appDetailsMessageAction");
    EXPECT_TRUE(shows(topSheet(), text("Foxglove Film Camera")));
}

TEST_F(AppDetailsSheetTest, AnAppThatIsNotSoldHereIsSaidSo)
{
    openFor(555);
    EXPECT_EQ(emptyText("appDetailsMessage"), text("App unavailable in this storefront."));
}

TEST_F(AppDetailsSheetTest, OpensTheStorePageOfItsStorefront)
{
    openFor(201, "DE");
    click("appDetailsStore");
    EXPECT_EQ(world->openedUrls, QList<QUrl>{QUrl(text("https://apps.apple.com/de/app/id201"))});
}

TEST_F(AppDetailsSheetTest, TracksTheCompetitorOnce)
{
    openFor(201);
    EXPECT_EQ(find<Button>("trackCompetitor")->text(), text("Track competitor"));
    EXPECT_EQ(find<Button>("trackCompetitor")->symbol(), text("plus"));
    click("trackCompetitor");
    EXPECT_EQ(find<Button>("trackCompetitor")->text(), text("Tracking competitor"));
    EXPECT_EQ(find<Button>("trackCompetitor")->symbol(), text("checkmark"));
    EXPECT_FALSE(find<Button>("trackCompetitor")->isEnabled());
    EXPECT_EQ(store().competitorsOfApp(appId()).constLast().trackId, 201);
}

TEST_F(AppDetailsSheetTest, DoneClosesIt)
{
    openFor(201);
    click("appDetailsDone");
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
}

TEST(FirstLines, EndInAnEllipsisWhereThereIsMore)
{
    const QFont font;
    const QString longText = text("one two three four five six seven eight nine ten eleven twelve");
    const int width = QFontMetrics(font).horizontalAdvance(text("one two three four")) + 4;
    const QString two = firstLines(longText, font, width, 2);
    EXPECT_EQ(two.count(u'\n'), 1);
    EXPECT_TRUE(two.startsWith(text("one two three")));
    EXPECT_TRUE(two.endsWith(text("…")));
    for (const QString &line : two.split(u'\n'))
        EXPECT_LE(QFontMetricsF(font).horizontalAdvance(line.trimmed()), width);
}

TEST(FirstLines, LeaveAShortTextAsItIs)
{
    EXPECT_EQ(firstLines(text("one\ntwo"), QFont(), 400, 2), text("one\ntwo"));
    EXPECT_EQ(firstLines(QString(), QFont(), 400, 2), QString());
}

TEST(FirstLines, CountEmptyLinesAndLinesThatAreLeftOut)
{
    EXPECT_EQ(firstLines(text("one\n\nthree\nfour"), QFont(), 400, 3), text("one\n\nthree…"));
    EXPECT_EQ(firstLines(text("one\n\nthree"), QFont(), 400, 2), text("one\n…"));
}

} // namespace
} // namespace veltrix
