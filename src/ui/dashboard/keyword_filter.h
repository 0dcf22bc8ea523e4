// SPDX-License-Identifier: GPL-3.0-or-later
// Which keywords of an app are shown, and where new ones go.
#pragma once

#include "ui/dashboard/quick_filter.h"
#include "ui/dashboard/tag_filter.h"

#include <QObject>

#include <optional>

namespace veltrix
{

/// The search, the storefront filter, the tags, the quick filter, and the storefront of app
/// searches, which stands in for the storefront filter when keywords are added.
class KeywordFilter final : public QObject
{
    Q_OBJECT

public:
    explicit KeywordFilter(const QString &searchStorefront, QObject *parent = nullptr);

    [[nodiscard]] const QString &search() const { return m_search; }
    void setSearch(const QString &text);
    /// Nothing for all storefronts.
    [[nodiscard]] const std::optional<QString> &storefront() const { return m_storefront; }
    void setStorefront(const std::optional<QString> &country);
    [[nodiscard]] QuickFilter quick() const { return m_quick; }
    void setQuick(QuickFilter filter);
    [[nodiscard]] const TagFilter &tags() const { return m_tags; }
    void setTags(const TagFilter &tags);
    /// Shows all keywords again.
    void clear();
    /// Shows what passes the quick filter, and nothing else has a say in it.
    void showOnly(QuickFilter filter);

    [[nodiscard]] const QString &searchStorefront() const { return m_searchStorefront; }
    void setSearchStorefront(const QString &country);
    /// The storefront filter when it is set, else the storefront of app searches.
    [[nodiscard]] QString storefrontOfNewKeywords() const;

Q_SIGNALS:
    void changed();
    void storefrontOfNewKeywordsChanged(const QString &country);

private:
    /// Sets all of them, and tells what is another now.
    void set(const QString &search, const std::optional<QString> &storefront, QuickFilter quick,
             const TagFilter &tags, const QString &searchStorefront);

    QString m_search;
    std::optional<QString> m_storefront;
    QuickFilter m_quick = QuickFilter::All;
    TagFilter m_tags;
    QString m_searchStorefront;
};

} // namespace veltrix
