// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/above_you_model.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// A result without an id is known by its place.
bool isSame(const AppAbove &left, const AppAbove &right)
{
    return left.trackId == right.trackId && (left.trackId != 0 || left.rank == right.rank);
}

} // namespace

AboveYouModel::AboveYouModel(QObject *parent) : EntryModel(aboveColumns(), parent)
{
    setSorting(int(AboveColumn::Rank), Qt::AscendingOrder);
}

void AboveYouModel::setApps(const std::vector<AppAbove> &apps, Date now)
{
    const auto isIn = [&](const AboveEntry &entry) {
        return std::ranges::any_of(apps,
                                   [&](const AppAbove &app) { return isSame(app, entry.app); });
    };
    remove([&](const AboveEntry &entry) { return !isIn(entry); });
    std::vector<AboveEntry> added;
    for (const AppAbove &app : apps) {
        const auto known = std::ranges::find_if(
            entries(), [&](const auto &kept) { return isSame(kept->entry.app, app); });
        AboveEntry entry{app, now, collationKey(app.shownName())};
        if (known == entries().end()) {
            added.push_back(std::move(entry));
            continue;
        }
        (*known)->entry = std::move(entry);
        announceChange(**known, AboveColumn::Rank, lastColumn());
    }
    if (!added.empty())
        add(std::move(added));
    resort();
}

} // namespace veltrix
