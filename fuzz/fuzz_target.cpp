// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz_target.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

namespace veltrix::fuzz
{

void muteWarnings()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

QString scratchPath(const QString &name)
{
    static const QTemporaryDir folder;
    require(folder.isValid(), "there is room for files");
    return folder.filePath(name);
}

QString scratchFile(const QString &name, const QByteArray &content)
{
    const QString path = scratchPath(name);
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            "there is room for files");
    return path;
}

QByteArray patched(const QByteArray &base, const QByteArray &input)
{
    constexpr qsizetype markLength = 16;
    if (input.startsWith(base.first(std::min(base.size(), markLength))))
        return input;
    QByteArray result = base;
    for (qsizetype i = 0; i + 4 <= input.size(); i += 4) {
        const auto byte = [&input, i](qsizetype offset) {
            return qsizetype(std::uint8_t(input[i + offset]));
        };
        result[(byte(0) << 16 | byte(1) << 8 | byte(2)) % base.size()] = input[i + 3];
    }
    return result;
}

} // namespace veltrix::fuzz
