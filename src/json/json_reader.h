// SPDX-License-Identifier: GPL-3.0-or-later
// Reads records from JSON: strict where a field is required, blind to keys it does not know.
//
// Of the value of an unknown key, and of what a list has beyond its limit, only so much is looked
// at that its end is found: that its texts are UTF-8 and closed, and that brackets are as many as
// they should be. What else is wrong in there is not refused: to find it would make decoding a
// search answer 7 to 37 % slower.
#pragma once

#include "json/json_error.h"
#include "json/string_pool.h"
#include "model/date.h"
#include "model/factor_map.h"
#include "model/field_list.h"
#include "model/url.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <simdjson.h>
#include <span>
#include <string_view>
#include <vector>

namespace veltrix
{

namespace json_detail
{

/// A key with its closing quote, in words, so that comparing needs neither a call nor its length.
class KeyPattern
{
public:
    static constexpr size_t longestKey = 31;

    constexpr explicit KeyPattern(std::string_view key)
    {
        for (size_t i = 0; i <= key.size(); ++i) {
            const auto byte = std::uint64_t(std::uint8_t(i < key.size() ? key[i] : '"'));
            m_words[i / 8] |= byte << (i % 8 * 8);
            m_masks[i / 8] |= std::uint64_t(0xFF) << (i % 8 * 8);
        }
    }

    /// Whether a text begins with the key and its quote. Reads 32 bytes of it: the parser's padding
    /// lies behind every text.
    [[nodiscard]] bool matches(const char *raw) const
    {
        std::array<std::uint64_t, 4> words;
        std::memcpy(words.data(), raw, sizeof words);
        std::uint64_t difference = 0;
        for (size_t i = 0; i < words.size(); ++i)
            difference |= (words[i] ^ m_words[i]) & m_masks[i];
        return difference == 0;
    }

private:
    static_assert(std::endian::native == std::endian::little);
    std::array<std::uint64_t, 4> m_words{};
    std::array<std::uint64_t, 4> m_masks{};
};

} // namespace json_detail

/// The most elements of each list, of records and of texts, that are read; those that follow are
/// passed over. One or more.
struct ListLimit {
    size_t elements = std::numeric_limits<size_t>::max();
};

/// What one reading of one text needs along the way.
class JsonReader
{
public:
    using Value = simdjson::ondemand::value;

    explicit JsonReader(ListLimit listLimit = {}) : m_longestList(listLimit.elements) {}

    /// Elements of a list that are read.
    [[nodiscard]] size_t longestList() const { return m_longestList; }

    bool readBoolean(Value value) const;
    /// A whole number of 64 bits; "5.0" is 5, while "1.5" and anything larger fail.
    std::int64_t readInteger(Value value) const;
    double readNumber(Value value) const;
    QString readString(Value value);
    /// A text that is often the same as the last one in its place; `place` is any number for that.
    QString readRepeated(Value value, std::uint32_t place);
    /// A list of texts. Equal lists of one text share their memory.
    QStringList readStringList(Value value);
    /// A list of non-empty texts, shared in the same way.
    QList<Url> readUrlList(Value value);
    QUuid readUuid(Value value) const;
    /// The name of a member that is not known beforehand, shared like other texts. `place` counts
    /// the members of its object: objects of one kind mostly have the same names in one order.
    QString readName(simdjson::ondemand::field &member, size_t place);
    /// True, and the value consumed, when it is null.
    static bool readNull(Value value);

private:
    /// A member's name, and how it looks in the text.
    struct UsualName {
        json_detail::KeyPattern pattern;
        QString name;
    };

