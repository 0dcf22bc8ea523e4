// SPDX-License-Identifier: GPL-3.0-or-later
#include "json/string_pool.h"

#include <QStringDecoder>

namespace veltrix
{

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
