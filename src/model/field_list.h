// SPDX-License-Identifier: GPL-3.0-or-later
// One field list a record: its keys and members, from which JSON, hashing and generators follow.
#pragma once

#include "model/date.h"

#include <QHashFunctions>
#include <QList>

#include <cstddef>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace veltrix
{

/// Whether a field has to be there when a record is read.
enum class Presence {
    /// As the member's type says: std::optional may be absent, everything else must be there.
    ByType,
    /// A member that is always written but may be missing (or null) when read: it was added later,
    /// and keeps its default.
    Lenient,
};

/// A member of a record under its JSON key.
template <class Record, class Member>
struct Field {
    std::string_view key;
    Member Record::*member;
    Presence presence;
};

template <class Record, class Member>
constexpr Field<Record, Member> field(std::string_view key, Member Record::*member,
                                      Presence presence = Presence::ByType)
{
    return {key, member, presence};
}

/// The fields of a record in declaration order: specialised beside each record as a std::tuple of
/// Field. The order is that of equality, hashing and writing.
template <class Record>
inline constexpr auto fieldsOf = nullptr;

/// A record with a field list.
template <class Record>
concept FieldListed =
    !std::is_same_v<std::remove_cvref_t<decltype(fieldsOf<Record>)>, std::nullptr_t>;

template <class T>
inline constexpr bool isOptional = false;
template <class T>
inline constexpr bool isOptional<std::optional<T>> = true;

/// Calls visit(field) for every field of the record, in order.
template <FieldListed Record, class Visit>
constexpr void forEachField(Visit &&visit)
{
    std::apply([&](const auto &...fields) { (visit(fields), ...); }, fieldsOf<Record>);
}

template <class T>
inline constexpr bool isList = false;
template <class T>
inline constexpr bool isList<QList<T>> = true;

/// Memberwise hash of a value, a list of values, or a whole record: equal values have equal hashes.
template <class T>
size_t hashValue(const T &value, size_t seed = 0)
{
    const auto combine = [&seed](size_t hash) {
        seed ^= hash + 0x9e3779b97f4a7c15ULL + (seed << 6U) + (seed >> 2U);
    };
    if constexpr (FieldListed<T>) {
        forEachField<T>([&](const auto &listed) { combine(hashValue(value.*(listed.member))); });
    } else if constexpr (isOptional<T>) {
        combine(value.has_value());
        if (value)
            combine(hashValue(*value));
    } else if constexpr (isList<T>) {
        for (const auto &element : value)
            combine(hashValue(element));
    } else if constexpr (std::is_same_v<T, Date>) {
        combine(::qHash(referenceSeconds(value)));
    } else if constexpr (std::is_arithmetic_v<T>) {
        combine(::qHash(value));
    } else {
        combine(qHash(value, 0));
    }
    return seed;
}

} // namespace veltrix
