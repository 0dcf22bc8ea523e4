// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/update_selection.h"

#include "clients/update/test_feed.h"
#include "clients/update/update_error.h"
#include "support/json_printers.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

const UpdateTarget installed{QStringLiteral("1.5"), QStringLiteral("6.1.0-18-amd64"), std::nullopt,
                             dateFromUnixSeconds(1795262400)};

UpdateSelection select(const QList<TestItem> &items, const UpdateTarget &target = installed)
{
    return selectUpdate(readAppcast(feedOf(items)), target);
}

/// The version offered, or the reasons why there is none.
QString chosen(const QList<TestItem> &items, const UpdateTarget &target = installed)
{
    const UpdateSelection selection = select(items, target);
    if (selection.offer)
        return selection.offer->version;
    QStringList reasons;
    for (const SkippedUpdate &skipped : selection.skipped)
        reasons.append((skipped.isRefusal() ? QStringLiteral("! ") : QString()) +
                       skipped.description);
    return reasons.join(u'\n');
}

TestItem item(const char *version, const char *elements = "")
{
    TestItem made;
    made.version = QString::fromUtf8(version);
    made.elements = QString::fromUtf8(elements);
    return made;
}

TEST(UpdateSelection, TheNewestVersionIsTakenWhereverItStands)
{
    EXPECT_EQ(chosen({item("1.9"), item("1.10"), item("1.6")}), QStringLiteral("1.10"));
    EXPECT_EQ(chosen({item("1.10"), item("1.9")}), QStringLiteral("1.10"));
    EXPECT_EQ(chosen({item("1.6"), item("1.10")}), QStringLiteral("1.10"));
}

RC_GTEST_PROP(UpdateSelectionProperty, TheOrderOfTheFeedMeansNothing, ())
{
    QList<TestItem> items{item("1.6"), item("1.10"), item("1.9"), item("2.0b1"), item("1.0")};
    const auto keys = *rc::gen::container<std::vector<int>>(5, rc::gen::arbitrary<int>());
    for (size_t i = 0; i < keys.size(); ++i)
        std::swap(items[qsizetype(i)], items[qsizetype(unsigned(keys[i]) % 5)]);
    RC_ASSERT(chosen(items) == QStringLiteral("2.0b1"));
}

TEST(UpdateSelection, AnOfferCarriesWhatTheUserIsAskedAbout)
{
    const TestItem feedItem =
        item("27", "<u:shortVersionString>2.0</u:shortVersionString><description>Faster"
                   "</description><link>https://veltrix.example/2</link><u:criticalUpdate/>"
                   "<u:releaseNotesLink>http://veltrix.example/notes</u:releaseNotesLink>");
    UpdateOffer expected;
    expected.version = QStringLiteral("27");
    expected.displayVersion = QStringLiteral("2.0");
    expected.notes = QStringLiteral("Faster");
    expected.notesLink = QUrl(QStringLiteral("http://veltrix.example/notes"));
    expected.link = QUrl(QStringLiteral("https://veltrix.example/2"));
    expected.isCritical = true;
    expected.package = UpdatePackage{QUrl(QStringLiteral("https://updates.example/veltrix.deb")),
                                     1000, UpdateSignature::fromBase64(feedItem.signature).value(),
                                     QStringLiteral("veltrix.deb")};
    EXPECT_TRUE(select({feedItem}).offer == expected);
}

TEST(UpdateSelection, Version020IsOfferedToAnInstalled010)
{
    UpdateTarget first = installed;
    first.installedVersion = QStringLiteral("0.1.0");
    EXPECT_EQ(chosen({item("0.1.0"), item("0.2.0")}, first), QStringLiteral("0.2.0"));
    first.installedVersion = QStringLiteral("0.2.0");
    EXPECT_EQ(chosen({item("0.1.0")}, first),
              QStringLiteral("Version 0.1.0 is not newer than this one."));
}

