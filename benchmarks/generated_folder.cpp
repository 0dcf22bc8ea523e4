// SPDX-License-Identifier: GPL-3.0-or-later
#include "generated_folder.h"

#include "clients/artwork_cache.h"
#include "clients/artwork_loader.h"
#include "clients/autocomplete_score.h"
#include "clients/ranked_apps_archive.h"
#include "clients/ranked_apps_keeper.h"
#include "effects/atomic_file.h"
#include "effects/system_clock.h"
#include "generated_bodies.h"
#include "generated_state.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "own_process.h"
#include "store/history_database.h"

#include <QBuffer>
#include <QImage>

namespace
{

struct SearchBody {
    QList<veltrix::ITunesAppResult> results;
};

} // namespace

template <>
inline constexpr auto veltrix::fieldsOf<SearchBody> =
    std::tuple{veltrix::field("results", &SearchBody::results)};

namespace veltrix
{

namespace
{

QString pathIn(const QString &folder, const char *name)
{
    return folder + u'/' + QString::fromLatin1(name);
}

void fillRankedApps(const QString &folder, int count)
{
    RankedAppsArchive archive(rankedAppsPathIn(folder), nullptr);
    const Date now = SystemClock().now();
    for (int i = 0; i < count; ++i) {
        const Date date = now - Seconds(count - i);
        archive.keep(rankedAppsKey(QStringLiteral("keyword %1").arg(i), QStringLiteral("US")),
                     {date, foundFor(i)}, Seconds(0), date);
        if (i % 100 == 99)
            archive.save(date);
    }
    archive.save(now);
    archive.finish(now);
}

void fillHistory(const QString &folder, const FolderSize &size, const PersistedState &state)
{
    HistoryDatabase history = HistoryDatabase::openOrCreate(pathIn(folder, "history.sqlite"));
    for (int day = size.daysInFile; day < size.daysInFile + size.daysInHistory;
         day += size.daysInFile) {
        std::vector<SharedSnapshot> earlier;
        for (const SharedSnapshot &snapshot : state.snapshots) {
            auto copy = std::make_shared<KeywordSnapshot>(*snapshot);
            copy->id = QUuid::createUuid();
            copy->fetchedAt = snapshot->fetchedAt - Seconds(day * secondsPerDay);
            earlier.push_back(std::move(copy));
        }
        history.insert(earlier);
    }
}

void fillSuggestions(const QString &folder, int keywords)
{
    AutocompleteState state;
    const Date now = SystemClock().now();
    state.budgetDay = autocompleteDay(now);
    state.requests = 200;
    for (int i = 0; i < 400; ++i) {
        QStringList terms;
        for (int term = 0; term < 10; ++term)
            terms.append(QStringLiteral("suggestion %1 of %2").arg(term).arg(i));
        state.cache.insert({QStringLiteral("US:prefix %1").arg(i), {terms, now}});
    }
    for (int i = 0; i < keywords; ++i) {
        for (int day = 6; day >= 0; --day)
            state.history[QStringLiteral("US:keyword %1").arg(i)].append(
                {state.budgetDay - day, 50, now - Seconds(day * secondsPerDay)});
    }
    writeFileAtomically(pathIn(folder, "autocomplete_visibility_v2.json"), toJson(state));
}

void fillArtwork(const QString &folder, const PersistedState &state)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImage icon(100, 100, QImage::Format_RGB32);
    icon.fill(Qt::darkCyan);
    require(icon.save(&buffer, "PNG"), "an icon");
    ArtworkCache artwork(pathIn(folder, "cache/artwork"), ArtworkLoader::defaultCacheLimit);
    for (const SharedSnapshot &snapshot : state.snapshots) {
        for (const Url &url : snapshot->competitorIcons)
            artwork.store(url.text(), bytes);
    }
}

} // namespace

void fillDataFolder(const QString &folder, const FolderSize &size)
{
    const PersistedState state = generatedState(size.keywords, size.daysInFile);
    writeFileAtomically(pathIn(folder, "aso_store_state.json"), toJson(state));
    fillHistory(folder, size, state);
    fillRankedApps(folder, size.keywords);
    fillSuggestions(folder, size.keywords);
    fillArtwork(folder, state);
}

/// What a search finds, whole listings of about 10 kB each. Each keyword finds its own.
QList<ITunesAppResult> foundFor(int keyword)
{
    static const auto body = fromJson<SearchBody>(generatedSearchBody(100));
    QList<ITunesAppResult> results = body.results;
    for (qsizetype i = 0; i < results.size(); ++i)
        results[i].trackId = keyword * 1'000 + i;
    return results;
}

QString rankedAppsPathIn(const QString &folder)
{
    return pathIn(folder, "ranked_apps_cache_v1.json");
}

} // namespace veltrix
