// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/itunes_app_result.h"

#include <algorithm>

namespace veltrix
{

const ITunesAppResult *findApp(std::span<const ITunesAppResult> results, std::int64_t trackId)
{
    const auto found =
        std::find_if(results.begin(), results.end(),
                     [trackId](const ITunesAppResult &app) { return app.trackId == trackId; });
    return found == results.end() ? nullptr : &*found;
}

std::optional<Url> iconUrl(const ITunesAppResult &result)
{
    for (const auto &artwork : {result.artworkUrl100, result.artworkUrl512, result.artworkUrl60}) {
        if (auto url = Url::fromText(artwork.value_or(QString())))
            return url;
    }
    return std::nullopt;
}

QString displayName(const ITunesAppResult &result)
{
    return result.trackName.value_or(QStringLiteral("Unknown App"));
}

} // namespace veltrix
