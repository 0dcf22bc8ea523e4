// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_table_model.h"

#include "model/text_folding.h"

#include <algorithm>

namespace veltrix
{

KeywordTableModel::KeywordTableModel(ASOStore &store, QObject *parent)
    : EntryModel(keywordColumns(), parent),
      m_store(store), m_surroundings{store.clock(), RelativeTime()},
      m_today(utcDay(store.clock().now()))
{
    setSorting(int(KeywordColumn::Keyword), Qt::AscendingOrder);
    connect(&m_store, &ASOStore::keywordAdded, this, &KeywordTableModel::follow);
    connect(&m_store, &ASOStore::keywordChanged, this, &KeywordTableModel::change);
    connect(&m_store, &ASOStore::rankDaysChanged, this, &KeywordTableModel::changePast);
    connect(&m_store, &ASOStore::keywordRemoved, this, &KeywordTableModel::follow);
    connect(&m_store, &ASOStore::tagsChanged, this, &KeywordTableModel::changeTags);
}

KeywordTableModel::~KeywordTableModel() = default;

KeywordEntry KeywordTableModel::makeEntry(const TrackedKeyword &keyword) const
{
    KeywordEntry entry;
    entry.row = m_store.dashboardRow(keyword);
    const auto movement = m_store.latestMovement(keyword.id);
    if (movement && movement->kind() != RankMovement::Kind::First)
        entry.movement = movement;
    entry.changes = RankChanges::of(m_store.rankDays(keyword.id));
    entry.unmeasurable = m_store.unmeasurableReason(keyword).value_or(QString());
    if (const SharedSnapshot newest = m_store.newestSnapshot(keyword.id))
        entry.popularityStatus = newest->popularityStatus.value_or(QString()).trimmed();
    entry.folded = foldedForSearch(keyword.keyword);
    entry.order = collationKey(keyword.keyword);
    entry.surroundings = &m_surroundings;
    entry.matches = quickFilterMatches(entry, m_today);
    readTags(entry);
    return entry;
}

void KeywordTableModel::readTags(KeywordEntry &entry) const
{
    entry.tags = m_store.tags(entry.row.id);
    entry.tagChips = TagChip::of(entry.tags);
    entry.foldedTags.clear();
    for (const QString &tag : std::as_const(entry.tags))
        entry.foldedTags.append(foldedCase(tag));
    entry.tagOrder = entry.tags.isEmpty() ? nullptr : collationKey(entry.tags.join(u'\n'));
}

bool KeywordTableModel::hasTags() const
{
    return std::any_of(entries().begin(), entries().end(),
                       [](const auto &kept) { return !kept->entry.tags.isEmpty(); });
}

bool KeywordTableModel::isShown(const KeywordEntry &entry) const
{
    return entry.matches.test(size_t(m_quickFilter)) && isFound(entry);
}

bool KeywordTableModel::isFound(const KeywordEntry &entry) const
{
    return (!m_country || entry.row.country == *m_country) &&
           (m_search.isEmpty() || entry.folded.contains(m_search)) &&
           m_tagFilter.shows(entry.foldedTags);
}

bool KeywordTableModel::comesFirstOfEquals(const KeywordEntry &left,
                                           const KeywordEntry &right) const
{
    const int order = left.order->compare(*right.order);
    if (order != 0)
        return order < 0;
    const int storefront = left.row.country.compare(right.row.country);
    return storefront != 0 ? storefront < 0 : left.row.id < right.row.id;
}

void KeywordTableModel::setApp(std::optional<QUuid> appId)
{
    if (m_appId == appId)
        return;
    m_appId = appId;
    m_pending.clear();
    std::vector<KeywordEntry> entries;
    if (m_appId) {
        for (const TrackedKeyword &keyword : m_store.keywordsOfApp(*m_appId))
            entries.push_back(makeEntry(keyword));
    }
    m_byId.clear();
    remember(reset(std::move(entries)));
    countStorefronts();
    countAll();
    Q_EMIT keywordCountChanged();
}

void KeywordTableModel::remember(const std::vector<Kept *> &added)
{
    for (Kept *kept : added)
        m_byId.insert(kept->entry.row.id, kept);
}

void KeywordTableModel::setStorefront(const std::optional<QString> &country)
{
    if (m_country == country)
        return;
    m_country = country;
    refilter();
    countStorefronts();
    countAll();
}

void KeywordTableModel::setSearch(const QString &text)
{
    const QString folded = foldedForSearch(text.trimmed());
    if (m_search == folded)
        return;
    m_search = folded;
    refilter();
    countAll();
}

void KeywordTableModel::setQuickFilter(QuickFilter filter)
{
    if (m_quickFilter == filter)
        return;
    m_quickFilter = filter;
    refilter();
}

void KeywordTableModel::setTagFilter(const TagFilter &filter)
{
    if (m_tagFilter == filter)
        return;
    m_tagFilter = filter;
    refilter();
    countAll();
}

void KeywordTableModel::countAll()
{
    const QuickFilterCounts before = std::exchange(m_counts, {});
    for (const auto &kept : entries()) {
        if (!isFound(kept->entry))
            continue;
        for (size_t place = 0; place < m_counts.size(); ++place)
            m_counts[place] += int(kept->entry.matches[place]);
    }
    if (m_counts != before)
        Q_EMIT quickFilterCountsChanged();
}

void KeywordTableModel::count(const KeywordEntry &entry, QuickFilterMatches before)
{
    if (entry.matches == before || !isFound(entry))
        return;
    for (size_t place = 0; place < m_counts.size(); ++place)
        m_counts[place] += int(entry.matches[place]) - int(before[place]);
    // Nothing moves under the user's hand; a table without rows has nothing to be moved.
    if (rowCount() == 0 && isShown(entry))
        refilter();
    Q_EMIT quickFilterCountsChanged();
}

void KeywordTableModel::countStorefronts()
{
    const auto isElsewhere = [this](const auto &kept) {
        return kept->entry.row.country != entries().front()->entry.row.country;
    };
    const bool areSeveral =
        !m_country && std::any_of(entries().begin(), entries().end(), isElsewhere);
    if (std::exchange(m_surroundings.hasSeveralStorefronts, areSeveral) != areSeveral)
        announceTexts();
}

void KeywordTableModel::follow(QUuid id)
{
    if (m_pending.isEmpty())
        QMetaObject::invokeMethod(this, &KeywordTableModel::applyPending, Qt::QueuedConnection);
    m_pending.insert(id);
}

void KeywordTableModel::applyPending()
{
    std::vector<KeywordEntry> added;
    QSet<QUuid> gone;
    for (const QUuid &id : std::exchange(m_pending, {})) {
        const auto keyword = m_store.trackedKeyword(id);
        const bool isKnown = m_byId.contains(id);
        if (keyword && keyword->appId == m_appId && !isKnown)
            added.push_back(makeEntry(*keyword));
        else if (!keyword && isKnown)
            gone.insert(id);
    }
    if (added.empty() && gone.isEmpty())
        return;
    for (const QUuid &id : std::as_const(gone))
        m_byId.remove(id);
    if (!gone.isEmpty())
        remove([&](const KeywordEntry &entry) { return gone.contains(entry.row.id); });
    if (!added.empty())
        remember(add(std::move(added)));
    countStorefronts();
    countAll();
    Q_EMIT keywordCountChanged();
}

void KeywordTableModel::change(QUuid id)
{
    Kept *known = m_byId.value(id);
    const auto keyword = m_store.trackedKeyword(id);
    if (!known || !keyword)
        return;
    const bool isRefreshing = known->entry.isRefreshing;
    const QuickFilterMatches before = known->entry.matches;
    known->entry = makeEntry(*keyword);
    known->entry.isRefreshing = isRefreshing;
    announceChange(*known, KeywordColumn::Keyword, lastColumn());
    count(known->entry, before);
}

void KeywordTableModel::changePast(const QList<QUuid> &ids)
{
    int first = rowCount();
    int last = -1;
    for (const QUuid &id : ids) {
        Kept *known = m_byId.value(id);
        if (!known)
            continue;
        known->entry.changes = RankChanges::of(m_store.rankDays(id));
        if (known->place >= 0) {
            first = std::min(first, known->place);
            last = std::max(last, known->place);
        }
    }
    if (last < 0)
        return;
    // The history comes for many keywords together.
    Q_EMIT dataChanged(index(first, int(KeywordColumn::Keyword)),
                       index(last, int(KeywordColumn::Best)));
    const auto column = sortedBy();
    if (column >= KeywordColumn::In7Days && column <= KeywordColumn::Best &&
        m_store.refreshProgress().isIdle())
        resort();
}

void KeywordTableModel::changeTags(const QList<QUuid> &ids)
{
    int first = rowCount();
    int last = -1;
    bool isKnown = false;
    for (const QUuid &id : ids) {
        Kept *known = m_byId.value(id);
        if (!known)
            continue;
        isKnown = true;
        readTags(known->entry);
        if (known->place >= 0) {
            first = std::min(first, known->place);
            last = std::max(last, known->place);
        }
    }
    if (!isKnown)
        return;
    if (last >= 0)
        Q_EMIT dataChanged(index(first, int(KeywordColumn::Keyword)),
                           index(last, int(KeywordColumn::Tags)));
    // The user has just said which tags these have, or they have come from the history.
    if (!m_tagFilter.showsAll() || sortedBy() == KeywordColumn::Tags)
        refilter();
    countAll();
    Q_EMIT tagsChanged();
}

void KeywordTableModel::setRefreshing(QUuid id, bool isRefreshing)
{
    Kept *known = m_byId.value(id);
    if (!known)
        return;
    known->entry.isRefreshing = isRefreshing;
    announceChange(*known, KeywordColumn::Keyword, KeywordColumn::Keyword);
}

int KeywordTableModel::rowOf(QUuid id) const
{
    const Kept *known = m_byId.value(id);
    return known ? known->place : -1;
}

void KeywordTableModel::timeHasPassed()
{
    const std::int64_t today = utcDay(m_store.clock().now());
    if (std::exchange(m_today, today) != today) {
        for (const auto &kept : entries())
            kept->entry.matches = quickFilterMatches(kept->entry, m_today);
        refilter();
        countAll();
    }
    announceTexts();
}

void KeywordTableModel::announceTexts()
{
    const int keyword = int(KeywordColumn::Keyword);
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, keyword), index(rowCount() - 1, keyword),
                           {Qt::DisplayRole, Qt::AccessibleTextRole});
}

} // namespace veltrix
