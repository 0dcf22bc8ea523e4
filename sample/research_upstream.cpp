// SPDX-License-Identifier: GPL-3.0-or-later
// Where the research service fetches from: the made-up App Store.
#include "sample/research_upstream.h"

#include "sample/command_term.h"

#include <algorithm>
#include <array>

namespace veltrix::sample
{

namespace
{

constexpr int mostApps = 100;

/// The fields that the service passes on, of those that the App Store has.
constexpr std::array<QByteArrayView, 19> passedOn{"trackId",
                                                  "trackName",
                                                  "userRatingCount",
                                                  "averageUserRating",
                                                  "releaseDate",
                                                  "currentVersionReleaseDate",
                                                  "artworkUrl60",
                                                  "artworkUrl100",
                                                  "artworkUrl512",
                                                  "primaryGenreName",
                                                  "kind",
                                                  "description",
                                                  "screenshotUrls",
                                                  "ipadScreenshotUrls",
                                                  "sellerName",
                                                  "version",
                                                  "formattedPrice",
                                                  "minimumOsVersion",
                                                  "trackViewUrl"};

QByteArray objectOf(const std::vector<RecordField> &fields)
{
    QByteArrayList members;
    for (const RecordField &field : fields)
        if (std::ranges::find(passedOn, QByteArrayView(field.key)) != passedOn.end())
            members += '"' + field.key + "\":" + field.value;
    return '{' + members.join(',') + '}';
}

} // namespace

ResearchUpstream searchIn(const AppStore &store, const QString &pictureOrigin)
{
    return [&store, pictureOrigin](const ResearchQuestion &question) -> Fetched {
        QByteArrayList apps;
        const QString term = commandTerm(question.keyword).term;
        if (const Storefront *storefront = findStorefront(question.country))
            for (const auto &record : store.search(term, *storefront, mostApps, pictureOrigin))
                apps += objectOf(record);
        return FetchedApps{'[' + apps.join(',') + ']'};
    };
}

} // namespace veltrix::sample
