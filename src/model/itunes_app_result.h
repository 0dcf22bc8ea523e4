// SPDX-License-Identifier: GPL-3.0-or-later
// The App Store app record: what the iTunes services send and what caches of ranked results keep.
#pragma once

#include "model/field_list.h"
#include "model/url.h"

#include <QStringList>

#include <span>

namespace veltrix
{

/// One app (or other item) of a search or look-up answer. Every field may be missing. Names, types
/// and keys are those of the service; dates stay text.
struct ITunesAppResult {
    std::optional<std::int64_t> trackId;
    std::optional<QString> trackName;
    std::optional<QString> subtitle;
    std::optional<std::int64_t> userRatingCount;
    /// Mean stars, 0 to 5.
    std::optional<double> averageUserRating;
    /// ISO 8601 text.
    std::optional<QString> releaseDate;
    std::optional<QString> currentVersionReleaseDate;
    std::optional<QString> artworkUrl60;
    std::optional<QString> primaryGenreName;
    std::optional<QString> kind;
    std::optional<QString> description;
    std::optional<QStringList> screenshotUrls;
    std::optional<QStringList> ipadScreenshotUrls;
    std::optional<QString> sellerName;
    std::optional<QString> version;
    std::optional<QString> formattedPrice;
    std::optional<QString> minimumOsVersion;
    std::optional<QString> trackViewUrl;
    std::optional<QString> artworkUrl100;
    std::optional<QString> artworkUrl512;

    bool operator==(const ITunesAppResult &) const = default;
};

template <>
inline constexpr auto fieldsOf<ITunesAppResult> = std::tuple{
    field("trackId", &ITunesAppResult::trackId),
    field("trackName", &ITunesAppResult::trackName),
    field("subtitle", &ITunesAppResult::subtitle),
    field("userRatingCount", &ITunesAppResult::userRatingCount),
    field("averageUserRating", &ITunesAppResult::averageUserRating),
    field("releaseDate", &ITunesAppResult::releaseDate),
    field("currentVersionReleaseDate", &ITunesAppResult::currentVersionReleaseDate),
    field("artworkUrl60", &ITunesAppResult::artworkUrl60),
    field("primaryGenreName", &ITunesAppResult::primaryGenreName),
    field("kind", &ITunesAppResult::kind),
    field("description", &ITunesAppResult::description),
    field("screenshotUrls", &ITunesAppResult::screenshotUrls),
    field("ipadScreenshotUrls", &ITunesAppResult::ipadScreenshotUrls),
    field("sellerName", &ITunesAppResult::sellerName),
    field("version", &ITunesAppResult::version),
    field("formattedPrice", &ITunesAppResult::formattedPrice),
    field("minimumOsVersion", &ITunesAppResult::minimumOsVersion),
    field("trackViewUrl", &ITunesAppResult::trackViewUrl),
    field("artworkUrl100", &ITunesAppResult::artworkUrl100),
    field("artworkUrl512", &ITunesAppResult::artworkUrl512),
};

/// The body of both iTunes endpoints.
struct ITunesSearchResponse {
    std::int64_t resultCount = 0;
    QList<ITunesAppResult> results;

    bool operator==(const ITunesSearchResponse &) const = default;
};

template <>
inline constexpr auto fieldsOf<ITunesSearchResponse> = std::tuple{
    field("resultCount", &ITunesSearchResponse::resultCount),
    field("results", &ITunesSearchResponse::results),
};

/// The first result with that App Store id; null when there is none.
const ITunesAppResult *findApp(std::span<const ITunesAppResult> results, std::int64_t trackId);

/// The icon of an app: the 100-pixel artwork, else the 512-pixel one, else the 60-pixel one; the
/// first that is a non-empty URL.
std::optional<Url> iconUrl(const ITunesAppResult &result);

/// Name for display: "Unknown App" when the record has none.
QString displayName(const ITunesAppResult &result);

} // namespace veltrix
