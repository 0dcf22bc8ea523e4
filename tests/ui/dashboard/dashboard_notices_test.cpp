// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/dashboard_notices.h"

#include "store/store_fixture.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class DashboardNoticesTest : public StoreTest
{
protected:
    /// A state with keywords of an app that is not tracked.
    void startWithOrphans(const QStringList &texts)
    {
        PersistedState state;
        state.apps = {addApp()};
        for (const QString &keyword : texts) {
            state.trackedKeywords.append({QUuid::createUuid(), QUuid::createUuid(), keyword,
                                          QStringLiteral("US"), clock->now()});
        }
        writeState(state);
        start();
        look();
    }
    void look() { notices = std::make_unique<DashboardNotices>(*store); }
    ~DashboardNoticesTest() override { notices.reset(); }

    std::unique_ptr<DashboardNotices> notices;
};

TEST_F(DashboardNoticesTest, WhatAnImportRefusedIsToldWithItsAppUntilItIsDismissed)
{
    const QUuid app = addApp().id;
    look();
    notices->setApp(app);
    EXPECT_EQ(notices->importNotice(), QString());
    AdmissionCount count;
    count.added = 2;
    count.refused = 1;
    const RefusedKeyword refused{text("star"), text("UK"), KeywordRefusal::UnknownStorefront};
    notices->setImported(app, count, {{refused, 3}});
    EXPECT_EQ(notices->importNotice(),
              text("2 added, 1 refused\nLine 3, “star”: “UK” is not a supported storefront"));
    notices->setApp(QUuid::createUuid());
    EXPECT_EQ(notices->importNotice(), QString()) << "another app is in view";
    notices->setApp(app);
    EXPECT_NE(notices->importNotice(), QString());
    notices->dismissImported();
    EXPECT_EQ(notices->importNotice(), QString());
    EXPECT_TRUE(notices->refused().isEmpty());
}

TEST_F(DashboardNoticesTest, AnImportWithoutRefusalsIsNoNotice)
{
    const QUuid app = addApp().id;
    look();
    notices->setApp(app);
    AdmissionCount count;
    count.added = 2;
    notices->setImported(app, count, {});
    EXPECT_EQ(notices->importNotice(), QString());
}

TEST_F(DashboardNoticesTest, KeywordsWhoseAppIsGoneAreCountedAndNamed)
{
    startWithOrphans({text("moon"), text("tide")});
    EXPECT_EQ(notices->orphans().size(), 2);
    EXPECT_EQ(notices->orphansNotice(),
              text("2 keywords belong to an app that is no longer tracked: “moon”, “tide”."));
    store->removeKeyword(notices->orphans().first());
    EXPECT_EQ(notices->orphansNotice(),
              text("1 keyword belongs to an app that is no longer tracked: “tide”."));
}

TEST_F(DashboardNoticesTest, TheirRemovalIsToldOnceTheyAllAreGone)
{
    startWithOrphans({text("moon"), text("tide"), text("star")});
    QStringList told;
    QObject::connect(notices.get(), &DashboardNotices::changed,
                     [&] { told.append(notices->orphansNotice()); });
    const QList<QUuid> all = notices->orphans();
    store->removeKeywords(all);
    QCoreApplication::sendPostedEvents();
    ASSERT_FALSE(told.isEmpty());
    for (const QString &notice : std::as_const(told))
        EXPECT_EQ(notice, QString());
}

} // namespace
} // namespace veltrix
