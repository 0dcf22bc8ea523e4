// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/app_facts.h"

#include "ui/support/research_world.h"

namespace veltrix
{
namespace
{

const AppFactFormat english{QLocale(QLocale::English, QLocale::UnitedStates), QTimeZone::utc()};

QStringList factsOf(const ITunesAppResult &app)
{
    QStringList lines;
    for (const AppFact &fact : appFacts(app, english))
        lines << fact.label + text(": ") + fact.value;
    return lines;
}

} // namespace

TEST(AppFacts, StandInTheirOrder)
{
    EXPECT_EQ(
        factsOf(foxglove()),
        (QStringList{text("Rating: 4.7 / 5"), text("Ratings: 128,402"),
                     text("Category: Photo & Video"), text("Price: Free"), text("Version: 5.2.1"),
                     text("Requires iOS: 16.0"), text("Updated: Nov 12, 2026")}));
}

TEST(AppFacts, SayWhatIsNotAvailable)
{
    EXPECT_EQ(factsOf({}),
              (QStringList{text("Rating: Not available"), text("Ratings: Not available"),
                           text("Category: Not available"), text("Price: Not available"),
                           text("Version: Not available"), text("Requires iOS: Not available"),
                           text("Updated: Not available")}));
}

TEST(AppFacts, AnAppThatNobodyHasRatedHasNoRatingsAndNeverZeroStars)
{
    const auto rated = [](std::optional<double> stars, std::optional<std::int64_t> count) {
        ITunesAppResult app;
        app.averageUserRating = stars;
        app.userRatingCount = count;
        return ratingOfFive(app, english.locale) + text(", ") + ratingText(app, english.locale);
    };
    EXPECT_EQ(rated(0.0, 0), text("No ratings, No ratings"));
    EXPECT_EQ(rated(std::nullopt, 0), text("No ratings, No ratings"));
    EXPECT_EQ(rated(0.0, std::nullopt), text("No ratings, No ratings"));
    EXPECT_EQ(rated(4.5, 0), text("No ratings, No ratings"));
    EXPECT_EQ(rated(0.0, 12), text("Not available, ")) << "nobody can give no star";
    EXPECT_EQ(rated(std::nullopt, 12), text("Not available, "));
    EXPECT_EQ(rated(1.0, 1), text("1.0 / 5, 1.0"));
}

TEST(AppFacts, AListingIsShownWithoutWhatTurnsOrHidesItsLetters)
{
    ITunesAppResult app = foxglove();
    app.trackName = text("Fox\u202Eglove\u0007\nCamera");
    app.sellerName = text("\u2067Brass\u2028Lens");
    app.primaryGenreName = text("Photo\u0085Video");
    app.formattedPrice = text("\u0002");
    app.version = text("5\t2");
    app.description = text("One.\u2028Two.\r\nThree.\u202D");
    EXPECT_EQ(shownName(app), text("Foxglove Camera"));
    EXPECT_EQ(bylineText(app), text("Brass Lens · Photo Video · Price unavailable"));
    EXPECT_EQ(factsOf(app).at(4), text("Version: 5 2"));
    EXPECT_EQ(descriptionText(app), text("One.\nTwo.\nThree."));
    app.trackName = text("\u202E\u202C");
    EXPECT_EQ(shownName(app), text("Unknown App"));
    EXPECT_EQ(*app.trackName, text("\u202E\u202C")) << "the record stays as it was sent";
}

TEST(AppFacts, AnUnreadableDateIsNotAvailable)
{
    ITunesAppResult app = foxglove();
    app.currentVersionReleaseDate = text("last week");
    EXPECT_EQ(factsOf(app).constLast(), text("Updated: Not available"));
    EXPECT_EQ(updatedText(app, english), std::nullopt);
}

TEST(AppFacts, NumbersFollowTheLocale)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    EXPECT_EQ(ratingOfFive(foxglove(), german), text("4,7 / 5"));
    EXPECT_EQ(ratingCountText(foxglove(), german), text("128.402"));
}

TEST(AppFacts, TheBylineNamesWhatIsMissing)
{
    EXPECT_EQ(bylineText(foxglove()), text("Brass Lens Studio · Photo & Video · Free"));
    EXPECT_EQ(bylineText({}), text("Unknown category · Price unavailable"));
}

TEST(AppFacts, ADescriptionMayBeMissingOrEmpty)
{
    ITunesAppResult app;
    EXPECT_EQ(descriptionText(app), text("No description available."));
    app.description = text("  \n ");
    EXPECT_EQ(descriptionText(app), text("No description available."));
    app.description = text("Film for everyone.");
    EXPECT_EQ(descriptionText(app), text("Film for everyone."));
}

TEST(AppFacts, ScreenshotsForPhonesComeFirstAndEmptyAddressesNotAtAll)
{
    ITunesAppResult app;
    EXPECT_TRUE(screenshots(app).isEmpty());
    app.ipadScreenshotUrls = QStringList{text("https://s.example/pad.png")};
    app.screenshotUrls = QStringList{text("https://s.example/a.png"), QString()};
    ASSERT_EQ(screenshots(app).size(), 2);
    EXPECT_EQ(screenshots(app)[0].text(), text("https://s.example/a.png"));
    EXPECT_EQ(screenshots(app)[1].text(), text("https://s.example/pad.png"));
}

TEST(AppFacts, TheLinkHasTheCodeInLowerCase)
{
    EXPECT_EQ(appStoreLink(QUrl(text("https://apps.apple.com")), text("US"), 42),
              QUrl(text("https://apps.apple.com/us/app/id42")));
    EXPECT_EQ(appStoreLink(QUrl(text("http://127.0.0.1:8080/store/")), text("de"), 7),
              QUrl(text("http://127.0.0.1:8080/store/de/app/id7")));
}

} // namespace veltrix
