// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/removal_question.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

TEST(RemovalQuestion, NamesOneKeyword)
{
    const auto question = removalQuestion({QStringLiteral("moon")});
    EXPECT_EQ(question.title, QStringLiteral("Delete Keyword?"));
    EXPECT_EQ(question.message,
              QStringLiteral("This will delete moon and its saved ranking snapshot history.\n"
                             "This action cannot be undone."));
    EXPECT_EQ(question.confirm, QStringLiteral("Delete Keyword"));
}

TEST(RemovalQuestion, CountsSeveral)
{
    const auto question = removalQuestion({QStringLiteral("moon"), QStringLiteral("tide")});
    EXPECT_EQ(question.title, QStringLiteral("Delete 2 Keywords?"));
    EXPECT_EQ(question.confirm, QStringLiteral("Delete 2 Keywords"));
}

} // namespace
} // namespace veltrix
