// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a research question, and says what is wrong with one that is none.
#pragma once

#include "sample/research_queue.h"

#include <httplib.h>

#include <variant>

namespace veltrix::sample
{

/// What clients must send in the header "apikey".
inline constexpr const char *publishableKey = "sb_publishable_veltrix_sample";

/// A status of 4xx or 5xx with the body {"code":…,"message":…}.
struct Refusal {
    int status;
    /// In the notation of JSON: a number, or a text in quotes.
    QByteArrayView code;
    QByteArrayView message;
};

/// The key is looked at first, then the body: JSON in UTF-8 of at most 4096 bytes, an object with a
/// keyword of 1 to 100 code points without control characters and a country that has an App Store.
std::variant<ResearchQuestion, Refusal> readResearchQuestion(const httplib::Request &request);

} // namespace veltrix::sample
