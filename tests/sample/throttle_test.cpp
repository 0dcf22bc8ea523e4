// SPDX-License-Identifier: GPL-3.0-or-later
// The request limit, on a clock of the test's own; and terms that are commands.
#include "sample/command_term.h"
#include "sample/throttle.h"

#include <gtest/gtest.h>

namespace veltrix::sample
{
namespace
{

using namespace std::chrono_literals;

TEST(Throttle, LetsThatManyThroughInAnySixtySeconds)
{
    Throttle::Clock::time_point now{};
    Throttle throttle(2, [&now] { return now; });
    EXPECT_TRUE(throttle.admits());
    now += 30s;
    EXPECT_TRUE(throttle.admits());
    now += 29s;
    EXPECT_FALSE(throttle.admits());
    now += 1s;
    EXPECT_TRUE(throttle.admits()) << "the first one is a minute old";
    EXPECT_FALSE(throttle.admits());
    now += 29s;
    EXPECT_FALSE(throttle.admits());
    now += 1s;
    EXPECT_TRUE(throttle.admits()) << "the second one is a minute old";
}

TEST(Throttle, WithoutALimitLetsAllThrough)
{
    Throttle throttle(0);
    for (int request = 0; request < 1'000; ++request)
        EXPECT_TRUE(throttle.admits());
}

TEST(CommandTerm, LeavesOrdinaryTermsAsTheyAre)
{
    EXPECT_EQ(commandTerm(u" photo Editor"_qs), (CommandTerm{{}, u" photo Editor"_qs}));
    EXPECT_EQ(commandTerm(u"free sample: x"_qs), (CommandTerm{{}, u"free sample: x"_qs}));
}

TEST(CommandTerm, PartsTheCommandFromItsTerm)
{
    EXPECT_EQ(commandTerm(u" Sample:SLOW  weather   radar "_qs),
              (CommandTerm{u"slow"_qs, u"weather radar"_qs}));
    EXPECT_EQ(commandTerm(u"sample:error"_qs), (CommandTerm{u"error"_qs, u"photo editor"_qs}));
}

} // namespace
} // namespace veltrix::sample
