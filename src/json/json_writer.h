// SPDX-License-Identifier: GPL-3.0-or-later
// Writes records as compact JSON: one pass into one buffer.
#pragma once

#include "json/json_error.h"
#include "model/date.h"
#include "model/factor_map.h"
#include "model/field_list.h"
#include "model/url.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QUuid>

#include <cstring>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <vector>

namespace veltrix
{

/// The growing buffer of one JSON text, with the scalar forms: UUIDs upper-case, dates as seconds
/// since 2001-01-01 UTC, numbers in the shortest form that reads back to the same value.
class JsonWriter
{
public:
    /// `expectedSize` bytes are set aside at once; the buffer grows beyond them as needed.
    explicit JsonWriter(qsizetype expectedSize = 4096);

    void boolean(bool value) { value ? raw("true") : raw("false"); }
    void integer(std::int64_t value);
    /// Throws EncodingError when the value is not finite.
    void number(double value);
    void string(QStringView value);
    void uuid(const QUuid &value);
    /// Bytes that are JSON already.
    void raw(std::string_view json)
    {
        reserve(qsizetype(json.size()));
        std::memcpy(m_end, json.data(), json.size());
        m_end += json.size();
    }
    void put(char c)
    {
        reserve(1);
        *m_end++ = c;
    }
    /// A key that needs no escapes, with its quotes and colon.
    void key(std::string_view name)
    {
        reserve(qsizetype(name.size()) + 3);
        *m_end++ = '"';
        std::memcpy(m_end, name.data(), name.size());
        m_end += name.size();
        *m_end++ = '"';
        *m_end++ = ':';
    }

    /// From now on the text goes to `sink` in portions of about that many bytes, and only what is
    /// left of the last one stays for take().
    void drainInto(std::function<void(QByteArrayView)> sink, qsizetype portion)
    {
        m_sink = std::move(sink);
        m_portion = portion;
    }
    /// Called between elements, where the text may be cut.
    void drainIfFull()
    {
        if (size() < m_portion)
            return;
        m_sink(QByteArrayView(m_buffer.constData(), size()));
        m_end = m_buffer.data();
    }

    /// Bytes in the buffer.
    [[nodiscard]] qsizetype size() const { return m_end - m_buffer.constData(); }
    /// Hands the text over and leaves the writer empty.
    [[nodiscard]] QByteArray take();

private:
    void reserve(qsizetype count)
    {
        if (m_limit - m_end < count)
            grow(count);
    }
    void grow(qsizetype count);

    QByteArray m_buffer;
    char *m_end;
    char *m_limit;
    std::function<void(QByteArrayView)> m_sink;
    /// Nothing is that long while there is no sink.
    qsizetype m_portion = std::numeric_limits<qsizetype>::max();
};

// Writes one value. Throws EncodingError for a number that is not finite.

inline void writeJson(JsonWriter &writer, bool value)
{
    writer.boolean(value);
}
inline void writeJson(JsonWriter &writer, std::int64_t value)
{
    writer.integer(value);
}
inline void writeJson(JsonWriter &writer, double value)
{
    writer.number(value);
}
inline void writeJson(JsonWriter &writer, Date value)
{
    writer.number(referenceSeconds(value));
}
inline void writeJson(JsonWriter &writer, const QString &value)
{
    writer.string(value);
}
inline void writeJson(JsonWriter &writer, const Url &value)
{
    writer.string(value.text());
}
inline void writeJson(JsonWriter &writer, const QUuid &value)
{
    writer.uuid(value);
}

template <FieldListed Record>
void writeJson(JsonWriter &writer, const Record &record);

template <class T>
void writeJson(JsonWriter &writer, const std::shared_ptr<const T> &value)
{
    writeJson(writer, *value);
}

template <class Range>
void writeJsonArray(JsonWriter &writer, const Range &range)
{
    writer.put('[');
    bool first = true;
    for (const auto &element : range) {
        if (!first)
            writer.put(',');
        first = false;
        writeJson(writer, element);
        writer.drainIfFull();
    }
    writer.put(']');
}

template <class T>
void writeJson(JsonWriter &writer, const QList<T> &values)
{
    writeJsonArray(writer, values);
}

template <class T>
void writeJson(JsonWriter &writer, const std::vector<T> &values)
{
    writeJsonArray(writer, values);
}

/// An object from a range of (key, value) pairs given by two projections.
template <class Range, class Key, class Value>
void writeJsonObject(JsonWriter &writer, const Range &range, Key key, Value value)
{
    writer.put('{');
    bool first = true;
    for (const auto &entry : range) {
        if (!first)
            writer.put(',');
        first = false;
        writer.string(key(entry));
        writer.put(':');
        writeJson(writer, value(entry));
    }
    writer.put('}');
}

inline void writeJson(JsonWriter &writer, const FactorMap &map)
{
    writeJsonObject(
        writer, map, [](const auto &entry) -> QStringView { return entry.name; },
        [](const auto &entry) { return entry.value; });
}

template <class T>
void writeJson(JsonWriter &writer, const std::map<QString, T> &map)
{
    writeJsonObject(
        writer, map, [](const auto &entry) -> QStringView { return entry.first; },
        [](const auto &entry) -> const T & { return entry.second; });
}

template <FieldListed Record>
void writeJson(JsonWriter &writer, const Record &record)
{
    writer.put('{');
    bool first = true;
    forEachField<Record>([&](const auto &listed) {
        const auto &value = record.*(listed.member);
        const auto begin = [&] {
            if (!first)
                writer.put(',');
            first = false;
            writer.key(listed.key);
        };
        if constexpr (isOptional<std::remove_cvref_t<decltype(value)>>) {
            if (value) {
                begin();
                writeJson(writer, *value);
            }
        } else {
            begin();
            writeJson(writer, value);
        }
    });
    writer.put('}');
}

/// One value as a JSON text. Throws EncodingError when it holds a number that is not finite. An
/// `expectedSize` in bytes, where one is known, saves the buffer from growing.
template <class T>
QByteArray toJson(const T &value, qsizetype expectedSize = 4096)
{
    JsonWriter writer(expectedSize);
    writeJson(writer, value);
    return writer.take();
}

} // namespace veltrix
