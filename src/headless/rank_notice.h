// SPDX-License-Identifier: GPL-3.0-or-later
// What changed, in the few words of a notification.
#pragma once

#include "model/digest_choice.h"
#include "model/field_list.h"

#include <QList>
#include <QString>

#include <cstdint>
#include <optional>
#include <tuple>

namespace veltrix
{

/// A keyword's rank as it was told last, or stood before, and as it is.
struct RankChange {
    QString keyword;
    /// Two-letter code.
    QString storefront;
    QString app;
    /// 1 to 100; absent when the app was not ranked.
    std::optional<std::int64_t> before;
    std::optional<std::int64_t> now;
    /// It never ranked higher.
    bool isNewBest = false;
    /// Whether it counts as being in the top 10, before and now; see isInTopTen().
    bool wasInTopTen = false;
    bool isInTopTen = false;

    bool operator==(const RankChange &) const = default;
};

/// Whether a rank counts as being in the top 10. One that was in it has left it only when it ranks
/// some places lower: otherwise a keyword that goes to and fro between 10 and 11 would be told
/// every day.
bool isInTopTen(std::optional<std::int64_t> rank, bool wasInTopTen);

/// Plain text without control characters; the text's lines are parted by line feeds.
struct RankNotice {
    QString title;
    QString text;

    bool operator==(const RankNotice &) const = default;
};

template <>
inline constexpr auto fieldsOf<RankNotice> = std::tuple{
    field("title", &RankNotice::title),
    field("text", &RankNotice::text),
};

/// Sums up what of the changes the user wants to be told of, and names those that moved most. None
/// when nothing of it has happened.
std::optional<RankNotice> noticeOf(const QList<RankChange> &changes, const DigestChoice &choice);

} // namespace veltrix
