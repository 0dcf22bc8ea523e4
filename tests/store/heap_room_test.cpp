// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/heap_room.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

namespace veltrix
{
namespace
{

constexpr qint64 megabyte = 1024 * 1024;

qint64 residentBytes()
{
    std::FILE *file = std::fopen("/proc/self/statm", "r");
    long long total = 0;
    long long resident = 0;
    const bool isRead = file && std::fscanf(file, "%lld %lld", &total, &resident) == 2;
    if (file)
        std::fclose(file);
    EXPECT_TRUE(isRead);
    return resident * 4096;
}

TEST(HeapRoom, WhatIsMadeInItKeepsItsContentAfterwards)
{
    std::vector<std::unique_ptr<char[]>> blocks;
    {
        const HeapRoom room(64 * megabyte);
        for (int i = 0; i < 40'000; ++i) {
            blocks.push_back(std::make_unique<char[]>(1000));
            std::memset(blocks.back().get(), i % 127, 1000);
        }
    }
    for (size_t i = 0; i < blocks.size(); ++i) {
        ASSERT_EQ(blocks[i][0], char(i % 127));
        ASSERT_EQ(blocks[i][999], char(i % 127));
    }
}

TEST(HeapRoom, WhatWasNotNeededIsGivenBack)
{
    const qint64 before = residentBytes();
    {
        const HeapRoom room(512 * megabyte);
        const auto used = std::make_unique<char[]>(size_t(megabyte));
        std::memset(used.get(), 1, size_t(megabyte));
    }
    EXPECT_LT(residentBytes() - before, 32 * megabyte);
}

TEST(HeapRoom, AnyAmountIsTaken)
{
    for (const qint64 amount : {std::numeric_limits<qint64>::min(), qint64(-1), qint64(0),
                                qint64(1), megabyte, std::numeric_limits<qint64>::max()}) {
        const HeapRoom room(amount);
        EXPECT_NE(std::make_unique<int>(1), nullptr);
    }
}

} // namespace
} // namespace veltrix
