// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/loading/loader.h"

#include "effects/one_shot.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class Trouble final : public Error
{
public:
    Trouble() : Error(QStringLiteral("It broke.")) {}
};

/// Asks of it are answered one by one, in any order.
class LoaderTest : public testing::Test
{
protected:
    using Words = Loadable<QString>;

    static Task<QString> answered(OneShot<QString> answer, std::stop_token stop)
    {
        co_return co_await answer.wait(stop);
    }
    /// An ask that notices when it is stopped.
    Loader<QString>::Ask next()
    {
        return [this](std::stop_token stop) {
            return answered(answers.emplace_back(), stop);
        };
    }
    /// One that does not: its answer comes too late.
    Loader<QString>::Ask deaf()
    {
        return [this](std::stop_token) {
            return answered(answers.emplace_back(), std::stop_token());
        };
    }
    void answer(size_t ask, const char *text) { answers[ask].resolve(QString::fromUtf8(text)); }
    void fail(size_t ask) { answers[ask].fail(std::make_exception_ptr(Trouble())); }
    [[nodiscard]] QString shown() const
    {
        const QString *value = loader->state().value();
        return value ? *value : QStringLiteral("(nothing)");
    }

    std::vector<OneShot<QString>> answers;
    std::unique_ptr<Loader<QString>> loader = std::make_unique<Loader<QString>>();
};

TEST_F(LoaderTest, GoesFromNotAskedOverLoadingToLoaded)
{
    const QSignalSpy changes(loader.get(), &LoaderSignals::changed);
    EXPECT_TRUE(loader->state().is<NotAsked>());
    loader->ask(next());
    EXPECT_TRUE(loader->state().is<Loading>());
    EXPECT_TRUE(loader->state().isUnderWay());
    answer(0, "tide");
    EXPECT_EQ(loader->state(), Words(Loaded<QString>{QStringLiteral("tide"), QString()}));
    EXPECT_FALSE(loader->state().isUnderWay());
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(LoaderTest, AFailureWithNothingToShowIsItsWordsAndIsRetried)
{
    loader->ask(next());
    fail(0);
    EXPECT_EQ(loader->state(), Words(LoadFailed{QStringLiteral("It broke.")}));
    EXPECT_EQ(shown(), QStringLiteral("(nothing)"));
    loader->retry();
    EXPECT_TRUE(loader->state().is<Loading>());
    answer(1, "tide");
    EXPECT_EQ(shown(), QStringLiteral("tide"));
    EXPECT_EQ(loader->state().error(), QString());
}

TEST_F(LoaderTest, ARefreshKeepsWhatIsThereUntilTheAnswer)
{
    loader->ask(next());
    answer(0, "old");
    loader->refresh(next());
    EXPECT_TRUE(loader->state().is<Refreshing<QString>>());
    EXPECT_TRUE(loader->state().isUnderWay());
    EXPECT_EQ(shown(), QStringLiteral("old"));
    answer(1, "new");
    EXPECT_EQ(shown(), QStringLiteral("new"));
}

TEST_F(LoaderTest, ARefreshThatFailsKeepsWhatIsThereAndItsWordsUntilTheNextAnswer)
{
    loader->ask(next());
    answer(0, "old");
    loader->retry();
    fail(1);
    EXPECT_EQ(shown(), QStringLiteral("old"));
    EXPECT_EQ(loader->state().error(), QStringLiteral("It broke."));
    loader->retry();
    EXPECT_EQ(loader->state().error(), QStringLiteral("It broke."));
    answer(2, "new");
    EXPECT_EQ(loader->state().error(), QString());
}

TEST_F(LoaderTest, WhatIsKnownIsShownMeanwhile)
{
    loader->refresh(next(), QStringLiteral("saved"));
    EXPECT_TRUE(loader->state().is<Refreshing<QString>>());
    EXPECT_EQ(shown(), QStringLiteral("saved"));
    fail(0);
    EXPECT_EQ(shown(), QStringLiteral("saved"));
}

TEST_F(LoaderTest, AskingForSomethingElseForgetsWhatIsThere)
{
    loader->ask(next());
    answer(0, "old");
    loader->ask(next());
    EXPECT_TRUE(loader->state().is<Loading>());
    EXPECT_EQ(shown(), QStringLiteral("(nothing)"));
}

TEST_F(LoaderTest, AnAnswerThatComesTooLateIsDropped)
{
    loader->ask(deaf());
    loader->ask(next());
    answer(0, "late");
    EXPECT_TRUE(loader->state().is<Loading>());
    answer(1, "right");
    EXPECT_EQ(shown(), QStringLiteral("right"));
}

TEST_F(LoaderTest, SoIsAFailureThatComesTooLate)
{
    loader->ask(deaf());
    loader->ask(next());
    answer(1, "right");
    fail(0);
    EXPECT_EQ(loader->state(), Words(Loaded<QString>{QStringLiteral("right"), QString()}));
}

TEST_F(LoaderTest, ClearingStopsWhatIsUnderWayAndLeavesNothingToRetry)
{
    loader->ask(next());
    loader->clear();
    EXPECT_FALSE(answers[0].isOpen());
    EXPECT_TRUE(loader->state().is<NotAsked>());
    loader->retry();
    EXPECT_EQ(answers.size(), 1U);
}

TEST_F(LoaderTest, SomethingElseMayFailInItsPlace)
{
    loader->ask(next());
    answer(0, "tide");
    loader->fail(QStringLiteral("Not saved."));
    EXPECT_EQ(loader->state(), Words(LoadFailed{QStringLiteral("Not saved.")}));
    loader->retry();
    EXPECT_TRUE(loader->state().is<Loading>());
}

TEST_F(LoaderTest, ItsEndStopsWhatIsUnderWay)
{
    loader->ask(next());
    loader.reset();
    EXPECT_FALSE(answers[0].isOpen());
}

TEST_F(LoaderTest, MayBeClearedFromItsOwnSignal)
{
    QObject::connect(loader.get(), &LoaderSignals::changed, loader.get(), [this] {
        if (loader->state().value())
            loader->clear();
    });
    loader->ask(next());
    answer(0, "tide");
    EXPECT_TRUE(loader->state().is<NotAsked>());
}

} // namespace
} // namespace veltrix
