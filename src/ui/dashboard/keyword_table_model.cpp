// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_table_model.h"

#include "model/text_folding.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/text/tool_tip_text.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// From this many rows at once it is quicker to build the list anew.
constexpr qsizetype mostSingleInsertions = 200;

} // namespace

KeywordTableModel::KeywordTableModel(ASOStore &store, QObject *parent)
    : QAbstractTableModel(parent), m_store(store), m_collator(QLocale())
{
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    m_collator.setNumericMode(true);
    connect(&m_store, &ASOStore::keywordAdded, this, [this](QUuid id) {
        if (m_added.isEmpty())
            QMetaObject::invokeMethod(this, &KeywordTableModel::addPending, Qt::QueuedConnection);
        m_added.append(id);
    });
    connect(&m_store, &ASOStore::keywordChanged, this, &KeywordTableModel::changeOne);
    connect(&m_store, &ASOStore::keywordRemoved, this, &KeywordTableModel::removeOne);
}

KeywordTableModel::~KeywordTableModel() = default;

std::shared_ptr<KeywordEntry> KeywordTableModel::makeEntry(const TrackedKeyword &keyword) const
{
    auto entry = std::make_shared<Entry>();
    entry->row = m_store.dashboardRow(keyword);
    const auto movement = m_store.rankingTimeline(keyword.id).latestMovement();
    if (movement && movement->kind() != RankMovement::Kind::First)
        entry->movement = movement;
    entry->unmeasurable = m_store.unmeasurableReason(keyword).value_or(QString());
    if (const SharedSnapshot newest = m_store.newestSnapshot(keyword.id))
        entry->popularityStatus = newest->popularityStatus.value_or(QString()).trimmed();
    entry->folded = foldedForSearch(keyword.keyword);
    entry->order = std::make_shared<const QCollatorSortKey>(m_collator.sortKey(keyword.keyword));
    return entry;
}

void KeywordTableModel::setApp(std::optional<QUuid> appId)
{
    if (m_appId == appId)
        return;
    m_appId = appId;
    reload();
}

void KeywordTableModel::reload()
{
    beginResetModel();
    m_added.clear();
    m_entries.clear();
    m_visible.clear();
    if (m_appId) {
        for (const TrackedKeyword &keyword : m_store.keywordsOfApp(*m_appId))
            m_entries.insert(keyword.id, makeEntry(keyword));
    }
    countCountries();
    m_visible = sortedVisible();
    endResetModel();
    Q_EMIT keywordCountChanged();
}

void KeywordTableModel::setStorefront(const std::optional<QString> &country)
{
    if (m_country == country)
        return;
    m_country = country;
    rebuildVisible();
}

void KeywordTableModel::setSearch(const QString &text)
{
    const QString folded = foldedForSearch(text.trimmed());
    if (m_search == folded)
        return;
    m_search = folded;
    rebuildVisible();
}

void KeywordTableModel::rebuildVisible()
{
    beginResetModel();
    m_visible = sortedVisible();
    endResetModel();
}

void KeywordTableModel::countCountries()
{
    m_countries.clear();
    for (const auto &entry : std::as_const(m_entries))
        ++m_countries[entry->row.country];
}

bool KeywordTableModel::isShown(const Entry &entry) const
{
    return (!m_country || entry.row.country == *m_country) &&
           (m_search.isEmpty() || entry.folded.contains(m_search));
}

bool KeywordTableModel::comesBefore(const Entry &left, const Entry &right) const
{
    const bool ascending = m_sortOrder == Qt::AscendingOrder;
    if (m_sortedBy == KeywordColumn::Keyword) {
        const int order = left.order->compare(*right.order);
        if (order != 0)
            return ascending ? order < 0 : order > 0;
    } else {
        const auto key = keywordColumnInfo(m_sortedBy).sortKey;
        const ColumnSortKey one = key(left);
        const ColumnSortKey two = key(right);
        // "No value" comes last whichever way the numbers run.
        if (one.group != two.group)
            return one.group < two.group;
        if (one.number != two.number)
            return ascending ? one.number < two.number : one.number > two.number;
        const int order = left.order->compare(*right.order);
        if (order != 0)
            return order < 0;
    }
    return left.row.id < right.row.id;
}

