// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/appcast.h"

#include "clients/update/test_feed.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

AppcastItem onlyItem(const QByteArray &itemContent)
{
    const Appcast appcast = readAppcast(feedWith("<item>" + itemContent + "</item>"));
    EXPECT_EQ(appcast.items.size(), 1);
    return appcast.items.value(0);
}

/// What the user reads about this document.
QString problem(const QByteArray &document, XmlLimits limits = {largestAppcast})
{
    try {
        readAppcast(document, limits);
        return QStringLiteral("none");
    } catch (const AppcastError &error) {
        return error.description();
    }
}

TEST(Appcast, EverythingThatAnItemCanSayIsRead)
{
    const AppcastItem item = onlyItem(R"(
        <title>Veltrix 2</title>
        <link>https://veltrix.example/2</link>
        <description><![CDATA[<p>Faster &amp; calmer</p>]]></description>
        <pubDate>Mon, 02 Nov 2026 09:00:00 +0000</pubDate>
        <u:version> 27 </u:version>
        <u:shortVersionString>2.0</u:shortVersionString>
        <u:minimumSystemVersion>6.1</u:minimumSystemVersion>
        <u:channel>beta</u:channel>
        <u:criticalUpdate/>
        <u:informationalUpdate/>
        <u:phasedRolloutInterval>86400</u:phasedRolloutInterval>
        <u:releaseNotesLink>https://veltrix.example/notes</u:releaseNotesLink>
        <enclosure url="https://veltrix.example/a.deb" length="42" type="application/x-deb"
            u:os="linux" u:edSignature="c2ln" u:version="26" u:shortVersionString="1.9"/>)");
    AppcastItem expected;
    expected.link = QStringLiteral("https://veltrix.example/2");
    expected.description = QStringLiteral("<p>Faster &amp; calmer</p>");
    expected.pubDate = parseInternetDateTime(u"2026-11-02T09:00:00Z");
    expected.version = QStringLiteral("27");
    expected.shortVersionString = QStringLiteral("2.0");
    expected.minimumSystemVersion = QStringLiteral("6.1");
    expected.channel = QStringLiteral("beta");
    expected.isCritical = true;
    expected.isInformational = true;
    expected.phasedRolloutInterval = Seconds(86'400);
    expected.releaseNotesLink = QStringLiteral("https://veltrix.example/notes");
    expected.enclosures = {{QStringLiteral("https://veltrix.example/a.deb"), 42,
                            QStringLiteral("c2ln"), QStringLiteral("linux"), QStringLiteral("26"),
                            QStringLiteral("1.9")}};
    EXPECT_TRUE(item == expected);
}

TEST(Appcast, AnEmptyItemIsReadAsSayingNothing)
{
    EXPECT_TRUE(onlyItem("") == AppcastItem());
    EXPECT_TRUE(onlyItem("<enclosure/>").enclosures == QList{AppcastEnclosure()});
}

TEST(Appcast, TheNamespaceCountsAndNotItsPrefix)
{
    const QByteArray uri = "http://www.andymatuschak.org/xml-namespaces/sparkle";
    const auto versionWith = [](const QByteArray &declaration, const QByteArray &element) {
        return readAppcast("<rss " + declaration + "><channel><item>" + element +
                           "</item></channel></rss>")
            .items.value(0)
            .version;
    };
    EXPECT_EQ(versionWith("xmlns:zz='" + uri + "'", "<zz:version>2</zz:version>"), u"2"_qs);
    EXPECT_EQ(versionWith("", "<version xmlns='" + uri + "'>2</version>"), u"2"_qs);
    EXPECT_EQ(versionWith("", "<version>2</version>"), QString());
    EXPECT_EQ(
        versionWith("xmlns:sparkle='http://other.example'", "<sparkle:version>2</sparkle:version>"),
        QString());
}

TEST(Appcast, AttributesOfAnotherNamespaceAreNotTheFeeds)
{
    const AppcastItem item =
        onlyItem("<enclosure xmlns:o='http://other.example' o:os='linux' os='linux' "
                 "edSignature='c2ln' o:url='https://other.example'/>");
    EXPECT_TRUE(item.enclosures == QList{AppcastEnclosure()});
}

TEST(Appcast, OnlyTheItemsOwnElementsCount)
{
    const AppcastItem item = onlyItem("<u:informationalUpdate><u:version>9</u:version>"
                                      "</u:informationalUpdate>"
                                      "<u:deltas><enclosure url='https://a.example/d'/></u:deltas>"
                                      "<u:version>2</u:version><u:version>3</u:version>");
    EXPECT_EQ(item.version, QStringLiteral("2"));
    EXPECT_TRUE(item.enclosures.isEmpty());
}

TEST(Appcast, NumbersAndDatesThatAreNoneCountAsAbsent)
{
    for (const char *text : {"", "x", "1.5", "99999999999999999999", "0x10"}) {
        const AppcastItem item =
            onlyItem(QByteArray("<enclosure length='") + text + "'/><u:phasedRolloutInterval>" +
                     text + "</u:phasedRolloutInterval><pubDate>" + text + "</pubDate>");
        EXPECT_EQ(item.enclosures.value(0).length, std::nullopt) << text;
        EXPECT_EQ(item.phasedRolloutInterval, std::nullopt) << text;
        EXPECT_EQ(item.pubDate, std::nullopt) << text;
    }
}

TEST(Appcast, DatesAreMailDatesOfAnyZone)
{
    const auto dateOf = [](const char *text) {
        return onlyItem(QByteArray("<pubDate>") + text + "</pubDate>").pubDate;
    };
    const std::optional<Date> nine = parseInternetDateTime(u"2026-11-02T09:00:00Z");
    EXPECT_EQ(dateOf("Mon, 02 Nov 2026 09:00:00 +0000"), nine);
    EXPECT_EQ(dateOf("Mon, 02 Nov 2026 09:00:00 GMT"), nine);
    EXPECT_EQ(dateOf("Mon, 02 Nov 2026 09:00:00 UT"), nine);
    EXPECT_EQ(dateOf("02 Nov 2026 10:30:00 +0130"), nine);
}

TEST(Appcast, AnEmptyChannelIsAFeedWithoutItems)
{
    EXPECT_TRUE(readAppcast(feedWith("")).items.isEmpty());
}

TEST(Appcast, WhatIsNoFeedIsRefused)
{
    const QString failed = QStringLiteral("The update feed couldn’t be read. ");
    EXPECT_EQ(problem("<html><body>Not found</body></html>"),
              failed + QStringLiteral("The document is not an RSS feed."));
    EXPECT_EQ(problem("<rss xmlns='http://other.example'><channel/></rss>"),
              failed + QStringLiteral("The document is not an RSS feed."));
    EXPECT_EQ(problem("<rss/>"), failed + QStringLiteral("The document has no channel."));
    for (const char *text : {"", "{}", "\xff\xfe", "<rss><channel></rss>"})
        EXPECT_TRUE(problem(text).startsWith(failed)) << text;
}

TEST(Appcast, AFeedThatStopsAnywhereIsRefused)
{
    TestItem item;
    item.version = QStringLiteral("2");
    const QByteArray feed = feedOf({item}).trimmed();
    ASSERT_EQ(problem(feed), QStringLiteral("none"));
    for (qsizetype size = 0; size < feed.size(); ++size) {
        ASSERT_NE(problem(feed.first(size)), QStringLiteral("none"))
            << feed.first(size).toStdString();
    }
}

TEST(Appcast, AnythingAfterTheFeedIsRefused)
{
    EXPECT_NE(problem(feedWith("") + "<rss/>"), QStringLiteral("none"));
    EXPECT_NE(problem(feedWith("") + "text"), QStringLiteral("none"));
    EXPECT_EQ(problem(feedWith("") + "<!-- made by hand -->\n"), QStringLiteral("none"));
}

TEST(Appcast, EntityBombsAndForeignFilesAreRefusedUnopened)
{
    QByteArray laughs = "<!ENTITY e0 'ha'>";
    for (int i = 1; i < 40; ++i) {
        const QByteArray before = "&e" + QByteArray::number(i - 1) + ";";
        laughs += "<!ENTITY e" + QByteArray::number(i) + " '" + before.repeated(10) + "'>";
    }
    const auto withDeclarations = [](const QByteArray &declarations, const QByteArray &use) {
        return "<!DOCTYPE rss [" + declarations + "]><rss><channel><item><title>" + use +
               "</title><description>" + use + "</description></item></channel></rss>";
    };
    const QString refused =
        QStringLiteral("The update feed couldn’t be read. The document declares entities.");
    EXPECT_EQ(problem(withDeclarations(laughs, "&e39;")), refused);
    EXPECT_EQ(problem(withDeclarations("<!ENTITY f SYSTEM 'file:///etc/passwd'>", "&f;")), refused);
    EXPECT_EQ(problem(withDeclarations("<!ENTITY unused 'x'>", "")), refused);
    EXPECT_NE(problem("<!DOCTYPE rss SYSTEM 'http://127.0.0.1:9/rss.dtd'><rss><channel><item>"
                      "<title>&f;</title></item></channel></rss>"),
              QStringLiteral("none"));
    EXPECT_NE(problem(feedWith("<item><title>&nbsp;</title></item>")), QStringLiteral("none"));
}

TEST(Appcast, SizeAndDepthAreLimited)
{
    const QByteArray feed = feedWith("<item/>");
    EXPECT_EQ(problem(feed, {feed.size(), 3}), QStringLiteral("none"));
    EXPECT_EQ(problem(feed, {feed.size() - 1, 3}),
              QStringLiteral("The update feed couldn’t be read. The document is too large."));
    EXPECT_EQ(
        problem(feed, {feed.size(), 2}),
        QStringLiteral("The update feed couldn’t be read. The document is nested too deeply."));
    EXPECT_EQ(
        problem(feedWith("<item>" + QByteArray("<a>").repeated(100'000) + "</item>")),
        QStringLiteral("The update feed couldn’t be read. The document is nested too deeply."));
    EXPECT_EQ(problem(feedWith(QByteArray("<item/>").repeated(largestAppcast / 7))),
              QStringLiteral("The update feed couldn’t be read. The document is too large."));
}

TEST(Appcast, NoFeedHasMoreItemsAndPackagesThanAreAccepted)
{
    const auto items = [](int count) {
        return feedWith(QByteArray("<item/>").repeated(count));
    };
    EXPECT_EQ(readAppcast(items(mostAppcastEntries)).items.size(), mostAppcastEntries);
    const QString tooMany =
        QStringLiteral("The update feed couldn’t be read. The document has too many items.");
    EXPECT_EQ(problem(items(mostAppcastEntries + 1)), tooMany);
    EXPECT_EQ(problem(feedWith("<item>" + QByteArray("<enclosure/>").repeated(mostAppcastEntries) +
                               "</item>")),
              tooMany);
}

} // namespace
} // namespace veltrix