    size_t m_longestList;
    StringPool m_strings;
    /// The last texts in some places, without what is not ASCII.
    std::array<QString, 64> m_lastTexts;
    /// The names that were last seen at the first places of an object.
    std::vector<UsualName> m_usualNames;
    ValuePool<QStringList> m_stringLists;
    ValuePool<QList<Url>> m_urlLists;
};

namespace json_detail
{

[[noreturn]] void failMissing(std::string_view key);
/// Rethrows `error` with the place one level further out.
[[noreturn]] void failWithin(const DecodingError &error, std::string_view key);
[[noreturn]] void failAt(const DecodingError &error, qsizetype index);
[[noreturn]] void failSyntax(simdjson::error_code code);
[[noreturn]] void failExpected(const char *what);

/// The value behind a simdjson result; throws DecodingError on a syntax error.
template <class T>
T required(simdjson::simdjson_result<T> result)
{
    T value;
    if (const auto error = std::move(result).get(value))
        failSyntax(error);
    return value;
}

/// Throws unless the whole text was read.
void requireEnd(simdjson::ondemand::document &document);

/// The value as an object or a list; throws DecodingError when it is something else.
simdjson::ondemand::object object(JsonReader::Value value);
simdjson::ondemand::array array(JsonReader::Value value);

} // namespace json_detail

// Reads one value into `out`, whatever was in it. Throws DecodingError, which names the place.

inline void readJson(JsonReader &reader, JsonReader::Value value, bool &out)
{
    out = reader.readBoolean(value);
}
inline void readJson(JsonReader &reader, JsonReader::Value value, std::int64_t &out)
{
    out = reader.readInteger(value);
}
inline void readJson(JsonReader &reader, JsonReader::Value value, double &out)
{
    out = reader.readNumber(value);
}
inline void readJson(JsonReader &reader, JsonReader::Value value, Date &out)
{
    out = dateFromReferenceSeconds(reader.readNumber(value));
}
inline void readJson(JsonReader &reader, JsonReader::Value value, QString &out)
{
    out = reader.readString(value);
}
inline void readJson(JsonReader &reader, JsonReader::Value value, QUuid &out)
{
    out = reader.readUuid(value);
}
inline void readJson(JsonReader &reader, JsonReader::Value value, QStringList &out)
{
    out = reader.readStringList(value);
}
inline void readJson(JsonReader &reader, JsonReader::Value value, QList<Url> &out)
{
    out = reader.readUrlList(value);
}
void readJson(JsonReader &reader, JsonReader::Value value, Url &out);
void readJson(JsonReader &reader, JsonReader::Value value, FactorMap &out);

template <FieldListed Record>
void readJson(JsonReader &reader, JsonReader::Value value, Record &out);

template <class T>
void readJson(JsonReader &reader, JsonReader::Value value, std::shared_ptr<const T> &out)
{
    auto record = std::make_shared<T>();
    readJson(reader, value, *record);
    out = std::move(record);
}

template <class List>
void readJsonArray(JsonReader &reader, JsonReader::Value value, List &out)
{
    out.clear();
    for (auto result : json_detail::array(value)) {
        auto element = json_detail::required(result);
        if (size_t(out.size()) == reader.longestList())
            continue;
        try {
            readJson(reader, element, out.emplace_back());
        } catch (const DecodingError &error) {
            json_detail::failAt(error, qsizetype(out.size()) - 1);
        }
    }
}

template <class T>
void readJson(JsonReader &reader, JsonReader::Value value, std::vector<T> &out)
{
    readJsonArray(reader, value, out);
}

template <class T>
void readJson(JsonReader &reader, JsonReader::Value value, QList<T> &out)
{
    // Gathered on the stack first: the list then takes one block of just the right size.
    constexpr qsizetype usual = std::max<qsizetype>(1, 2048 / qsizetype(sizeof(T)));
    QVarLengthArray<T, usual> items;
    readJsonArray(reader, value, items);
    out = QList<T>(std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
}

template <class T>
void readJson(JsonReader &reader, JsonReader::Value value, std::map<QString, T> &out)
{
    out.clear();
    size_t place = 0;
    for (auto result : json_detail::object(value)) {
        auto entry = json_detail::required(result);
        const QString name = reader.readName(entry, place++);
        try {
            T item{};
            readJson(reader, entry.value(), item);
            out.insert_or_assign(name, std::move(item));
        } catch (const DecodingError &error) {
            json_detail::failWithin(error, name.toStdString());
        }
    }
}

namespace json_detail
{

/// A record's key as text and as pattern.
struct ListedKey {
    std::string_view text;
    KeyPattern pattern;
};

/// Finds the keys of one object among those of a record. Objects mostly have a record's keys in the
/// record's order, so each search begins behind the key that was found last.
class KeyFinder
{
public:
    explicit KeyFinder(std::span<const ListedKey> keys) : m_keys(keys) {}

    /// The place of the member's key, or the number of keys when it is none of them.
    size_t find(simdjson::ondemand::field &member)
    {
        if (m_next < m_keys.size() && m_keys[m_next].pattern.matches(member.key().raw()))
            return m_next++;
        return search(member);
    }

private:
    size_t search(simdjson::ondemand::field &member);

    std::span<const ListedKey> m_keys;
    size_t m_next = 0;
};

/// Tells the keys of records apart well enough.
constexpr std::uint32_t placeOfKey(std::string_view key)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : key)
        hash = (hash ^ std::uint8_t(c)) * 16777619U;
    return hash ^ hash >> 16U;
}

template <class Record, size_t place>
void readMember(JsonReader &reader, JsonReader::Value value, Record &out)
{
    constexpr auto &listed = std::get<place>(fieldsOf<Record>);
    auto &member = out.*(listed.member);
    using Member = std::remove_cvref_t<decltype(member)>;
    if constexpr (isOptional<Member>) {
        if (JsonReader::readNull(value))
            member.reset();
        else if constexpr (std::is_same_v<Member, std::optional<QString>>)
            member = reader.readRepeated(value, placeOfKey(listed.key));
        else
            readJson(reader, value, member.emplace());
    } else if (listed.presence == Presence::Lenient && JsonReader::readNull(value)) {
        member = Member{};
    } else if constexpr (std::is_same_v<Member, QString>) {
        member = reader.readRepeated(value, placeOfKey(listed.key));
    } else {
        readJson(reader, value, member);
    }
}

template <class Record, class Member>
constexpr bool isRequired(const Field<Record, Member> &listed)
{
    return !isOptional<Member> && listed.presence == Presence::ByType;
}

/// What reading a record needs of its field list, as tables over the places of the fields.
template <class Record>
struct MemberTables {
    static constexpr size_t count =
        std::tuple_size_v<std::remove_cvref_t<decltype(fieldsOf<Record>)>>;
    using Read = void (*)(JsonReader &, JsonReader::Value, Record &);

