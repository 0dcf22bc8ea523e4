// SPDX-License-Identifier: GPL-3.0-or-later
// A small but whole Debian package: an "ar" archive of two compressed "tar" archives.
#include "sample/debian_package.h"

#include "sample/http_reply.h"

#include <QByteArrayList>

#include <algorithm>
#include <numeric>

namespace veltrix::sample
{

namespace
{

constexpr qsizetype tarBlock = 512;

void put(QByteArray &header, qsizetype at, const QByteArray &text)
{
    header.replace(at, text.size(), text);
}

QByteArray octal(qint64 number, int digits)
{
    return QByteArray::number(number, 8).rightJustified(digits, '0');
}

/// A member of a "tar" archive in the ustar form; a name that ends in "/" is a folder.
QByteArray tarMember(const QByteArray &name, const QByteArray &content)
{
    const bool folder = name.endsWith('/');
    QByteArray header(tarBlock, '\0');
    put(header, 0, name);
    put(header, 100, folder ? "0000755" : "0000644");
    put(header, 108, "0000000");
    put(header, 116, "0000000");
    put(header, 124, octal(content.size(), 11));
    put(header, 136, octal(0, 11));
    put(header, 148, "        ");
    put(header, 156, folder ? "5" : "0");
    put(header, 257,
        QByteArray("ustar\0"
                   "00",
                   8));
    put(header, 265, "root");
    put(header, 297, "root");
    const int sum = std::accumulate(header.begin(), header.end(), 0, [](int total, char byte) {
        return total + static_cast<unsigned char>(byte);
    });
    put(header, 148, octal(sum, 6) + QByteArray("\0 ", 2));
    const qsizetype padding = (tarBlock - content.size() % tarBlock) % tarBlock;
    return header + content + QByteArray(padding, '\0');
}

QByteArray tarArchive(const QByteArrayList &members)
{
    return members.join() + QByteArray(2 * tarBlock, '\0');
}

QByteArray arMember(const QByteArray &name, const QByteArray &content)
{
    const QByteArray header = name.leftJustified(16) + QByteArray("0").leftJustified(12) +
                              QByteArray("0").leftJustified(6) + QByteArray("0").leftJustified(6) +
                              QByteArray("100644").leftJustified(8) +
                              QByteArray::number(content.size()).leftJustified(10) + "`\n";
    return header + content + (content.size() % 2 == 1 ? "\n" : "");
}

} // namespace

QByteArray debianPackage(const QString &version)
{
    const QByteArray control = "Package: veltrix-sample-update\n"
                               "Version: " +
                               version.toUtf8() +
                               "\n"
                               "Architecture: all\n"
                               "Maintainer: Veltrix <veltrix@example.invalid>\n"
                               "Section: misc\n"
                               "Priority: optional\n"
                               "Description: harmless package for trying Veltrix's updates on\n";
    const QByteArray text = "This package changes nothing. It shows that an update of Veltrix was "
                            "found, fetched and verified.\n";
    const QByteArray folder = "./usr/share/doc/veltrix-sample-update/";
    const QByteArray controlArchive =
        tarArchive({tarMember("./", {}), tarMember("./control", control)});
    const QByteArray dataArchive =
        tarArchive({tarMember("./", {}), tarMember("./usr/", {}), tarMember("./usr/share/", {}),
                    tarMember("./usr/share/doc/", {}), tarMember(folder, {}),
                    tarMember(folder + "README", text)});
    return "!<arch>\n" + arMember("debian-binary", "2.0\n") +
           arMember("control.tar.gz", gzipped(controlArchive)) +
           arMember("data.tar.gz", gzipped(dataArchive));
}

} // namespace veltrix::sample
