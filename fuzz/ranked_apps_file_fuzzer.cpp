// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as the file of ranked apps: misses, or results that the file still has once it was
// written again.
#include "clients/ranked_apps_archive.h"
#include "read_and_write.h"

#include <QFile>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    fuzz::muteWarnings();
    const QByteArray content = fuzz::bytesOf(data, size);
    const auto whole =
        fuzz::readAndWrite<std::map<QString, SavedResults>>(content, ListLimit{mostRankedApps});
    const QString path = fuzz::scratchFile(QStringLiteral("ranked_apps.json"), content);
    const Date now = dateFromReferenceSeconds(784'000'000);
    const QString added = QStringLiteral("US:added");
    RankedAppsArchive archive(path, nullptr);
    archive.keep(added, SavedResults{now, {}}, Seconds::zero(), now);
    archive.save(now);
    archive.finish(now);
    RankedAppsArchive again(path, nullptr);
    fuzz::require(again.find(added, now) == SavedResults{now, {}}, "what was kept is found");
    if (!whole)
        return 0;
    for (const auto &[key, saved] : *whole) {
        const bool isAlive = now - saved.fetchedAt < rankedAppsLifetime;
        if (isAlive && key != added)
            fuzz::require(again.find(key, now) == saved, "what the file had is found");
    }
    return 0;
}
