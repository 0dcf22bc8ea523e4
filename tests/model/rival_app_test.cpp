// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/rival_app.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

QUuid numbered(int number)
{
    return {quint32(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
}

TrackedCompetitor watched(int number, std::int64_t trackId, const QString &name,
                          const QString &country)
{
    TrackedCompetitor competitor;
    competitor.id = numbered(number);
    competitor.trackId = trackId;
    competitor.name = name;
    competitor.country = country;
    return competitor;
}

TEST(RivalApps, OneAppOfSeveralStorefrontsIsOneNamedAsInTheAskedStorefront)
{
    const QString us = QStringLiteral("US");
    const QString germany = QStringLiteral("DE");
    const auto apps = rivalApps({watched(2, 201, QStringLiteral("Fuchsfilm"), germany),
                                 watched(1, 201, QStringLiteral("Foxglove"), us),
                                 watched(3, 203, QStringLiteral("Grainy"), germany)},
                                us);
    ASSERT_EQ(apps.size(), 2U);
    EXPECT_EQ(apps[0], (RivalApp{201, QStringLiteral("Foxglove"), {numbered(2), numbered(1)}}));
    EXPECT_EQ(apps[1].name, QStringLiteral("Grainy")) << "watched elsewhere alone";
}

TEST(StandingOf, IsTheBetterOneOfAnAppThatIsWatchedTwice)
{
    const RivalApp app{201, QStringLiteral("Foxglove"), {numbered(1), numbered(2)}};
    KeywordStandings measured;
    EXPECT_EQ(standingOf(app, measured), std::nullopt) << "it was not tracked then";
    measured.rivals = {{numbered(3), 1}, {numbered(1), std::nullopt}};
    ASSERT_TRUE(standingOf(app, measured));
    EXPECT_EQ(standingOf(app, measured)->rank, std::nullopt);
    measured.rivals.push_back({numbered(2), 7});
    EXPECT_EQ(standingOf(app, measured)->rank, std::optional<std::int64_t>(7));
}

} // namespace
} // namespace veltrix
