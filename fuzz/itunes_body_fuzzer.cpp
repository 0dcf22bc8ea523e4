// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as an answer of the iTunes services: refused, or results of which a limit keeps just
// the first.
#include "model/itunes_app_result.h"
#include "read_and_write.h"

#include <algorithm>

namespace
{

using namespace veltrix;

void shorten(std::optional<QStringList> &list, qsizetype most)
{
    if (list && list->size() > most)
        list = list->first(most);
}

QList<ITunesAppResult> firstOf(QList<ITunesAppResult> results, qsizetype most)
{
    results = results.first(std::min(results.size(), most));
    for (ITunesAppResult &result : results) {
        shorten(result.screenshotUrls, most);
        shorten(result.ipadScreenshotUrls, most);
    }
    return results;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray body = fuzz::bytesOf(data, size);
    constexpr qsizetype most = 2;
    const auto all = fuzz::readAndWrite<ITunesSearchResponse>(body);
    const auto some = fuzz::readAndWrite<ITunesSearchResponse>(body, ListLimit{most});
    // What is passed over is looked at less closely, so the limit may accept more.
    if (all) {
        fuzz::require(some.has_value(), "a limit refuses nothing");
        fuzz::require(some->results == firstOf(all->results, most), "a limit keeps what is first");
    }
    if (some) {
        for (const ITunesAppResult &result : some->results) {
            fuzz::require(!displayName(result).isEmpty(), "every app has a name to show");
            static_cast<void>(iconUrl(result));
        }
    }
    return 0;
}
