// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/change_log.h"

#include "store/store_fixture.h"
#include "ui_kit/text/date_texts.h"

#include <QTimeZone>

#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

/// Noon of a day of the calendar.
Date on(int year, int month, int day)
{
    return dateFromUnixSeconds(
        double(QDateTime(QDate(year, month, day), QTime(12, 0), Qt::UTC).toSecsSinceEpoch()));
}

const Date now = on(2026, 11, 22);
const QLocale english(QLocale::English, QLocale::UnitedStates);

ListingChange change(ListingChangeKind kind, Date date, const char *earlier, const char *later,
                     const char *storefront = "US")
{
    return {kind, date, text(storefront), text(earlier), text(later)};
}

std::vector<ChangeLogEntry> logOf(const std::vector<ListingChange> &changes)
{
    return changeLog({{{on(2026, 8, 21), changes}}, {text("US")}}, now, english);
}

QStringList sentences(const std::vector<ChangeLogEntry> &log)
{
    QStringList said;
    for (const ChangeLogEntry &entry : log)
        said << entry.sentence;
    return said;
}

TEST(ChangeLog, GoesFromTheNewestChangeDownToTheDayOfTracking)
{
    using enum ListingChangeKind;
    const auto log =
        logOf({change(Name, on(2026, 10, 9), "Foxglove Camera", "Foxglove Film Camera"),
               change(Icon, on(2026, 10, 9), "https://a.example/1.png", "https://a.example/2.png"),
               change(Version, on(2026, 10, 23), "5.1.2", "5.1.3"),
               change(Price, on(2026, 11, 4), "$1.99", "Free"),
               change(Version, on(2026, 11, 19), "5.1.3", "5.2")});
    EXPECT_EQ(sentences(log),
              (QStringList{text("Nov 19, new version, 5.1.3 to 5.2"),
                           text("Nov 4, new price, $1.99 to Free"),
                           text("Oct 23, new version, 5.1.2 to 5.1.3"),
                           text("Oct 9, new name, Foxglove Camera to Foxglove Film Camera"),
                           text("Oct 9, new icon"),
                           text("Aug 21, tracked, ranks and changes are kept since then.")}));
    EXPECT_EQ(log[0].title, text("New version"));
    EXPECT_EQ(log[0].detail, text("5.1.3 → 5.2"));
    EXPECT_EQ(log[0].day, text("Nov 19"));
    EXPECT_EQ(log[1].title, text("New price"));
    EXPECT_EQ(log[5].title, text("Tracked"));
    EXPECT_EQ(log[5].detail, text("Ranks and changes are kept since then."));
}

TEST(ChangeLog, ANewIconShowsBothPictures)
{
    const auto log = logOf({change(ListingChangeKind::Icon, now, "https://a.example/1.png",
                                   "https://a.example/2.png")});
    ASSERT_TRUE(log[0].pictures);
    EXPECT_EQ(log[0].pictures->earlier->text(), text("https://a.example/1.png"));
    EXPECT_EQ(log[0].pictures->later->text(), text("https://a.example/2.png"));
    EXPECT_EQ(log[0].detail, QString());
}

TEST(ChangeLog, AFactThatIsGoneIsSaidInWords)
{
    using enum ListingChangeKind;
    const auto log = logOf({change(Price, on(2026, 11, 1), "$1.99", ""),
                            change(Price, on(2026, 11, 3), "", "Free"),
                            change(Icon, on(2026, 11, 5), "https://a.example/1.png", "")});
    EXPECT_EQ(sentences(log).mid(0, 3),
              (QStringList{text("Nov 5, icon removed"), text("Nov 3, price given, Free"),
                           text("Nov 1, price removed, it was $1.99.")}));
}

TEST(ChangeLog, ADayOfAnotherYearNamesIt)
{
    const auto log = logOf({change(ListingChangeKind::Version, on(2025, 12, 31), "1", "2")});
    EXPECT_EQ(log[0].day, text("Dec 31, 2025"));
}

TEST(ChangeLog, PricesNameTheirStorefrontsWhereTheyDiffer)
{
    using enum ListingChangeKind;
    const auto log = logOf({change(Price, on(2026, 11, 4), "$1.99", "Free"),
                            change(Price, on(2026, 11, 6), "2,29 €", "Gratis", "DE"),
                            change(Version, on(2026, 11, 7), "1", "2", "DE")});
    EXPECT_EQ(sentences(log).mid(0, 3),
              (QStringList{text("Nov 7, new version, 1 to 2"),
                           text("Nov 6, new price in Germany, 2,29 € to Gratis"),
                           text("Nov 4, new price in United States, $1.99 to Free")}));
}

TEST(ChangeLog, APriceOfAnotherStorefrontThanTheTrackedOneNamesIt)
{
    const auto log =
        logOf({change(ListingChangeKind::Price, on(2026, 11, 6), "2,29 €", "Gratis", "DE")});
    EXPECT_EQ(log[0].title, text("New price in Germany"));
}

