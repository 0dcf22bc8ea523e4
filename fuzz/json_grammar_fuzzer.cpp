// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a text whose lists are shortened: refused where a parser that looks at everything
// refuses it, and else a text in which that parser sees just the first elements.
#include "fuzz_target.h"
#include "json/json_error.h"
#include "json/json_grammar.h"

#include <string>

namespace
{

using namespace veltrix;

constexpr size_t most = 2;

/// Whether two values say the same, but for what their lists have behind the first elements.
bool isSame(simdjson::dom::element one, simdjson::dom::element other)
{
    if (one.type() != other.type())
        return false;
    if (one.is_array()) {
        const simdjson::dom::array whole = one.get_array();
        const simdjson::dom::array shortened = other.get_array();
        auto left = whole.begin();
        size_t count = 0;
        for (const simdjson::dom::element right : shortened) {
            if (!(left != whole.end()) || !isSame(*left, right))
                return false;
            ++left;
            ++count;
        }
        return count <= most && (count == most || !(left != whole.end()));
    }
    if (one.is_object()) {
        const simdjson::dom::object whole = one.get_object();
        const simdjson::dom::object shortened = other.get_object();
        auto left = whole.begin();
        for (const auto right : shortened) {
            if (!(left != whole.end()) || left.key() != right.key ||
                !isSame(left.value(), right.value))
                return false;
            ++left;
        }
        return !(left != whole.end());
    }
    return simdjson::minify(one) == simdjson::minify(other);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    simdjson::dom::parser parser;
    if (parser.allocate(size + 64, json_detail::deepestNesting) != simdjson::SUCCESS)
        return 0;
    simdjson::dom::element whole;
    const simdjson::error_code code = parser.parse(text).get(whole);
    try {
        const simdjson::padded_string shortened = json_detail::withShortLists(text, most);
        fuzz::require(shortened.size() <= size, "a text only becomes shorter");
        // A number may be well-formed and too large for the other parser.
        if (code == simdjson::NUMBER_ERROR)
            return 0;
        fuzz::require(code == simdjson::SUCCESS, "only JSON is accepted");
        simdjson::dom::parser second;
        simdjson::dom::element result;
        fuzz::require(second.parse(shortened).get(result) == simdjson::SUCCESS &&
                          isSame(whole, result),
                      "lists keep their first elements, and everything else stays");
    } catch (const DecodingError &) {
        fuzz::require(code != simdjson::SUCCESS, "JSON is accepted");
    }
    static_cast<void>(json_detail::isDense(text));
    return 0;
}
