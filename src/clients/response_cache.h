// SPDX-License-Identifier: GPL-3.0-or-later
// Bodies of answers, kept for a while and within a bound.
#pragma once

#include "model/date.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <list>
#include <optional>

namespace veltrix
{

/// Bodies by key. One that is too old is dropped when it is looked up or when another is stored;
/// when all of them are too large together, those that were stored first go. So is one that would
/// be served for longer than its lifetime, because the clock was set back.
class ResponseCache
{
public:
    /// `capacity` is in bytes: bodies and keys.
    ResponseCache(Seconds lifetime, qint64 capacity);
    ResponseCache(const ResponseCache &) = delete;
    ResponseCache &operator=(const ResponseCache &) = delete;

    [[nodiscard]] std::optional<QByteArray> find(const QString &key, Date now);
    /// Replaces what is kept under `key`. A body larger than the capacity is not kept.
    void store(const QString &key, QByteArray body, Date now);

    /// Bytes held now.
    [[nodiscard]] qint64 size() const { return m_size; }

private:
    struct Entry {
        QString key;
        QByteArray body;
        Date expiresAt;

        [[nodiscard]] qint64 size() const
        {
            return body.size() + key.size() * qsizetype(sizeof(QChar));
        }
    };
    /// The one stored first at the front.
    using Entries = std::list<Entry>;

    [[nodiscard]] bool isAlive(const Entry &entry, Date now) const;
    Entries::iterator drop(Entries::iterator entry);

    Seconds m_lifetime;
    qint64 m_capacity;
    qint64 m_size = 0;
    Entries m_entries;
    QHash<QString, Entries::iterator> m_byKey;
};

} // namespace veltrix
