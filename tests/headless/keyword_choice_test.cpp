// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/keyword_choice.h"

#include "store/store_fixture.h"

namespace veltrix
{
namespace
{

class KeywordChosen : public StoreTest
{
protected:
    KeywordChosen()
    {
        const AppProfile tideline = addApp(1, "Tideline");
        const AppProfile lumen = addApp(2, "Lumen “Pro”");
        for (const char *country : {"US", "DE"}) {
            store->addTrackedKeyword(tideline.id, text("moon"), text(country));
            store->addTrackedKeyword(lumen.id, text("lamp"), text(country));
        }
    }
    /// "moon/US, lamp/US", or why not.
    QString chosen(const QStringList &apps, const QStringList &storefronts)
    {
        QStringList names;
        try {
            for (const TrackedKeyword &keyword : chosenKeywords(*store, {apps, storefronts}))
                names.append(keyword.keyword + u'/' + keyword.country);
        } catch (const UnknownChoice &error) {
            return error.description();
        }
        return names.join(text(", "));
    }
};

TEST_F(KeywordChosen, IsEveryKeywordWhenNothingIsNamed)
{
    EXPECT_EQ(chosen({}, {}), text("moon/US, lamp/US, moon/DE, lamp/DE"));
}

TEST_F(KeywordChosen, IsOfAnyNamedAppAndAnyNamedStorefront)
{
    EXPECT_EQ(chosen({text("TIDELINE")}, {}), text("moon/US, moon/DE"));
    EXPECT_EQ(chosen({text("2")}, {text("de")}), text("lamp/DE"));
    EXPECT_EQ(chosen({text("2"), text("tideline")}, {text("US")}), text("moon/US, lamp/US"));
    EXPECT_EQ(chosen({text("2"), text("lumen “pro”")}, {text("US")}), text("lamp/US"));
}

TEST_F(KeywordChosen, MustBeTracked)
{
    EXPECT_EQ(chosen({text("Lumen %1")}, {}),
              text("No app is called “Lumen %1”. There are “Tideline”, “Lumen “Pro””."));
    EXPECT_EQ(chosen({}, {text("FR")}), text("No keyword is tracked in the storefront “FR”."));
    for (const AppProfile &app : store->apps())
        store->removeApp(app.id);
    EXPECT_EQ(chosen({text("Tideline")}, {}), text("No app is tracked."));
    EXPECT_EQ(chosen({}, {}), text(""));
}

} // namespace
} // namespace veltrix
