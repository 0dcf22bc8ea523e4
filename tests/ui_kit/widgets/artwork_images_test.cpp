// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/artwork_images.h"

#include "ui/support/ui_world.h"

#include <QPainter>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// Answers when it is told to.
class HeldArtwork final : public ArtworkLoading
{
public:
    Task<QByteArray> load(Url url, std::stop_token stop) override
    {
        asked.append(url.text());
        const OneShot<QByteArray> answer;
        waiting.push_back(answer);
        const QByteArray bytes = co_await answer.wait(stop);
        co_return bytes;
    }

    QStringList asked;
    std::vector<OneShot<QByteArray>> waiting;
};

Url address(const char *text)
{
    return *Url::fromText(QString::fromLatin1(text));
}

TEST(ArtworkImages, LoadsAnAddressOnceAndKeepsIt)
{
    FakeArtwork loading;
    ArtworkImages images(loading);
    const QSignalSpy ready(&images, &ArtworkImages::ready);
    EXPECT_FALSE(images.image(address("https://a/1.png")).isNull()) << "answered at once";
    EXPECT_EQ(images.image(address("https://a/1.png")).size(), QSize(100, 100));
    EXPECT_EQ(loading.asked.size(), 1);
    EXPECT_EQ(ready.size(), 1);
}

TEST(ArtworkImages, AsksOnceWhileItWaits)
{
    HeldArtwork loading;
    ArtworkImages images(loading);
    const QSignalSpy ready(&images, &ArtworkImages::ready);
    EXPECT_TRUE(images.image(address("https://a/1.png")).isNull());
    EXPECT_TRUE(images.image(address("https://a/1.png")).isNull());
    EXPECT_EQ(loading.asked.size(), 1);
    loading.waiting[0].resolve("no image");
    EXPECT_EQ(ready.size(), 1);
}

TEST(ArtworkImages, DoesNotAskAgainForWhatFailedUntilItIsRetried)
{
    FakeArtwork loading;
    loading.fails = true;
    ArtworkImages images(loading);
    EXPECT_TRUE(images.image(address("https://a/1.png")).isNull());
    EXPECT_TRUE(images.image(address("https://a/1.png")).isNull());
    EXPECT_EQ(loading.asked.size(), 1);
    loading.fails = false;
    images.retryFailed();
    EXPECT_FALSE(images.image(address("https://a/1.png")).isNull());
}

TEST(ArtworkImages, WhatIsWantedWhileTheyAreHeldLoadsOnceTheyAreReleased)
{
    FakeArtwork loading;
    ArtworkImages images(loading);
    images.hold();
    EXPECT_TRUE(images.image(address("https://a/1.png")).isNull());
    EXPECT_TRUE(images.image(address("https://a/1.png")).isNull());
    EXPECT_TRUE(images.image(address("https://a/2.png")).isNull());
    EXPECT_EQ(loading.asked.size(), 0);
    const QSignalSpy ready(&images, &ArtworkImages::ready);
    images.release();
    EXPECT_EQ(loading.asked.size(), 2);
    EXPECT_EQ(ready.size(), 2);
    EXPECT_FALSE(images.image(address("https://a/1.png")).isNull());
    EXPECT_FALSE(images.image(address("https://a/3.png")).isNull()) << "at once from now on";
}

TEST(ArtworkImages, ItsEndStopsWhatLoads)
{
    HeldArtwork loading;
    {
        ArtworkImages images(loading);
        EXPECT_TRUE(images.image(address("https://a/1.png")).isNull());
    }
    EXPECT_FALSE(loading.waiting[0].isOpen());
}

TEST(Artwork, IsARoundedSquareAndAPlaceholderWithoutAnImage)
{
    const Tokens tokens(ColorScheme::Light);
    QImage red(10, 10, QImage::Format_RGB32);
    red.fill(Qt::red);
    const auto painted = [&](const QImage &image) {
        QImage canvas(40, 40, QImage::Format_ARGB32_Premultiplied);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        paintArtwork(painter, QRectF(0, 0, 40, 40), image, QStringLiteral("app.fill"), tokens);
        return canvas;
    };
    EXPECT_EQ(painted(red).pixelColor(20, 20), QColor(Qt::red));
    EXPECT_EQ(painted(red).pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(painted({}).pixelColor(20, 20), tokens[Token::Gray]);
    EXPECT_EQ(painted({}).pixelColor(20, 4), tokens[Token::Hover]);
}

} // namespace
} // namespace veltrix
