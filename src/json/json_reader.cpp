// SPDX-License-Identifier: GPL-3.0-or-later
#include "json/json_reader.h"

#include "json/json_grammar.h"

#include <cmath>
#include <new>

namespace veltrix
{

DecodingError::DecodingError(QString problem, QString place)
    : Error(place.isEmpty()
                ? QStringLiteral("The data couldn’t be read: %1.").arg(problem)
                : QStringLiteral("The data couldn’t be read: at “%1” %2.").arg(place, problem)),
      m_problem(std::move(problem)), m_place(std::move(place))
{
}

DecodingError DecodingError::within(const QString &outerPlace) const
{
    if (m_place.isEmpty())
        return DecodingError(m_problem, outerPlace);
    const bool isIndex = m_place.startsWith(u'[');
    return DecodingError(m_problem,
                         outerPlace + (isIndex ? QString() : QStringLiteral(".")) + m_place);
}

namespace
{

/// A key as it stands in the text, from behind its opening quote.
class RawKey
{
public:
    explicit RawKey(const char *raw) : m_begin(raw), m_end(raw)
    {
        // The parser has seen the closing quote.
        while (*m_end != '"' && *m_end != '\\')
            ++m_end;
    }

    /// It is not its own text.
    [[nodiscard]] bool hasEscapes() const { return *m_end == '\\'; }
    [[nodiscard]] std::string_view text() const { return {m_begin, size_t(m_end - m_begin)}; }

private:
    const char *m_begin;
    const char *m_end;
};

} // namespace

namespace json_detail
{

void failMissing(std::string_view key)
{
    throw DecodingError(QStringLiteral("a required value is missing"),
                        QString::fromUtf8(key.data(), qsizetype(key.size())));
}

void failWithin(const DecodingError &error, std::string_view key)
{
    throw error.within(QString::fromUtf8(key.data(), qsizetype(key.size())));
}

void failAt(const DecodingError &error, qsizetype index)
{
    throw error.within(QStringLiteral("[%1]").arg(index));
}

void failSyntax(simdjson::error_code code)
{
    // Says nothing about the text.
    if (code == simdjson::MEMALLOC)
        throw std::bad_alloc();
    throw DecodingError(QStringLiteral("it is not well-formed JSON (%1)")
                            .arg(QString::fromUtf8(simdjson::error_message(code))));
}

void failExpected(const char *what)
{
    throw DecodingError(QStringLiteral("%1 was expected").arg(QString::fromUtf8(what)));
}

void requireEnd(simdjson::ondemand::document &document)
{
    if (document.current_location().error() != simdjson::OUT_OF_BOUNDS)
        throw DecodingError(QStringLiteral("there is more text after its end"));
}

size_t KeyFinder::search(simdjson::ondemand::field &member)
{
    const RawKey raw(member.key().raw());
    const std::string_view key = raw.hasEscapes() ? required(member.unescaped_key()) : raw.text();
    const auto found = std::ranges::find(m_keys, key, &ListedKey::text);
    if (found != m_keys.end())
        m_next = size_t(found - m_keys.begin()) + 1;
    return size_t(found - m_keys.begin());
}

simdjson::ondemand::object object(JsonReader::Value value)
{
    simdjson::ondemand::object result;
    const auto error = value.get_object().get(result);
    if (error == simdjson::INCORRECT_TYPE)
        failExpected("an object");
    if (error)
        failSyntax(error);
    return result;
}

simdjson::ondemand::array array(JsonReader::Value value)
{
    simdjson::ondemand::array result;
    const auto error = value.get_array().get(result);
    if (error == simdjson::INCORRECT_TYPE)
        failExpected("a list");
    if (error)
        failSyntax(error);
    return result;
}

} // namespace json_detail

using json_detail::failExpected;

namespace
{

/// The value of each hexadecimal digit, -1 for every other byte.
constexpr std::array<std::int16_t, 256> hexValues = [] {
    std::array<std::int16_t, 256> values{};
    values.fill(-1);
    for (int i = 0; i < 10; ++i)
        values[size_t('0' + i)] = std::int16_t(i);
    for (int i = 0; i < 6; ++i) {
        values[size_t('a' + i)] = std::int16_t(10 + i);
        values[size_t('A' + i)] = std::int16_t(10 + i);
    }
    return values;
}();

/// The text of a string value. One without escapes, as nearly all are, is read where it stands.
std::string_view textOf(JsonReader::Value value)
{
    std::string_view token = value.raw_json_token();
    if (token.empty() || token.front() != '"')
        failExpected("a text");
    std::string_view out;
    if (std::memchr(token.data(), '\\', token.size())) {
        if (value.get_string().get(out))
            failExpected("a text");
        return out;
    }
    // The token reaches to the next one, over any white space between.
    token.remove_suffix(token.size() - 1 - token.rfind('"'));
    out = token.substr(1, token.size() - 2);
    simdjson::ondemand::raw_json_string consumed;
    if (value.get_raw_json_string().get(consumed))
        failExpected("a text");
    return out;
}

} // namespace

bool JsonReader::readBoolean(Value value) const
{
    bool out = false;
    if (value.get_bool().get(out))
        failExpected("true or false");
    return out;
}

std::int64_t JsonReader::readInteger(Value value) const
{
    std::int64_t out = 0;
    if (!value.get_int64().get(out))
        return out;
    // A whole number may be written with a fraction or an exponent; plain digits that did not fit
    // would only be rounded.
    const std::string_view token = value.raw_json_token();
    double number = 0;
    if (token.find_first_of(".eE") == std::string_view::npos || value.get_double().get(number))
        failExpected("a whole number of 64 bits");
    constexpr double firstAboveRange = 9223372036854775808.0; // 2^63
    if (number != std::trunc(number) || number < -firstAboveRange || number >= firstAboveRange)
        failExpected("a whole number of 64 bits");
    return static_cast<std::int64_t>(number);
}

double JsonReader::readNumber(Value value) const
{
    double out = 0;
    if (value.get_double().get(out))
        failExpected("a number");
    return out;
}

QString JsonReader::readString(Value value)
{
    return m_strings.share(textOf(value));
}

QString JsonReader::readRepeated(Value value, std::uint32_t place)
{
    const std::string_view text = textOf(value);
    QString &last = m_lastTexts[place % m_lastTexts.size()];
    if (!text.empty() && size_t(last.size()) == text.size() &&
        last == QLatin1String(text.data(), qsizetype(text.size())))
        return last;
    QString read = m_strings.share(text);
    // Only of ASCII has the text as many units as bytes, and only then do they compare.
    if (size_t(read.size()) == text.size() && text.size() <= StringPool::longestShared)
        last = read;
    return read;
}

QStringList JsonReader::readStringList(Value value)
{
    auto array = json_detail::array(value);
    const std::string_view json = json_detail::required(array.raw_json());
    return m_stringLists.share(json, [&] {
        json_detail::required(array.reset());
        // Gathered first, so that the list takes one block of just the right size.
        QVarLengthArray<QString, 16> texts;
        for (auto result : array) {
            auto element = json_detail::required(result);
            if (size_t(texts.size()) < m_longestList)
                texts.append(readString(element));
        }
        return QStringList(std::make_move_iterator(texts.begin()),
                           std::make_move_iterator(texts.end()));
    });
}

QList<Url> JsonReader::readUrlList(Value value)
{
    auto array = json_detail::array(value);
    const std::string_view json = json_detail::required(array.raw_json());
    return m_urlLists.share(json, [&] {
        json_detail::required(array.reset());
        QList<Url> list;
        for (auto result : array) {
            auto element = json_detail::required(result);
            if (size_t(list.size()) < m_longestList)
                readJson(*this, element, list.emplace_back());
        }
        return list;
    });
}

QUuid JsonReader::readUuid(Value value) const
{
    const std::string_view text = textOf(value);
    constexpr size_t length = 36;
    if (text.size() != length || text[8] != '-' || text[13] != '-' || text[18] != '-' ||
        text[23] != '-')
        failExpected("a UUID");
    constexpr std::array<std::uint8_t, 16> places{0,  2,  4,  6,  9,  11, 14, 16,
                                                  19, 21, 24, 26, 28, 30, 32, 34};
    std::array<std::uint8_t, 16> bytes{};
    int wrong = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const int high = hexValues[std::uint8_t(text[places[i]])];
        const int low = hexValues[std::uint8_t(text[places[i] + 1U])];
        wrong |= high | low;
        bytes[i] = std::uint8_t(unsigned(high) << 4U | unsigned(low));
    }
    if (wrong < 0)
        failExpected("a UUID");
    const auto part = [&](size_t first, size_t count) {
        unsigned result = 0;
        for (size_t i = first; i < first + count; ++i)
            result = result << 8U | bytes[i];
        return result;
    };
    return QUuid(part(0, 4), ushort(part(4, 2)), ushort(part(6, 2)), bytes[8], bytes[9], bytes[10],
                 bytes[11], bytes[12], bytes[13], bytes[14], bytes[15]);
}

