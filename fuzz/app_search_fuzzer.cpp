// SPDX-License-Identifier: GPL-3.0-or-later
// Any text in the app search: one line that means the same when it is entered again.
#include "fuzz_target.h"
#include "ui/app_search/app_search_input.h"

#include "ui_kit/text/table_file.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    const QString text = QString::fromUtf8(fuzz::bytesOf(data, size));
    const AppSearchInput input = parseAppSearch(text);
    fuzz::require(input.name == input.name.trimmed(), "a name has no space around it");
    fuzz::require(std::none_of(input.name.begin(), input.name.end(), isLineEnd),
                  "a name is one line");
    fuzz::require(input.trackId.has_value() == (input.origin != AppSearchInput::Origin::Name),
                  "what is no name is an ID");
    fuzz::require(parseAppSearch(input.name) == input, "the name means what the text meant");
    return 0;
}
