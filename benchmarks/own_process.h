// SPDX-License-Identifier: GPL-3.0-or-later
// Measurements in processes of their own, where no earlier work has warmed or filled the memory.
#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace veltrix
{

/// Ends the benchmark: a measurement of a wrong result is worthless.
inline void require(bool right, const char *what)
{
    if (right)
        return;
    std::fprintf(stderr, "Wrong result: %s\n", what);
    std::exit(1);
}

/// Processor time of the calling thread.
inline double threadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

/// Bytes that this process has written, to whatever.
inline double writtenBytes()
{
    QFile io(QStringLiteral("/proc/self/io"));
    require(io.open(QIODevice::ReadOnly), "the kernel counts");
    for (const QByteArray &line : io.readAll().split('\n')) {
        if (line.startsWith("wchar: "))
            return line.mid(7).toDouble();
    }
    return 0;
}

/// Runs a program and returns the `count` numbers that it prints.
inline std::vector<double> numbersFrom(const QString &program, const QStringList &arguments,
                                       size_t count)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments, QIODevice::ReadOnly);
    const bool ended = process.waitForFinished(300'000) &&
                       process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    require(ended, "a measuring process ends well");
    std::vector<double> numbers;
    for (const QByteArray &word : process.readAllStandardOutput().simplified().split(' '))
        numbers.push_back(word.toDouble());
    require(numbers.size() == count, "a measuring process prints its figures");
    return numbers;
}

/// The same for this program with other arguments.
inline std::vector<double> numbersFromSelf(const QStringList &arguments, size_t count)
{
    return numbersFrom(QCoreApplication::applicationFilePath(), arguments, count);
}

} // namespace veltrix
