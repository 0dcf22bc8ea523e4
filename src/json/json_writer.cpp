// SPDX-License-Identifier: GPL-3.0-or-later
#include "json/json_writer.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace veltrix
{

namespace
{

constexpr std::array<char, 16> upperHexDigits{'0', '1', '2', '3', '4', '5', '6', '7',
                                              '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};

char *writeHex(char *out, std::uint32_t value, int digits)
{
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        *out++ = upperHexDigits[(value >> unsigned(shift)) & 0xFU];
    return out;
}

/// ASCII that stands in a JSON string as it is.
bool isPlain(char16_t c)
{
    return c >= 0x20 && c < 0x80 && c != u'"' && c != u'\\';
}

#ifdef __SSE2__
__m128i eightUnits(const char16_t *in)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i *>(in));
}

/// Two bits for each of eight units, set where it is plain.
unsigned plainMask(__m128i units)
{
    // Zero where 0x20 <= unit < 0x80: below wraps around to far above.
    const __m128i outside =
        _mm_subs_epu16(_mm_sub_epi16(units, _mm_set1_epi16(0x20)), _mm_set1_epi16(0x5F));
    const __m128i special = _mm_or_si128(_mm_cmpeq_epi16(units, _mm_set1_epi16('"')),
                                         _mm_cmpeq_epi16(units, _mm_set1_epi16('\\')));
    return unsigned(_mm_movemask_epi8(
        _mm_andnot_si128(special, _mm_cmpeq_epi16(outside, _mm_setzero_si128()))));
}

void writeLowBytes(char *out, __m128i units)
{
    _mm_storel_epi64(reinterpret_cast<__m128i *>(out), _mm_packus_epi16(units, units));
}

constexpr unsigned allPlain = 0xFFFF;
#endif

/// Copies from `in` up to the first character that is not plain, and moves `in` there. The output
/// has room for the longest form of every character.
char *writePlainRun(char *out, const char16_t *&in, const char16_t *end)
{
#ifdef __SSE2__
    // Eight at a time: nearly all texts are plain from end to end.
    const char16_t *const start = in;
    while (end - in >= 8) {
        const __m128i units = eightUnits(in);
        writeLowBytes(out, units);
        if (const unsigned mask = plainMask(units); mask != allPlain) {
            const int count = std::countr_one(mask) / 2;
            in += count;
            return out + count;
        }
        in += 8;
        out += 8;
    }
    if (in != start && in != end) {
        // The last eight, of which the first are written already.
        const __m128i units = eightUnits(end - 8);
        if (plainMask(units) == allPlain) {
            out += end - in;
            in = end;
            writeLowBytes(out - 8, units);
            return out;
        }
    }
#endif
    while (in != end && isPlain(*in))
        *out++ = char(*in++);
    return out;
}

char *writeEscape(char *out, char16_t c)
{
    *out++ = '\\';
    switch (c) {
    case u'"':
    case u'\\':
        *out++ = char(c);
        return out;
    case u'\n':
        *out++ = 'n';
        return out;
    case u'\r':
        *out++ = 'r';
        return out;
    case u'\t':
        *out++ = 't';
        return out;
    default:
        *out++ = 'u';
        return writeHex(out, c, 4);
    }
}

char *writeUtf8(char *out, char32_t c)
{
    if (c < 0x800) {
        *out++ = char(0xC0U | (c >> 6U));
    } else if (c < 0x10000) {
        *out++ = char(0xE0U | (c >> 12U));
        *out++ = char(0x80U | ((c >> 6U) & 0x3FU));
    } else {
        *out++ = char(0xF0U | (c >> 18U));
        *out++ = char(0x80U | ((c >> 12U) & 0x3FU));
        *out++ = char(0x80U | ((c >> 6U) & 0x3FU));
    }
    *out++ = char(0x80U | (c & 0x3FU));
    return out;
}

} // namespace

JsonWriter::JsonWriter(qsizetype expectedSize)
    : m_buffer(std::max<qsizetype>(expectedSize, 64), Qt::Uninitialized), m_end(m_buffer.data()),
      m_limit(m_end + m_buffer.size())
{
}

void JsonWriter::grow(qsizetype count)
{
    const qsizetype used = size();
    m_buffer.resize(std::max(m_buffer.size() * 2, used + count));
    m_end = m_buffer.data() + used;
    m_limit = m_buffer.data() + m_buffer.size();
}

QByteArray JsonWriter::take()
{
    m_buffer.truncate(size());
    QByteArray text = std::move(m_buffer);
    m_buffer = QByteArray(64, Qt::Uninitialized);
    m_end = m_buffer.data();
    m_limit = m_end + m_buffer.size();
    return text;
}

void JsonWriter::integer(std::int64_t value)
{
    reserve(20);
    m_end = std::to_chars(m_end, m_limit, value).ptr;
}

void JsonWriter::number(double value)
{
    if (!std::isfinite(value)) {
        throw EncodingError(
            QStringLiteral("The data couldn’t be written: a number in it is not finite."));
    }
    reserve(32);
    // Whole numbers are common (counts, dates) and much faster to print as integers.
    constexpr double exactIntegers = 9007199254740992.0;
    if (std::abs(value) < exactIntegers && value == std::trunc(value) &&
        !(value == 0 && std::signbit(value)))
        m_end = std::to_chars(m_end, m_limit, static_cast<std::int64_t>(value)).ptr;
    else
        m_end = std::to_chars(m_end, m_limit, value).ptr;
}

void JsonWriter::string(QStringView value)
{
    // The longest form of a UTF-16 unit is an escape of six bytes.
    reserve(value.size() * 6 + 2);
    char *out = m_end;
    *out++ = '"';
    const char16_t *in = value.utf16();
    const char16_t *const end = in + value.size();
    for (;;) {
        out = writePlainRun(out, in, end);
        if (in == end)
            break;
        const char16_t c = *in++;
        if (c < 0x80)
            out = writeEscape(out, c);
        else if (QChar::isHighSurrogate(c) && in != end && QChar::isLowSurrogate(*in))
            out = writeUtf8(out, QChar::surrogateToUcs4(c, *in++));
        else if (QChar::isSurrogate(c))
            // Half of a character has no UTF-8; the replacement character says so.
            out = writeUtf8(out, QChar::ReplacementCharacter);
        else
            out = writeUtf8(out, c);
    }
    *out++ = '"';
    m_end = out;
}

void JsonWriter::uuid(const QUuid &value)
{
    reserve(38);
    char *out = m_end;
    *out++ = '"';
    out = writeHex(out, value.data1, 8);
    *out++ = '-';
    out = writeHex(out, value.data2, 4);
    *out++ = '-';
    out = writeHex(out, value.data3, 4);
    *out++ = '-';
    out = writeHex(out, value.data4[0], 2);
    out = writeHex(out, value.data4[1], 2);
    *out++ = '-';
    for (int i = 2; i < 8; ++i)
        out = writeHex(out, value.data4[i], 2);
    *out++ = '"';
    m_end = out;
}

} // namespace veltrix
