// SPDX-License-Identifier: GPL-3.0-or-later
// What two starts of the program say to each other of an export.
#pragma once

#include "model/field_list.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <tuple>
#include <utility>

namespace veltrix
{

/// What a start that exports asks of the one that has the data.
struct ExportWish {
    /// Names or App Store ids; none for all apps.
    QStringList apps;
    /// Two-letter codes; none for all storefronts.
    QStringList storefronts;
    /// JSON instead of CSV.
    bool json = false;
    /// All measurements instead of the table of keywords.
    bool history = false;

    bool operator==(const ExportWish &) const = default;
};

template <>
inline constexpr auto fieldsOf<ExportWish> = std::tuple{
    field("apps", &ExportWish::apps),
    field("storefronts", &ExportWish::storefronts),
    field("json", &ExportWish::json),
    field("history", &ExportWish::history),
};

/// How an export ended.
struct ExportEnd {
    /// Why what was told before it is not all, in words; absent when it is.
    std::optional<QString> problem;
    /// The wish names something that is not tracked.
    bool isWrongUse = false;

    bool operator==(const ExportEnd &) const = default;
};

template <>
inline constexpr auto fieldsOf<ExportEnd> = std::tuple{
    field("problem", &ExportEnd::problem),
    field("isWrongUse", &ExportEnd::isWrongUse),
};

/// One line; exactly one of its fields is there.
struct ExportMessage {
    ExportMessage() = default;
    explicit ExportMessage(QString text) : piece(std::move(text)) {}
    explicit ExportMessage(ExportEnd last) : end(std::move(last)) {}

    /// What follows in the file.
    std::optional<QString> piece;
    /// The last one.
    std::optional<ExportEnd> end;

    bool operator==(const ExportMessage &) const = default;
};

template <>
inline constexpr auto fieldsOf<ExportMessage> = std::tuple{
    field("piece", &ExportMessage::piece),
    field("end", &ExportMessage::end),
};

} // namespace veltrix