QString JsonReader::readName(simdjson::ondemand::field &member, size_t place)
{
    const char *const raw = member.key().raw();
    if (place < m_usualNames.size() && m_usualNames[place].pattern.matches(raw))
        return m_usualNames[place].name;
    const RawKey key(raw);
    if (key.hasEscapes())
        return m_strings.share(json_detail::required(member.unescaped_key()));
    QString name = m_strings.share(key.text());
    constexpr size_t mostUsualNames = 16;
    if (place < mostUsualNames && key.text().size() <= json_detail::KeyPattern::longestKey) {
        const UsualName usual{json_detail::KeyPattern(key.text()), name};
        if (place < m_usualNames.size())
            m_usualNames[place] = usual;
        else if (place == m_usualNames.size())
            m_usualNames.push_back(usual);
    }
    return name;
}

bool JsonReader::readNull(Value value)
{
    bool null = false;
    return !value.is_null().get(null) && null;
}

void readJson(JsonReader &reader, JsonReader::Value value, Url &out)
{
    const auto url = Url::fromText(reader.readString(value));
    if (!url)
        failExpected("a URL");
    out = *url;
}

void readJson(JsonReader &reader, JsonReader::Value value, FactorMap &out)
{
    // Gathered first, so that the map takes one block of just the right size.
    QVarLengthArray<FactorMap::Entry, 16> entries;
    for (auto result : json_detail::object(value)) {
        auto entry = json_detail::required(result);
        const QString name = reader.readName(entry, size_t(entries.size()));
        try {
            entries.append({name, reader.readNumber(entry.value())});
        } catch (const DecodingError &error) {
            json_detail::failWithin(error, name.toStdString());
        }
    }
    out = FactorMap();
    out.reserve(entries.size());
    for (const FactorMap::Entry &entry : std::as_const(entries))
        out.insert(entry.name, entry.value);
}

namespace
{

simdjson::padded_string limitedText(std::string_view text, size_t longestList)
{
    // Below, what a text can cost is little, whatever it is.
    constexpr size_t least = 64 * 1024;
    if (text.size() >= least && json_detail::isDense(text))
        return json_detail::withShortLists(text, longestList);
    return simdjson::padded_string(text.data(), text.size());
}

} // namespace

JsonText::JsonText(const QByteArray &text) : m_text(text.constData(), size_t(text.size())) {}

JsonText::JsonText(const QByteArray &text, ListLimit listLimit)
    : m_text(limitedText({text.constData(), size_t(text.size())}, listLimit.elements))
{
}

} // namespace veltrix