TEST(UpdateSelection, NothingThatIsNotNewerIsOffered)
{
    EXPECT_EQ(chosen({item("1.4.9")}), QStringLiteral("Version 1.4.9 is not newer than this one."));
    EXPECT_EQ(chosen({item("1.5")}), QStringLiteral("Version 1.5 is not newer than this one."));
    EXPECT_EQ(chosen({item("1.5.0")}), QStringLiteral("Version 1.5.0 is not newer than this one."));
    EXPECT_EQ(chosen({item("1.5b9")}), QStringLiteral("Version 1.5b9 is not newer than this one."));
    EXPECT_EQ(chosen({}), QString());
}

RC_GTEST_PROP(UpdateSelectionProperty, AnOfferIsAlwaysNewer, ())
{
    const auto number = [] {
        return QStringLiteral("%1.%2").arg(*rc::gen::inRange(0, 4)).arg(*rc::gen::inRange(0, 30));
    };
    QList<TestItem> items;
    const int count = *rc::gen::inRange(0, 6);
    for (int i = 0; i < count; ++i)
        items.append(item(number().toUtf8().constData()));
    UpdateTarget target = installed;
    target.installedVersion = number();
    const UpdateSelection selection = select(items, target);
    const auto value = [](const QString &version) {
        return version.section(u'.', 0, 0).toInt() * 100 + version.section(u'.', 1).toInt();
    };
    if (selection.offer)
        RC_ASSERT(value(selection.offer->version) > value(target.installedVersion));
    else
        RC_ASSERT(selection.skipped.size() == items.size());
}

TEST(UpdateSelection, AnUnknownInstalledVersionGetsNoOffer)
{
    UpdateTarget target = installed;
    for (const char *version : {"", "—", "dev"}) {
        target.installedVersion = QString::fromUtf8(version);
        EXPECT_THROW(select({item("2.0")}, target), UpdateError);
    }
}

TEST(UpdateSelection, OtherSystemsAreNotOurs)
{
    for (const char *system : {"", "macos", "windows", "Linux"}) {
        TestItem other = item("2.0");
        other.os = QString::fromUtf8(system);
        EXPECT_EQ(chosen({other}), QStringLiteral("Version 2.0 is for another system."));
    }
    EXPECT_EQ(
        selectUpdate(readAppcast(feedWith("<item><u:version>2</u:version></item>")), installed)
            .skipped.value(0)
            .description,
        QStringLiteral("Version 2 is for another system."));
}

TEST(UpdateSelection, WhatIsForAnotherSystemIsNoRefusalWhateverItsVersion)
{
    TestItem other = item("two");
    other.os = QStringLiteral("macos");
    EXPECT_EQ(chosen({other}), QStringLiteral("Version two is for another system."));
    other.version = QStringLiteral("1.0");
    EXPECT_EQ(chosen({other}), QStringLiteral("Version 1.0 is not newer than this one."));
}

TEST(UpdateSelection, OfSeveralPackagesTheOneForLinuxIsTaken)
{
    TestItem both = item("2.0", "<enclosure url='https://updates.example/veltrix.zip' length='5' "
                                "u:os='macos' u:edSignature='x'/>");
    EXPECT_EQ(select({both}).offer.value().package.value().fileName, QStringLiteral("veltrix.deb"));
}

TEST(UpdateSelection, OlderFeedsKeepTheVersionAtTheEnclosure)
{
    const QByteArray xml = "<item><enclosure url='https://updates.example/a.deb' length='9' "
                           "u:os='linux' u:version='2.1' u:shortVersionString='Two' "
                           "u:edSignature='" +
                           TestSigner().sign("x").toLatin1() + "'/></item>";
    const UpdateOffer offer = selectUpdate(readAppcast(feedWith(xml)), installed).offer.value();
    EXPECT_EQ(offer.version, QStringLiteral("2.1"));
    EXPECT_EQ(offer.displayVersion, QStringLiteral("Two"));
}

TEST(UpdateSelection, OnlyTheDefaultChannelIsFollowed)
{
    EXPECT_EQ(chosen({item("2.0", "<u:channel>beta</u:channel>")}),
              QStringLiteral("Version 2.0 is in the channel “beta”."));
    EXPECT_EQ(chosen({item("2.0", "<u:channel> </u:channel>")}), QStringLiteral("2.0"));
}

