// SPDX-License-Identifier: GPL-3.0-or-later
// Apps with known names and numbers.
#include "sample/fixtures.h"

#include "sample/listings.h"

#include <QTimeZone>

#include <utility>

namespace veltrix::sample
{

namespace
{

const Publisher brightstile{u"Brightstile Software LLC"_qs, u"brightstile-software"_qs,
                            1'482'203'402};
const Publisher saltfen{u"Saltfen Ltd"_qs, u"saltfen"_qs, 1'612'340'077};
const Publisher obsthof{u"Obsthof Software GmbH"_qs, u"obsthof-software"_qs, 1'130'274'402};
const Publisher brassLens{u"Brass Lens Studio"_qs, u"brass-lens-studio"_qs, 968'140'201};
const Publisher pocketOptics{u"Pocket Optics"_qs, u"pocket-optics"_qs, 1'267'501'900};

QDateTime releasedOn(int year, int month, int day)
{
    return QDateTime(QDate(year, month, day), QTime(7, 0), QTimeZone::utc());
}

/// What all fixtures share; the listings follow.
SampleApp fixture(std::int64_t trackId, ThemeId theme, QStringView country, QString slug)
{
    SampleApp app;
    app.trackId = trackId;
    app.theme = theme;
    app.home = findStorefront(country);
    app.slug = std::move(slug);
    app.isFixture = true;
    return app;
}

/// The name in English; in other languages the brand and the theme's naming of that number.
void nameEverywhere(SampleApp &app, const QString &brand, const QString &englishName, int naming,
                    const QStringList &englishPhrases)
{
    app.listings[static_cast<std::size_t>(Language::English)] = {englishName, englishPhrases};
    for (int index = 1; index < languageCount; ++index) {
        const auto language = static_cast<Language>(index);
        app.listings[static_cast<std::size_t>(index)] = {
            translatedName(brand, app.theme, language, naming), phrasesIn(app.theme, language)};
    }
}

SampleApp lumenPhotoEditor()
{
    SampleApp app = fixture(lumenPhotoEditorId, ThemeId::Photo, u"US", u"lumen-photo-editor"_qs);
    app.publisher = brightstile;
    app.released = releasedOn(2019, 10, 22);
    app.homeRatings = 3'846;
    app.stars = 4.57218;
    app.updateCycle = 24;
    app.hue = Hue::Orange;
    nameEverywhere(app, u"Lumen"_qs, u"Lumen Photo Editor"_qs, 0,
                   {u"collage maker"_qs, u"film camera filter"_qs, u"light leak effect"_qs,
                    u"retro photo"_qs, u"remove background"_qs, u"photo journal"_qs,
                    u"grain filter"_qs, u"frame"_qs});
    return app;
}

SampleApp tidewaterJournal()
{
    SampleApp app = fixture(tidewaterJournalId, ThemeId::Journal, u"GB", u"tidewater-journal"_qs);
    app.publisher = saltfen;
    app.released = releasedOn(2023, 8, 15);
    app.homeRatings = 1'934;
    app.stars = 4.74903;
    app.updateCycle = 18;
    app.hue = Hue::Blue;
    nameEverywhere(app, u"Tidewater"_qs, u"Tidewater Journal"_qs, 0,
                   {u"daily journal"_qs, u"diary"_qs, u"mood tracker"_qs, u"photo journal"_qs,
                    u"gratitude journal"_qs, u"travel journal"_qs});
    return app;
}

SampleApp orchardBudget()
{
    SampleApp app = fixture(orchardBudgetId, ThemeId::Budget, u"DE", u"orchard-budget"_qs);
    app.publisher = obsthof;
    app.released = releasedOn(2016, 7, 5);
    app.homeRatings = 2'406;
    app.stars = 4.41177;
    app.dollars = 3.99;
    app.updateCycle = 60;
    app.hue = Hue::Green;
    nameEverywhere(app, u"Orchard"_qs, u"Orchard Budget"_qs, 0,
                   {u"budget planner"_qs, u"expense tracker"_qs, u"savings"_qs,
                    u"household money"_qs, u"bills"_qs});
    return app;
}

SampleApp foxgloveFilmCamera()
{
    SampleApp app =
        fixture(foxgloveFilmCameraId, ThemeId::Photo, u"US", u"foxglove-film-camera"_qs);
    app.publisher = brassLens;
    app.released = releasedOn(2015, 3, 12);
    app.homeRatings = 128'402;
    app.stars = 4.71386;
    app.updateCycle = 14;
    app.hue = Hue::Yellow;
    nameEverywhere(app, u"Foxglove"_qs, u"Foxglove Film Camera"_qs, 3,
                   {u"film camera filter"_qs, u"analog photo"_qs, u"vintage film"_qs,
                    u"photo filter"_qs, u"disposable camera"_qs, u"grain"_qs});
    return app;
}

SampleApp dovetailCam()
{
    SampleApp app = fixture(dovetailCamId, ThemeId::Photo, u"US", u"dovetail-cam"_qs);
    app.publisher = pocketOptics;
    app.released = releasedOn(2017, 8, 1);
    app.homeRatings = 36'719;
    app.stars = 4.80255;
    app.updateCycle = 21;
    app.hue = Hue::Teal;
    nameEverywhere(app, u"Dovetail"_qs, u"Dovetail Cam"_qs, 1,
                   {u"retro photo"_qs, u"film camera"_qs, u"double exposure"_qs, u"collage"_qs,
                    u"photo booth"_qs});
    return app;
}

SampleApp quietAperture()
{
    SampleApp app = fixture(quietApertureId, ThemeId::Photo, u"US", u"quiet-aperture"_qs);
    app.publisher = brassLens;
    app.released = releasedOn(2023, 11, 28);
    app.homeRatings = 811;
    app.stars = 4.38114;
    app.dollars = 7.99;
    app.updateCycle = 45;
    app.hue = Hue::Slate;
    nameEverywhere(app, u"Quiet Aperture"_qs, u"Quiet Aperture"_qs, 3,
                   {u"manual camera"_qs, u"raw camera"_qs, u"film camera"_qs, u"grain filter"_qs});
    return app;
}

} // namespace

std::vector<SampleApp> fixtureApps()
{
    return {lumenPhotoEditor(),   tidewaterJournal(), orchardBudget(),
            foxgloveFilmCamera(), dovetailCam(),      quietAperture()};
}

} // namespace veltrix::sample
