// SPDX-License-Identifier: GPL-3.0-or-later
// A list from an older state file with keywords that can never be measured, and with keywords
// whose app is gone.
#include "ui/support/ui_test.h"

#include "ui/dashboard/keyword_actions.h"

namespace veltrix
{
namespace
{

class UnmeasurableKeywordsTest : public UiTest
{
protected:
    const QString tooLong = QString(101, u'x');
    const QUuid goneApp = QUuid::createUuid();

    PersistedState sample() { return sampleState(VirtualClock().now(), FakePopularity().version); }
    static TrackedKeyword keyword(const QString &text, const char *country, QUuid appId)
    {
        return {QUuid::createUuid(), appId, text, QString::fromLatin1(country),
                VirtualClock().now()};
    }
    /// The sample with three keywords that cannot be measured before all others.
    PersistedState poisoned()
    {
        PersistedState state = sample();
        const QUuid app = state.apps.first().id;
        state.trackedKeywords =
            QList{keyword(tooLong, "US", app), keyword(QStringLiteral("retouch"), "UK", app),
                  keyword(QStringLiteral("bell\u0007"), "US", app)} +
            state.trackedKeywords;
        return state;
    }
    /// The sample with keywords of an app that is not there.
    PersistedState withOrphans(const QStringList &texts)
    {
        PersistedState state = sample();
        for (const QString &text : texts)
            state.trackedKeywords.append(keyword(text, "US", goneApp));
        return state;
    }
    QString cellOf(const QString &text, KeywordColumn column, int role = Qt::DisplayRole)
    {
        return cell(text.toUtf8().constData(), column, role);
    }
    QString rowSentence(const QString &text)
    {
        return cellOf(text, KeywordColumn::Keyword, Qt::AccessibleTextRole);
    }
    void refreshSelected(const QStringList &keywords)
    {
        selectKeywords(keywords);
        Q_EMIT table().menuRequested(window->mapToGlobal(QPoint(400, 300)));
        choose("rowMenu", keywords.size() == 1 ? QStringLiteral("Refresh Keyword")
                                               : QStringLiteral("Refresh Keywords"));
    }
    QString orphansNotice()
    {
        return isShown("orphansBanner") ? find<Banner>("orphansBanner")->message() : QString();
    }
};

TEST_F(UnmeasurableKeywordsTest, TheirRowsSayWhyInsteadOfWaiting)
{
    open(poisoned());
    EXPECT_EQ(rowSentence(tooLong),
              tooLong + QStringLiteral(", United States, Cannot be measured: longer than 100 "
                                       "characters"));
    EXPECT_TRUE(
        rowSentence(QStringLiteral("retouch"))
            .endsWith(QStringLiteral(", Cannot be measured: “UK” is not a supported storefront")));
    EXPECT_TRUE(
        rowSentence(QStringLiteral("bell\u0007"))
            .endsWith(QStringLiteral(", Cannot be measured: contains a control character")));
    for (const QString &text : {tooLong, QStringLiteral("retouch"), QStringLiteral("bell\u0007")}) {
        EXPECT_EQ(cellOf(text, KeywordColumn::Position), QStringLiteral("Not measurable"));
        EXPECT_EQ(cellOf(text, KeywordColumn::Target), QStringLiteral("Not measurable"))
            << "a refresh would not help";
        EXPECT_TRUE(cellOf(text, KeywordColumn::Keyword, Qt::ToolTipRole)
                        .contains(QStringLiteral("\nCannot be measured: ")));
    }
    EXPECT_EQ(cell("retouch", KeywordColumn::Position, Qt::ToolTipRole),
              QStringLiteral("“retouch” cannot be measured: “UK” is not a supported storefront."));
    EXPECT_EQ(cell("retouch", KeywordColumn::Target, Qt::ToolTipRole),
              cell("retouch", KeywordColumn::Position, Qt::ToolTipRole));
    EXPECT_EQ(cell("grain filter", KeywordColumn::Target), QStringLiteral("Refresh required"));
    EXPECT_TRUE(
        rowSentence(QStringLiteral("grain filter")).contains(QStringLiteral("Awaiting metrics")));
    EXPECT_EQ(cell("grain filter", KeywordColumn::Position), QStringLiteral("Pending"));
}

TEST_F(UnmeasurableKeywordsTest, TheLineUnderTheKeywordIsTheReason)
{
    open(poisoned());
    const auto lineOf = [this](const QString &text) {
        for (int row = 0; row < model().rowCount(); ++row) {
            if (model().entryAt(row).row.keyword == text)
                return updatedText(model().entryAt(row)).section(QStringLiteral(" · "), 0, 0);
        }
        return QString();
    };
    EXPECT_EQ(lineOf(tooLong), QStringLiteral("Longer than 100 characters"));
    EXPECT_EQ(lineOf(QStringLiteral("retouch")),
              QStringLiteral("“UK” is not a supported storefront"));
    EXPECT_EQ(lineOf(QStringLiteral("bell\u0007")), QStringLiteral("Contains a control character"));
    EXPECT_EQ(lineOf(QStringLiteral("grain filter")), QStringLiteral("Awaiting metrics"));
}

TEST_F(UnmeasurableKeywordsTest, WhatWasMeasuredBeforeIsStillShown)
{
    PersistedState state = sample();
    const QUuid id = state.snapshots.front()->trackedKeywordId;
    QString text;
    for (TrackedKeyword &tracked : state.trackedKeywords) {
        if (tracked.id == id) {
            tracked.country = QStringLiteral("UK");
            text = tracked.keyword;
        }
    }
    open(state);
    EXPECT_TRUE(rowSentence(text).contains(QStringLiteral("Cannot be measured: ")));
    EXPECT_NE(cellOf(text, KeywordColumn::Position), QStringLiteral("Not measurable"));
    EXPECT_NE(cellOf(text, KeywordColumn::Difficulty), QString());
}

TEST_F(UnmeasurableKeywordsTest, RefreshKeywordSaysWhyAndAsksNobody)
{
    open(poisoned());
    world->client->searches.clear();
    refreshSelected({QStringLiteral("retouch")});
    EXPECT_EQ(status(),
              QStringLiteral("“retouch” cannot be measured: “UK” is not a supported storefront."));
    refreshSelected({tooLong});
    EXPECT_EQ(status(), QStringLiteral("“%1…” cannot be measured: longer than 100 characters.")
                            .arg(QString(24, u'x')));
    refreshSelected({tooLong, QStringLiteral("retouch")});
    EXPECT_EQ(status(), QStringLiteral("2 keywords cannot be measured. Their rows say why."));
    EXPECT_TRUE(world->client->searches.isEmpty());
}

TEST_F(UnmeasurableKeywordsTest, AmongSeveralTheOthersAreMeasured)
{
    open(poisoned());
    world->client->searches.clear();
    refreshSelected({tooLong, QStringLiteral("retouch"), QStringLiteral("grain filter")});
    EXPECT_EQ(world->client->searches, QStringList{QStringLiteral("grain filter/US/100")});
    EXPECT_EQ(cell("grain filter", KeywordColumn::Popularity), QStringLiteral("42"));
}

TEST_F(UnmeasurableKeywordsTest, TheyCanBeRemovedLikeAnyOther)
{
    open(poisoned());
    selectKeywords({QStringLiteral("retouch")});
    press(Qt::Key_Delete);
    click("confirmAccept");
    EXPECT_FALSE(shownKeywords().contains(QStringLiteral("retouch")));
    EXPECT_EQ(store().trackedKeywords().size(), 13);
}

TEST_F(UnmeasurableKeywordsTest, KeywordsOfAnAppThatIsGoneAreNamedAboveTheTableAndCanBeRemoved)
{
    open(withOrphans({QStringLiteral("moon"), QStringLiteral("tide"), QStringLiteral("star")}));
    EXPECT_EQ(orphansNotice(),
              QStringLiteral("3 keywords belong to an app that is no longer tracked: “moon”, "
                             "“tide”, “star”."));
    EXPECT_EQ(model().rowCount(), 11);
    click("orphansBannerAction");
    EXPECT_EQ(find("confirmSheet")->accessibleName(), QStringLiteral("Delete 3 Keywords?"));
    click("confirmCancel");
    EXPECT_EQ(store().trackedKeywords().size(), 14);
    click("orphansBannerAction");
    click("confirmAccept");
    EXPECT_EQ(orphansNotice(), QString());
    EXPECT_EQ(store().trackedKeywords().size(), 11);
    reopen();
    EXPECT_EQ(orphansNotice(), QString());
    EXPECT_EQ(store().trackedKeywords().size(), 11);
}

TEST_F(UnmeasurableKeywordsTest, OneOrManyKeywordsOfAnAppThatIsGoneAreCountedInWords)
{
    open(withOrphans({QStringLiteral("moon")}));
    EXPECT_EQ(orphansNotice(),
              QStringLiteral("1 keyword belongs to an app that is no longer tracked: “moon”."));
    click("orphansBannerAction");
    EXPECT_EQ(find("confirmSheet")->accessibleName(), QStringLiteral("Delete Keyword?"));
    QStringList many;
    for (int i = 1; i <= 17; ++i)
        many << QStringLiteral("k%1").arg(i);
    open(withOrphans(many));
    EXPECT_EQ(orphansNotice(),
              QStringLiteral("17 keywords belong to an app that is no longer tracked: “k1”, “k2”, "
                             "“k3”, “k4”, “k5” and 12 more."));
}

TEST_F(UnmeasurableKeywordsTest, TheyAreSeenWithoutAnyAppToo)
{
    PersistedState state = withOrphans({QStringLiteral("moon")});
    state.apps.clear();
    state.trackedKeywords = {state.trackedKeywords.last()};
    state.snapshots.clear();
    open(state);
    EXPECT_NE(orphansNotice(), QString());
    EXPECT_TRUE(isShown("keywordsEmpty"));
}

TEST_F(UnmeasurableKeywordsTest, RemovingAnAppLeavesNoKeywordBehind)
{
    open();
    store().removeApp(store().apps().first().id);
    settle();
    EXPECT_EQ(orphansNotice(), QString());
}

TEST_F(UnmeasurableKeywordsTest, WhatAMeasurementSaysAboutPopularityIsTheRowsToolTip)
{
    const QString unavailable =
        QStringLiteral("Popularity unavailable. Rankings were saved; try popularity again later.");
    PersistedState state = sample();
    for (SharedSnapshot &shared : state.snapshots) {
        KeywordSnapshot changed = *shared;
        changed.popularityStatus = unavailable;
        shared = std::make_shared<const KeywordSnapshot>(changed);
    }
    open(state);
    EXPECT_EQ(cell("photo editor", KeywordColumn::Keyword, Qt::ToolTipRole),
              QStringLiteral("photo editor · United States\n") + unavailable);
    EXPECT_TRUE(cell("photo editor", KeywordColumn::Popularity, Qt::ToolTipRole)
                    .endsWith(u'\n' + unavailable));
    EXPECT_EQ(cell("photo editor", KeywordColumn::Keyword, Qt::AccessibleDescriptionRole),
              unavailable);
    EXPECT_EQ(cell("grain filter", KeywordColumn::Keyword, Qt::ToolTipRole),
              QStringLiteral("grain filter · United States"));
}

} // namespace
} // namespace veltrix
