// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/update_download.h"

#include "clients/update/fake_download.h"
#include "clients/update/test_feed.h"
#include "clients/update/test_package.h"
#include "clients/update/update_error.h"
#include "effects/atomic_file.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <unistd.h>

namespace veltrix
{
namespace
{

class UpdateDownloadTest : public testing::Test
{
protected:
    UpdateDownloadTest()
    {
        m_package.url = QUrl(QStringLiteral("https://updates.example/veltrix.deb"));
        m_package.length = m_content.size();
        m_package.signature = UpdateSignature::fromBase64(m_signer.sign(m_content)).value();
        m_package.fileName = QStringLiteral("veltrix.deb");
        m_http.answerWith(200, m_content);
    }

    Outcome<QString> download(std::stop_token stop = {})
    {
        const HttpProgress progress = [this](qint64 received, std::optional<qint64>) {
            m_progress.append(received);
        };
        const Outcome outcome(downloadUpdate(
            m_http.downloader(), m_package, UpdateKey::fromBase64(m_signer.publicKey()).value(),
            m_versions, folder(), m_files, progress, std::move(stop)));
        m_files->waitUntilFinished();
        return outcome;
    }

    [[nodiscard]] QString folder() const { return m_root.filePath(QStringLiteral("a/updates")); }
    [[nodiscard]] QStringList files() const
    {
        QStringList found;
        QDirIterator all(folder(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        while (all.hasNext())
            found.append(all.next());
        return found;
    }

    QTemporaryDir m_root;
    TestSigner m_signer;
    QByteArray m_content = packageOf("2.0");
    ExpectedVersion m_versions{QStringLiteral("2.0"), QStringLiteral("1.5")};
    UpdatePackage m_package;
    FakeDownload m_http;
    std::shared_ptr<FileThread> m_files = std::make_shared<FileThread>();
    QList<qint64> m_progress;
};

TEST_F(UpdateDownloadTest, AGenuinePackageIsStoredForThisUserAlone)
{
    const QString path = download().value();
    EXPECT_EQ(readWholeFile(path), m_content);
    EXPECT_TRUE(path.endsWith(QStringLiteral("/veltrix.deb")));
    const auto owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    const auto user = QFileDevice::ReadUser | QFileDevice::WriteUser;
    EXPECT_EQ(QFile::permissions(path), owner | user);
    EXPECT_EQ(QFile::permissions(QFileInfo(path).path()),
              owner | user | QFileDevice::ExeOwner | QFileDevice::ExeUser);
    EXPECT_EQ(files().size(), 2) << "the folder and the package";
}

TEST_F(UpdateDownloadTest, TheBytesAreAskedForAsTheyAreAndNoMoreThanAnnounced)
{
    EXPECT_TRUE(download().hasValue());
    const HttpRequest request = m_http.requests().at(0);
    EXPECT_EQ(request.url, m_package.url);
    EXPECT_EQ(request.bodyLimit, m_content.size());
    EXPECT_TRUE(request.headers.contains(HttpHeader{"Accept-Encoding", "identity"}));
}

TEST_F(UpdateDownloadTest, ProgressIsPassedOn)
{
    m_http.hold();
    const auto outcome = download();
    m_http.report(3);
    m_http.report(7);
    EXPECT_EQ(m_progress, (QList<qint64>{3, 7}));
    EXPECT_FALSE(outcome.isDone());
    m_http.release();
    m_files->waitUntilFinished();
    EXPECT_TRUE(outcome.hasValue());
}

TEST_F(UpdateDownloadTest, AStopLeavesNothing)
{
    m_http.hold();
    std::stop_source stop;
    const auto outcome = download(stop.get_token());
    m_http.report(7);
    stop.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
    EXPECT_EQ(m_http.underWay(), 0);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(UpdateDownloadTest, WhatIsNotGenuineNeverReachesTheDisk)
{
    const auto failureFor = [this](const QByteArray &body) {
        m_http.answerWith(200, body);
        const QString text = download().failureText();
        EXPECT_TRUE(files().isEmpty()) << body.toStdString();
        EXPECT_FALSE(QFileInfo::exists(folder())) << body.toStdString();
        return text;
    };
    const auto wrongSize = [this](qsizetype size) {
        return QStringLiteral("The update was refused: it has %1 bytes, not the announced %2.")
            .arg(size)
            .arg(m_content.size());
    };
    QByteArray other = m_content;
    other[3] = 'x';
    EXPECT_EQ(failureFor(other),
              QStringLiteral("The update was refused: its signature is not that of Veltrix."));
    EXPECT_EQ(failureFor(m_content + ' '), wrongSize(m_content.size() + 1));
    EXPECT_EQ(failureFor(m_content.chopped(1)), wrongSize(m_content.size() - 1));
    EXPECT_EQ(failureFor(""), wrongSize(0));
}

TEST_F(UpdateDownloadTest, AGenuinePackageOfAnotherVersionNeverReachesTheDisk)
{
    m_versions.announced = QStringLiteral("3.0");
    EXPECT_EQ(download().failureText(),
              QStringLiteral("The update was refused: its package holds version 2.0, not the "
                             "announced 3.0."));
    m_versions = {QStringLiteral("2.0"), QStringLiteral("2.0")};
    EXPECT_EQ(download().failureText(),
              QStringLiteral("The update was refused: its package holds version 2.0, which is not "
                             "newer than this one."));
    EXPECT_FALSE(QFileInfo::exists(folder()));
}

TEST_F(UpdateDownloadTest, AnErrorPageIsNoPackage)
{
    for (const int status : {204, 206, 301, 404, 500}) {
        m_http.answerWith(status, m_content);
        EXPECT_EQ(download().failureText(),
                  QStringLiteral("The update couldn’t be downloaded: the server “updates.example” "
                                 "answered with status %1.")
                      .arg(status));
    }
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(UpdateDownloadTest, ATransportsFailurePassesThrough)
{
    m_http.failWith(QStringLiteral("The network is not available."));
    EXPECT_EQ(download().failureText(), QStringLiteral("The network is not available."));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(UpdateDownloadTest, AFolderThatCannotBeMadeIsNamed)
{
    writeFileAtomically(m_root.filePath(QStringLiteral("a")), "a file in the way");
    const QString text = download().failureText();
    EXPECT_TRUE(
        text.startsWith(QStringLiteral("The update could not be stored in “%1”: ").arg(folder())))
        << text.toStdString();
}

TEST_F(UpdateDownloadTest, AFileThatCannotBeWrittenLeavesNoFolder)
{
    // No file system takes a name of 300 characters.
    m_package.fileName = QString(300, u'a');
    EXPECT_TRUE(download().holds<FileError>());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(UpdateDownloadTest, OnlyEarlierDownloadsAreRemoved)
{
    const QString first = download().value();
    const QString second = download().value();
    EXPECT_NE(first, second);
    const QDir own(folder());
    const QString outside = m_root.filePath(QStringLiteral("outside"));
    ASSERT_TRUE(own.mkpath(QStringLiteral("mine")));
    ASSERT_TRUE(own.mkpath(outside));
    writeFileAtomically(own.filePath(QStringLiteral("update-123456")), "a file");
    writeFileAtomically(outside + QStringLiteral("/kept"), "kept");
    ASSERT_TRUE(QFile::link(outside, own.filePath(QStringLiteral("update-abcdef"))));

    removeDownloadedUpdates(folder());
    EXPECT_FALSE(QFileInfo::exists(first));
    EXPECT_FALSE(QFileInfo::exists(second));
    EXPECT_EQ(own.entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
              (QStringList{QStringLiteral("mine"), QStringLiteral("update-123456"),
                           QStringLiteral("update-abcdef")}));
    EXPECT_EQ(readWholeFile(outside + QStringLiteral("/kept")), "kept");
    removeDownloadedUpdates(m_root.filePath(QStringLiteral("nowhere")));
}

} // namespace
} // namespace veltrix
