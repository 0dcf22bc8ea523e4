// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/ui_test.h"

#include "ui/settings/daily_measuring.h"
#include "ui_kit/widgets/segmented_control.h"
#include "ui_kit/widgets/text_field.h"

#include <QCheckBox>

namespace veltrix
{
namespace
{

const DailyPlan morning{QTime(8, 15), std::chrono::minutes(30)};

DailyTimerState on(const DailyPlan &plan = morning)
{
    DailyTimerState state;
    state.isOn = true;
    state.plan = plan;
    state.nextRun = VirtualClock().now() + Seconds(3600);
    return state;
}

class DailyTest : public UiTest
{
protected:
    void openSettings(const DailyTimerState &state = {})
    {
        world = UiWorld::sample();
        world->timing.known = state;
        window = std::make_unique<MainWindow>(world->collaborators());
        window->show();
        window->openSettings();
        settle();
    }
    QString status() { return find<QLabel>("dailyStatus")->text(); }
    QCheckBox *box() { return find<QCheckBox>("dailyMeasuring"); }
    void enterTime(const char *text)
    {
        auto *field = find<TextField>("dailyTime");
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, QString::fromLatin1(text));
        QTest::keyClick(field, Qt::Key_Return);
    }
};

TEST_F(DailyTest, IsTurnedOnAtTheTimeThatIsEntered)
{
    openSettings();
    EXPECT_FALSE(box()->isChecked());
    EXPECT_EQ(status(), QStringLiteral("Off. Keywords are measured while the window is open."));
    enterTime("21:05");
    EXPECT_FALSE(world->timing.known.isOn) << "a time alone starts nothing";
    click("dailyDelay3");
    box()->click();
    EXPECT_EQ(world->timing.known.plan, (DailyPlan{QTime(21, 5), std::chrono::minutes(60)}));
    EXPECT_TRUE(box()->isChecked());
}

TEST_F(DailyTest, ShowsWhenItRunsNextAndHowTheLastRunEnded)
{
    DailyTimerState state = on();
    openSettings(state);
    EXPECT_TRUE(box()->isChecked());
    EXPECT_EQ(find<TextField>("dailyTime")->text(), QStringLiteral("08:15"));
    EXPECT_EQ(find<SegmentedControl>("dailyDelay")->chosen(), 2);
    EXPECT_TRUE(status().startsWith(QStringLiteral("Next run: "))) << status().toStdString();
    EXPECT_FALSE(status().contains(QStringLiteral("Last run")));
    state.lastRun = VirtualClock().now();
    state.hasLastRunFailed = true;
    openSettings(state);
    EXPECT_TRUE(status().endsWith(QStringLiteral("; not all keywords were measured.")));
}

TEST_F(DailyTest, AnotherTimeOrDelayIsTakenAtOnceWhileItIsOn)
{
    openSettings(on());
    enterTime("6.30");
    EXPECT_EQ(world->timing.known.plan, (DailyPlan{QTime(6, 30), std::chrono::minutes(30)}));
    EXPECT_EQ(find<TextField>("dailyTime")->text(), QStringLiteral("06:30"));
    click("dailyDelay0");
    EXPECT_EQ(world->timing.known.plan, (DailyPlan{QTime(6, 30), std::chrono::minutes(0)}));
    enterTime("6");
    EXPECT_EQ(world->timing.known.plan->at, QTime(6, 30)) << "half a time is none";
}

TEST_F(DailyTest, IsTurnedOff)
{
    openSettings(on());
    box()->toggle(); // As assistive technology does.
    EXPECT_FALSE(world->timing.known.isOn);
    EXPECT_FALSE(box()->isChecked());
}

TEST_F(DailyTest, SaysWhereThereIsNoServiceManager)
{
    DailyTimerState state;
    state.unavailable = QStringLiteral("Failed to connect to bus");
    openSettings(state);
    EXPECT_FALSE(box()->isEnabled());
    EXPECT_FALSE(isShown("dailyTime"));
    EXPECT_TRUE(status().contains(QStringLiteral("systemd"))) << status().toStdString();
    EXPECT_TRUE(status().endsWith(QStringLiteral("It says: Failed to connect to bus")));
}

TEST_F(DailyTest, ARefusalSaysItsReasonAndLeavesTheSwitchAsItIs)
{
    openSettings();
    world->timing.refusal = QStringLiteral("Unit is masked.");
    box()->click();
    EXPECT_FALSE(box()->isChecked());
    EXPECT_EQ(status(), QStringLiteral("This was not done: Unit is masked."));
    world->timing.refusal.clear();
    box()->click();
    EXPECT_TRUE(box()->isChecked());
    EXPECT_FALSE(status().contains(QStringLiteral("masked")));
}

TEST_F(DailyTest, ATimerThatWasChangedByHandIsWrittenAnewOnlyWhenAsked)
{
    DailyTimerState state = on();
    state.plan.reset();
    state.isChangedByHand = true;
    openSettings(state);
    EXPECT_TRUE(box()->isChecked());
    EXPECT_TRUE(status().startsWith(QStringLiteral("The timer was changed outside of Veltrix.")));
    EXPECT_TRUE(world->timing.known.isChangedByHand);
    click("dailyWriteAnew");
    EXPECT_EQ(world->timing.known.plan, DailyPlan());
    EXPECT_FALSE(isShown("dailyWriteAnew"));
}

TEST_F(DailyTest, IsNotChangedBeforeItIsKnownHowItStands)
{
    world = UiWorld::sample();
    world->timing.holds = true;
    window = std::make_unique<MainWindow>(world->collaborators());
    window->show();
    window->openSettings();
    EXPECT_FALSE(box()->isEnabled());
    EXPECT_EQ(status(), QString());
    world->timing.release();
    EXPECT_TRUE(box()->isEnabled());
}

TEST_F(DailyTest, WhileItIsOnTheWindowMeasuresOncePerDayAndElseAfter24Hours)
{
    // Measured on the day before, less than 24 hours ago: due by the rule of the day alone.
    const auto measured = [this](const DailyTimerState &state) {
        world = UiWorld::sample();
        world->timing.known = state;
        const Date now = world->clock->now();
        world->clock->advance(startOfUtcDay(utcDay(now) + 1) + Seconds(600) - now);
        window = std::make_unique<MainWindow>(world->collaborators());
        window->show();
        window->setActive(true);
        window->openSettings();
        settle();
        return world->client->searches.contains(QStringLiteral("retro photo/US/100"));
    };
    EXPECT_FALSE(measured({}));
    EXPECT_TRUE(measured(on()));
}

TEST_F(DailyTest, WhatIsToldIsChosen)
{
    openSettings();
    EXPECT_TRUE(find<QCheckBox>("tellBests")->isChecked());
    find<QCheckBox>("tellBests")->click();
    find<QCheckBox>("tellTopTen")->click();
    click("tellLeastPlaces3");
    EXPECT_EQ(world->preferences.digest, (DigestChoice{true, 10, false, true, false}));
    find<QCheckBox>("tellMovements")->click();
    EXPECT_FALSE(find("tellLeastPlaces")->isEnabled());
    EXPECT_FALSE(world->preferences.digest.movements);
}

} // namespace
} // namespace veltrix
