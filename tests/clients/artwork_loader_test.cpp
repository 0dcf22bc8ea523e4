// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/artwork_loader.h"

#include "clients/image_wholeness.h"
#include "effects/atomic_file.h"
#include "support/fake_http.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

Url icon(int number)
{
    return *Url::fromText(QStringLiteral("https://img.example/%1.png").arg(number));
}

HttpResponse image(QByteArray bytes)
{
    return FakeHttp::response(200, std::move(bytes), {{"Content-Type", "image/png"}});
}

class ArtworkLoaderTest : public testing::Test
{
protected:
    ArtworkLoaderTest()
    {
        m_http.answerWith([](const HttpRequest &request) {
            return image("image " + request.url.path().toUtf8());
        });
        open();
    }

    void open(qint64 cacheLimit = ArtworkLoader::defaultCacheLimit)
    {
        m_loader = std::make_unique<ArtworkLoader>(ArtworkLoader::Arguments{
            m_http.sender(), m_clock, m_folder.filePath(QStringLiteral("art")), cacheLimit});
    }
    Outcome<QByteArray> load(int number, std::stop_token stop = {})
    {
        return Outcome(m_loader->load(icon(number), std::move(stop)));
    }

    QTemporaryDir m_folder;
    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>();
    FakeHttp m_http{m_clock};
    std::unique_ptr<ArtworkLoader> m_loader;
};

TEST_F(ArtworkLoaderTest, AnImageIsLoadedOnceAndThenComesFromDiskAlsoAfterARestart)
{
    EXPECT_EQ(load(1).value(), "image /1.png");
    EXPECT_EQ(load(1).value(), "image /1.png");
    open();
    EXPECT_EQ(load(1).value(), "image /1.png");
    EXPECT_EQ(m_http.count(), 1);
    EXPECT_EQ(m_http.sent().front().request.bodyLimit, 8LL * 1024 * 1024);
}

TEST_F(ArtworkLoaderTest, AtMostSixRequestsRunAtOnceAndTheyStartALittleApart)
{
    m_http.setLatency(Seconds(2));
    std::vector<Outcome<QByteArray>> outcomes;
    for (int i = 0; i < 20; ++i)
        outcomes.push_back(load(i));
    m_clock->runUntilIdle();
    for (const auto &outcome : outcomes)
        EXPECT_TRUE(outcome.hasValue());
    EXPECT_EQ(m_http.count(), 20);
    EXPECT_EQ(m_http.mostInFlight(), 6);
    for (size_t i = 1; i < m_http.sent().size(); ++i) {
        EXPECT_GT((m_http.sent()[i].at - m_http.sent()[i - 1].at).count(),
                  ArtworkLoader::startSpacing.count() - 1e-5);
    }
}

TEST_F(ArtworkLoaderTest, RequestsForOneAddressShareOneTransfer)
{
    m_http.hold();
    const auto one = load(1);
    const auto two = load(1);
    m_http.release();
    EXPECT_EQ(one.value(), "image /1.png");
    EXPECT_EQ(two.value(), "image /1.png");
    EXPECT_EQ(m_http.count(), 1);
}

TEST_F(ArtworkLoaderTest, ATransferEndsWhenTheLastOfItsWaitersIsStopped)
{
    m_http.hold();
    std::stop_source first;
    std::stop_source second;
    const auto one = load(1, first.get_token());
    const auto two = load(1, second.get_token());
    first.request_stop();
    EXPECT_TRUE(one.isCancelled());
    EXPECT_FALSE(two.isDone());
    EXPECT_EQ(m_http.inFlight(), 1);
    second.request_stop();
    EXPECT_TRUE(two.isCancelled());
    EXPECT_EQ(m_http.inFlight(), 0);
    m_http.release();
    EXPECT_EQ(load(1).isDone(), false);
    m_clock->runUntilIdle();
    EXPECT_EQ(m_http.count(), 2);
}

TEST_F(ArtworkLoaderTest, AWaiterStoppedInTheQueueLeavesItsSlotToTheNext)
{
    m_http.hold();
    std::vector<Outcome<QByteArray>> first;
    for (int i = 0; i < 6; ++i)
        first.push_back(load(i));
    m_clock->runUntilIdle();
    std::stop_source stop;
    const auto dropped = load(6, stop.get_token());
    const auto last = load(7);
    stop.request_stop();
    EXPECT_TRUE(dropped.isCancelled());
    m_http.release();
    m_clock->runUntilIdle();
    EXPECT_TRUE(last.hasValue());
    EXPECT_EQ(m_http.count(), 7);
}

TEST_F(ArtworkLoaderTest, AStopThatWasAskedForBeforeLoadsNothing)
{
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_TRUE(load(1, stopped.get_token()).isCancelled());
    EXPECT_EQ(m_http.count(), 0);
    EXPECT_TRUE(load(1).hasValue());
}

TEST_F(ArtworkLoaderTest, AFailureIsRememberedForFiveMinutes)
{
    m_http.answerWith(FakeHttp::response(404));
    EXPECT_TRUE(load(1).holds<BadServerResponseError>());
    m_clock->advance(Seconds(299));
    EXPECT_TRUE(load(1).holds<BadServerResponseError>());
    EXPECT_EQ(m_http.count(), 1);
    m_clock->advance(Seconds(1));
    m_http.answerWith(image("late"));
    EXPECT_EQ(load(1).value(), "late");
    EXPECT_EQ(m_http.count(), 2);
}

