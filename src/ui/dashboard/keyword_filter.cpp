// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_filter.h"

namespace veltrix
{

KeywordFilter::KeywordFilter(const QString &searchStorefront, QObject *parent)
    : QObject(parent), m_searchStorefront(searchStorefront)
{
}

void KeywordFilter::setSearch(const QString &text)
{
    set(text, m_storefront, m_quick, m_tags, m_searchStorefront);
}

void KeywordFilter::setStorefront(const std::optional<QString> &country)
{
    set(m_search, country, m_quick, m_tags, m_searchStorefront);
}

void KeywordFilter::setQuick(QuickFilter filter)
{
    set(m_search, m_storefront, filter, m_tags, m_searchStorefront);
}

void KeywordFilter::setTags(const TagFilter &tags)
{
    set(m_search, m_storefront, m_quick, tags, m_searchStorefront);
}

void KeywordFilter::clear()
{
    showOnly(QuickFilter::All);
}

void KeywordFilter::showOnly(QuickFilter filter)
{
    set(QString(), std::nullopt, filter, {}, m_searchStorefront);
}

void KeywordFilter::setSearchStorefront(const QString &country)
{
    set(m_search, m_storefront, m_quick, m_tags, country);
}

QString KeywordFilter::storefrontOfNewKeywords() const
{
    return m_storefront.value_or(m_searchStorefront);
}

void KeywordFilter::set(const QString &search, const std::optional<QString> &storefront,
                        QuickFilter quick, const TagFilter &tags, const QString &searchStorefront)
{
    const bool isOther =
        search != m_search || storefront != m_storefront || quick != m_quick || tags != m_tags;
    const QString before = storefrontOfNewKeywords();
    m_search = search;
    m_storefront = storefront;
    m_quick = quick;
    m_tags = tags;
    m_searchStorefront = searchStorefront;
    if (isOther)
        Q_EMIT changed();
    if (storefrontOfNewKeywords() != before)
        Q_EMIT storefrontOfNewKeywordsChanged(storefrontOfNewKeywords());
}

} // namespace veltrix
