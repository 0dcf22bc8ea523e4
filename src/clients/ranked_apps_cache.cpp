// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/ranked_apps_cache.h"

#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <vector>

namespace veltrix
{

namespace
{

/// Pointers to the entries that the file is to hold.
std::vector<const RankedAppsCache::value_type *> newestEntries(const RankedAppsCache &cache)
{
    std::vector<const RankedAppsCache::value_type *> entries;
    entries.reserve(cache.size());
    for (const auto &entry : cache)
        entries.push_back(&entry);
    if (entries.size() > size_t(mostSavedRankedApps)) {
        std::stable_sort(entries.begin(), entries.end(), [](const auto *one, const auto *other) {
            return one->second.fetchedAt > other->second.fetchedAt;
        });
        entries.resize(size_t(mostSavedRankedApps));
    }
    return entries;
}

} // namespace

QString rankedAppsKey(const QString &keyword, const QString &country)
{
    return country.toUpper() + u':' + keyword.trimmed().toLower();
}

RankedAppsCache loadRankedAppsCache(const QString &path, Date now)
{
    RankedAppsCache cache;
    try {
        cache = fromJson<RankedAppsCache>(readWholeFile(path));
    } catch (const Error &) {
        return {};
    }
    std::erase_if(cache, [now](const auto &entry) {
        return !(now - entry.second.fetchedAt < rankedAppsLifetime);
    });
    return cache;
}

void saveRankedAppsCache(const QString &path, const RankedAppsCache &cache)
{
    try {
        JsonWriter writer;
        writeJsonObject(
            writer, newestEntries(cache),
            [](const auto *entry) -> QStringView { return entry->first; },
            [](const auto *entry) -> const SavedResults & { return entry->second; });
        QDir().mkpath(QFileInfo(path).path());
        writeFileAtomically(path, writer.take());
    } catch (const Error &) {
        // The cache in memory stays; the next success tries again.
    }
}

} // namespace veltrix