std::vector<std::shared_ptr<KeywordEntry>> KeywordTableModel::sortedVisible() const
{
    std::vector<std::shared_ptr<Entry>> rows;
    rows.reserve(size_t(m_entries.size()));
    for (const auto &entry : m_entries) {
        if (isShown(*entry))
            rows.push_back(entry);
    }
    std::sort(rows.begin(), rows.end(),
              [this](const auto &left, const auto &right) { return comesBefore(*left, *right); });
    return rows;
}

void KeywordTableModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= keywordColumnCount)
        return;
    m_sortedBy = static_cast<KeywordColumn>(column);
    m_sortOrder = order;
    resort();
}

void KeywordTableModel::resort()
{
    auto sorted = sortedVisible();
    if (sorted == m_visible)
        return;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    QHash<const Entry *, int> newRows;
    newRows.reserve(qsizetype(sorted.size()));
    for (size_t row = 0; row < sorted.size(); ++row)
        newRows.insert(sorted[row].get(), int(row));
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex &old : before)
        after.append(index(newRows.value(m_visible[size_t(old.row())].get()), old.column()));
    m_visible = std::move(sorted);
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void KeywordTableModel::addPending()
{
    const QList<QUuid> added = std::exchange(m_added, {});
    if (added.isEmpty())
        return;
    if (added.size() > mostSingleInsertions) {
        reload();
        return;
    }
    const qsizetype before = m_entries.size();
    for (const QUuid &id : added)
        addOne(id);
    if (m_entries.size() != before)
        Q_EMIT keywordCountChanged();
}

void KeywordTableModel::addOne(QUuid id)
{
    const auto keyword = m_store.trackedKeyword(id);
    if (!keyword || keyword->appId != m_appId || m_entries.contains(id))
        return;
    const auto entry = makeEntry(*keyword);
    m_entries.insert(id, entry);
    ++m_countries[keyword->country];
    if (!isShown(*entry))
        return;
    // Rows that have changed in place may stand out of order, so there is nothing to bisect.
    const auto place = std::find_if(m_visible.begin(), m_visible.end(),
                                    [&](const auto &other) { return comesBefore(*entry, *other); });
    const int row = int(place - m_visible.begin());
    beginInsertRows({}, row, row);
    m_visible.insert(place, entry);
    endInsertRows();
}

void KeywordTableModel::changeOne(QUuid id)
{
    const auto known = m_entries.constFind(id);
    const auto keyword = m_store.trackedKeyword(id);
    if (known == m_entries.cend() || !keyword)
        return;
    const bool isRefreshing = (*known)->isRefreshing;
    **known = *makeEntry(*keyword);
    (*known)->isRefreshing = isRefreshing;
    const int row = rowOf(id);
    if (row >= 0)
        Q_EMIT dataChanged(index(row, 0), index(row, keywordColumnCount - 1));
}

void KeywordTableModel::removeOne(QUuid id)
{
    const auto known = m_entries.constFind(id);
    if (known == m_entries.cend())
        return;
    const int row = rowOf(id);
    if (row >= 0)
        beginRemoveRows({}, row, row);
    const QString country = (*known)->row.country;
    if (--m_countries[country] == 0)
        m_countries.remove(country);
    m_entries.erase(known);
    if (row >= 0) {
        m_visible.erase(m_visible.begin() + row);
        endRemoveRows();
    }
    Q_EMIT keywordCountChanged();
}

void KeywordTableModel::setRefreshing(QUuid id, bool isRefreshing)
{
    const auto known = m_entries.constFind(id);
    if (known == m_entries.cend())
        return;
    (*known)->isRefreshing = isRefreshing;
    const int row = rowOf(id);
    if (row >= 0)
        Q_EMIT dataChanged(index(row, 0), index(row, 0));
}

