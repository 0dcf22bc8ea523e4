// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/overview/movers_model.h"

#include "model/text_folding.h"

#include <algorithm>

namespace veltrix
{

MoversModel::MoversModel(ASOStore &store, QObject *parent)
    : EntryModel(moverColumns(), parent), m_store(store)
{
    setSorting(int(MoverColumn::Change), Qt::DescendingOrder);
}

bool MoversModel::comesFirstOfEquals(const Mover &left, const Mover &right) const
{
    const int order = left.order->compare(*right.order);
    if (order != 0)
        return order < 0;
    const int storefront = left.country.compare(right.country);
    return storefront != 0 ? storefront < 0 : left.id < right.id;
}

const MoversModel::App &MoversModel::appOf(const QUuid &id)
{
    const auto known = m_apps.constFind(id);
    if (known != m_apps.cend())
        return *known;
    App app;
    if (const auto profile = m_store.app(id)) {
        app.isTracked = true;
        app.name = profile->appName;
        app.icon = profile->iconURL;
    }
    app.folded = foldedForSearch(app.name);
    app.order = collationKey(app.name);
    return *m_apps.insert(id, app);
}

std::optional<Mover> MoversModel::moverOf(const TrackedKeyword &keyword)
{
    const RankDays &ranks = m_store.rankDays(keyword.id);
    const auto movement = ranks.movementSince(daysOf(m_period));
    if (!movement || !(isRise(*movement) || isFall(*movement)))
        return std::nullopt;
    const App &app = appOf(keyword.appId);
    if (!app.isTracked)
        return std::nullopt;
    Mover mover;
    mover.id = keyword.id;
    mover.keyword = keyword.keyword;
    mover.country = keyword.country;
    mover.appName = app.name;
    mover.icon = app.icon;
    mover.ranks = ranks;
    mover.movement = *movement;
    mover.before = ranks.daysAgo(daysOf(m_period))->rank;
    mover.now = ranks.latest()->rank;
    mover.period = m_period;
    mover.folded = foldedForSearch(keyword.keyword) + u'\n' + app.folded;
    mover.order = collationKey(keyword.keyword);
    mover.appOrder = app.order;
    return mover;
}

void MoversModel::setPeriod(Period period)
{
    if (std::exchange(m_period, period) == period)
        return;
    std::vector<Mover> movers;
    for (const TrackedKeyword &keyword : m_store.trackedKeywords()) {
        if (auto mover = moverOf(keyword))
            movers.push_back(std::move(*mover));
    }
    m_byId.clear();
    remember(reset(std::move(movers)));
    Q_EMIT headerDataChanged(Qt::Horizontal, int(MoverColumn::Before), int(MoverColumn::Before));
    Q_EMIT countChanged();
}

void MoversModel::remember(const std::vector<Kept *> &added)
{
    for (Kept *kept : added)
        m_byId.insert(kept->entry.id, kept);
}

void MoversModel::setSearch(const QString &text)
{
    const QString folded = foldedForSearch(text.trimmed());
    if (std::exchange(m_search, folded) != folded)
        refilter();
}

void MoversModel::update(const QSet<QUuid> &ids)
{
    std::vector<Mover> added;
    QSet<QUuid> gone;
    for (const QUuid &id : ids) {
        const auto keyword = m_store.trackedKeyword(id);
        Kept *known = m_byId.value(id);
        auto mover = keyword ? moverOf(*keyword) : std::nullopt;
        if (!mover && known)
            gone.insert(id);
        if (!mover)
            continue;
        if (!known) {
            added.push_back(std::move(*mover));
            continue;
        }
        known->entry = std::move(*mover);
        announceChange(*known, MoverColumn::Keyword, lastColumn());
    }
    for (const QUuid &id : std::as_const(gone))
        m_byId.remove(id);
    if (!gone.isEmpty())
        remove([&](const Mover &mover) { return gone.contains(mover.id); });
    if (!added.empty())
        remember(add(std::move(added)));
    Q_EMIT countChanged();
}

int MoversModel::rowOf(QUuid id) const
{
    const Kept *known = m_byId.value(id);
    return known ? known->place : -1;
}

QVariant MoversModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isTitle = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
    if (isTitle && orientation == Qt::Horizontal && section == int(MoverColumn::Before))
        return beforeTitle(m_period);
    return EntryModel::headerData(section, orientation, role);
}

QList<QStringList> MoversModel::texts(const std::vector<int> &rows,
                                      const std::vector<int> &columns) const
{
    QList<QStringList> table = EntryModel::texts(rows, columns);
    const QString general = moverColumns()[size_t(MoverColumn::Before)].title();
    std::replace(table[0].begin(), table[0].end(), general, beforeTitle(m_period));
    return table;
}

} // namespace veltrix
