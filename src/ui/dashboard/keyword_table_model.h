// SPDX-License-Identifier: GPL-3.0-or-later
// The keywords of one app, filtered and sorted, as rows that change in place.
#pragma once

#include "store/aso_store.h"
#include "ui/dashboard/keyword_column.h"
#include "ui_kit/text/relative_time.h"

#include <QAbstractTableModel>
#include <QCollator>
#include <QHash>
#include <QSet>

#include <memory>
#include <vector>

namespace veltrix
{

/// Reads the store and follows its signals. A keyword that is measured changes its row where it
/// stands, even when its place in the order would be another: nothing moves under the user's hand.
/// resort() puts the rows in order again.
class KeywordTableModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit KeywordTableModel(ASOStore &store, QObject *parent = nullptr);
    ~KeywordTableModel() override;

    void setApp(std::optional<QUuid> appId);
    /// Only keywords of that storefront; of all without a value.
    void setStorefront(const std::optional<QString> &country);
    /// Only keywords that contain the text, ignoring case and diacritics.
    void setSearch(const QString &text);
    void setRefreshing(QUuid id, bool isRefreshing);

    void sort(int column, Qt::SortOrder order) override;
    void resort();
    [[nodiscard]] KeywordColumn sortedBy() const { return m_sortedBy; }
    [[nodiscard]] Qt::SortOrder sortOrder() const { return m_sortOrder; }

    /// Keywords of the app, whatever the filters hide.
    [[nodiscard]] int keywordCount() const { return int(m_entries.size()); }
    /// The app's keywords are in more than one storefront.
    [[nodiscard]] bool hasSeveralStorefronts() const { return m_countries.size() > 1; }

    [[nodiscard]] const KeywordEntry &entryAt(int row) const { return *m_visible[size_t(row)]; }
    [[nodiscard]] int rowOf(QUuid id) const;
    /// "Updated 4 min. ago", "Awaiting metrics", "Refreshing…", or "Cannot be measured: " and why.
    [[nodiscard]] QString timeText(const KeywordEntry &entry) const;
    /// The line under the keyword: timeText(), or only the reason of one that cannot be measured,
    /// and the storefront where rows could be confused.
    [[nodiscard]] QString updatedText(const KeywordEntry &entry) const;
    /// Says that the texts that depend on the time have changed.
    void timeHasPassed();

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

Q_SIGNALS:
    /// The number of keywords of the app has changed, shown or not.
    void keywordCountChanged();

private:
    using Entry = KeywordEntry;

    std::shared_ptr<Entry> makeEntry(const TrackedKeyword &keyword) const;
    void addPending();
    void addOne(QUuid id);
    void changeOne(QUuid id);
    void removeOne(QUuid id);
    void reload();
    void rebuildVisible();
    [[nodiscard]] QString toolTip(const KeywordEntry &entry, const KeywordColumnInfo &info) const;
    [[nodiscard]] bool isShown(const Entry &entry) const;
    [[nodiscard]] std::vector<std::shared_ptr<Entry>> sortedVisible() const;
    [[nodiscard]] bool comesBefore(const Entry &left, const Entry &right) const;
    void countCountries();

    ASOStore &m_store;
    RelativeTime m_relativeTime;
    QCollator m_collator;
    std::optional<QUuid> m_appId;
    std::optional<QString> m_country;
    QString m_search;
    KeywordColumn m_sortedBy = KeywordColumn::Keyword;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    QHash<QUuid, std::shared_ptr<Entry>> m_entries;
    QHash<QString, int> m_countries;
    std::vector<std::shared_ptr<Entry>> m_visible;
    /// Keywords that were added since the event loop last ran.
    QList<QUuid> m_added;
};

} // namespace veltrix