TEST(UpdateSelection, ANewerSystemThanThisIsNotAsked)
{
    const auto needing = [](const char *version) {
        return item("2.0", QByteArray("<u:minimumSystemVersion>")
                               .append(version)
                               .append("</u:minimumSystemVersion>")
                               .constData());
    };
    EXPECT_EQ(chosen({needing("6.1")}), QStringLiteral("2.0"));
    EXPECT_EQ(chosen({needing("6.1.0")}), QStringLiteral("2.0"));
    EXPECT_EQ(chosen({needing("5.10")}), QStringLiteral("2.0"));
    EXPECT_EQ(chosen({needing("6.1.1")}),
              QStringLiteral("Version 2.0 needs version 6.1.1 of the system."));
    EXPECT_EQ(chosen({needing("6.10")}),
              QStringLiteral("Version 2.0 needs version 6.10 of the system."));
    UpdateTarget named = installed;
    named.systemVersion = QStringLiteral("5.15.167.4-microsoft-standard");
    EXPECT_EQ(chosen({needing("5.15.167.4")}, named), QStringLiteral("2.0"));
    UpdateTarget unknown = installed;
    unknown.systemVersion.clear();
    EXPECT_EQ(chosen({needing("99")}, unknown), QStringLiteral("2.0"));
}

TEST(UpdateSelection, AReleaseInStepsReachesOneGroupAfterAnother)
{
    const Date published = parseInternetDateTime(u"2026-11-02T09:00:00Z").value();
    const TestItem steps = item("2.0", "<pubDate>Mon, 02 Nov 2026 09:00:00 +0000</pubDate>"
                                       "<u:phasedRolloutInterval>3600</u:phasedRolloutInterval>");
    const QString later = QStringLiteral("Version 2.0 is released in steps.");
    UpdateTarget target = installed;
    for (int group = 0; group < rolloutGroups; ++group) {
        target.rolloutGroup = group;
        target.now = published + Seconds(3600.0 * group);
        EXPECT_EQ(chosen({steps}, target), QStringLiteral("2.0")) << group;
        target.now -= Seconds(1);
        EXPECT_EQ(chosen({steps}, target), later) << group;
        TestItem critical = steps;
        critical.elements += QStringLiteral("<u:criticalUpdate/>");
        EXPECT_EQ(chosen({critical}, target), QStringLiteral("2.0")) << group;
    }
    target.rolloutGroup = std::nullopt;
    EXPECT_EQ(chosen({steps}, target), QStringLiteral("2.0"));
}

TEST(UpdateSelection, StepsWithoutADateOrAnIntervalReachEveryone)
{
    UpdateTarget target = installed;
    target.rolloutGroup = rolloutGroups - 1;
    EXPECT_EQ(chosen({item("2.0", "<u:phasedRolloutInterval>99999999</u:phasedRolloutInterval>")},
                     target),
              QStringLiteral("2.0"));
    EXPECT_EQ(chosen({item("2.0", "<pubDate>Sat, 21 Nov 2026 11:59:59 +0000</pubDate>")}, target),
              QStringLiteral("2.0"));
}

TEST(UpdateSelection, WhatCanOnlyBeReadAboutHasALinkAndNoPackage)
{
    const auto news = [](const char *link) {
        return "<item><u:version>2.0</u:version><u:informationalUpdate/><link>" + QByteArray(link) +
               "</link></item>";
    };
    const UpdateOffer offer =
        selectUpdate(readAppcast(feedWith(news("https://veltrix.example/2"))), installed)
            .offer.value();
    EXPECT_EQ(offer.package, std::nullopt);
    EXPECT_EQ(offer.link, QUrl(QStringLiteral("https://veltrix.example/2")));
    for (const char *link : {"", "file:///etc/passwd", "javascript:alert(1)", "/2", "veltrix"}) {
        const SkippedUpdate skipped =
            selectUpdate(readAppcast(feedWith(news(link))), installed).skipped.value(0);
        EXPECT_EQ(skipped.reason, SkippedUpdate::Reason::NothingToRead) << link;
    }
    TestItem withPackage = item("2.0", "<u:informationalUpdate/><link>https://a.example/</link>");
    EXPECT_EQ(select({withPackage}).offer.value().package, std::nullopt);
    withPackage.os = QStringLiteral("macos");
    EXPECT_EQ(chosen({withPackage}), QStringLiteral("Version 2.0 is for another system."));
}

