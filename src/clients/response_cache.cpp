// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/response_cache.h"

#include <utility>

namespace veltrix
{

ResponseCache::ResponseCache(Seconds lifetime, qint64 capacity)
    : m_lifetime(lifetime), m_capacity(capacity)
{
}

std::optional<QByteArray> ResponseCache::find(const QString &key, Date now)
{
    const auto found = m_byKey.constFind(key);
    if (found == m_byKey.constEnd())
        return std::nullopt;
    const Entries::iterator entry = *found;
    if (isAlive(*entry, now))
        return entry->body;
    drop(entry);
    return std::nullopt;
}

void ResponseCache::store(const QString &key, QByteArray body, Date now)
{
    if (const auto former = m_byKey.constFind(key); former != m_byKey.constEnd())
        drop(*former);
    for (auto entry = m_entries.begin(); entry != m_entries.end();)
        entry = isAlive(*entry, now) ? std::next(entry) : drop(entry);
    // A body that arrived in pieces has room for as many again.
    body.squeeze();
    const Entry added{key, std::move(body), now + m_lifetime};
    if (added.size() > m_capacity)
        return;
    while (m_size + added.size() > m_capacity)
        drop(m_entries.begin());
    m_size += added.size();
    m_byKey.insert(key, m_entries.insert(m_entries.end(), added));
}

bool ResponseCache::isAlive(const Entry &entry, Date now) const
{
    return entry.expiresAt > now && entry.expiresAt <= now + m_lifetime;
}

ResponseCache::Entries::iterator ResponseCache::drop(Entries::iterator entry)
{
    m_size -= entry->size();
    m_byKey.remove(entry->key);
    return m_entries.erase(entry);
}

} // namespace veltrix
