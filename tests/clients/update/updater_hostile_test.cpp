// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds and packages of people who do not wish us well: each is refused with its reason, nothing is
// opened, and nothing stays on the disk.
#include "clients/update/updater_fixture.h"

namespace veltrix
{
namespace
{

class UpdaterHostile : public UpdaterTest
{
protected:
    /// How a check, and the download if anything is offered, ends.
    QString ending()
    {
        open();
        checkAndDownload();
        EXPECT_TRUE(m_opened.isEmpty());
        EXPECT_TRUE(files().isEmpty());
        EXPECT_TRUE(m_updater->canCheckForUpdates());
        return inWords(m_updater->status());
    }
    /// The same for a feed of these items, none of which may be worth a download.
    QString endingBeforeDownload(const QList<TestItem> &items)
    {
        offer(items);
        const QString end = ending();
        EXPECT_TRUE(m_download.requests().empty());
        return end;
    }
    /// The same for this document as the feed; a check in the background must not notice it.
    QString endingFor(const QByteArray &feed)
    {
        m_http.answerWith(FakeHttp::response(200, feed));
        QString end = ending();
        EXPECT_TRUE(m_download.requests().empty());
        m_settings->checked.reset();
        open();
        takeHistory();
        m_updater->checkForUpdatesInBackground();
        m_clock->runUntilIdle();
        EXPECT_EQ(takeHistory(), QStringList());
        return end;
    }
};

TEST_F(UpdaterHostile, ATamperedPackage)
{
    QByteArray evil = m_package;
    evil[evil.size() / 2] = char(evil[evil.size() / 2] ^ 1);
    m_download.answerWith(200, evil);
    EXPECT_EQ(
        ending(),
        QStringLiteral("failed: The update was refused: its signature is not that of Veltrix."));
}

TEST_F(UpdaterHostile, ATamperedLength)
{
    TestItem longer = item(QStringLiteral("2.0"));
    longer.length = QString::number(m_package.size() + 1);
    offer({longer});
    EXPECT_EQ(ending(), QStringLiteral("failed: The update was refused: it has %1 bytes, not the "
                                       "announced %2.")
                            .arg(m_package.size())
                            .arg(m_package.size() + 1));
}

TEST_F(UpdaterHostile, AnItemWithoutALength)
{
    TestItem none = item(QStringLiteral("2.0"));
    none.length.clear();
    EXPECT_EQ(endingBeforeDownload({none}),
              QStringLiteral("failed: Version 2.0 was refused: its length is not known."));
}

TEST_F(UpdaterHostile, ASignatureByAnotherKey)
{
    TestItem foreign = item(QStringLiteral("2.0"));
    foreign.signature = TestSigner(2).sign(m_package);
    offer({foreign});
    EXPECT_EQ(
        ending(),
        QStringLiteral("failed: The update was refused: its signature is not that of Veltrix."));
}

TEST_F(UpdaterHostile, ASignatureOfAnotherPackage)
{
    TestItem wrong = item(QStringLiteral("2.0"));
    wrong.signature = m_signer.sign("the old veltrix");
    offer({wrong});
    EXPECT_EQ(
        ending(),
        QStringLiteral("failed: The update was refused: its signature is not that of Veltrix."));
}

TEST_F(UpdaterHostile, AnOldSignedPackageUnderANewLabel)
{
    m_package = packageOf("1.4");
    m_download.answerWith(200, m_package);
    offer({item(QStringLiteral("2.0"))});
    EXPECT_EQ(ending(), QStringLiteral("failed: The update was refused: its package holds version "
                                       "1.4, not the announced 2.0."));
}

TEST_F(UpdaterHostile, ASignedFileThatIsNoPackage)
{
    m_package = "the new veltrix";
    m_download.answerWith(200, m_package);
    offer({item(QStringLiteral("2.0"))});
    EXPECT_EQ(ending(), QStringLiteral("failed: The update was refused: it is not a Debian package "
                                       "that can be read."));
}

TEST_F(UpdaterHostile, AnUnsignedItem)
{
    TestItem unsignedItem = item(QStringLiteral("2.0"));
    unsignedItem.signature.clear();
    EXPECT_EQ(endingBeforeDownload({unsignedItem}),
              QStringLiteral("failed: Version 2.0 was refused: it is not signed."));
}

TEST_F(UpdaterHostile, AnOlderVersion)
{
    EXPECT_EQ(endingBeforeDownload({item(QStringLiteral("1.4")), item(QStringLiteral("1.5"))}),
              QStringLiteral("nothing newer"));
}

TEST_F(UpdaterHostile, AnotherSystem)
{
    TestItem other = item(QStringLiteral("2.0"));
    other.os = QStringLiteral("windows");
    EXPECT_EQ(endingBeforeDownload({other}), QStringLiteral("nothing newer"));
}

TEST_F(UpdaterHostile, APackageWithoutEncryption)
{
    TestItem plain = item(QStringLiteral("2.0"));
    plain.url = QStringLiteral("http://updates.example/veltrix.deb");
    EXPECT_EQ(endingBeforeDownload({plain}),
              QStringLiteral("failed: Version 2.0 was refused: its address is not safe."));
}

TEST_F(UpdaterHostile, AFeedThatIsTooLarge)
{
    QByteArray feed = feedOf({item(QStringLiteral("2.0"))});
    feed += QByteArray(largestAppcast, ' ');
    EXPECT_EQ(endingFor(feed), QStringLiteral("failed: The update feed couldn’t be read. The "
                                              "document is too large."));
}

TEST_F(UpdaterHostile, AnEntityBomb)
{
    QByteArray declarations = "<!ENTITY e0 'ha'>";
    for (int i = 1; i < 30; ++i) {
        const QByteArray before = "&e" + QByteArray::number(i - 1) + ";";
        declarations += "<!ENTITY e" + QByteArray::number(i) + " '" + before.repeated(10) + "'>";
    }
    EXPECT_EQ(endingFor("<!DOCTYPE rss [" + declarations +
                        "]><rss><channel><title>&e29;</title></channel></rss>"),
              QStringLiteral("failed: The update feed couldn’t be read. The document declares "
                             "entities."));
}

TEST_F(UpdaterHostile, AFeedThatStopsHalfWay)
{
    // All of the item is there, and sound; only the end of the feed is missing.
    const QByteArray feed = feedOf({item(QStringLiteral("2.0"))});
    const qsizetype end = feed.indexOf("</channel>");
    const QString text = endingFor(feed.first(end));
    EXPECT_TRUE(text.startsWith(
        QStringLiteral("failed: The update feed couldn’t be read. The document is not valid XML")))
        << text.toStdString();
}

TEST_F(UpdaterHostile, APageInPlaceOfTheFeed)
{
    EXPECT_EQ(endingFor("<html><body>Please sign in to this network</body></html>"),
              QStringLiteral("failed: The update feed couldn’t be read. The document is not an RSS "
                             "feed."));
}

TEST_F(UpdaterHostile, APageInPlaceOfThePackage)
{
    m_download.answerWith(404, "<html>Not found</html>");
    EXPECT_EQ(ending(), QStringLiteral("failed: The update couldn’t be downloaded: the server "
                                       "“updates.example” answered with status 404."));
}

} // namespace
} // namespace veltrix
