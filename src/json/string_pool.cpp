// SPDX-License-Identifier: GPL-3.0-or-later
#include "json/string_pool.h"

#include <QStringDecoder>

namespace veltrix
{

namespace
{

__extension__ using Wide = unsigned __int128;

constexpr std::uint64_t firstOdd = 0xa0761d6478bd642fULL;
constexpr std::uint64_t secondOdd = 0xe7037ed1a0b428dbULL;

std::uint64_t mix(std::uint64_t a, std::uint64_t b)
{
    const auto product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

std::uint64_t wordAt(const char *data)
{
    std::uint64_t word = 0;
    std::memcpy(&word, data, sizeof word);
    return word;
}

std::uint64_t halfWordAt(const char *data)
{
    std::uint32_t word = 0;
    std::memcpy(&word, data, sizeof word);
    return word;
}

/// All of up to eight bytes in one word. The two halves overlap where there are fewer.
std::uint64_t shortWord(const char *data, size_t size)
{
    if (size >= 4)
        return halfWordAt(data) << 32U | halfWordAt(data + size - 4);
    if (size == 0)
        return 0;
    return std::uint64_t(std::uint8_t(data[0])) << 16U |
           std::uint64_t(std::uint8_t(data[size / 2])) << 8U | std::uint8_t(data[size - 1]);
}

} // namespace

std::uint64_t hashBytes(std::string_view bytes)
{
    const char *data = bytes.data();
    size_t left = bytes.size();
    // Two chains of multiplications, sixteen bytes each, so that they overlap.
    std::uint64_t hash = bytes.size() * 0x9e3779b97f4a7c15ULL;
    std::uint64_t other = hash;
    for (; left >= 32; data += 32, left -= 32) {
        hash = mix(wordAt(data) ^ firstOdd, wordAt(data + 8) ^ hash);
        other = mix(wordAt(data + 16) ^ secondOdd, wordAt(data + 24) ^ other);
    }
    hash ^= other;
    for (; left > 8; data += 8, left -= 8)
        hash = mix(hash ^ wordAt(data), firstOdd);
    hash = mix(hash ^ shortWord(data, left), secondOdd);
    // A part of the bits chooses the slot, so every bit has to reach all others.
    return mix(hash, firstOdd);
}

QString textFromUtf8(std::string_view utf8)
{
    const QByteArrayView bytes(utf8.data(), qsizetype(utf8.size()));
    if (!utf8.starts_with("\xEF\xBB\xBF"))
        return QString::fromUtf8(bytes);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}

QString StringPool::share(std::string_view utf8)
{
    const auto convert = [&] {
        return textFromUtf8(utf8);
    };
    return utf8.size() > longestShared ? convert() : m_pool.share(utf8, convert);
}

} // namespace veltrix
