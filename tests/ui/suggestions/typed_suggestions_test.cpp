// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/typed_suggestions.h"

#include "ui/support/ui_world.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const QString us = QStringLiteral("US");

class TypedSuggestionsTest : public testing::Test
{
protected:
    void type(const QString &text) { m_suggestions->follow(text, us); }
    void pause() { m_clock.advance(TypedSuggestions::typingPause); }
    const Loadable<QStringList> &state() { return m_suggestions->state(); }

    std::shared_ptr<FakeSuggestions> m_source = std::make_shared<FakeSuggestions>();
    VirtualClock m_clock;
    std::unique_ptr<TypedSuggestions> m_suggestions =
        std::make_unique<TypedSuggestions>(m_source, m_clock);
};

TEST_F(TypedSuggestionsTest, FortyKeysInARowAreOneQuestion)
{
    QString text;
    for (int key = 0; key < 40; ++key) {
        text += QChar(u'a' + key % 26);
        type(text);
        m_clock.advance(Seconds(0.05));
    }
    EXPECT_TRUE(m_source->asked.isEmpty());
    pause();
    EXPECT_EQ(m_source->asked, QStringList{text + QStringLiteral("/US")});
}

TEST_F(TypedSuggestionsTest, OneRequestIsUnderWayAndTheAnswerForAnotherTextIsNotShown)
{
    m_source->holds = true;
    m_source->terms = {{QStringLiteral("ph"), {QStringLiteral("phone")}},
                       {QStringLiteral("pho"), {QStringLiteral("photo")}}};
    type(QStringLiteral("ph"));
    pause();
    EXPECT_EQ(m_source->inFlight, 1);
    type(QStringLiteral("pho"));
    EXPECT_EQ(m_source->inFlight, 0) << "nobody waits for the first any more";
    pause();
    m_source->release();
    ASSERT_TRUE(state().value());
    EXPECT_EQ(*state().value(), QStringList{QStringLiteral("photo")});
    EXPECT_EQ(m_source->mostInFlight, 1);
}

TEST_F(TypedSuggestionsTest, AnAnswerThatNeverComesIsGivenUpWithTheText)
{
    m_source->holds = true;
    type(QStringLiteral("photo"));
    pause();
    EXPECT_TRUE(state().is<Loading>());
    type(QString());
    EXPECT_TRUE(state().is<NotAsked>());
    EXPECT_EQ(m_source->inFlight, 0);
    type(QStringLiteral("film"));
    pause();
    m_suggestions.reset();
    EXPECT_EQ(m_source->inFlight, 0) << "nor does it outlive the popover";
    EXPECT_EQ(m_clock.sleepers(), 0);
}

TEST_F(TypedSuggestionsTest, TheSameTextIsNotAskedForAgainButInAnotherStorefrontItIs)
{
    type(QStringLiteral("photo"));
    pause();
    type(QStringLiteral("photo"));
    pause();
    EXPECT_EQ(m_source->asked.size(), 1);
    m_suggestions->follow(QStringLiteral("photo"), QStringLiteral("DE"));
    pause();
    EXPECT_EQ(m_source->asked.last(), QStringLiteral("photo/DE"));
    m_suggestions->follow(QStringLiteral("photo"), QString());
    EXPECT_TRUE(state().is<NotAsked>()) << "no storefront is checked";
}

TEST_F(TypedSuggestionsTest, ASuggestionThatWasTakenIsNotAskedFor)
{
    m_suggestions->follow(QStringLiteral("photo"), us);
    pause();
    m_suggestions->settle(QStringLiteral("photo editor"));
    EXPECT_TRUE(state().is<NotAsked>());
    type(QStringLiteral("photo editor"));
    pause();
    EXPECT_EQ(m_source->asked.size(), 1);
    type(QStringLiteral("photo editor p"));
    pause();
    EXPECT_EQ(m_source->asked.size(), 2);
}

TEST_F(TypedSuggestionsTest, AFailureIsOneAndNothingIsAnAnswer)
{
    type(QStringLiteral("zzz"));
    pause();
    ASSERT_TRUE(state().value());
    EXPECT_TRUE(state().value()->isEmpty());
    m_source->fails = true;
    type(QStringLiteral("photo"));
    pause();
    EXPECT_TRUE(state().is<LoadFailed>());
    TypedSuggestions without(nullptr, m_clock);
    without.follow(QStringLiteral("photo"), us);
    pause();
    EXPECT_TRUE(without.state().is<NotAsked>());
}

} // namespace
} // namespace veltrix
