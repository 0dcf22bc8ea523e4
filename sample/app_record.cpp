// SPDX-License-Identifier: GPL-3.0-or-later
// An app as the App Store's services describe it.
#include "sample/app_record.h"

#include "sample/description.h"
#include "sample/dice.h"
#include "sample/fixtures.h"
#include "sample/json_text.h"
#include "sample/market.h"

#include <algorithm>
#include <utility>

namespace veltrix::sample
{

namespace
{

using Group = std::vector<RecordField>;

enum class Quirk {
    NoRatings = 31,
    NoPrice,
    NoSellerPage,
    NoReleaseNotes,
    NoVersionDate,
    Screenshots,
    IpadScreenshots,
    Order,
};

/// Whether an app shows a quirk that the given share of apps shows.
bool has(const SampleApp &app, Quirk quirk, double share)
{
    return unitFromHash(stableHash(app.trackId, quirk)) < share;
}

QString isoText(const QDateTime &moment)
{
    return moment.toUTC().toString(Qt::ISODate);
}

QStringList devices(const SampleApp &app)
{
    QStringList names;
    const int first = 5 + static_cast<int>(app.trackId % 6);
    for (int generation = first; generation <= 17; ++generation) {
        names += QStringLiteral("iPhone%1-iPhone%1").arg(generation);
        names += QStringLiteral("iPhone%1Pro-iPhone%1Pro").arg(generation);
    }
    for (int generation = 4; generation <= 6; ++generation)
        names += QStringLiteral("iPadMini%1-iPadMini%1").arg(generation);
    return names;
}

QStringList languageCodes(const SampleApp &app)
{
    QStringList spoken;
    for (const LanguageTexts &texts : languages())
        if (listedLanguage(app, texts.language) == texts.language)
            spoken += texts.code;
    return spoken;
}

class RecordWriter
{
public:
    RecordWriter(const SampleApp &app, const RecordSetting &setting)
        : m_app(app), m_setting(setting), m_language(setting.storefront->language),
          m_theme(*app.theme), m_name(app.listing(m_language).name)
    {
    }

    [[nodiscard]] std::vector<Group> groups() const
    {
        return {pictures(), device(), ratings(), money(), identity(), versions(), texts()};
    }

private:
    [[nodiscard]] QString address(const QString &path) const { return m_setting.origin + path; }

    [[nodiscard]] QByteArray artwork(int size) const
    {
        return jsonString(
            address(QStringLiteral("/artwork/%1/%2.png").arg(m_app.trackId).arg(size)));
    }

    [[nodiscard]] QByteArray screenshots(Quirk quirk, double share, const QString &kind) const
    {
        const bool shown = m_app.trackId == lumenPhotoEditorId ||
                           m_app.trackId == foxgloveFilmCameraId || has(m_app, quirk, share);
        QStringList addresses;
        const int count = shown ? 3 + static_cast<int>(stableHash(m_app.trackId) % 6) : 0;
        for (int number = 1; number <= count; ++number)
            addresses += address(QStringLiteral("/screenshots/%1/%2%3.png")
                                     .arg(m_app.trackId)
                                     .arg(kind)
                                     .arg(number));
        return jsonStrings(addresses);
    }

    [[nodiscard]] Group pictures() const
    {
        return {{"artistViewUrl", jsonString(address(QStringLiteral("/%1/developer/%2/id%3?uo=4")
                                                         .arg(countryPath(), m_app.publisher.slug)
                                                         .arg(m_app.publisher.artistId)))},
                {"artworkUrl60", artwork(60)},
                {"artworkUrl100", artwork(100)},
                {"screenshotUrls", screenshots(Quirk::Screenshots, 0.24, QString())},
                {"ipadScreenshotUrls",
                 screenshots(Quirk::IpadScreenshots, 0.12, QStringLiteral("ipad-"))},
                {"appletvScreenshotUrls", "[]"},
                {"artworkUrl512", artwork(512)}};
    }

    [[nodiscard]] Group device() const
    {
        const bool game = m_theme.primary.name == u"games";
        return {{"isGameCenterEnabled", game ? "true" : "false"},
                {"features", R"(["iosUniversal"])"},
                {"supportedDevices", jsonStrings(devices(m_app))},
                {"advisories", "[]"},
                {"kind", R"("software")"}};
    }

    [[nodiscard]] Group ratings() const
    {
        const std::int64_t count = ratingCount(m_app, *m_setting.storefront, m_setting.day);
        if (count == 0 && has(m_app, Quirk::NoRatings, 0.5))
            return {};
        const QByteArray stars =
            jsonExactNumber(averageStars(m_app, *m_setting.storefront, m_setting.day));
        const QByteArray number = QByteArray::number(static_cast<qint64>(count));
        return {{"averageUserRating", stars},
                {"averageUserRatingForCurrentVersion", stars},
                {"userRatingCountForCurrentVersion", number},
                {"userRatingCount", number}};
    }

