// SPDX-License-Identifier: GPL-3.0-or-later
// Texts that would cost the parser more memory than they are worth.
#pragma once

#include <simdjson.h>
#include <string_view>

namespace veltrix::json_detail
{

/// Nesting that is followed; answers of services have five levels.
inline constexpr size_t deepestNesting = 512;

/// Whether a text is so full of marks of JSON that the parser's index of it would take more than
/// twice its size, by a sample of it. No long text with values worth reading is.
[[nodiscard]] bool isDense(std::string_view text);

/// A text that says the same but in which no list has more than `most` elements, one at least.
/// Takes no memory but that of the new text. Throws DecodingError for what is not JSON, also among
/// what it leaves out.
[[nodiscard]] simdjson::padded_string withShortLists(std::string_view text, size_t most);

} // namespace veltrix::json_detail
