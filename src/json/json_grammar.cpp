// SPDX-License-Identifier: GPL-3.0-or-later
#include "json/json_grammar.h"

#include "json/json_error.h"

#include <array>
#include <bit>
#include <bitset>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

namespace veltrix::json_detail
{

namespace
{

[[noreturn]] void fail()
{
    throw DecodingError(QStringLiteral("it is not well-formed JSON"));
}

/// Eight bytes at a time, which is faster than the calls of the C library for the short texts that
/// lists are made of.
static_assert(std::endian::native == std::endian::little);
constexpr std::uint64_t eachByte = 0x0101010101010101U;
constexpr std::uint64_t highBits = 0x8080808080808080U;

/// The high bit of each byte that is zero; the lowest of them is right, those above may not be.
constexpr std::uint64_t zeroBytes(std::uint64_t bytes)
{
    return (bytes - eachByte) & ~bytes & highBits;
}

/// The same for bytes that end a run of plain letters: quotes, backslashes, control characters.
constexpr std::uint64_t specialBytes(std::uint64_t bytes)
{
    const std::uint64_t controls = (bytes - eachByte * 0x20) & ~bytes & highBits;
    return controls | zeroBytes(bytes ^ eachByte * '"') | zeroBytes(bytes ^ eachByte * '\\');
}

bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Walks through one text.
class Walk
{
public:
    Walk(const char *at, const char *end) : m_at(at), m_end(end) {}

    [[nodiscard]] const char *place() const { return m_at; }

    void skipSpace()
    {
        while (m_at < m_end && isSpace(*m_at))
            ++m_at;
    }
    [[nodiscard]] bool is(char c) const { return m_at < m_end && *m_at == c; }
    /// Passes over the character if it is the next one.
    bool take(char c)
    {
        const bool isNext = is(c);
        m_at += isNext;
        return isNext;
    }

    void text()
    {
        if (!take('"'))
            fail();
        while (m_at < m_end) {
            skipPlainLetters();
            if (take('"'))
                return;
            escape();
        }
        fail();
    }

    void scalar()
    {
        if (is('"'))
            text();
        else if (is('t'))
            word("true");
        else if (is('f'))
            word("false");
        else if (is('n'))
            word("null");
        else
            number();
    }

    void key()
    {
        skipSpace();
        text();
        skipSpace();
        if (!take(':'))
            fail();
    }

    void escape()
    {
        if (!take('\\'))
            fail();
        if (take('u')) {
            const unsigned unit = codeUnit();
            // Characters beyond 16 bits are two escapes; half of one is no text.
            const bool isWhole = (unit & 0xF800U) != 0xD800U;
            if (!isWhole && ((unit & 0xFC00U) != 0xD800U || !take('\\') || !take('u') ||
                             (codeUnit() & 0xFC00U) != 0xDC00U))
                fail();
        } else if (m_at >= m_end || !std::strchr("\"\\/bfnrt", *m_at) || *m_at == '\0') {
            fail();
        } else {
            ++m_at;
        }
    }

private:
    /// The four hexadecimal digits of an escape.
    unsigned codeUnit()
    {
        unsigned unit = 0;
        const char *const digitsEnd = m_at + 4;
        if (m_end - m_at < 4 || std::from_chars(m_at, digitsEnd, unit, 16).ptr != digitsEnd)
            fail();
        m_at = digitsEnd;
        return unit;
    }

    void skipPlainLetters()
    {
        for (; size_t(m_end - m_at) >= sizeof(std::uint64_t); m_at += sizeof(std::uint64_t)) {
            std::uint64_t bytes = 0;
            std::memcpy(&bytes, m_at, sizeof bytes);
            if (const std::uint64_t special = specialBytes(bytes)) {
                m_at += std::countr_zero(special) / 8;
                return;
            }
        }
        while (m_at < m_end && *m_at != '"' && *m_at != '\\' && std::uint8_t(*m_at) >= 0x20)
            ++m_at;
    }

    void word(std::string_view expected)
    {
        if (size_t(m_end - m_at) < expected.size() ||
            std::memcmp(m_at, expected.data(), expected.size()) != 0)
            fail();
        m_at += expected.size();
    }

    void digits()
    {
        if (m_at >= m_end || !isDigit(*m_at))
            fail();
        while (m_at < m_end && isDigit(*m_at))
            ++m_at;
    }

    void number()
    {
        take('-');
        if (!take('0'))
            digits();
        if (take('.'))
            digits();
        if (take('e') || take('E')) {
            if (!take('+'))
                take('-');
            digits();
        }
    }

    const char *m_at;
    const char *m_end;
};

/// The lists and objects that a walk is in.
class Levels
{
public:
    [[nodiscard]] size_t depth() const { return m_depth; }
    [[nodiscard]] bool isInList() const { return m_depth > 0 && !m_isObject[m_depth - 1]; }
    [[nodiscard]] bool isInObject() const { return m_depth > 0 && m_isObject[m_depth - 1]; }
    void enter(bool isObject)
    {
        if (m_depth == m_isObject.size())
            throw DecodingError(QStringLiteral("it is nested too deeply"));
        m_isObject[m_depth++] = isObject;
    }
    void leave() { --m_depth; }

private:
    std::bitset<deepestNesting> m_isObject;
    size_t m_depth = 0;
};

/// Finds what of a text is to be left out, and hands on what stays, in pieces. Lists are told apart
/// by how many levels they are in, themselves included.
template <class Keep>
class Shortening
{
public:
    Shortening(const char *begin, size_t most, Keep keep)
        : m_kept(begin), m_most(most), m_keep(std::move(keep))
    {
    }

