// SPDX-License-Identifier: GPL-3.0-or-later
// Chance that never changes: the made-up App Store must be the same on every machine and library.
#pragma once

#include <QByteArrayView>

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace veltrix::sample
{

/// Spreads the bits of a number over all 64 bits (the finaliser of splitmix64).
constexpr std::uint64_t scrambled(std::uint64_t value)
{
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9ULL;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebULL;
    return value ^ (value >> 31);
}

/// A hash of the numbers in their order.
template <typename... Numbers>
constexpr std::uint64_t stableHash(Numbers... numbers)
{
    std::uint64_t hash = 0x9e3779b97f4a7c15ULL;
    ((hash = scrambled(hash ^ static_cast<std::uint64_t>(numbers)) + 0x9e3779b97f4a7c15ULL), ...);
    return hash;
}

/// A hash of bytes (FNV-1a, then spread).
constexpr std::uint64_t stableTextHash(QByteArrayView text)
{
    std::uint64_t hash = 0xcbf29ce484222325ULL;
    for (const char byte : text)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3ULL;
    return scrambled(hash);
}

/// The top 53 bits of a hash as a number from 0 to below 1.
constexpr double unitFromHash(std::uint64_t hash)
{
    return static_cast<double>(hash >> 11) * 0x1.0p-53;
}

/// A sequence of numbers that depends on the seed alone (splitmix64).
class Dice
{
public:
    constexpr explicit Dice(std::uint64_t seed) : m_state(seed) {}

    constexpr std::uint64_t next() { return scrambled(m_state += 0x9e3779b97f4a7c15ULL); }
    /// 0 to below 1.
    constexpr double unit() { return unitFromHash(next()); }
    /// `low` to below `high`.
    constexpr double between(double low, double high) { return low + (high - low) * unit(); }
    /// 0 to count − 1; count must be positive.
    constexpr int below(int count)
    {
        return static_cast<int>(next() % static_cast<std::uint64_t>(count));
    }
    constexpr bool chance(double probability) { return unit() < probability; }
    template <typename List>
    constexpr const auto &pick(const List &values)
    {
        return *std::next(std::begin(values), below(static_cast<int>(std::size(values))));
    }

private:
    std::uint64_t m_state;
};

} // namespace veltrix::sample
