// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitor_overview.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(CompetitorsView)
};

EmptyState::Content messageFor(bool isRead, bool hasApp)
{
    const QString people = QStringLiteral("person.2");
    if (!isRead)
        return {QStringLiteral("exclamationmark.triangle"), Texts::tr("Saved data not loaded"),
                Texts::tr("Your competitors come back as soon as they can be read."), QString()};
    if (!hasApp)
        return {people, Texts::tr("Research any app and discover keyword opportunities"), QString(),
                QString()};
    return {people, Texts::tr("No competitors yet"),
            Texts::tr("Search for an app above, then track it to add it here."), QString()};
}

} // namespace

CompetitorOverview CompetitorOverview::of(const ASOStore &store, const std::optional<QUuid> &appId)
{
    CompetitorOverview overview;
    if (appId)
        overview.competitors = store.competitorsOfApp(*appId);
    overview.empty = messageFor(store.isStateRead(), appId && store.app(*appId));
    if (!overview.competitors.isEmpty())
        overview.count = Texts::tr("%L1 tracked").arg(overview.competitors.size());
    return overview;
}

} // namespace veltrix