    void begun(size_t depth) { m_counts[depth - 1] = 1; }
    /// Another element follows.
    void comma(size_t depth, const char *place)
    {
        if (m_leavingOut != 0 || m_counts[depth - 1]++ < m_most)
            return;
        end(place);
        m_leavingOut = depth;
    }
    void ended(size_t depth, const char *place)
    {
        if (m_leavingOut != depth)
            return;
        m_kept = place;
        m_leavingOut = 0;
    }
    /// Nothing more is kept for now.
    void end(const char *place) { m_keep(std::string_view(m_kept, size_t(place - m_kept))); }

private:
    /// From here on everything is kept.
    const char *m_kept;
    size_t m_most;
    Keep m_keep;
    /// The list that is full; 0 while none is.
    size_t m_leavingOut = 0;
    /// Elements of the lists that the walk is in.
    std::array<size_t, deepestNesting> m_counts{};
};

/// Enters the list or object that begins here; true when it has something in it.
template <class Keep>
bool enter(Walk &walk, Levels &levels, Shortening<Keep> &lists)
{
    const bool isObject = walk.take('{');
    if (!isObject)
        walk.take('[');
    levels.enter(isObject);
    if (!isObject)
        lists.begun(levels.depth());
    walk.skipSpace();
    if (walk.is(isObject ? '}' : ']'))
        return false;
    if (isObject)
        walk.key();
    return true;
}

/// Goes on behind a value: leaves what ends there; true when another value follows.
template <class Keep>
bool goOn(Walk &walk, Levels &levels, Shortening<Keep> &lists)
{
    while (levels.depth() > 0) {
        walk.skipSpace();
        const char *const place = walk.place();
        if (levels.isInObject()) {
            if (walk.take(',')) {
                walk.key();
                return true;
            }
            if (!walk.take('}'))
                fail();
        } else if (walk.take(',')) {
            lists.comma(levels.depth(), place);
            return true;
        } else {
            if (!walk.take(']'))
                fail();
            lists.ended(levels.depth(), place);
        }
        levels.leave();
    }
    return false;
}

/// Goes through one value.
template <class Keep>
void walkValue(Walk &walk, Shortening<Keep> &lists)
{
    Levels levels;
    do {
        walk.skipSpace();
        bool isEmpty = false;
        while (!isEmpty && (walk.is('{') || walk.is('['))) {
            isEmpty = !enter(walk, levels, lists);
            walk.skipSpace();
        }
        if (!isEmpty)
            walk.scalar();
    } while (goOn(walk, levels, lists));
}

/// Gives `keep` the pieces of a text that stay.
template <class Keep>
void shorten(std::string_view text, size_t most, Keep keep)
{
    const char *const end = text.data() + text.size();
    Walk walk(text.data(), end);
    Shortening lists(text.data(), most, std::move(keep));
    walkValue(walk, lists);
    walk.skipSpace();
    if (walk.place() != end)
        throw DecodingError(QStringLiteral("there is more text after its end"));
    lists.end(end);
}

/// 1 for each byte that is a mark of JSON.
constexpr std::array<std::uint8_t, 256> marks = [] {
    std::array<std::uint8_t, 256> values{};
    for (const char c : std::string_view("\",:[]{}"))
        values[std::uint8_t(c)] = 1;
    return values;
}();

} // namespace

bool isDense(std::string_view text)
{
    // One piece of each stretch, not the same one in all of them: to look at the whole text would
    // take a tenth of the time that reading it does.
    constexpr size_t piece = 64;
    constexpr size_t pieces = 64;
    size_t found = 0;
    size_t seen = 0;
    for (size_t begin = 0; begin + pieces * piece <= text.size(); begin += pieces * piece) {
        const size_t chosen = begin * 0x9e3779b97f4a7c15U >> 58U;
        for (const char c : text.substr(begin + chosen * piece, piece))
            found += marks[std::uint8_t(c)];
        seen += piece;
    }
    // Of the entries of the index, which have four bytes, every second one is a mark at least.
    return found > seen / 4;
}

simdjson::padded_string withShortLists(std::string_view text, size_t most)
{
    if (!simdjson::validate_utf8(text))
        throw DecodingError(QStringLiteral("it is not UTF-8"));
    // Gone through twice, so that never more is taken than the new text needs.
    size_t size = 0;
    shorten(text, most, [&size](std::string_view piece) { size += piece.size(); });
    simdjson::padded_string result(size);
    if (!result.data())
        throw std::bad_alloc();
    char *out = result.data();
    shorten(text, most, [&out](std::string_view piece) {
        std::memcpy(out, piece.data(), piece.size());
        out += piece.size();
    });
    return result;
}

} // namespace veltrix::json_detail
