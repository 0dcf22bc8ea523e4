// SPDX-License-Identifier: GPL-3.0-or-later
// Does to a data folder what a user does in the window: adds apps, keywords, a competitor, tags
// and a note. What is tracked is then measured by the program itself.
//   veltrix_guide_user begin|write FOLDER
#include "effects/system_clock.h"
#include "store/aso_store.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{

using namespace veltrix;

ITunesAppResult appOf(std::int64_t trackId, const QString &name)
{
    ITunesAppResult app;
    app.trackId = trackId;
    app.trackName = name;
    return app;
}

/// One app with three keywords in two storefronts, and a competitor.
void begin(ASOStore &store)
{
    const AppProfile app =
        store.addApp(appOf(1482203417, QStringLiteral("Lumen Photo Editor")), QStringLiteral("US"));
    store.addTrackedKeyword(app.id, QStringLiteral("photo editor"), QStringLiteral("US"));
    store.addTrackedKeyword(app.id, QStringLiteral("collage maker"), QStringLiteral("US"));
    store.addTrackedKeyword(app.id, QStringLiteral("photo editor"), QStringLiteral("GB"));
    for (const char *country : {"US", "GB"}) {
        store.addCompetitor(appOf(968140233, QStringLiteral("Foxglove Film Camera")), app.id,
                            QString::fromLatin1(country));
    }
}

/// A tag and a note.
void write(ASOStore &store)
{
    const auto keywords = store.trackedKeywords();
    store.setTag({keywords[0].id, keywords[2].id}, QStringLiteral("brand"), true);
    AppNote note;
    note.appId = store.apps().constFirst().id;
    note.day = utcDay(SystemClock().now());
    note.text = QStringLiteral("New subtitle");
    store.putNote(note);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QString work = QCoreApplication::arguments().value(1);
    ASOStore::Arguments arguments;
    arguments.persistenceURL =
        QCoreApplication::arguments().value(2) + QStringLiteral("/aso_store_state.json");
    arguments.clock = std::make_shared<SystemClock>();
    ASOStore store(std::move(arguments));
    if (work == QStringLiteral("begin"))
        begin(store);
    else if (work == QStringLiteral("write"))
        write(store);
    else
        return 2;
    if (store.saveBeforeEnd())
        return 0;
    std::fprintf(stderr, "The folder could not be written.\n");
    return 1;
}