TEST(UpdateSelection, UnsoundPackagesAreRefusedWithTheirReason)
{
    const auto withChange = [](auto change) {
        TestItem changed = item("2.0");
        change(changed);
        return chosen({changed});
    };
    const auto refused = [](const char *why) {
        return QStringLiteral("! Version 2.0 was refused: %1.").arg(QString::fromUtf8(why));
    };
    EXPECT_EQ(withChange([](TestItem &it) { it.signature.clear(); }), refused("it is not signed"));
    for (const char *signature : {"x", "AAAA", "!!!!"}) {
        EXPECT_EQ(withChange([&](TestItem &it) { it.signature = QString::fromUtf8(signature); }),
                  refused("its signature can’t be read"));
    }
    for (const char *url : {"", "http://updates.example/a.deb", "file:///tmp/a.deb", "a.deb",
                            "https:///a.deb", "//updates.example/a.deb"}) {
        EXPECT_EQ(withChange([&](TestItem &it) { it.url = QString::fromUtf8(url); }),
                  refused("its address is not safe"))
            << url;
    }
    for (const char *length : {"", "0", "-1", "many"}) {
        EXPECT_EQ(withChange([&](TestItem &it) { it.length = QString::fromUtf8(length); }),
                  refused("its length is not known"))
            << length;
    }
    EXPECT_EQ(
        withChange([](TestItem &it) { it.length = QString::number(largestUpdatePackage + 1); }),
        refused("it is too large"));
    EXPECT_EQ(withChange([](TestItem &it) { it.length = QString::number(largestUpdatePackage); }),
              QStringLiteral("2.0"));
}

TEST(UpdateSelection, AVersionThatIsNoneIsRefused)
{
    for (const char *version : {"", "two", "1 2", "$(id)"})
        EXPECT_EQ(chosen({item(version)}),
                  QStringLiteral("! A version of the update feed has no number."));
}

TEST(UpdateSelection, ASoundVersionIsOfferedBesideARefusedNewerOne)
{
    TestItem unsigned3 = item("3.0");
    unsigned3.signature.clear();
    const UpdateSelection selection = select({unsigned3, item("2.0"), item("1.0")});
    EXPECT_EQ(selection.offer.value().version, QStringLiteral("2.0"));
    ASSERT_EQ(selection.skipped.size(), 2);
    EXPECT_TRUE(selection.skipped[0].isRefusal());
    EXPECT_FALSE(selection.skipped[1].isRefusal());
}

TEST(UpdateSelection, FilesGetPlainNamesOnly)
{
    const auto nameFor = [](const char *url) {
        TestItem named = item("2.0");
        named.url = QString::fromUtf8(url);
        return select({named}).offer.value().package.value().fileName;
    };
    EXPECT_EQ(nameFor("https://a.example/x/veltrix_2.0~rc1+1_amd64.deb?key=1#top"),
              QStringLiteral("veltrix_2.0~rc1+1_amd64.deb"));
    for (const char *url :
         {"https://a.example/", "https://a.example/..", "https://a.example/.bashrc",
          "https://a.example/-rf", "https://a.example/%2e%2e%2fevil.deb",
          "https://a.example/a%2fb.deb", "https://a.example/a%0a.deb",
          "https://a.example/a%20b.deb", "https://a.example/%C3%A9.deb"})
        EXPECT_EQ(nameFor(url), QStringLiteral("veltrix-update")) << url;
}

TEST(UpdateSelection, LongTextsOfTheFeedAreCutInSentences)
{
    const QString name(1000, u'9');
    TestItem longName = item("1.0");
    longName.elements = QStringLiteral("<u:shortVersionString>%1</u:shortVersionString>").arg(name);
    EXPECT_EQ(chosen({longName}),
              QStringLiteral("Version %1 is not newer than this one.").arg(name.left(64)));
}

} // namespace
} // namespace veltrix
