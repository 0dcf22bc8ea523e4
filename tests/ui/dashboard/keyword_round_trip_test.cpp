// SPDX-License-Identifier: GPL-3.0-or-later
// What the program exports it imports again.
#include "ui/support/ui_test.h"

#include "model/text_folding.h"
#include "ui/dashboard/keyword_export.h"
#include "ui/dashboard/keyword_plan.h"
#include "ui_kit/text/csv.h"

namespace veltrix
{
namespace
{

class KeywordRoundTripTest : public UiTest
{
protected:
    /// "keyword@US" of each, sorted.
    static QStringList listed(const QList<KeywordToTrack> &keywords)
    {
        QStringList texts;
        for (const KeywordToTrack &keyword : keywords)
            texts << keyword.keyword + u'@' + keyword.country;
        texts.sort();
        return texts;
    }
};

TEST_F(KeywordRoundTripTest, TheExportOfAnAppIsImportedWholeWithItsTagsIntoAnEmptyOne)
{
    open();
    const AppProfile app = store().apps().first();
    for (const char *keyword :
         {"=sum", "'90s filter", "a \"quoted\" one", "-12", "תמונה; רטרו", "写真加工", "'=guarded"})
        store().addTrackedKeyword(app.id, QString::fromUtf8(keyword), QStringLiteral("JP"));
    QList<QUuid> ids;
    QList<KeywordToTrack> expected;
    for (const TrackedKeyword &keyword : store().keywordsOfApp(app.id)) {
        ids << keyword.id;
        expected.append({keyword.keyword, keyword.country});
    }
    store().setTag({ids.first()}, QStringLiteral("core"), true);
    store().setTag({ids.first(), ids.last()}, QStringLiteral("=autumn"), true);
    const KeywordFile file = readKeywordFile(toCsvFile(keywordTable(store(), ids)));
    EXPECT_TRUE(file.overlongLines.isEmpty());
    const KeywordPlan plan = KeywordPlanner({}, app.appName).plan(file.keywords, {});
    EXPECT_EQ(listed(plan.keywords), listed(expected));
    EXPECT_EQ(plan.added, ids.size());
    EXPECT_TRUE(plan.refused.isEmpty());
    EXPECT_EQ(plan.ofOtherApps, 0);
    ASSERT_EQ(plan.tagged.size(), 2);
    EXPECT_EQ(plan.tagged.first().tags, store().tags(ids.first()));
    EXPECT_EQ(plan.tagged.last().tags, QStringList{QStringLiteral("=autumn")});
    const KeywordPlan again =
        KeywordPlanner(store().keywordsOfApp(app.id), app.appName).plan(file.keywords, {});
    EXPECT_EQ(again.added, 0) << "into the same app it adds nothing";
}

TEST_F(KeywordRoundTripTest, TheExportOfAllAppsGivesEachAppItsOwn)
{
    open();
    const QUuid second = store().apps()[1].id;
    store().addTrackedKeyword(second, QStringLiteral("tide table"), QStringLiteral("GB"));
    const KeywordFile file = readKeywordFile(toCsvFile(keywordTableOfAllApps(store())));
    const KeywordPlan plan = KeywordPlanner({}, store().apps()[1].appName).plan(file.keywords, {});
    EXPECT_EQ(plan.added, store().keywordsOfApp(second).size());
    EXPECT_EQ(plan.ofOtherApps + plan.added, store().trackedKeywords().size());
}

} // namespace
} // namespace veltrix
