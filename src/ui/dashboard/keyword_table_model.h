// SPDX-License-Identifier: GPL-3.0-or-later
// The keywords of one app, filtered and sorted, as rows that change in place.
#pragma once

#include "store/aso_store.h"
#include "ui/dashboard/keyword_column.h"
#include "ui/dashboard/tag_filter.h"
#include "ui_kit/table/entry_model.h"

#include <QHash>

namespace veltrix
{

/// Reads the store and follows its signals. A keyword that is measured changes its row where it
/// stands, even when its place in the order would be another: nothing moves under the user's hand.
/// resort() puts the rows in order again. Keywords that are added or removed are shown and taken
/// away together, once the event loop runs.
class KeywordTableModel final : public EntryModel<KeywordEntry, KeywordColumn>
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
    void setQuickFilter(QuickFilter filter);
    void setTagFilter(const TagFilter &filter);
    void setRefreshing(QUuid id, bool isRefreshing);

    [[nodiscard]] KeywordColumn sortedBy() const { return KeywordColumn(sortColumn()); }

    /// Keywords of the app, whatever the filters hide.
    [[nodiscard]] int keywordCount() const { return entryCount(); }
    /// Whether any keyword of the app has a tag.
    [[nodiscard]] bool hasTags() const;
    /// Of the keywords that pass search, storefront filter and tags, those that pass each quick
    /// filter.
    [[nodiscard]] const QuickFilterCounts &quickFilterCounts() const { return m_counts; }
    /// -1 for a keyword that is not shown.
    [[nodiscard]] int rowOf(QUuid id) const;
    /// Says that the texts that depend on the time have changed. On another UTC day nothing has
    /// been measured yet.
    void timeHasPassed();

Q_SIGNALS:
    /// The number of keywords of the app has changed, shown or not.
    void keywordCountChanged();
    void quickFilterCountsChanged();
    /// Keywords of the app have other tags.
    void tagsChanged();

protected:
    [[nodiscard]] bool isShown(const KeywordEntry &entry) const override;
    [[nodiscard]] bool comesFirstOfEquals(const KeywordEntry &left,
                                          const KeywordEntry &right) const override;

private:
    [[nodiscard]] KeywordEntry makeEntry(const TrackedKeyword &keyword) const;
    /// Remembers a keyword that came or went.
    void follow(QUuid id);
    void applyPending();
    void change(QUuid id);
    /// What is known of their past is another.
    void changePast(const QList<QUuid> &ids);
    void readTags(KeywordEntry &entry) const;
    void changeTags(const QList<QUuid> &ids);
    void remember(const std::vector<Kept *> &added);
    void countStorefronts();
    /// What the texts in the rows say of the time and of their storefronts is another.
    void announceTexts();
    /// Whether search, storefront filter and tags leave it.
    [[nodiscard]] bool isFound(const KeywordEntry &entry) const;
    void countAll();
    /// Of one keyword that has passed other filters before.
    void count(const KeywordEntry &entry, QuickFilterMatches before);

    ASOStore &m_store;
    KeywordSurroundings m_surroundings;
    std::optional<QUuid> m_appId;
    std::optional<QString> m_country;
    QString m_search;
    QuickFilter m_quickFilter = QuickFilter::All;
    TagFilter m_tagFilter;
    QuickFilterCounts m_counts{};
    /// The UTC day that the quick filters take for today.
    std::int64_t m_today = 0;
    QHash<QUuid, Kept *> m_byId;
    /// Keywords that came or went since the event loop last ran.
    QSet<QUuid> m_pending;
};

} // namespace veltrix