    [[nodiscard]] Group money() const
    {
        const Storefront &storefront = *m_setting.storefront;
        Group group{{"price", jsonAmount(localPrice(storefront, m_app.dollars))},
                    {"currency", jsonString(storefront.currency->code)}};
        const bool subscriptionGame =
            m_theme.primary.name == u"games" && has(m_app, Quirk::NoPrice, 0.12);
        if (!subscriptionGame)
            group.push_back({"formattedPrice", jsonString(priceText(storefront, m_app.dollars))});
        return group;
    }

    [[nodiscard]] Group identity() const
    {
        Group group{
            {"trackId", QByteArray::number(static_cast<qint64>(m_app.trackId))},
            {"trackName", jsonString(m_name)},
            {"trackCensoredName", jsonString(m_name)},
            {"trackViewUrl", jsonString(address(QStringLiteral("/%1/app/%2/id%3?uo=4")
                                                    .arg(countryPath(), m_app.slug)
                                                    .arg(m_app.trackId)))},
            {"sellerName", jsonString(m_app.publisher.name)},
            {"artistId", QByteArray::number(static_cast<qint64>(m_app.publisher.artistId))},
            {"artistName", jsonString(m_app.publisher.name)},
            {"bundleId", jsonString(QStringLiteral("example.%1.app%2")
                                        .arg(QString(m_app.publisher.slug).remove(QLatin1Char('-')))
                                        .arg(m_app.trackId))},
            {"wrapperType", R"("software")"}};
        if (!has(m_app, Quirk::NoSellerPage, 0.2))
            group.push_back(
                {"sellerUrl",
                 jsonString(QStringLiteral("https://%1.example/").arg(m_app.publisher.slug))});
        return group;
    }

    [[nodiscard]] Group versions() const
    {
        Group group{
            {"releaseDate", jsonString(isoText(m_app.released))},
            {"version", jsonString(versionText(m_app, m_setting.day))},
            {"minimumOsVersion", jsonString(QStringLiteral("%1.0").arg(12 + m_app.trackId % 6))},
            {"fileSizeBytes", jsonString(QString::number(8'000'000 + m_app.trackId % 240'000'000))},
            {"isVppDeviceBasedLicensingEnabled", "true"}};
        const bool old = m_app.released.date().year() < 2013;
        if (!(old && has(m_app, Quirk::NoVersionDate, 0.25)))
            group.push_back({"currentVersionReleaseDate",
                             jsonString(isoText(currentVersionReleased(m_app, m_setting.day)))});
        return group;
    }

    [[nodiscard]] Group texts() const
    {
        const QString primary = textsOf(m_language).genres[m_theme.primary.name];
        const QString secondary = textsOf(m_language).genres[m_theme.secondary.name];
        Group group{{"description", jsonString(descriptionOf(m_app, m_language))},
                    {"genres", jsonStrings({primary, secondary})},
                    {"genreIds", jsonStrings({QString::number(m_theme.primary.id),
                                              QString::number(m_theme.secondary.id)})},
                    {"primaryGenreName", jsonString(primary)},
                    {"primaryGenreId", QByteArray::number(m_theme.primary.id)},
                    {"languageCodesISO2A", jsonStrings(languageCodes(m_app))},
                    {"contentAdvisoryRating", R"("4+")"},
                    {"trackContentRating", R"("4+")"}};
        if (!has(m_app, Quirk::NoReleaseNotes, 0.08))
            group.push_back({"releaseNotes", jsonString(releaseNotesOf(m_app, m_language))});
        return group;
    }

    [[nodiscard]] QString countryPath() const { return m_setting.storefront->country.toLower(); }

    const SampleApp &m_app;
    const RecordSetting &m_setting;
    Language m_language;
    const Theme &m_theme;
    QString m_name;
};

} // namespace

std::vector<RecordField> recordOf(const SampleApp &app, const RecordSetting &setting)
{
    std::vector<Group> groups = RecordWriter(app, setting).groups();
    Dice dice(stableHash(app.trackId, Quirk::Order));
    for (std::size_t left = groups.size(); left > 1; --left)
        std::swap(groups[left - 1],
                  groups[static_cast<std::size_t>(dice.below(static_cast<int>(left)))]);
    std::vector<RecordField> fields;
    for (Group &group : groups) {
        if (!group.empty())
            std::ranges::rotate(group, group.begin() + dice.below(static_cast<int>(group.size())));
        std::ranges::move(group, std::back_inserter(fields));
    }
    return fields;
}

} // namespace veltrix::sample
