// SPDX-License-Identifier: GPL-3.0-or-later
// Shares the memory of equal values while a large text is read.
#pragma once

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

/// A fast 64-bit hash of some bytes. Only this process sees it.
std::uint64_t hashBytes(std::string_view bytes);

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
        const std::uint64_t hash = hashBytes(bytes) | 1U;
        size_t index = placeOf(hash);
        for (; m_slots[index].hash != 0; index = (index + 1) & (m_slots.size() - 1)) {
            if (m_slots[index].hash == hash && isFrom(m_slots[index], bytes))
                return m_slots[index].value;
        }
        // Making a list fills other pools but never this one, so the slot is still free.
        T value = make();
        // Starts are kept in 32 bits; what would go beyond is not shared.
        if (m_bytes.size() + bytes.size() > UINT32_MAX)
            return value;
        Slot &slot = m_slots[index];
        slot = {hash, std::uint32_t(m_bytes.size()), std::uint32_t(bytes.size()), value};
        if (!isOwnKey(slot))
            m_bytes.append(bytes);
        // At most half full, so that probing stays short.
        if (++m_count * 2 > m_slots.size())
            grow();
        return value;
    }

private:
    struct Slot {
        /// 0 in a free slot.
        std::uint64_t hash = 0;
        std::uint32_t start = 0;
        std::uint32_t size = 0;
        T value;
    };

    /// The bytes of an ASCII text can be seen in the text itself, whose memory has to be touched
    /// anyway to share it. As many units as bytes means ASCII.
    static bool isOwnKey(const Slot &slot)
    {
        if constexpr (std::is_same_v<T, QString>)
            return size_t(slot.value.size()) == slot.size;
        else
            return false;
    }

    bool isFrom(const Slot &slot, std::string_view bytes) const
    {
        if (slot.size != bytes.size())
            return false;
        if constexpr (std::is_same_v<T, QString>) {
            if (isOwnKey(slot))
                return slot.value == QLatin1String(bytes.data(), qsizetype(bytes.size()));
        }
        return std::memcmp(m_bytes.data() + slot.start, bytes.data(), bytes.size()) == 0;
    }

    [[nodiscard]] size_t placeOf(std::uint64_t hash) const
    {
        return (hash >> 32U) & (m_slots.size() - 1);
    }

    void grow()
    {
        std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(m_slots.size() * 2));
        for (Slot &slot : old) {
            if (slot.hash == 0)
                continue;
            size_t index = placeOf(slot.hash);
            while (m_slots[index].hash != 0)
                index = (index + 1) & (m_slots.size() - 1);
            m_slots[index] = std::move(slot);
        }
    }

    std::vector<Slot> m_slots = std::vector<Slot>(64);
    size_t m_count = 0;
    /// The bytes of the values that do not show them, end to end.
    std::string m_bytes;
};

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
