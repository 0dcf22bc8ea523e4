// SPDX-License-Identifier: GPL-3.0-or-later
// What is said between Veltrix and the research service.
#pragma once

#include "model/itunes_app_result.h"

namespace veltrix
{

/// The body of a research request.
struct ResearchQuery {
    QString keyword;
    QString country;
};

template <>
inline constexpr auto fieldsOf<ResearchQuery> = std::tuple{
    field("keyword", &ResearchQuery::keyword),
    field("country", &ResearchQuery::country),
};

/// The body of a research answer.
struct ResearchEnvelope {
    /// "ready" when the results are final; "stale", "pending", "failed" or "unavailable" when the
    /// service is still working or cannot answer now.
    std::optional<QString> status;
    /// Ranked apps, best first.
    std::optional<QList<ITunesAppResult>> results;
    /// ISO 8601 date-time with fractional seconds: when the results were produced.
    std::optional<QString> fetchedAt;
    /// Seconds to wait before asking again.
    std::optional<double> retryAfter;

    bool operator==(const ResearchEnvelope &) const = default;
};

template <>
inline constexpr auto fieldsOf<ResearchEnvelope> = std::tuple{
    field("status", &ResearchEnvelope::status),
    field("results", &ResearchEnvelope::results),
    field("fetchedAt", &ResearchEnvelope::fetchedAt),
    field("retryAfter", &ResearchEnvelope::retryAfter),
};

} // namespace veltrix