TEST(ChangeLog, AnAppTrackedInThreeStorefrontsTellsEachChangeOnce)
{
    using enum ListingChangeKind;
    const ListingHistory us{
        on(2026, 9, 1),
        {change(Name, on(2026, 10, 9), "A", "B"), change(Version, on(2026, 11, 1), "1", "2")}};
    const ListingHistory ca{on(2026, 8, 2), {change(Version, on(2026, 11, 1), "1", "2", "CA")}};
    const ListingHistory gb{on(2026, 9, 3), {change(Version, on(2026, 11, 2), "1", "2", "GB")}};
    const auto log = changeLog({{us, ca, gb}, {text("US"), text("CA"), text("GB")}}, now, english);
    EXPECT_EQ(sentences(log),
              (QStringList{text("Nov 1, new version, 1 to 2"), text("Oct 9, new name, A to B"),
                           text("Aug 2, tracked, ranks and changes are kept since then.")}));
}

TEST(ChangeLog, TheSamePriceInTwoStorefrontsIsToldOfBoth)
{
    using enum ListingChangeKind;
    const ListingHistory us{on(2026, 9, 1), {change(Price, on(2026, 11, 4), "$1.99", "Free")}};
    const ListingHistory ca{on(2026, 9, 1),
                            {change(Price, on(2026, 11, 4), "$1.99", "Free", "CA")}};
    const auto log = changeLog({{us, ca}, {text("US"), text("CA")}}, now, english);
    EXPECT_EQ(sentences(log).mid(0, 2),
              (QStringList{text("Nov 4, new price in United States, $1.99 to Free"),
                           text("Nov 4, new price in Canada, $1.99 to Free")}));
}

TEST(ChangeLog, TheSameChangeAgainIsAnotherChange)
{
    using enum ListingChangeKind;
    const auto log = logOf({change(Price, on(2026, 9, 1), "$2", "Free"),
                            change(Price, on(2026, 9, 20), "Free", "$2"),
                            change(Price, on(2026, 11, 1), "$2", "Free")});
    EXPECT_EQ(log.size(), 4U);
}

TEST(ChangeLog, OfACompetitorJustTrackedSaysFromWhenOnChangesAreKept)
{
    const auto log = changeLog({{ListingHistory()}, {text("US")}}, now, english);
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log[0].day, QString());
    EXPECT_EQ(log[0].sentence,
              text("tracked, ranks and changes are kept from the next measurement on."));
}

TEST(ChangeLog, ANameThatTurnsTheTextIsCleaned)
{
    const auto log = logOf({change(ListingChangeKind::Name, on(2026, 11, 4),
                                   "\u202EFox\u0007glove\nFilm", "עורך תמונות")});
    EXPECT_EQ(log[0].detail, text("Foxglove Film → \u2068עורך תמונות\u2069"));
}

TEST(ChangeLog, ADamagedDateIsADash)
{
    const auto log =
        logOf({change(ListingChangeKind::Version, dateFromReferenceSeconds(1e18), "1", "2")});
    EXPECT_EQ(log[0].day, text("—"));
}

/// Changes of one app, oldest first.
rc::Gen<std::vector<ListingChange>> someChanges()
{
    return rc::gen::map(
        rc::gen::container<std::vector<std::tuple<int, int, int>>>(
            rc::gen::tuple(rc::gen::inRange(0, 4), rc::gen::inRange(0, 3), rc::gen::inRange(0, 3))),
        [](const std::vector<std::tuple<int, int, int>> &drawn) {
            std::vector<ListingChange> changes;
            int day = 8'000;
            for (const auto &[kind, earlier, later] : drawn)
                changes.push_back({ListingChangeKind(kind), startOfUtcDay(day++), text("US"),
                                   QString::number(earlier), QString::number(later)});
            return changes;
        });
}

RC_GTEST_PROP(ChangeLog, TellsEveryChangeOfOneHistoryAndTheTracking, ())
{
    const auto changes = *someChanges();
    RC_ASSERT(logOf(changes).size() == changes.size() + 1);
}

RC_GTEST_PROP(ChangeLog, IsTheSameHoweverManyStorefrontsNoticeTheSameOfNamesVersionsAndIcons, ())
{
    auto changes = *someChanges();
    std::erase_if(changes, [](const ListingChange &change) {
        return change.kind == ListingChangeKind::Price;
    });
    const ListingHistory history{on(2026, 8, 21), changes};
    const auto once = changeLog({{history}, {text("US")}}, now, english);
    const auto thrice = changeLog(
        {{history, history, history}, {text("US"), text("CA"), text("GB")}}, now, english);
    RC_ASSERT(sentences(once) == sentences(thrice));
}

} // namespace
} // namespace veltrix
