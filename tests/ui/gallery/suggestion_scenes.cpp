// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/suggestion_scenes.h"

#include "ui/dashboard/dashboard_page.h"
#include "ui/gallery/research_stage.h"
#include "ui/suggestions/idea_row.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

void openSuggestions(ResearchStage &made)
{
    Q_EMIT made.window->dashboard().analysisRequested(made.world->row("collage maker"));
    made.click("analysisSuggestions");
}

/// A listing for each competitor, of which the words are spread.
void listRivals(ResearchWorld &world)
{
    const char *subtitles[] = {"Vintage Analog Photo Filters", "Film Camera & Light Leaks",
                               "Analog Photo Booth", "Photo Presets for Portraits",
                               "Retouche et filtres argentiques"};
    const auto competitors = world.store->competitorsOfApp(world.appId());
    for (qsizetype i = 0; i < competitors.size(); ++i) {
        ITunesAppResult app = foxglove();
        app.trackId = competitors[i].trackId;
        app.trackName = competitors[i].name + QStringLiteral(": Film Camera");
        app.subtitle = text(subtitles[i % 5]);
        world.appStore->apps.insert(competitors[i].trackId, app);
    }
    world.saved->keyword = QStringLiteral("film camera");
    world.saved->saved.results = {foxglove()};
}

void openIdeas(ResearchStage &made)
{
    made.window->showWorkspace(Workspace::Competitors);
    made.click("keywordIdeas");
}

} // namespace

std::vector<Scene> suggestionScenes()
{
    return {
        researchScene(
            "analysis-suggestions",
            [](ResearchWorld &world) {
                world.suggestions->terms[QStringLiteral("collage maker")] = {
                    QStringLiteral("collage maker"),
                    QStringLiteral("collage maker free"),
                    QStringLiteral("photo editor"),
                    QStringLiteral("collage maker grid"),
                    QStringLiteral("コラージュ"),
                    QStringLiteral("collage maker with music and a very long name that nobody "
                                   "would ever type to its end")};
            },
            [](ResearchStage &made) {
                openSuggestions(made);
                made.click("suggestion1");
            }),
        researchScene("analysis-suggestions-none", nullptr, openSuggestions),
        researchScene(
            "analysis-suggestions-loading",
            [](ResearchWorld &world) { world.suggestions->holds = true; }, openSuggestions),
        researchScene(
            "analysis-suggestions-failed",
            [](ResearchWorld &world) { world.suggestions->fails = true; }, openSuggestions),
        researchScene("ideas", listRivals,
                      [](ResearchStage &made) {
                          openIdeas(made);
                          made.click("ideasRead");
                          QCoreApplication::processEvents();
                          made.click("idea2");
                          made.click("idea4");
                      }),
        researchScene("ideas-names-only", nullptr, openIdeas),
        researchScene("ideas-reading", listRivals,
                      [](ResearchStage &made) {
                          openIdeas(made);
                          made.world->appStore->holds = true;
                          made.click("ideasRead");
                      }),
        researchScene("ideas-failed", listRivals,
                      [](ResearchStage &made) {
                          openIdeas(made);
                          made.world->appStore->fails = [](const QString &) {
                              return true;
                          };
                          made.click("ideasRead");
                      }),
        researchScene("ideas-none-left", nullptr,
                      [](ResearchStage &made) {
                          openIdeas(made);
                          QCoreApplication::processEvents();
                          for (auto *row : made.window->findChildren<IdeaRow *>())
                              row->setChecked(row->isVisibleTo(made.window.get()));
                          made.world->client->holds = true;
                          made.click("ideasTrack");
                      }),
    };
}

} // namespace veltrix
