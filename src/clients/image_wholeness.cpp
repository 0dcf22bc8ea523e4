// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/image_wholeness.h"

#include <QtEndian>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr QByteArrayView pngStart("\x89PNG\r\n\x1a\n", 8);
constexpr QByteArrayView jpegStart("\xff\xd8\xff", 3);
constexpr QByteArrayView jpegEnd("\xff\xd9", 2);

/// A PNG is a row of chunks: length, type, data, checksum. The last is of the type "IEND".
bool isWholePng(QByteArrayView bytes)
{
    constexpr qsizetype frame = 12;
    qsizetype position = pngStart.size();
    while (bytes.size() - position >= frame) {
        const auto length = qFromBigEndian<quint32>(bytes.data() + position);
        if (bytes.sliced(position + 4, 4) == "IEND")
            return true;
        if (qsizetype(length) > bytes.size() - position - frame)
            return false;
        position += frame + qsizetype(length);
    }
    return false;
}

/// Some writers add a few bytes after the end mark, and thumbnails inside have end marks of their
/// own, so it is looked for near the end.
bool isWholeJpeg(QByteArrayView bytes)
{
    constexpr qsizetype nearEnd = 1024;
    return bytes.last(std::min(bytes.size(), nearEnd)).contains(jpegEnd);
}

bool isWholeWebp(QByteArrayView bytes)
{
    constexpr qsizetype frame = 8;
    return qsizetype(qFromLittleEndian<quint32>(bytes.data() + 4)) <= bytes.size() - frame;
}

} // namespace

bool isWholeImage(QByteArrayView bytes)
{
    if (bytes.startsWith(pngStart))
        return isWholePng(bytes);
    if (bytes.startsWith(jpegStart))
        return isWholeJpeg(bytes);
    if (bytes.size() >= 12 && bytes.startsWith("RIFF") && bytes.sliced(8, 4) == "WEBP")
        return isWholeWebp(bytes);
    return true;
}

} // namespace veltrix
