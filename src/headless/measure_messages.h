// SPDX-License-Identifier: GPL-3.0-or-later
// What is told of measuring without a window: between two starts of the program, and to scripts.
#pragma once

#include "headless/rank_notice.h"
#include "model/field_list.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <tuple>
#include <utility>

namespace veltrix
{

/// What a start without a window asks of the one that has the data.
struct MeasureWish {
    /// Names or App Store ids; none for all apps.
    QStringList apps;
    /// Two-letter codes; none for all storefronts.
    QStringList storefronts;
    /// Also what was measured today.
    bool all = false;
    /// What changed is to be summed up for a notification.
    bool notify = false;

    bool operator==(const MeasureWish &) const = default;
};

template <>
inline constexpr auto fieldsOf<MeasureWish> = std::tuple{
    field("apps", &MeasureWish::apps),
    field("storefronts", &MeasureWish::storefronts),
    field("all", &MeasureWish::all),
    field("notify", &MeasureWish::notify, Presence::Lenient),
};

/// The keyword whose turn it is.
struct MeasureProgress {
    QString keyword;
    /// From 1.
    std::int64_t number = 0;
    std::int64_t total = 0;

    bool operator==(const MeasureProgress &) const = default;
};

template <>
inline constexpr auto fieldsOf<MeasureProgress> = std::tuple{
    field("keyword", &MeasureProgress::keyword),
    field("number", &MeasureProgress::number),
    field("total", &MeasureProgress::total),
};

/// A keyword that has had its turn.
struct MeasuredKeyword {
    QString keyword;
    /// Two-letter code.
    QString storefront;
    /// Empty when the app is not tracked any more.
    QString app;
    std::int64_t appStoreId = 0;
    bool isMeasured = false;
    /// 1 to 100; absent when the app is not ranked, or nothing was measured.
    std::optional<std::int64_t> rank;
    /// Since the day before, in words; absent when nothing was measured.
    std::optional<QString> movement;
    /// Why nothing was measured, in words.
    std::optional<QString> problem;

    bool operator==(const MeasuredKeyword &) const = default;
};

template <>
inline constexpr auto fieldsOf<MeasuredKeyword> = std::tuple{
    field("keyword", &MeasuredKeyword::keyword),
    field("storefront", &MeasuredKeyword::storefront),
    field("app", &MeasuredKeyword::app),
    field("appStoreId", &MeasuredKeyword::appStoreId),
    field("isMeasured", &MeasuredKeyword::isMeasured),
    field("rank", &MeasuredKeyword::rank),
    field("movement", &MeasuredKeyword::movement),
    field("problem", &MeasuredKeyword::problem),
};

/// How it ended. Every chosen keyword is counted once, unless it was deleted meanwhile.
struct MeasureSummary {
    std::int64_t measured = 0;
    /// Had their turn, or can never be measured.
    std::int64_t notMeasured = 0;
    /// Had no turn: it was stopped, or ended because the service fails.
    std::int64_t left = 0;
    /// Were measured today already.
    std::int64_t measuredBefore = 0;
    /// What is wrong beside single keywords, in words: nothing could be read, or not all be saved.
    std::optional<QString> problem;
    /// What a notification is to tell.
    std::optional<RankNotice> notice;

    [[nodiscard]] bool isComplete() const { return notMeasured == 0 && left == 0 && !problem; }
    bool operator==(const MeasureSummary &) const = default;
};

template <>
inline constexpr auto fieldsOf<MeasureSummary> = std::tuple{
    field("measured", &MeasureSummary::measured),
    field("notMeasured", &MeasureSummary::notMeasured),
    field("left", &MeasureSummary::left),
    field("measuredBefore", &MeasureSummary::measuredBefore),
    field("problem", &MeasureSummary::problem),
    field("notice", &MeasureSummary::notice),
};

/// One line; exactly one of its fields is there.
struct MeasureMessage {
    MeasureMessage() = default;
    explicit MeasureMessage(MeasureProgress now) : progress(std::move(now)) {}
    explicit MeasureMessage(MeasuredKeyword turn) : keyword(std::move(turn)) {}
    explicit MeasureMessage(MeasureSummary end) : summary(std::move(end)) {}
    static MeasureMessage ofWrongUse(QString reason)
    {
        MeasureMessage message;
        message.wrongUse = std::move(reason);
        return message;
    }

    std::optional<MeasureProgress> progress;
    std::optional<MeasuredKeyword> keyword;
    /// The last one.
    std::optional<MeasureSummary> summary;
    /// Instead of a summary: the wish names something that is not tracked.
    std::optional<QString> wrongUse;

    bool operator==(const MeasureMessage &) const = default;
};

template <>
inline constexpr auto fieldsOf<MeasureMessage> = std::tuple{
    field("progress", &MeasureMessage::progress),
    field("keyword", &MeasureMessage::keyword),
    field("summary", &MeasureMessage::summary),
    field("wrongUse", &MeasureMessage::wrongUse),
};

} // namespace veltrix
