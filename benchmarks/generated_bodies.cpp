// SPDX-License-Identifier: GPL-3.0-or-later
#include "generated_bodies.h"

#include <QList>

#include <algorithm>
#include <random>

namespace veltrix
{

namespace
{

QByteArray quoted(const QByteArray &text)
{
    return '"' + text + '"';
}

QByteArray listOf(const QByteArray &prefix, int count)
{
    QList<QByteArray> items;
    for (int i = 0; i < count; ++i)
        items.append(quoted(prefix + QByteArray::number(i) + "-" + prefix + QByteArray::number(i)));
    return '[' + items.join(", ") + ']';
}

QByteArray description(int length)
{
    const QByteArray sentence =
        "Edit, frame and share your pictures – “quickly”.\\nNo account needed; "
        "日本語 and ไทย are supported too.\\u2028";
    return quoted(sentence.repeated(length / int(sentence.size()) + 1));
}

QByteArray artwork(int app, int size)
{
    return quoted("https://artwork.example/image/thumb/Purple211/v4/92/0d/16/"
                  "920d167b-976c-a407-4ab3-2ade4bd1a165/AppIcon-" +
                  QByteArray::number(app) + ".png/" + QByteArray::number(size) + "x" +
                  QByteArray::number(size) + "bb.jpg");
}

QByteArray record(int app, std::mt19937 &random)
{
    const QByteArray number = QByteArray::number(app);
    QList<QByteArray> members{
        "\"trackId\":" + QByteArray::number(6451880007LL + app),
        "\"trackName\":" + quoted("Photo Frame " + number + ": Collage & Filters"),
        "\"userRatingCount\":" + QByteArray::number(app * 7919 % 2'840'000),
        "\"averageUserRating\":4.62802000000000024471091819577850401401519775390625",
        "\"releaseDate\":\"2019-03-14T07:00:00Z\"",
        "\"currentVersionReleaseDate\":\"2026-11-12T08:41:07Z\"",
        "\"artworkUrl60\":" + artwork(app, 60),
        "\"artworkUrl100\":" + artwork(app, 100),
        "\"artworkUrl512\":" + artwork(app, 512),
        "\"primaryGenreName\":\"Photo & Video\"",
        "\"kind\":\"software\"",
        "\"description\":" + description(1500 + app * 37 % 2000),
        "\"screenshotUrls\":[" + artwork(app, 392) + ", " + artwork(app, 393) + "]",
        "\"ipadScreenshotUrls\":[]",
        "\"sellerName\":" + quoted("Brass Lens Studio " + QByteArray::number(app % 60)),
        "\"version\":\"4.12.1\"",
        "\"formattedPrice\":\"Free\"",
        "\"minimumOsVersion\":\"16.0\"",
        "\"trackViewUrl\":\"https://apps.example/us/app/id" + number + "?uo=4\"",
        "\"supportedDevices\":" + listOf("iPadProFifthGenCellular", 90),
        "\"features\":[\"iosUniversal\"]",
        "\"advisories\":[]",
        "\"isGameCenterEnabled\":false",
        "\"languageCodesISO2A\":" + listOf("EN", 20),
        "\"genres\":[\"Photo & Video\", \"Utilities\"]",
        "\"genreIds\":[\"6008\", \"6002\"]",
        "\"price\":0.00",
        "\"currency\":\"USD\"",
        "\"bundleId\":\"com.example.frame" + number + "\"",
        "\"fileSizeBytes\":\"183500800\"",
        "\"contentAdvisoryRating\":\"4+\"",
        "\"releaseNotes\":" + description(300),
        "\"wrapperType\":\"software\"",
        "\"artistId\":1484585154",
    };
    std::shuffle(members.begin(), members.end(), random);
    return '{' + members.join(", \n") + '}';
}

} // namespace

QByteArray generatedSearchBody(int results)
{
    std::mt19937 random(20261121); // the same body in every run
    QList<QByteArray> records;
    for (int i = 0; i < results; ++i)
        records.append(record(i, random));
    return "\n\n\n{\n \"resultCount\":" + QByteArray::number(results) + ",\n \"results\": [\n" +
           records.join(",\n") + "]\n}\n\n\n";
}

} // namespace veltrix
