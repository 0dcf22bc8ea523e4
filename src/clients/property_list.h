// SPDX-License-Identifier: GPL-3.0-or-later
// Reads XML property lists: the information dictionary, service configurations, search hints.
#pragma once

#include "model/error.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <cstdint>
#include <optional>
#include <variant>

namespace veltrix
{

/// A text is not a property list, or holds more than is accepted.
class PropertyListError final : public Error
{
public:
    explicit PropertyListError(const QString &problem);
};

/// One value of a property list. Dates and data stay the texts that the file holds.
class PropertyListValue
{
public:
    using Dictionary = QMap<QString, PropertyListValue>;
    using Array = QList<PropertyListValue>;
    using Storage = std::variant<QString, std::int64_t, double, bool, Array, Dictionary>;

    PropertyListValue() = default;
    explicit PropertyListValue(Storage value) : m_value(std::move(value)) {}

    /// The value when it is of that type, else nothing.
    [[nodiscard]] std::optional<QString> text() const { return as<QString>(); }
    [[nodiscard]] std::optional<std::int64_t> integer() const { return as<std::int64_t>(); }
    [[nodiscard]] std::optional<bool> boolean() const { return as<bool>(); }
    [[nodiscard]] std::optional<Array> array() const { return as<Array>(); }
    [[nodiscard]] std::optional<Dictionary> dictionary() const { return as<Dictionary>(); }

    /// A member of a dictionary; nothing when there is none or this is not a dictionary.
    [[nodiscard]] std::optional<PropertyListValue> member(const QString &key) const;
    /// A member that is a text; nothing when it is of another kind.
    [[nodiscard]] std::optional<QString> textMember(const QString &key) const;

private:
    template <class T>
    [[nodiscard]] std::optional<T> as() const
    {
        const T *value = std::get_if<T>(&m_value);
        return value ? std::optional<T>(*value) : std::nullopt;
    }

    Storage m_value;
};

/// Most bytes, deepest nesting and most values that are read. A value may cost more memory than its
/// text, so bytes alone would not bound it.
struct PropertyListLimits {
    qsizetype bytes = 4 * 1024 * 1024;
    int depth = 32;
    int values = 10'000;
};

/// Reads an XML property list. Nothing outside the text is ever loaded: the document type is
/// skipped, and a text that declares entities or uses one that is not declared fails. Throws
/// PropertyListError.
PropertyListValue readPropertyList(const QByteArray &xml, PropertyListLimits limits = {});

} // namespace veltrix
