// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/property_list.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

PropertyListValue read(const QByteArray &body, PropertyListLimits limits = {})
{
    return readPropertyList("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                            "<plist version=\"1.0\">" +
                                body + "</plist>\n",
                            limits);
}

QString failureOf(const QByteArray &xml, PropertyListLimits limits = {})
{
    try {
        readPropertyList(xml, limits);
    } catch (const PropertyListError &error) {
        return error.description();
    }
    return QStringLiteral("no failure");
}

TEST(PropertyList, ReadsEveryKindOfValue)
{
    const auto root = read("<dict><key>text</key><string>a &amp; b &#233;</string>"
                           "<key>count</key><integer>-3</integer><key>on</key><true/>"
                           "<key>off</key><false/><key>list</key><array><string>x</string>"
                           "<dict/></array></dict>");
    EXPECT_EQ(root.member(QStringLiteral("text"))->text(), QStringLiteral("a & b é"));
    EXPECT_EQ(root.member(QStringLiteral("count"))->integer(), -3);
    EXPECT_EQ(root.member(QStringLiteral("on"))->boolean(), true);
    EXPECT_EQ(root.member(QStringLiteral("off"))->boolean(), false);
    const auto list = root.member(QStringLiteral("list"))->array();
    ASSERT_TRUE(list);
    EXPECT_EQ(list->size(), 2);
    EXPECT_TRUE(list->at(1).dictionary());
    EXPECT_FALSE(root.member(QStringLiteral("missing")));
    EXPECT_FALSE(root.member(QStringLiteral("count"))->text());
}

TEST(PropertyList, ATextThatIsNoPropertyListFails)
{
    for (const char *xml :
         {"", "{}", "<html><body/></html>", "<plist/>", "<plist><dict></plist>",
          "<plist><dict><string>x</string></dict></plist>",
          "<plist><dict><key>k</key></dict></plist>", "<plist><integer>1.5</integer></plist>",
          "<plist><blob/></plist>", "<plist><string>a</string><string>b</string></plist>",
          "<plist><string>cut off"}) {
        EXPECT_TRUE(failureOf(xml).startsWith(QStringLiteral("The property list couldn’t be read")))
            << xml;
    }
}

TEST(PropertyList, EntitiesAreNeverResolved)
{
    QByteArray bomb = "<!DOCTYPE plist [<!ENTITY a \"ha\">";
    for (char c = 'b'; c < 'z'; ++c)
        bomb += QByteArray("<!ENTITY ") + c + " \"" +
                QByteArray("&X;").replace('X', char(c - 1)).repeated(10) + "\">";
    bomb += "]><plist><string>&y;</string></plist>";
    EXPECT_NE(failureOf(bomb), QStringLiteral("no failure"));
    EXPECT_NE(failureOf("<!DOCTYPE plist [<!ENTITY f SYSTEM \"file:///etc/passwd\">]>"
                        "<plist><string>&f;</string></plist>"),
              QStringLiteral("no failure"));
}

TEST(PropertyList, AnEntityThatIsNotDeclaredFails)
{
    // With a document type somewhere else, a reader could take it for declared there and leave a
    // hole in the text.
    for (const char *type : {"", "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                 "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"}) {
        const auto failure = [&](const QByteArray &value) {
            return failureOf(QByteArray("<?xml version=\"1.0\"?>") + type +
                             "<plist version=\"1.0\">" + value + "</plist>");
        };
        for (const char *value :
             {"<string>sb_publishable_&key;</string>", "<string>&nbsp;</string>",
              "<dict><key>a&b;</key><string>x</string></dict>", "<array>&x;</array>",
              "<true>&x;</true>", "<integer>1&x;</integer>"}) {
            EXPECT_TRUE(failure(value).startsWith(
                QStringLiteral("The property list couldn’t be read: the document ")))
                << value << ": " << failure(value).toStdString();
        }
        EXPECT_EQ(failure("<string>&amp;&lt;&gt;&quot;&apos;&#233;&#xe9;</string>"),
                  QStringLiteral("no failure"));
    }
}

TEST(PropertyList, DepthAndSizeAreLimited)
{
    const QByteArray deep = "<plist>" + QByteArray("<array>").repeated(100'000) +
                            QByteArray("</array>").repeated(100'000) + "</plist>";
    EXPECT_TRUE(failureOf(deep).contains(QStringLiteral("deep")));
    EXPECT_TRUE(failureOf("<plist><string>12345</string></plist>", {.bytes = 20, .depth = 5})
                    .contains(QStringLiteral("too large")));
}

TEST(PropertyList, HasNoMoreValuesThanAreAccepted)
{
    const QByteArray four =
        "<plist><array><true/><dict><key>a</key><string/></dict></array></plist>";
    EXPECT_EQ(failureOf(four, {.values = 4}), QStringLiteral("no failure"));
    const QString tooMany =
        QStringLiteral("The property list couldn’t be read: it has too many values.");
    EXPECT_EQ(failureOf(four, {.values = 3}), tooMany);
    EXPECT_EQ(
        failureOf("<plist><array>" + QByteArray("<array/>").repeated(100'000) + "</array></plist>"),
        tooMany);
}

} // namespace
} // namespace veltrix
