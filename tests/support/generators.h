// SPDX-License-Identifier: GPL-3.0-or-later
// Random records for property tests, made from the same field lists as their JSON.
#pragma once

#include "json/json_writer.h"
#include "model/dashboard_keyword_row.h"
#include "model/itunes_app_result.h"
#include "model/keyword_snapshot.h"

#include <rapidcheck.h>

#include <cmath>

namespace rc
{

template <>
struct Arbitrary<QString> {
    static Gen<QString> arbitrary()
    {
        // Every plane, line separators, controls and marks that begin a file; no half surrogates,
        // which JSON cannot hold.
        const auto character =
            gen::oneOf(gen::inRange<char32_t>(0, 0x80), gen::inRange<char32_t>(0x80, 0xD800),
                       gen::inRange<char32_t>(0xE000, 0x10000),
                       gen::inRange<char32_t>(0x10000, 0x20000), gen::just(char32_t(0xFEFF)));
        return gen::map(gen::container<std::u32string>(character), [](const std::u32string &text) {
            // In one piece, a mark at the start would be taken away.
            QString made;
            for (const char32_t c : text)
                made += QChar::fromUcs4(c);
            return made;
        });
    }
};

template <>
struct Arbitrary<QUuid> {
    static Gen<QUuid> arbitrary()
    {
        return gen::map(gen::pair(gen::arbitrary<std::uint64_t>(), gen::arbitrary<std::uint64_t>()),
                        [](const std::pair<std::uint64_t, std::uint64_t> &halves) {
                            QByteArray bytes(16, '\0');
                            std::memcpy(bytes.data(), &halves.first, 8);
                            std::memcpy(bytes.data() + 8, &halves.second, 8);
                            return QUuid::fromRfc4122(bytes);
                        });
    }
};

template <>
struct Arbitrary<veltrix::Url> {
    static Gen<veltrix::Url> arbitrary()
    {
        return gen::map(gen::arbitrary<QString>(), [](const QString &text) {
            return *veltrix::Url::fromText(QStringLiteral("https://apps.example/") + text);
        });
    }
};

template <>
struct Arbitrary<veltrix::Date> {
    static Gen<veltrix::Date> arbitrary()
    {
        return gen::map(gen::inRange<std::int64_t>(-4'000'000'000'000, 4'000'000'000'000),
                        [](std::int64_t milliseconds) {
                            return veltrix::dateFromReferenceSeconds(double(milliseconds) / 1000.0);
                        });
    }
};

template <>
struct Arbitrary<veltrix::FactorMap> {
    static Gen<veltrix::FactorMap> arbitrary()
    {
        return gen::map(gen::arbitrary<std::map<QString, std::uint32_t>>(),
                        [](const auto &entries) {
                            veltrix::FactorMap map;
                            for (const auto &[name, value] : entries)
                                map.insert(name, double(value) / 7.0);
                            return map;
                        });
    }
};

template <class T>
struct Arbitrary<std::optional<T>> {
    static Gen<std::optional<T>> arbitrary()
    {
        return gen::oneOf(gen::just(std::optional<T>()), gen::map(gen::arbitrary<T>(), [](T value) {
                              return std::optional<T>(std::move(value));
                          }));
    }
};

template <class T>
struct Arbitrary<QList<T>> {
    static Gen<QList<T>> arbitrary()
    {
        return gen::map(
            gen::resize(8, gen::arbitrary<std::vector<T>>()),
            [](const std::vector<T> &values) { return QList<T>(values.begin(), values.end()); });
    }
};

template <veltrix::FieldListed Record>
struct Arbitrary<Record> {
    static Gen<Record> arbitrary()
    {
        return gen::exec([] {
            Record record;
            veltrix::forEachField<Record>([&](const auto &listed) {
                using Member = std::remove_cvref_t<decltype(record.*(listed.member))>;
                record.*(listed.member) = *gen::arbitrary<Member>();
            });
            return record;
        });
    }
};

template <veltrix::FieldListed Record>
void showValue(const Record &record, std::ostream &out)
{
    out << veltrix::toJson(record).toStdString();
}

inline void showValue(const QString &text, std::ostream &out)
{
    out << '"' << text.toStdString() << '"';
}

} // namespace rc
