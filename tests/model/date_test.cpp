// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/date.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>

#include <limits>

namespace veltrix
{
namespace
{

Date at(const char *text)
{
    return parseInternetDateTime(QString::fromUtf8(text), FractionalSeconds::Rejected).value();
}

TEST(Date, ZeroIsTheStartOf2001InUtc)
{
    EXPECT_EQ(referenceSeconds(at("2001-01-01T00:00:00Z")), 0);
    EXPECT_EQ(referenceSeconds(at("2025-01-01T00:00:00Z")), 757382400);
}

TEST(Date, OffsetsAreTakenOff)
{
    EXPECT_EQ(at("2026-03-01T08:30:00+02:00"), at("2026-03-01T06:30:00Z"));
    EXPECT_EQ(at("2026-03-01T08:30:00-05:30"), at("2026-03-01T14:00:00Z"));
}

TEST(Date, TextsOfAnotherFormDoNotParse)
{
    for (const char *text :
         {"", "2020-01-01", "2020-01-01T00:00:00", "2020-01-01 00:00:00Z", "2020-02-30T00:00:00Z",
          "2020-13-01T00:00:00Z", "2020-01-01T24:00:00Z", "2020-01-01T00:00:00.5Z",
          "2020-01-01T00:00:00Zx", "20-01-01T00:00:00Z", "2020-01-01T00:00:00+0100",
          "2020-1-1T00:00:00Z", " 2020-01-01T00:00:00Z"}) {
        EXPECT_FALSE(parseInternetDateTime(QString::fromUtf8(text), FractionalSeconds::Rejected))
            << text;
    }
}

TEST(Date, AFractionParsesOnlyWhereItIsAskedFor)
{
    const QString text = QStringLiteral("2026-03-01T08:30:00.250Z");
    EXPECT_FALSE(parseInternetDateTime(text, FractionalSeconds::Rejected));
    const auto date = parseInternetDateTime(text, FractionalSeconds::Required);
    ASSERT_TRUE(date);
    EXPECT_EQ(*date, at("2026-03-01T08:30:00Z") + Seconds(0.25));
    EXPECT_FALSE(
        parseInternetDateTime(QStringLiteral("2026-03-01T08:30:00Z"), FractionalSeconds::Required));
    EXPECT_FALSE(parseInternetDateTime(QStringLiteral("2026-03-01T08:30:00.Z"),
                                       FractionalSeconds::Required));
}

TEST(Date, EitherFormParsesWithoutAChoice)
{
    EXPECT_TRUE(parseInternetDateTime(QStringLiteral("2026-03-01T08:30:00Z")));
    EXPECT_TRUE(parseInternetDateTime(QStringLiteral("2026-03-01T08:30:00.25Z")));
}

TEST(Date, DaysAreFloorsAlsoBefore2001)
{
    EXPECT_EQ(utcDay(at("2001-01-01T00:00:00Z")), 0);
    EXPECT_EQ(utcDay(at("2001-01-01T23:59:59Z")), 0);
    EXPECT_EQ(utcDay(at("2000-12-31T23:59:59Z")), -1);
    EXPECT_EQ(startOfUtcDay(-1), at("2000-12-31T00:00:00Z"));
}

TEST(Date, AbsurdDatesHaveADayToo)
{
    EXPECT_EQ(utcDay(dateFromReferenceSeconds(std::numeric_limits<double>::quiet_NaN())), 0);
    EXPECT_EQ(utcDay(dateFromReferenceSeconds(1e300)), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(utcDay(dateFromReferenceSeconds(-1e300)), std::numeric_limits<std::int64_t>::min());
}

TEST(Date, PrintsWithMilliseconds)
{
    EXPECT_EQ(formatInternetDateTime(at("2026-03-01T08:30:00Z") + Seconds(0.25)),
              QStringLiteral("2026-03-01T08:30:00.250Z"));
    EXPECT_EQ(formatInternetDateTime(at("1999-12-31T23:59:59Z")),
              QStringLiteral("1999-12-31T23:59:59.000Z"));
}

TEST(CalendarDate, IsOneOfTheYears1To9999)
{
    const auto first = *parseInternetDateTime(u"0001-01-01T00:00:00Z");
    const auto last = *parseInternetDateTime(u"9999-12-31T23:59:59Z");
    for (const Date date : {first, last, Date(), dateFromReferenceSeconds(-0.5)}) {
        EXPECT_TRUE(isCalendarDate(date));
        EXPECT_EQ(formatInternetDateTime(date).size(), 24);
    }
    EXPECT_EQ(formatInternetDateTime(first), QStringLiteral("0001-01-01T00:00:00.000Z"));
    EXPECT_EQ(formatInternetDateTime(last), QStringLiteral("9999-12-31T23:59:59.000Z"));
    for (const double seconds :
         {referenceSeconds(first) - 1, referenceSeconds(last) + 1, 1e18, -1e18, 1e300, -1e300,
          std::numeric_limits<double>::max(), std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(isCalendarDate(dateFromReferenceSeconds(seconds))) << seconds;
        EXPECT_EQ(formatInternetDateTime(dateFromReferenceSeconds(seconds)), QString()) << seconds;
    }
}

} // namespace
} // namespace veltrix
