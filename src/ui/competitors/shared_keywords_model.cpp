// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/shared_keywords_model.h"

namespace veltrix
{

SharedKeywordsModel::SharedKeywordsModel(QObject *parent) : EntryModel(sharedColumns(), parent)
{
    setSorting(int(SharedColumn::Keyword), Qt::AscendingOrder);
}

std::optional<size_t> SharedKeywordsModel::mostShown() const
{
    return m_showsAll ? std::nullopt : std::optional<size_t>(firstRows);
}

bool SharedKeywordsModel::comesFirstOfEquals(const SharedEntry &left,
                                             const SharedEntry &right) const
{
    const int order = left.collation->compare(*right.collation);
    if (order != 0)
        return order < 0;
    const int storefront = left.shared.country.compare(right.shared.country);
    return storefront != 0 ? storefront < 0 : left.shared.id < right.shared.id;
}

void SharedKeywordsModel::setKeywords(const std::vector<SharedKeyword> &keywords,
                                      const RivalIcons &icons)
{
    QSet<QUuid> present;
    std::vector<SharedEntry> added;
    for (const SharedKeyword &keyword : keywords) {
        present.insert(keyword.id);
        Kept *known = m_byId.value(keyword.id);
        if (!known) {
            added.push_back({keyword, icons, collationKey(keyword.keyword)});
            continue;
        }
        SharedEntry &entry = known->entry;
        if (entry.shared == keyword && entry.icons == icons)
            continue;
        entry.shared = keyword;
        entry.icons = icons;
        announceChange(*known, SharedColumn::Keyword, lastColumn());
    }
    if (m_byId.removeIf([&](const std::pair<const QUuid &, Kept *&> known) {
            return !present.contains(known.first);
        }) > 0)
        remove([&](const SharedEntry &entry) { return !present.contains(entry.shared.id); });
    if (added.empty())
        return;
    for (Kept *kept : add(std::move(added)))
        m_byId.insert(kept->entry.shared.id, kept);
}

void SharedKeywordsModel::showAll()
{
    m_showsAll = true;
    refilter();
}

} // namespace veltrix
