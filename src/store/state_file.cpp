// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/state_file.h"

#include "effects/atomic_file.h"
#include "model/json_writer.h"
#include "store/state_reader.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <unistd.h>

namespace veltrix
{

namespace
{

/// Bytes that are handed to the file at a time.
constexpr qsizetype writtenPortion = 256 * 1024;

/// Prints one line, whatever line breaks the reason holds.
void printLine(const char *prefix, QString reason)
{
    reason.replace(u'\n', u' ');
    std::printf("%s%s\n", prefix, reason.toUtf8().constData());
    std::fflush(stdout);
}

/// Gives back what only the reading of a large file needed.
void releaseUnusedMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

/// "state.json" becomes "state.unreadable-2026-11-21T12-00-00Z.json", or "…Z-2.json" when that name
/// is taken.
QString datedName(const QString &path, Date now, int attempt)
{
    const QFileInfo info(path);
    QString date = formatInternetDateTime(now).left(19);
    date.replace(u':', u'-');
    QString name =
        QStringLiteral("%1/%2.unreadable-%3Z").arg(info.path(), info.completeBaseName(), date);
    if (attempt > 1)
        name += QStringLiteral("-%1").arg(attempt);
    if (!info.suffix().isEmpty())
        name += u'.' + info.suffix();
    return name;
}

/// Gives the file a second, dated name and returns it. The two names share the content until the
/// next save puts a new file under the old name, so this needs neither room on the disk nor the
/// right to read; where a file system has no such links, the content is copied.
QString keepUnderDatedName(const QString &path, Date now)
{
    constexpr int mostNames = 1000;
    for (int attempt = 1; attempt <= mostNames; ++attempt) {
        const QString name = datedName(path, now, attempt);
        if (::link(QFile::encodeName(path).constData(), QFile::encodeName(name).constData()) == 0)
            return name;
        if (errno == EEXIST)
            continue;
        writeFileAtomically(name, readWholeFile(path));
        return name;
    }
    throw FileError(
        QStringLiteral("The file “%1” could not be kept under another name.").arg(path));
}

} // namespace

StateFile::StateFile(QString path) : m_path(std::move(path)) {}

PersistedState StateFile::load()
{
    removeInterruptedWrites(m_path);
    const QFileInfo info(m_path);
    if (!info.exists() && !info.isSymLink())
        return {};
    try {
        PersistedState state = readState(m_path);
        constexpr qint64 large = 16 * 1024 * 1024;
        if (info.size() > large)
            releaseUnusedMemory();
        return state;
    } catch (const std::exception &error) {
        const auto *known = dynamic_cast<const Error *>(&error);
        printLine("ASOStore load failed: ",
                  known ? known->description() : QString::fromLocal8Bit(error.what()));
        m_holdsUnreadable = true;
        m_loadProblem =
            QStringLiteral("The saved data in “%1” couldn’t be read, so Veltrix started "
                           "without it. The file will be kept under another name before "
                           "anything is saved.")
                .arg(m_path);
        return {};
    }
}

void StateFile::save(const PersistedState &state, Date now)
{
    try {
        AtomicFileWriter file(m_path);
        // The text goes to the disk while it is made, through one small buffer that stays in the
        // processor's cache.
        JsonWriter writer(2 * writtenPortion);
        writer.drainInto([&](QByteArrayView text) { file.write(text); }, writtenPortion);
        writeJson(writer, state);
        file.write(writer.take());
        keepUnreadableFile(now);
        file.commit();
        m_saveProblem.reset();
    } catch (const std::exception &error) {
        const auto *known = dynamic_cast<const Error *>(&error);
        const QString reason = known ? known->description() : QString::fromLocal8Bit(error.what());
        printLine("ASOStore save failed: ", reason);
        m_saveProblem = QStringLiteral("The last change couldn’t be saved. %1").arg(reason);
    }
}

std::optional<QString> StateFile::problem() const
{
    if (m_saveProblem && m_loadProblem)
        return QStringLiteral("%1\n%2").arg(*m_saveProblem, *m_loadProblem);
    return m_saveProblem ? m_saveProblem : m_loadProblem;
}

void StateFile::keepUnreadableFile(Date now)
{
    if (!m_holdsUnreadable)
        return;
    const QFileInfo info(m_path);
    // What is gone needs no copy; what is a folder cannot be overwritten.
    if ((info.exists() || info.isSymLink()) && !info.isDir()) {
        const QString kept = keepUnderDatedName(m_path, now);
        m_loadProblem =
            QStringLiteral("The saved data in “%1” couldn’t be read, so Veltrix started "
                           "without it. That file was kept as “%2”.")
                .arg(m_path, kept);
    }
    m_holdsUnreadable = false;
}

} // namespace veltrix
