// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/network_return.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

TEST(NetworkReturn, SaysWhenTheNetworkComesBackAndNothingElse)
{
    NetworkReturn network;
    int returns = 0;
    QObject::connect(&network, &NetworkReturn::returned, [&] { ++returns; });
    network.setReachable(true);
    EXPECT_EQ(returns, 0) << "it was never away";
    network.setReachable(false);
    network.setReachable(false);
    EXPECT_EQ(returns, 0);
    network.setReachable(true);
    network.setReachable(true);
    EXPECT_EQ(returns, 1);
    network.setReachable(false);
    network.setReachable(true);
    EXPECT_EQ(returns, 2);
}

TEST(NetworkReturn, MayListenWhereTheSystemTellsNothing)
{
    NetworkReturn network;
    network.listen();
}

} // namespace
} // namespace veltrix
