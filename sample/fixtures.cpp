// SPDX-License-Identifier: GPL-3.0-or-later
// Reads data/fixtures.json.
#include "sample/fixtures.h"

#include "sample/data_file.h"
#include "sample/listings.h"

namespace veltrix::sample
{

namespace
{

Publisher publisherIn(const DataObject &data)
{
    return {data.text(u"name"), data.text(u"slug"),
            static_cast<std::int64_t>(data.number(u"artistId"))};
}

QDateTime moment(const DataObject &data, QStringView key)
{
    const QDateTime moment = QDateTime::fromString(data.text(key), Qt::ISODate);
    if (!moment.isValid())
        data.refuse(key, "is no moment such as 2019-10-22T07:00:00Z");
    return moment;
}

/// The name in English; in other languages the brand and the theme's naming.
void nameEverywhere(SampleApp &app, const DataObject &data)
{
    const auto naming = static_cast<int>(data.number(u"naming"));
    for (const LanguageTexts &texts : languages())
        if (texts.language != Language::English)
            app.listings[texts.language] =
                translatedListing(data.text(u"brand"), *app.theme, texts, naming);
    app.listings[Language::English] = {data.text(u"name"), data.texts(u"phrases")};
}

SampleApp fixture(const DataObject &data)
{
    SampleApp app;
    app.trackId = static_cast<std::int64_t>(data.number(u"trackId"));
    app.theme = &data.oneOf(u"theme", themes(), &Theme::name);
    app.home = &data.oneOf(u"home", storefronts(), &Storefront::country);
    app.slug = slugOf(data.text(u"name"));
    app.publisher = publisherIn(data.object(u"publisher"));
    nameEverywhere(app, data);
    app.released = moment(data, u"released");
    app.homeRatings = data.number(u"homeRatings");
    app.stars = data.number(u"stars");
    app.dollars = data.number(u"dollars");
    app.updateCycle = static_cast<int>(data.number(u"updateCycle"));
    const Hue &hue = data.oneOf(u"hue", hues(), &Hue::name);
    app.hue = static_cast<int>(&hue - hues().data());
    app.isFixture = true;
    return app;
}

} // namespace

std::vector<SampleApp> fixtureApps()
{
    const auto file = DataObject::ofFile(QStringLiteral("fixtures.json"));
    std::vector<SampleApp> apps;
    for (const DataObject &data : file.objects(u"apps"))
        apps.push_back(fixture(data));
    return apps;
}

} // namespace veltrix::sample
