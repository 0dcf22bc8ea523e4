// SPDX-License-Identifier: GPL-3.0-or-later
// A small map from names to numbers, kept sorted in one block.
#pragma once

#include <QList>
#include <QString>

#include <algorithm>
#include <optional>

namespace veltrix
{

/// Maps a handful of names to numbers. Entries stand in one shared block, sorted by name, because a
/// node-based map of seven entries would cost more memory than the rest of a snapshot's figures.
class FactorMap
{
public:
    /// A name and its number.
    struct Entry {
        QString name;
        double value = 0;
        bool operator==(const Entry &) const = default;
        friend size_t qHash(const Entry &entry, size_t seed = 0)
        {
            return qHashMulti(seed, entry.name, entry.value);
        }
    };

    FactorMap() = default;
    FactorMap(std::initializer_list<Entry> entries)
    {
        m_entries.reserve(qsizetype(entries.size()));
        for (const Entry &entry : entries)
            insert(entry.name, entry.value);
    }

    /// Adds an entry, or replaces the value of the one with this name.
    void insert(const QString &name, double value)
    {
        // Maps are mostly filled in order.
        if (m_entries.isEmpty() || before(m_entries.constLast(), name)) {
            m_entries.append(Entry{name, value});
            return;
        }
        const auto place = std::lower_bound(m_entries.cbegin(), m_entries.cend(), name, before);
        const qsizetype index = place - m_entries.cbegin();
        if (place != m_entries.cend() && place->name == name)
            m_entries[index].value = value;
        else
            m_entries.insert(index, Entry{name, value});
    }

    [[nodiscard]] std::optional<double> find(const QString &name) const
    {
        const auto place = std::lower_bound(m_entries.cbegin(), m_entries.cend(), name, before);
        if (place == m_entries.cend() || place->name != name)
            return std::nullopt;
        return place->value;
    }

    void reserve(qsizetype count) { m_entries.reserve(count); }
    [[nodiscard]] qsizetype size() const { return m_entries.size(); }
    [[nodiscard]] bool isEmpty() const { return m_entries.isEmpty(); }
    [[nodiscard]] auto begin() const { return m_entries.cbegin(); }
    [[nodiscard]] auto end() const { return m_entries.cend(); }

    bool operator==(const FactorMap &) const = default;
    friend size_t qHash(const FactorMap &map, size_t seed = 0)
    {
        return qHashRange(map.begin(), map.end(), seed);
    }

private:
    static bool before(const Entry &entry, const QString &name) { return entry.name < name; }

    QList<Entry> m_entries;
};

} // namespace veltrix
