// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/tag_change.h"

#include "ui/support/ui_test.h"

namespace veltrix
{
namespace
{

class TagChangeTest : public UiTest
{
protected:
    TagChangeTest()
    {
        open();
        first = store().trackedKeywords()[0].id;
        second = store().trackedKeywords()[1].id;
    }
    QString tags(const QUuid &id) { return store().tags(id).join(u'|'); }
    void set(const QList<QUuid> &ids, const char *tag, bool isOn)
    {
        change.set(store(), ids, QString::fromLatin1(tag), isOn);
    }

    QUuid first;
    QUuid second;
    TagChange change;
};

TEST_F(TagChangeTest, UndoneGivesEachKeywordWhatItHad)
{
    store().setTag({first}, QStringLiteral("core"), true);
    set({first, second}, "Core", true);
    set({first, second}, "title", true);
    EXPECT_EQ(tags(second), QStringLiteral("core|title"));
    EXPECT_EQ(change.name(), QStringLiteral("tags of 2 keywords"));
    change.undo(store());
    EXPECT_EQ(tags(first), QStringLiteral("core"));
    EXPECT_EQ(tags(second), QString());
}

TEST_F(TagChangeTest, UndoneLeavesTagsThatHaveComeOtherwise)
{
    set({first}, "core", true);
    // As an import does, and a history that is read only now.
    store().setTag({first}, QStringLiteral("long tail"), true);
    change.undo(store());
    EXPECT_EQ(tags(first), QStringLiteral("long tail"));
}

TEST_F(TagChangeTest, ThatTakesItselfBackIsNone)
{
    EXPECT_TRUE(change.isEmpty());
    set({first, second}, "core", true);
    EXPECT_FALSE(change.isEmpty());
    set({first, second}, "CORE", false);
    EXPECT_TRUE(change.isEmpty());
}

TEST_F(TagChangeTest, OfAKeywordThatIsGoneIsUndoneForTheOthers)
{
    set({first, second}, "core", true);
    store().removeKeywords({first});
    change.undo(store());
    EXPECT_EQ(tags(second), QString());
}

TEST_F(TagChangeTest, NamesTheOneKeyword)
{
    store().setTag({first}, QStringLiteral("core"), true);
    set({first, second}, "core", true);
    EXPECT_EQ(change.name(),
              QStringLiteral("tags of “%1”").arg(store().trackedKeyword(second)->keyword));
}

} // namespace
} // namespace veltrix