    template <size_t... places>
    static constexpr std::array<Read, count> readersOf(std::index_sequence<places...>)
    {
        return {&readMember<Record, places>...};
    }

    static constexpr std::array<Read, count> readers = readersOf(std::make_index_sequence<count>());
    static constexpr std::array<ListedKey, count> keys = std::apply(
        [](const auto &...listed) {
            return std::array<ListedKey, count>{ListedKey{listed.key, KeyPattern(listed.key)}...};
        },
        fieldsOf<Record>);
    /// A bit for each field that has to be there.
    static constexpr std::uint64_t required = std::apply(
        [](const auto &...listed) {
            std::uint64_t bits = 0;
            unsigned place = 0;
            ((bits |= std::uint64_t(isRequired(listed)) << place++), ...);
            return bits;
        },
        fieldsOf<Record>);
    static_assert(count <= 64);
    static_assert(std::ranges::all_of(keys, [](const ListedKey &key) {
        return key.text.size() <= KeyPattern::longestKey;
    }));
};

} // namespace json_detail

template <FieldListed Record>
void readJson(JsonReader &reader, JsonReader::Value value, Record &out)
{
    using Tables = json_detail::MemberTables<Record>;
    std::uint64_t seen = 0;
    json_detail::KeyFinder finder(Tables::keys);
    for (auto result : json_detail::object(value)) {
        auto member = json_detail::required(result);
        const size_t place = finder.find(member);
        if (place == Tables::count)
            continue;
        try {
            Tables::readers[place](reader, member.value(), out);
        } catch (const DecodingError &error) {
            json_detail::failWithin(error, Tables::keys[place].text);
        }
        seen |= std::uint64_t(1) << place;
    }
    if (const std::uint64_t missing = Tables::required & ~seen)
        json_detail::failMissing(Tables::keys[size_t(std::countr_zero(missing))].text);
}

/// The JSON text of one value, in memory that the parser may read past (as it needs to).
class JsonText
{
public:
    explicit JsonText(const QByteArray &text);
    /// The same text for a reading with a limit: one that consists of marks more than of values is
    /// shortened to what is read of it, so that memory stays within some multiple of the text.
    /// Throws DecodingError when such a one is not JSON.
    JsonText(const QByteArray &text, ListLimit listLimit);
    /// Takes over a text that was loaded with the padding the parser asks for.
    explicit JsonText(simdjson::padded_string text) : m_text(std::move(text)) {}

    [[nodiscard]] const simdjson::padded_string &padded() const { return m_text; }

private:
    simdjson::padded_string m_text;
};

/// Reads one value from a text that holds nothing else. Throws DecodingError.
template <class T>
T fromJson(const JsonText &text, ListLimit listLimit = {})
{
    simdjson::ondemand::parser parser;
    auto document = json_detail::required(parser.iterate(text.padded()));
    JsonReader reader(listLimit);
    T out{};
    readJson(reader, json_detail::required(document.get_value()), out);
    json_detail::requireEnd(document);
    return out;
}

template <class T>
T fromJson(const QByteArray &text)
{
    return fromJson<T>(JsonText(text));
}

/// For texts from outside: no list of theirs costs more memory than `listLimit` lets it.
template <class T>
T fromJson(const QByteArray &text, ListLimit listLimit)
{
    return fromJson<T>(JsonText(text, listLimit), listLimit);
}

} // namespace veltrix
