// SPDX-License-Identifier: GPL-3.0-or-later
// The signed feed and its package.
#include "sample/debian_package.h"
#include "sample/update_feed.h"
#include "services_fixture.h"

#include <QProcess>
#include <QStandardPaths>
#include <QXmlStreamReader>

#include <gmock/gmock.h>
#include <sodium.h>

namespace veltrix::sample
{
namespace
{

const QString feedNamespace = u"http://www.andymatuschak.org/xml-namespaces/sparkle"_qs;

struct Item {
    QString version;
    QString channel;
    QString system;
    QString url;
    qint64 length = 0;
    QByteArray signature;
};

std::vector<Item> itemsOf(const std::string &feed)
{
    std::vector<Item> items;
    QXmlStreamReader xml(QByteArray::fromStdString(feed));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"item")
            items.emplace_back();
        else if (xml.name() == u"version" && xml.namespaceUri() == feedNamespace)
            items.back().version = xml.readElementText();
        else if (xml.name() == u"channel" && xml.namespaceUri() == feedNamespace)
            items.back().channel = xml.readElementText();
        else if (xml.name() == u"enclosure") {
            const QXmlStreamAttributes attributes = xml.attributes();
            items.back().url = attributes.value(u"url"_qs).toString();
            items.back().length = attributes.value(u"length"_qs).toLongLong();
            items.back().system = attributes.value(feedNamespace, u"os"_qs).toString();
            items.back().signature = QByteArray::fromBase64(
                attributes.value(feedNamespace, u"edSignature"_qs).toLatin1());
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return items;
}

bool isSignedBy(const QByteArray &publicKey, const std::string &archive,
                const QByteArray &signature)
{
    return publicKey.size() == crypto_sign_PUBLICKEYBYTES &&
           signature.size() == crypto_sign_BYTES &&
           crypto_sign_verify_detached(
               reinterpret_cast<const unsigned char *>(signature.constData()),
               reinterpret_cast<const unsigned char *>(archive.data()), archive.size(),
               reinterpret_cast<const unsigned char *>(publicKey.constData())) == 0;
}

class UpdateFeedTest : public ServicesTest
{
protected:
    static std::string get(const std::string &target)
    {
        SecureClient client(services());
        const auto result = client->Get(target);
        EXPECT_TRUE(result) << target;
        return result ? result->body : std::string();
    }
};

TEST_F(UpdateFeedTest, OffersOneFittingVersionAmongOthers)
{
    const std::vector<Item> items = itemsOf(get(feedPath));
    ASSERT_EQ(items.size(), 4U);
    const auto offered = std::ranges::count_if(items, [](const Item &item) {
        return item.version == u"99.0.0" && item.system == u"linux" && item.channel.isEmpty();
    });
    EXPECT_EQ(offered, 1);
    EXPECT_TRUE(std::ranges::any_of(items, [](const Item &item) { return item.system.isEmpty(); }));
    EXPECT_TRUE(
        std::ranges::any_of(items, [](const Item &item) { return item.channel == u"beta"; }));
}

TEST_F(UpdateFeedTest, SignsThePackageWithThePublishedKey)
{
    const QByteArray publicKey = QByteArray::fromBase64(services().updatePublicKey());
    for (const Item &item : itemsOf(get(feedPath))) {
        ASSERT_TRUE(item.url.startsWith(services().httpsOrigin()));
        const std::string archive =
            get(item.url.mid(services().httpsOrigin().size()).toStdString());
        EXPECT_EQ(static_cast<qint64>(archive.size()), item.length);
        EXPECT_TRUE(isSignedBy(publicKey, archive, item.signature));
        EXPECT_FALSE(isSignedBy(publicKey, archive + "x", item.signature));
    }
}

TEST(SigningKey, FollowsFromItsSeed)
{
    const QByteArray seed(32, 'a');
    EXPECT_EQ(signingKey(seed).publicKey, signingKey(seed).publicKey);
    EXPECT_NE(signingKey(seed).publicKey, signingKey(QByteArray(32, 'b')).publicKey);
    EXPECT_NE(signingKey({}).publicKey, signingKey({}).publicKey);
    EXPECT_EQ(signingKey(seed).publicKey.size(), 32);
    EXPECT_THROW(signingKey("short"), std::runtime_error);
}

TEST(DebianPackage, IsTheSameForTheSameVersion)
{
    EXPECT_EQ(debianPackage(u"1.2"_qs), debianPackage(u"1.2"_qs));
    EXPECT_NE(debianPackage(u"1.2"_qs), debianPackage(u"1.3"_qs));
}

TEST(DebianPackage, IsReadByTheSystemsPackageTool)
{
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("dpkg-deb"));
    if (tool.isEmpty())
        GTEST_SKIP() << "there is no dpkg-deb on this machine";
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("update.deb")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(debianPackage(u"12.3.4"_qs));
    file.close();
    const auto outputOf = [&](const QStringList &arguments) {
        QProcess process;
        process.start(tool, arguments);
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput();
    };
    EXPECT_EQ(outputOf({u"--field"_qs, file.fileName(), u"Version"_qs}).trimmed(), "12.3.4");
    EXPECT_TRUE(outputOf({u"--contents"_qs, file.fileName()})
                    .contains("./usr/share/doc/veltrix-sample-update/README"));
}

} // namespace
} // namespace veltrix::sample
