// SPDX-License-Identifier: GPL-3.0-or-later
// A share of all requests fails, in ways that clients can tell from an answer.
#include "sample/faults.h"
#include "services_fixture.h"

#include <gmock/gmock.h>

#include <map>
#include <vector>

namespace veltrix::sample
{
namespace
{

std::vector<std::optional<Fault>> sequence(int percent, std::uint64_t seed, int length)
{
    Faults faults(percent, seed);
    std::vector<std::optional<Fault>> fates;
    for (int request = 0; request < length; ++request)
        fates.push_back(faults.next());
    return fates;
}

TEST(Faults, HitTheShareThatIsAskedForInEveryWay)
{
    std::map<Fault, int> hits;
    int count = 0;
    for (const auto &fate : sequence(2, 1, 20'000)) {
        if (!fate)
            continue;
        ++hits[*fate];
        ++count;
    }
    EXPECT_NEAR(count, 400, 60);
    EXPECT_EQ(hits.size(), static_cast<std::size_t>(Fault::Slow) + 1);
}

TEST(Faults, AreTheSameForTheSameSeedAndOthersForAnother)
{
    EXPECT_EQ(sequence(20, 7, 500), sequence(20, 7, 500));
    EXPECT_NE(sequence(20, 7, 500), sequence(20, 8, 500));
}

TEST(Faults, SpareEverybodyAtZeroAndNobodyAtAHundred)
{
    EXPECT_THAT(sequence(0, 1, 200), testing::Each(std::optional<Fault>()));
    EXPECT_THAT(sequence(100, 1, 200), testing::Each(testing::Ne(std::optional<Fault>())));
}

TEST(Faults, ReachClientsAsErrorsOfTheConnectionAndAsStatuses)
{
    Options options = testOptions();
    options.faults = 100;
    const SampleServices services(options);
    int hungUp = 0;
    int cut = 0;
    std::map<int, int> statuses;
    // Far more than it takes to meet every fault; a slow one takes three seconds, and is left out.
    Faults foretold(options.faults, options.faultSeed);
    for (int request = 0; request < 40; ++request) {
        const std::optional<Fault> fate = foretold.next();
        httplib::Client client(services.httpOrigin().toStdString());
        client.set_read_timeout(0, 200'000);
        const httplib::Result result = client.Get("/lookup?id=1482203417&country=US");
        if (fate == Fault::HungUp)
            hungUp += !result ? 1 : 0;
        else if (fate == Fault::Cut)
            cut += !result ? 1 : 0;
        else if (fate != Fault::Slow && result)
            ++statuses[result->status];
        if (result && result->status == 429) {
            EXPECT_EQ(result->get_header_value("Retry-After"), "1");
        }
    }
    EXPECT_GT(hungUp, 0);
    EXPECT_GT(cut, 0);
    EXPECT_THAT(statuses, testing::UnorderedElementsAre(testing::Key(200), testing::Key(403),
                                                        testing::Key(429), testing::Key(500),
                                                        testing::Key(503)));
}

} // namespace
} // namespace veltrix::sample
