// SPDX-License-Identifier: GPL-3.0-or-later
// A month of two hundred keywords on networks and clocks as they are: a hotel's sign-in page,
// search hints that cannot be reached for two days, a clock that is set a year ahead and back.
#include "clients/autocomplete_client.h"
#include "clients/itunes_client.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <gtest/gtest.h>

#include <array>

namespace veltrix
{
namespace
{

constexpr int days = 31;
constexpr int keywords = 200;
constexpr int hotelDay = 10;
constexpr int firstDayWithoutHints = 15;
constexpr int lastDayWithoutHints = 16;
constexpr int wrongClockDay = 20;

constexpr double hour = 3600;
constexpr double day = 86'400;
/// The machine runs from nine to five.
constexpr double opens = 9 * hour;
constexpr int hoursADay = 8;

const Date monthStart = dateFromUnixSeconds(1'795'219'200); // 2026-11-21T00:00:00Z

/// One keyword as the month goes by.
struct Keyword {
    QString term;
    std::optional<Date> measuredAt;
    std::array<bool, days> isMeasuredOn{};
    std::array<bool, days> isScoredOn{};
};

class Month : public testing::Test
{
protected:
    Month()
    {
        const HttpSend send = [this](HttpRequest request, std::stop_token stop) {
            return answer(this, std::move(request), std::move(stop));
        };
        m_store = std::make_unique<ITunesClient>(
            ITunesClient::Arguments{QUrl(QStringLiteral("https://apps.example")), send, m_traffic});
        m_hints = std::make_unique<AutocompleteClient>(AutocompleteClient::Arguments{
            send, m_clock, QString(), QUrl(QStringLiteral("https://hints.example"))});
        for (int i = 0; i < keywords; ++i)
            m_keywords.push_back({QStringLiteral("%1 keyword").arg(i * 7919, 7), {}, {}, {}});
    }

    /// Seconds since the month began, whatever the wall clock says.
    [[nodiscard]] double elapsed() const
    {
        return (m_clock->now() - monthStart - m_clockError).count();
    }
    [[nodiscard]] int today() const { return int(elapsed() / day); }

    void setClockWrongBy(Seconds error)
    {
        const double truth = elapsed();
        m_clockError = error;
        m_clock->jumpTo(monthStart + Seconds(truth) + error);
    }

    static Task<HttpResponse> answer(Month *month, HttpRequest request, std::stop_token stop)
    {
        const bool isHints = request.url.host() == QLatin1String("hints.example");
        ++(isHints ? month->m_hintsRequests : month->m_storeRequests)[size_t(month->today())];
        const int today = month->today();
        if (isHints && today >= firstDayWithoutHints && today <= lastDayWithoutHints) {
            month->m_lostToHints += request.timeout.count();
            co_await month->m_clock->sleep(request.timeout, stop);
            throw TransportError(QStringLiteral("did not answer in time"));
        }
        co_await month->m_clock->sleep(Seconds(0.4), stop);
        HttpResponse response;
        response.status = 200;
        if (today == hotelDay && month->elapsed() < hotelDay * day + opens + 1.5 * hour)
            response.body = "<!DOCTYPE html><title>Welcome to the hotel</title>";
        else if (isHints)
            response.body = "<plist><dict><key>hints</key><array><dict><key>term</key>"
                            "<string>word</string></dict></array></dict></plist>";
        else
            response.body = R"({"resultCount":1,"results":[{"trackId":1}]})";
        co_return response;
    }

    /// Measures what is older than six hours, one after another.
    static Task<void> refresh(Month *month)
    {
        for (Keyword &keyword : month->m_keywords) {
            const Date now = month->m_clock->now();
            // A measurement of the time to come is not fresh.
            if (keyword.measuredAt && now - *keyword.measuredAt < Seconds(6 * hour) &&
                now >= *keyword.measuredAt)
                continue;
            const auto today = size_t(month->today());
            try {
                co_await month->m_store->search(keyword.term, QStringLiteral("US"), 100, {});
            } catch (const Error &) {
                ++month->m_failures;
                continue;
            }
            const auto evidence =
                co_await month->m_hints->observe(keyword.term, QStringLiteral("US"), {});
            keyword.measuredAt = month->m_clock->now();
            keyword.isMeasuredOn[today] = true;
            if (evidence && evidence->dailyScore)
                keyword.isScoredOn[today] = true;
            month->m_mostCached = std::max(month->m_mostCached, month->m_traffic->cachedBytes());
        }
    }

    static Task<bool> live(Month *month)
    {
        for (int number = 0; number < days; ++number) {
            for (int hourOfDay = 0; hourOfDay < hoursADay; ++hourOfDay) {
                const double begin = number * day + opens + hourOfDay * hour;
                if (begin > month->elapsed())
                    co_await month->m_clock->sleep(Seconds(begin - month->elapsed()), {});
                if (number == wrongClockDay && hourOfDay == 0)
                    month->setClockWrongBy(Seconds(365 * day));
                if (number == wrongClockDay && hourOfDay == 1)
                    month->setClockWrongBy(Seconds(0));
                co_await refresh(month);
                month->m_longestRefresh[size_t(number)] =
                    std::max(month->m_longestRefresh[size_t(number)], month->elapsed() - begin);
            }
        }
        co_return true;
    }

    [[nodiscard]] int measuredOn(int number) const
    {
        return int(std::count_if(m_keywords.begin(), m_keywords.end(), [number](const Keyword &k) {
            return k.isMeasuredOn[size_t(number)];
        }));
    }
    [[nodiscard]] int scoredOn(int number) const
    {
        return int(std::count_if(m_keywords.begin(), m_keywords.end(), [number](const Keyword &k) {
            return k.isScoredOn[size_t(number)];
        }));
    }

    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>(monthStart);
    Seconds m_clockError{0};
    std::shared_ptr<ITunesTrafficController> m_traffic =
        std::make_shared<ITunesTrafficController>(m_clock);
    std::unique_ptr<ITunesClient> m_store;
    std::unique_ptr<AutocompleteClient> m_hints;
    std::vector<Keyword> m_keywords;
    std::array<int, days> m_storeRequests{};
    std::array<int, days> m_hintsRequests{};
    std::array<double, days> m_longestRefresh{};
    int m_failures = 0;
    double m_lostToHints = 0;
    qint64 m_mostCached = 0;
};

TEST_F(Month, MeasuresEveryKeywordOnEveryDayAndWaitsForNothingLong)
{
    const Outcome outcome(live(this));
    m_clock->runUntilIdle();
    ASSERT_TRUE(outcome.value());
    for (int number = 0; number < days; ++number) {
        EXPECT_EQ(measuredOn(number), keywords) << "day " << number;
        EXPECT_LE(m_hintsRequests[size_t(number)],
                  (number == wrongClockDay ? 2 : 1) * AutocompleteClient::dailyLimit)
            << "day " << number;
        const bool hasHints = number < firstDayWithoutHints || number > lastDayWithoutHints;
        // Two hundred requests a day are some forty keywords of five prefixes; many share answers.
        EXPECT_GE(scoredOn(number), hasHints ? 40 : 0) << "day " << number;
        // Two hundred permits of 4.5 s are a quarter of an hour.
        EXPECT_LE(m_longestRefresh[size_t(number)], 20 * 60) << "day " << number;
    }
    // Two time-outs, then one every ten minutes of measuring.
    EXPECT_LE(m_lostToHints, 120);
    EXPECT_LE(m_failures, 2 * keywords)
        << "the sign-in page is met in the two refreshes it is there";
    EXPECT_LE(m_mostCached, ITunesTrafficController::cacheCapacity);
    RecordProperty("failures", m_failures);
    RecordProperty("secondsLostToHints", int(m_lostToHints));
    RecordProperty("storeRequestsOnHotelDay", m_storeRequests[hotelDay]);
}

} // namespace
} // namespace veltrix