int KeywordTableModel::rowOf(QUuid id) const
{
    const auto place = std::find_if(m_visible.begin(), m_visible.end(),
                                    [&id](const auto &entry) { return entry->row.id == id; });
    return place == m_visible.end() ? -1 : int(place - m_visible.begin());
}

QString KeywordTableModel::timeText(const KeywordEntry &entry) const
{
    if (entry.isRefreshing)
        return tr("Refreshing…");
    if (!entry.unmeasurable.isEmpty())
        return tr("Cannot be measured: %1").arg(entry.unmeasurable);
    if (entry.row.awaitingMetrics)
        return tr("Awaiting metrics");
    return tr("Updated %1")
        .arg(m_relativeTime.sinceUpdate(entry.row.lastUpdate, m_store.clock().now()));
}

QString KeywordTableModel::updatedText(const KeywordEntry &entry) const
{
    QString line = timeText(entry);
    // The reason is what there is room for; a symbol before it and the ranking say the rest.
    if (!entry.unmeasurable.isEmpty() && !entry.isRefreshing)
        line = entry.unmeasurable.first(1).toUpper() + entry.unmeasurable.sliced(1);
    // Equal keywords of several storefronts would look the same.
    if (!m_country && hasSeveralStorefronts())
        line += QStringLiteral(" · ") + storefrontName(entry.row.country);
    return line;
}

void KeywordTableModel::timeHasPassed()
{
    if (!m_visible.empty())
        Q_EMIT dataChanged(index(0, 0), index(int(m_visible.size()) - 1, 0),
                           {Qt::DisplayRole, Qt::AccessibleTextRole});
}

int KeywordTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_visible.size());
}

int KeywordTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : keywordColumnCount;
}

QString KeywordTableModel::toolTip(const KeywordEntry &entry, const KeywordColumnInfo &info) const
{
    switch (info.column) {
    case KeywordColumn::Keyword: {
        QStringList lines{entry.row.keyword + QStringLiteral(" · ") +
                          storefrontName(entry.row.country)};
        if (!entry.unmeasurable.isEmpty())
            lines << timeText(entry);
        if (!entry.popularityStatus.isEmpty())
            lines << entry.popularityStatus;
        return toolTipText(lines.join(u'\n'));
    }
    case KeywordColumn::Popularity:
        return toolTipText((info.accessibleHint(entry) + u'\n' + entry.popularityStatus).trimmed());
    case KeywordColumn::Position:
        return entry.row.awaitingMetrics ? info.accessibleHint(entry) : info.accessibleText(entry);
    default:
        return info.accessibleHint(entry);
    }
}

QVariant KeywordTableModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const KeywordEntry &entry = entryAt(index.row());
    const KeywordColumnInfo &info = keywordColumns()[size_t(index.column())];
    const bool isKeyword = info.column == KeywordColumn::Keyword;
    switch (role) {
    case Qt::DisplayRole:
        return info.text(entry);
    case Qt::AccessibleTextRole:
        return isKeyword ? keywordRowSentence(entry, timeText(entry)) : info.accessibleText(entry);
    case Qt::AccessibleDescriptionRole:
        return info.accessibleHint(entry);
    case Qt::ToolTipRole:
        return toolTip(entry, info);
    default:
        return {};
    }
}

QVariant KeywordTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= keywordColumnCount)
        return {};
    const KeywordColumnInfo &info = keywordColumns()[size_t(section)];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return info.headerText();
    case Qt::ToolTipRole:
        return info.helpText();
    case Qt::AccessibleDescriptionRole: {
        if (info.column != m_sortedBy)
            return info.helpText();
        const QString order =
            m_sortOrder == Qt::AscendingOrder ? tr("Sorted ascending.") : tr("Sorted descending.");
        return QString(order + u' ' + info.helpText()).trimmed();
    }
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignLeading | Qt::AlignVCenter);
    default:
        return {};
    }
}

Qt::ItemFlags KeywordTableModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                           : Qt::NoItemFlags;
}

} // namespace veltrix
