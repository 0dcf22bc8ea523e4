// SPDX-License-Identifier: GPL-3.0-or-later
// Shares the memory of equal values while a large text is read.
#pragma once

#include <QHashFunctions>
#include <QLatin1String>
#include <QString>

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace veltrix
{

/// Remembers values by the bytes that they were made from. Values are implicitly shared, so a
/// second one from equal bytes costs no memory.
template <class T>
class ValuePool
{
public:
    /// The value made from these bytes before, or else make(), which is remembered.
    template <class Make>
    T share(std::string_view bytes, Make &&make)
    {
        const auto tag = std::uint32_t(qHashBits(bytes.data(), bytes.size(), seed) >> 32U);
        size_t index = tag & (m_places.size() - 1);
        for (; m_places[index].entry != 0; index = (index + 1) & (m_places.size() - 1)) {
            const Place place = m_places[index];
            if (place.tag == tag && isFrom(m_entries[place.entry - 1], bytes))
                return m_entries[place.entry - 1].value;
        }
        // Making a list fills other pools but never this one, so the place is still free.
        T value = make();
        // Starts are kept in 32 bits; what would go beyond is not shared.
        if (m_bytes.size() + bytes.size() > UINT32_MAX)
            return value;
        const Entry &entry = m_entries.emplace_back(std::uint32_t(m_bytes.size()),
                                                    std::uint32_t(bytes.size()), value);
        m_places[index] = {tag, std::uint32_t(m_entries.size())};
        if (!isOwnKey(entry))
            m_bytes.append(bytes);
        // At most half full, so that probing stays short.
        if (m_entries.size() * 2 > m_places.size())
            grow();
        return value;
    }

private:
    /// Any but 0, with which Qt would not use the processor's own instructions.
    static constexpr size_t seed = 0x9e3779b97f4a7c15ULL;

    struct Entry {
        Entry(std::uint32_t start_, std::uint32_t size_, T value_)
            : start(start_), size(size_), value(std::move(value_))
        {
        }

        std::uint32_t start;
        std::uint32_t size;
        T value;
    };

    /// Small, so that the places of many values stay in the processor's cache.
    struct Place {
        std::uint32_t tag = 0;
        /// The number of the entry, counted from one; 0 in a free place.
        std::uint32_t entry = 0;
    };

    /// The bytes of an ASCII text can be seen in the text itself, whose memory has to be touched
    /// anyway to share it. As many units as bytes means ASCII.
    static bool isOwnKey(const Entry &entry)
    {
        if constexpr (std::is_same_v<T, QString>)
            return size_t(entry.value.size()) == entry.size;
        else
            return false;
    }

    bool isFrom(const Entry &entry, std::string_view bytes) const
    {
        if (entry.size != bytes.size())
            return false;
        if constexpr (std::is_same_v<T, QString>) {
            if (isOwnKey(entry))
                return entry.value == QLatin1String(bytes.data(), qsizetype(bytes.size()));
        }
        return std::memcmp(m_bytes.data() + entry.start, bytes.data(), bytes.size()) == 0;
    }

    void grow()
    {
        const std::vector<Place> old =
            std::exchange(m_places, std::vector<Place>(m_places.size() * 2));
        for (const Place &place : old) {
            if (place.entry == 0)
                continue;
            size_t index = place.tag & (m_places.size() - 1);
            while (m_places[index].entry != 0)
                index = (index + 1) & (m_places.size() - 1);
            m_places[index] = place;
        }
    }

    std::vector<Place> m_places = std::vector<Place>(64);
    std::vector<Entry> m_entries;
    /// The bytes of the values that do not show them, end to end.
    std::string m_bytes;
};

/// The text of these bytes, all of it: a U+FEFF at the start is a letter like any other here, not
/// the mark of a file that QString::fromUtf8() takes away.
QString textFromUtf8(std::string_view utf8);

/// Turns UTF-8 into QStrings, giving equal short texts one shared copy. Keywords, icon addresses
/// and explanations repeat from day to day, so memory stays near the number of distinct strings.
class StringPool
{
public:
    /// Longer texts are rarely equal and are not kept.
    static constexpr size_t longestShared = 1024;

    QString share(std::string_view utf8);

private:
    ValuePool<QString> m_pool;
};

} // namespace veltrix
