// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a target over files: its seeds, and what once found something. Needs no fuzzing engine.
#include "fuzz_target.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cstdio>

namespace
{

QStringList filesIn(const QString &path)
{
    if (QFileInfo(path).isFile())
        return {path};
    QStringList files;
    for (QDirIterator entries(path, QDir::Files); entries.hasNext();)
        files.append(entries.next());
    files.sort();
    return files;
}

} // namespace

int main(int argc, char **argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const QString &path : filesIn(QString::fromLocal8Bit(argv[i]))) {
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "%s cannot be read\n", qUtf8Printable(path));
                return 1;
            }
            // What ends the program shows which file did.
            std::printf("%s\n", qUtf8Printable(path));
            std::fflush(stdout);
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                                   std::size_t(bytes.size()));
            ++count;
        }
    }
    std::printf("%d inputs\n", count);
    if (count == 0)
        std::fputs("There is no input.\n", stderr);
    return count == 0;
}
