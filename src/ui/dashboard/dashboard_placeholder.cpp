// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/dashboard_placeholder.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(DashboardPlaceholder)
};

} // namespace

std::optional<DashboardPlaceholder> dashboardPlaceholder(const DashboardState &state)
{
    using WayOn = DashboardPlaceholder::WayOn;
    const auto search = QStringLiteral("magnifyingglass");
    if (!state.isStateRead) {
        return {{{QStringLiteral("exclamationmark.triangle"), Texts::tr("Saved data not loaded"),
                  Texts::tr("Your apps and keywords come back as soon as they can be read."),
                  QString()},
                 WayOn::None}};
    }
    if (!state.hasApp) {
        return {{{search, Texts::tr("Add keywords to discover your next opportunity"),
                  Texts::tr("Start with an app of yours: its keywords are tracked here."),
                  Texts::tr("Add App")},
                 WayOn::AddApp}};
    }
    if (state.tracked == 0) {
        return {{{search, Texts::tr("No keyword data yet"),
                  Texts::tr("Add keywords to run live ranking analysis and discover your next "
                            "opportunity."),
                  Texts::tr("Add keywords")},
                 WayOn::AddKeywords}};
    }
    if (state.shown == 0 && state.found > 0 && state.quickFilter != QuickFilter::All) {
        // Which of the filters it was that left nothing.
        QString text = nothingPassedText(state.quickFilter);
        if (state.found < state.tracked)
            text += u' ' + (state.tags.showsAll()
                                ? Texts::tr("Search and storefront filter count, too.")
                                : Texts::tr("Search, storefront filter and tags count, too."));
        return {
            {{search, nothingPassedTitle(state.quickFilter), text, Texts::tr("Show all keywords")},
             WayOn::ShowAllKeywords}};
    }
    if (state.shown == 0 && !state.tags.showsAll()) {
        QString text = state.tags.nothingPassedText();
        if (state.isNarrowed)
            text = Texts::tr("No tracked keyword matches the search, the storefront filter and the "
                             "tags.");
        return {{{QStringLiteral("tag"), state.tags.nothingPassedTitle(), text,
                  Texts::tr("Show all keywords")},
                 WayOn::ShowAllKeywords}};
    }
    if (state.shown == 0) {
        return {{{search, Texts::tr("No matching keywords"),
                  Texts::tr("No tracked keyword matches the search and the storefront filter."),
                  Texts::tr("Show all keywords")},
                 WayOn::ShowAllKeywords}};
    }
    return std::nullopt;
}

} // namespace veltrix
