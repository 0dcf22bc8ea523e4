// SPDX-License-Identifier: GPL-3.0-or-later
// The property of everything that is read from JSON and written as JSON.
#pragma once

#include "fuzz_target.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

#include <optional>

namespace veltrix::fuzz
{

/// The value in the bytes; nothing when they are refused. What is accepted can be written, and what
/// is written reads as the same.
template <class T>
std::optional<T> readAndWrite(const QByteArray &bytes, ListLimit listLimit = {})
{
    T value;
    try {
        value = fromJson<T>(bytes, listLimit);
    } catch (const DecodingError &error) {
        require(!error.description().isEmpty(), "a refusal has a description");
        return std::nullopt;
    }
    const QByteArray written = toJson(value);
    require(toJson(fromJson<T>(written)) == written, "what was written reads as it was");
    return value;
}

} // namespace veltrix::fuzz