TEST_F(ArtworkLoaderTest, APageInPlaceOfAnImageIsAFailureAndIsNotKept)
{
    m_http.answerWith(FakeHttp::response(200, "<html>", {{"content-type", "Text/HTML"}}));
    EXPECT_EQ(load(1).failureText(), QStringLiteral("The server sent no image."));
    m_http.answerWith(image(""));
    m_clock->advance(Seconds(1));
    EXPECT_EQ(load(2).failureText(), QStringLiteral("The server sent no image."));
    EXPECT_FALSE(QDir(m_folder.filePath(QStringLiteral("art"))).exists());
}

TEST_F(ArtworkLoaderTest, AClockSetAYearAheadAndBackHoldsNoImageBack)
{
    const Date before = m_clock->now();
    m_clock->jumpTo(before + Seconds(365 * 86'400.0));
    EXPECT_TRUE(load(1).hasValue());
    m_http.answerWith(FakeHttp::response(500));
    const auto failed = load(2);
    m_clock->advance(Seconds(1));
    EXPECT_TRUE(failed.holds<BadServerResponseError>());
    m_clock->jumpTo(before);
    m_http.answerWith(image("image"));
    const auto again = load(2);
    m_clock->advance(ArtworkLoader::startSpacing);
    EXPECT_TRUE(again.hasValue()) << again.failureText().toStdString();
    const auto other = load(3);
    m_clock->advance(ArtworkLoader::startSpacing);
    EXPECT_TRUE(other.hasValue()) << other.failureText().toStdString();
}

TEST_F(ArtworkLoaderTest, HalfAnImageIsAFailureAndIsNotKept)
{
    m_http.answerWith(image(QByteArray("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR", 16)));
    EXPECT_EQ(load(1).failureText(), QStringLiteral("The server sent half of an image."));
    EXPECT_FALSE(QDir(m_folder.filePath(QStringLiteral("art"))).exists());
}

TEST_F(ArtworkLoaderTest, AnImageThatAPowerCutHasCutOffOnTheDiskIsLoadedAgain)
{
    EXPECT_EQ(load(1).value(), "image /1.png");
    const QDir folder(m_folder.filePath(QStringLiteral("art")));
    const QString file = folder.filePath(folder.entryList(QDir::Files).constFirst());
    for (const QByteArray &rest :
         {QByteArray(), QByteArray("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR", 16)}) {
        writeFileAtomically(file, rest);
        const auto outcome = load(1);
        m_clock->runUntilIdle();
        EXPECT_EQ(outcome.value(), "image /1.png");
    }
    EXPECT_EQ(load(1).value(), "image /1.png");
    EXPECT_EQ(m_http.count(), 3);
}

TEST_F(ArtworkLoaderTest, OnlyWebAddressesAreAsked)
{
    for (const char *text : {"file:///etc/passwd", "data:image/png;base64,AA", "ftp://a/b", "x"}) {
        const Outcome outcome(m_loader->load(*Url::fromText(QString::fromUtf8(text)), {}));
        EXPECT_TRUE(outcome.holds<BadUrlError>()) << text;
    }
    EXPECT_EQ(m_http.count(), 0);
}

TEST_F(ArtworkLoaderTest, TheCacheOnDiskStaysBelowItsLimit)
{
    open(10'000);
    m_http.answerWith(image(QByteArray(1'000, 'x')));
    for (int i = 0; i < 40; ++i) {
        const auto outcome = load(i);
        m_clock->runUntilIdle();
        EXPECT_TRUE(outcome.hasValue());
        qint64 size = 0;
        for (const QFileInfo &file : QDir(m_folder.filePath(QStringLiteral("art")))
                                         .entryInfoList(QDir::Files | QDir::Hidden))
            size += file.size();
        EXPECT_LE(size, 10'000);
        EXPECT_GT(size, 0);
    }
}

TEST_F(ArtworkLoaderTest, AFolderThatCannotBeWrittenOnlyMeansNoCache)
{
    QFile blocker(m_folder.filePath(QStringLiteral("art")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    EXPECT_TRUE(load(1).hasValue());
}

TEST_F(ArtworkLoaderTest, MayGoWhileTransfersRunAndOthersWaitForTheirTurn)
{
    m_http.hold();
    std::vector<Outcome<QByteArray>> outcomes;
    for (int i = 0; i < 9; ++i)
        outcomes.push_back(load(i));
    m_clock->advance(Seconds(0.12));
    m_loader.reset();
    for (const auto &outcome : outcomes)
        EXPECT_TRUE(outcome.isCancelled());
    EXPECT_EQ(m_http.inFlight(), 0);
    EXPECT_EQ(m_clock->sleepers(), 0);
}

TEST(ImageWholeness, EveryPrefixOfAnImageIsToldFromTheWhole)
{
    // Two chunks, the data of the first holding the name of the last.
    const QByteArray png("\x89PNG\r\n\x1a\n\0\0\0\x06tEXtaIENDb\x01\x02\x03\x04"
                         "\0\0\0\0IEND\xae\x42\x60\x82",
                         8 + 18 + 12);
    const QByteArray jpeg("\xff\xd8\xff\xe0 some pixels \xff\xd9", 19);
    const QByteArray webp("RIFF\x0c\0\0\0WEBPVP8 abcd", 20);
    for (const QByteArray &image : {png, jpeg, webp}) {
        EXPECT_TRUE(isWholeImage(image));
        EXPECT_TRUE(isWholeImage(image + "more"));
        for (qsizetype length = 12; length < image.size(); ++length)
            EXPECT_FALSE(isWholeImage(image.first(length))) << image.constData() << length;
    }
    EXPECT_TRUE(isWholeImage("GIF89a or anything else"));
    EXPECT_TRUE(isWholeImage(""));
}

} // namespace
} // namespace veltrix
