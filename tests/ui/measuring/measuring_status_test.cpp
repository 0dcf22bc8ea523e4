// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/measuring/measuring_status.h"

#include "ui/measuring/admission_texts.h"
#include "ui/support/ui_world.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class MeasuringStatusTest : public StoreTest
{
protected:
    MeasuringStatusTest()
    {
        for (const char *name : {"moon", "tide", "harbour"})
            keywords.append(addKeyword(name));
        status = std::make_unique<MeasuringStatus>(store->refreshes());
        client->holds = true;
    }
    ~MeasuringStatusTest() override { status.reset(); }

    [[nodiscard]] QString work() const
    {
        const auto now = status->work();
        return now ? now->text : QString();
    }
    /// What is said of one new keyword.
    [[nodiscard]] static AdmissionStatus promise()
    {
        KeywordAdmission admission;
        admission.added = 1;
        return admissionStatus(admission, true);
    }
    void failAll()
    {
        client->fails = [](const QString &) {
            return true;
        };
    }

    QList<TrackedKeyword> keywords;
    std::unique_ptr<MeasuringStatus> status;
};

TEST_F(MeasuringStatusTest, EveryKindOfMeasuringIsShownAlike)
{
    EXPECT_EQ(status->work(), std::nullopt);
    const Outcome<Done> history(finished(store->refreshHistory(view.get_token())));
    EXPECT_EQ(work(), text("Measuring “moon” · 1 of 3"));
    client->release();
    EXPECT_EQ(work(), text("Measuring “tide” · 2 of 3"));
    EXPECT_NEAR(*status->work()->fraction, 1.0 / 3, 1e-9);
    status->stop();
    EXPECT_EQ(status->work(), std::nullopt);
    store->queueKeywordRefreshes({keywords[1], keywords[2]});
    EXPECT_EQ(work(), text("Measuring “tide” · 1 of 2"));
    status->stop();
    const auto rows = Outcome<Done>(finished(store->refreshes().refreshRows(
        {.ids = {keywords[2].id}}, [](const auto &, const auto &) {}, view.get_token())));
    EXPECT_EQ(work(), text("Measuring “harbour” · 1 of 1"));
}

TEST_F(MeasuringStatusTest, TheFailureStandsUnderItsFixedText)
{
    failAll();
    client->holds = false;
    status->refresh();
    EXPECT_EQ(status->problem().message,
              text("Some rankings couldn't be updated. Try again later."));
    EXPECT_EQ(status->problem().detail, text("“moon”: The network is down."));
    client->fails = nullptr;
    status->refresh();
    EXPECT_EQ(status->problem(), MeasuringStatus::Problem());
    EXPECT_EQ(status->message(), text("Rankings are up to date."));
}

TEST_F(MeasuringStatusTest, KeywordsSavedEndsWithTheMeasuring)
{
    status->say(promise());
    store->queueKeywordRefreshes({keywords[0]});
    EXPECT_EQ(status->message(), text("Keywords saved. Metrics will update in the background."));
    EXPECT_EQ(status->messageDetail(), text("1 added"));
    client->release();
    EXPECT_EQ(status->message(), text("1 added"));
    EXPECT_EQ(status->messageDetail(), QString());
}

TEST_F(MeasuringStatusTest, KeywordsSavedEndsWithAFailureWhateverElseIsMeasured)
{
    failAll();
    status->say(promise());
    const Outcome<Done> history(finished(store->refreshHistory(view.get_token())));
    store->queueKeywordRefreshes({keywords[1]});
    client->release();
    EXPECT_EQ(status->message(), text("1 added"));
}

TEST_F(MeasuringStatusTest, OnlyThePromiseEndsNotItsWords)
{
    status->say(promise().message);
    store->queueKeywordRefreshes({keywords[0]});
    client->release();
    EXPECT_EQ(status->message(), promise().message);
}

TEST_F(MeasuringStatusTest, OtherMessagesOutlastMeasuring)
{
    store->queueKeywordRefreshes({keywords[0]});
    status->say(text("Exported to list.csv."));
    client->release();
    EXPECT_EQ(status->message(), text("Exported to list.csv."));
}

TEST_F(MeasuringStatusTest, RefreshWithNothingStaleSaysSo)
{
    client->holds = false;
    status->refresh();
    status->say(QString());
    client->searches.clear();
    status->refresh();
    EXPECT_EQ(status->message(), text("Rankings are up to date."));
    EXPECT_EQ(client->searches, QStringList());
}

TEST_F(MeasuringStatusTest, RefreshTakesOverWhatRunsByItself)
{
    std::stop_source window;
    const Outcome<Done> automatic(finished(store->refreshHistory(window.get_token())));
    EXPECT_TRUE(status->mayRefresh());
    status->refresh();
    EXPECT_FALSE(status->mayRefresh());
    window.request_stop();
    EXPECT_TRUE(store->isRefreshingHistory());
    for (int i = 0; i < 3; ++i)
        client->release();
    EXPECT_TRUE(status->mayRefresh());
    EXPECT_EQ(client->searches.size(), 3);
    EXPECT_EQ(status->message(), text("Rankings are up to date."));
}

TEST_F(MeasuringStatusTest, TheAppInViewComesFirst)
{
    const AppProfile other = addApp(2, "Second");
    store->addTrackedKeyword(other.id, text("lamp"), text("US"));
    status->setAppInView(other.id);
    status->refresh();
    EXPECT_EQ(client->searches, QStringList{text("lamp/US/100")});
}

TEST_F(MeasuringStatusTest, StopSaysWhatIsLeftAndRefreshMayBeUsedAgain)
{
    bool hasEnded = false;
    QObject::connect(status.get(), &MeasuringStatus::refreshEnded, [&] { hasEnded = true; });
    status->refresh();
    status->stop();
    EXPECT_EQ(status->message(), text("Stopped. Refresh measures what is left."));
    EXPECT_TRUE(status->mayRefresh());
    EXPECT_FALSE(hasEnded);
    EXPECT_FALSE(store->isRefreshingHistory());
}

TEST_F(MeasuringStatusTest, MayGoWhileItRefreshes)
{
    status->refresh();
    status.reset();
    EXPECT_FALSE(store->isRefreshingHistory());
}

} // namespace
} // namespace veltrix
