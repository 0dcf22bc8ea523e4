// SPDX-License-Identifier: GPL-3.0-or-later
// A database of ranked apps of any bytes: a miss or results, and never an error. After it new
// results can be kept and are found.
#include "clients/ranked_apps_database.h"
#include "fuzz_target.h"

#include <QFile>

namespace
{

using namespace veltrix;

constexpr qint64 sizeLimit = 1'000'000;
const Date now = startOfUtcDay(20'000);

SavedResults someResults()
{
    ITunesAppResult app;
    app.trackId = 6'451'880'007;
    app.trackName = QStringLiteral("Lumen");
    app.description = QStringLiteral("Edit photos.").repeated(20);
    return {now, {app, {}}};
}

QByteArray smallDatabase()
{
    const QString path = fuzz::scratchPath(QStringLiteral("base.sqlite"));
    RankedAppsDatabase database(path, sizeLimit);
    fuzz::require(database.insert({{QStringLiteral("US:photo editor"), someResults()},
                                   {QStringLiteral("DE:foto"), someResults()}},
                                  now),
                  "there is a database to begin with");
    QFile file(path);
    fuzz::require(file.open(QIODevice::ReadOnly), "there is a database to begin with");
    return file.readAll();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::muteWarnings();
    static const QByteArray base = smallDatabase();
    const QString path = fuzz::scratchFile(QStringLiteral("caches.sqlite"),
                                           fuzz::patched(base, fuzz::bytesOf(data, size)));
    QFile::remove(path + QStringLiteral("-journal"));
    RankedAppsDatabase database(path, sizeLimit);
    const QString key = QStringLiteral("US:photo editor");
    if (const auto found = database.find(key))
        fuzz::require(found->results.size() <= qsizetype(mostRankedApps),
                      "no more results come than are kept");
    if (database.insert({{key, someResults()}}, now))
        static_cast<void>(database.find(key));
    return 0;
}
