// SPDX-License-Identifier: GPL-3.0-or-later
// When a service says how long to wait.
#pragma once

#include "clients/http.h"

namespace veltrix
{

/// The "Retry-After" header as a number of seconds: an optional sign, digits, an optional fraction.
/// Nothing for any other text, dates included.
std::optional<Seconds> retryAfter(const HttpResponse &response);

} // namespace veltrix
