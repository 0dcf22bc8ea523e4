// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/listing_scenes.h"

#include "ui/competitors/competitors_view.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/gallery/research_stage.h"
#include "ui_kit/widgets/text_field.h"

#include <QTest>

namespace veltrix
{

namespace
{

/// The user's own app as the App Store lists it.
ITunesAppResult ownApp()
{
    ITunesAppResult own = foxglove();
    own.trackId = 101;
    own.trackName = text("Lumen Photo Editor");
    own.sellerName = text("Lumen Works");
    own.averageUserRating = 4.8;
    return own;
}

/// The own app is among the results of each search.
void rankOwnApp(ResearchWorld &world)
{
    world.appStore->apps.insert(101, ownApp());
    QStringList terms = world.appStore->resultsOf.keys();
    terms.sort();
    for (qsizetype i = 0; i < terms.size(); ++i) {
        if (i % 3 == 2)
            continue;
        QList<ITunesAppResult> &results = world.appStore->resultsOf[terms[i]];
        results.insert(std::min(results.size(), i * 3), ownApp());
    }
    world.appStore->results.insert(4, ownApp());
    world.saved->saved.results.insert(4, ownApp());
}

/// A listing whose texts try to turn or hide what stands around them, and one from right to left.
void makeHostile(ResearchWorld &world)
{
    ITunesAppResult app = foxglove();
    app.trackName = text("\u202EFoxglove\u0007 \u2066Film\u2028Camera");
    app.sellerName = text("استوديو العدسة\u202C");
    app.formattedPrice = text("\u202EFree");
    app.description = text("One line.\u2028Another line.\u2029\u202EA third.\u0001");
    QList<ITunesAppResult> found{app};
    for (ITunesAppResult other : rankedApps(4)) {
        other.trackName = text("עורך תמונות\u202D Pro");
        other.sellerName = text("סטודיו 1");
        found << other;
    }
    world.appStore->apps.insert(201, app);
    world.appStore->resultsOf.clear();
    world.appStore->results = found;
    world.saved->saved.results = found;
}

void makeUnrated(ResearchWorld &world)
{
    ITunesAppResult bare;
    bare.trackId = 201;
    bare.trackName = text("Foxglove Film Camera");
    bare.averageUserRating = 0;
    bare.userRatingCount = 0;
    world.appStore->apps.insert(201, bare);
    for (ITunesAppResult &app : world.appStore->results) {
        app.averageUserRating = 0;
        app.userRatingCount = 0;
        app.sellerName.reset();
    }
    world.appStore->resultsOf.clear();
}

void openResearch(ResearchStage &made)
{
    made.window->showWorkspace(Workspace::Competitors);
    made.window->competitors().openResearch(201, QStringLiteral("US"),
                                            QStringLiteral("Foxglove Film Camera"));
}

void openRankedApps(ResearchStage &made)
{
    Q_EMIT made.window->dashboard().rankedAppsRequested(made.world->row("collage maker"));
}

void openDetails(ResearchStage &made, const char *row)
{
    openRankedApps(made);
    QTest::keyClick(made.find<QWidget>(row), Qt::Key_Return);
}

} // namespace

std::vector<Scene> listingScenes()
{
    const auto goesAfterTheFirst = [](ResearchWorld &world) {
        world.appStore->fails = [&store = *world.appStore](const QString &) {
            return store.searches.size() > 1;
        };
    };
    const auto openLow = [](ResearchStage &made) {
        made.window->resize(800, 500);
        openResearch(made);
    };
    return {researchScene("research-own-ranks", rankOwnApp, openResearch),
            researchScene("research-800", rankOwnApp, openLow),
            researchScene("research-below", nullptr,
                          [](ResearchStage &made) {
                              openResearch(made);
                              QTest::keyClick(made.find<QWidget>("similarApp2"), Qt::Key_Return);
                          }),
            researchScene("research-network-gone", goesAfterTheFirst, openResearch),
            researchScene("research-unrated", makeUnrated, openResearch),
            researchScene("research-hostile", makeHostile, openResearch),
            researchScene("research-tracked-competitor", nullptr,
                          [](ResearchStage &made) {
                              openResearch(made);
                              made.click("trackCompetitor");
                          }),
            researchScene("ranked-apps-own", rankOwnApp, openRankedApps),
            researchScene("ranked-apps-unrated", makeUnrated, openRankedApps),
            researchScene("ranked-apps-hostile", makeHostile, openRankedApps),
            researchScene("app-details-own", rankOwnApp,
                          [](ResearchStage &made) { openDetails(made, "rankedAppRow5"); }),
            researchScene("app-details-hostile", makeHostile,
                          [](ResearchStage &made) { openDetails(made, "rankedAppRow1"); }),
            researchScene("competitors-results-own", rankOwnApp, [](ResearchStage &made) {
                made.window->showWorkspace(Workspace::Competitors);
                made.find<TextField>("competitorSearch")->setText(QStringLiteral("film camera"));
                made.click("competitorSearchSubmit");
            })};
}

} // namespace veltrix
