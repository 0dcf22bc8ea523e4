// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/state_file.h"

#include "effects/data_folder_lock.h"
#include "json/json_error.h"
#include "json/json_writer.h"
#include "store/early_state_read.h"
#include "store/state_reader.h"

#include <QDir>
#include <QFileInfo>

#include <cstdio>
#ifdef __GLIBC__
#include <malloc.h>
#endif

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
    // Nobody may be reading; the next line is tried all the same.
    std::clearerr(stdout);
}

/// Gives back what only the reading of a large file needed.
void releaseUnusedMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace

QString descriptionOf(const std::exception &error)
{
    const auto *known = dynamic_cast<const Error *>(&error);
    return known ? known->description() : QString::fromLocal8Bit(error.what());
}

StateFile::StateFile(QString path, DataFolderLock *lock)
    : m_path(std::move(path)), m_lock(lock), m_guard(m_path)
{
}

PersistedState StateFile::load(EarlyStateRead *early)
{
    m_guard.forget();
    const bool wasMissed = m_notRead.has_value();
    m_notRead.reset();
    m_anewProblem.reset();
    m_isUnreadable = false;
    m_unreadableNotice.reset();
    PersistedState state;
    try {
        state = read(wasMissed, early);
    } catch (const DecodingError &error) {
        printLine("ASOStore load failed: ", error.description());
        m_isUnreadable = true;
        m_unreadableNotice =
            QStringLiteral("The saved data in “%1” couldn’t be read, so Veltrix started "
                           "without it. The file will be kept under another name before "
                           "anything is saved.")
                .arg(m_path);
        state = {};
    } catch (const std::exception &error) {
        m_notRead = descriptionOf(error);
        printLine("ASOStore load failed: ", *m_notRead);
        return {};
    }
    m_folder = identityOfFolder(QFileInfo(m_path).path());
    probeFolder();
    return state;
}

PersistedState StateFile::read(bool wasMissed, EarlyStateRead *early)
{
    requireOneWriter();
    // Without the lock they may belong to another process that is writing now.
    if (!m_lock || m_lock->isHeld())
        removeInterruptedWrites(m_path);
    const FileLook look = lookAtFile(m_path);
    if (std::holds_alternative<NoFile>(look)) {
        // Where a disk is to come there may be an empty folder meanwhile, so now the user decides.
        if (wasMissed)
            throw FileError::unreadable(m_path, QStringLiteral("There is no such file"));
        return {};
    }
    if (const auto *unknown = std::get_if<UnknownFile>(&look))
        throw FileError::unreadable(m_path, unknown->reason);
    const FileReader file(m_path);
    std::optional<PersistedState> known = early ? early->take(file.identity()) : std::nullopt;
    PersistedState state;
    try {
        state = known ? std::move(*known) : readState(file);
    } catch (const DecodingError &) {
        // Half of one version and half of another is not damaged.
        file.requireUnchanged();
        throw;
    }
    file.requireUnchanged();
    m_guard.know(file.identity());
    constexpr qint64 large = 16 * 1024 * 1024;
    if (file.size() > large)
        releaseUnusedMemory();
    return state;
}

void StateFile::requireOneWriter() const
{
    if (m_lock && m_lock->acquire() == DataFolderLock::Outcome::HeldByAnother) {
        throw FileError(QStringLiteral("Another Veltrix has opened the folder “%1”.")
                            .arg(QFileInfo(m_path).path()));
    }
}

void StateFile::probeFolder()
{
    m_folderProblem.reset();
    try {
        // What a save begins with, and gone again at once.
        const AtomicFileWriter probe(m_path);
    } catch (const FileError &error) {
        m_folderProblem = error.description();
    }
}

void StateFile::tryFolderAgain()
{
    if (isRead() && m_folderProblem)
        probeFolder();
}

bool StateFile::beginAnew(Date now)
{
    if (isRead())
        return true;
    QDir().mkpath(QFileInfo(m_path).path());
    const std::optional<QString> reason = std::exchange(m_notRead, std::nullopt);
    m_guard.forget();
    m_isUnreadable = true;
    save({}, now);
    // The empty state may lie there and only not be certain to last.
    if (!m_isUnreadable)
        return true;
    m_isUnreadable = false;
    m_anewProblem = std::exchange(m_saveProblem, std::nullopt);
    m_notRead = reason;
    return false;
}

void StateFile::save(const PersistedState &state, Date now)
{
    try {
        if (m_notRead)
            throw FileError(*m_notRead);
        requireOneWriter();
        write(state, now);
        m_saveProblem.reset();
        m_folderProblem.reset();
    } catch (const std::exception &error) {
        m_saveProblem = descriptionOf(error);
        printLine("ASOStore save failed: ", *m_saveProblem);
    }
}

void StateFile::replace(const PersistedState &shorter, Date now)
{
    requireInPlace();
    write(shorter, now);
}

void StateFile::requireInPlace() const
{
    requireOneWriter();
    if (m_guard.look() != OverwriteGuard::Found::Known) {
        throw FileError(
            QStringLiteral("The file “%1” was changed or removed by something else.").arg(m_path));
    }
}

qint64 StateFile::size() const
{
    return m_guard.known() ? m_guard.known()->size : 0;
}

void StateFile::write(const PersistedState &state, Date now)
{
    AtomicFileWriter file(m_path);
    // The text goes to the disk while it is made, through one small buffer that stays in the
    // processor's cache.
    JsonWriter writer(2 * writtenPortion);
    writer.drainInto([&](QByteArrayView text) { file.write(text); }, writtenPortion);
    writeJson(writer, state);
    file.write(writer.take());
    file.flush();
    keepForeignContent(now);
    try {
        m_guard.replace(file);
    } catch (const FileError &) {
        m_isUnreadable = m_isUnreadable && !file.placed();
        throw;
    }
    m_isUnreadable = false;
    noticeOtherFolder();
}

void StateFile::keepForeignContent(Date now)
{
    const OverwriteGuard::Found found = m_guard.look();
    if (found == OverwriteGuard::Found::Foreign && m_isUnreadable) {
        m_unreadableNotice =
            QStringLiteral("The saved data in “%1” couldn’t be read, so Veltrix started "
                           "without it. That file was kept as “%2”.")
                .arg(m_path, m_guard.keep(u"unreadable", now));
    } else if (found == OverwriteGuard::Found::Foreign) {
        m_foreignNotice = QStringLiteral("The file “%1” was changed by something else while "
                                         "Veltrix was running. What it held was kept as “%2”.")
                              .arg(m_path, m_guard.keep(u"replaced", now));
    } else if (m_isUnreadable) {
        m_unreadableNotice = QStringLiteral("The saved data in “%1” couldn’t be read, so Veltrix "
                                            "started without it. That file is there no longer.")
                                 .arg(m_path);
    } else if (found == OverwriteGuard::Found::Gone) {
        m_foreignNotice = QStringLiteral("The file “%1” was removed by something else while "
                                         "Veltrix was running. It was written again.")
                              .arg(m_path);
    }
}

void StateFile::noticeOtherFolder()
{
    const auto folder = identityOfFolder(QFileInfo(m_path).path());
    if (!folder || folder == m_folder)
        return;
    if (m_folder) {
        const QString notice =
            QStringLiteral("The folder “%1” is another one than before: it was moved, or its disk "
                           "came or went. Veltrix saves to the one that is there now.")
                .arg(QFileInfo(m_path).path());
        m_foreignNotice = m_foreignNotice ? *m_foreignNotice + u'\n' + notice : notice;
    }
    m_folder = folder;
}

std::optional<PersistenceProblem> StateFile::problem() const
{
    using Remedy = PersistenceProblem::Remedy;
    QStringList lines;
    Remedy remedy = Remedy::Dismiss;
    if (m_notRead) {
        lines.append(QStringLiteral("The saved data couldn’t be loaded, so nothing can be shown or "
                                    "changed yet. %1")
                         .arg(*m_notRead));
        if (m_anewProblem)
            lines.append(QStringLiteral("Beginning anew didn’t work. %1").arg(*m_anewProblem));
        remedy = Remedy::TryAgainOrBeginAnew;
    } else if (m_saveProblem) {
        lines.append(QStringLiteral("The last change couldn’t be saved. %1").arg(*m_saveProblem));
        remedy = Remedy::TryAgain;
    } else if (m_folderProblem) {
        lines.append(QStringLiteral("Changes can’t be saved. %1").arg(*m_folderProblem));
        remedy = Remedy::TryAgain;
    }
    const auto warning = m_lock ? m_lock->warning() : std::nullopt;
    for (const auto &notice : {m_unreadableNotice, m_foreignNotice}) {
        if (notice)
            lines.append(*notice);
    }
    if (warning && !m_lockWarningDismissed && remedy == Remedy::Dismiss)
        lines.append(*warning);
    if (lines.isEmpty())
        return std::nullopt;
    return PersistenceProblem{lines.join(u'\n'), remedy};
}

void StateFile::dismissNotices()
{
    m_unreadableNotice.reset();
    m_foreignNotice.reset();
    m_lockWarningDismissed = true;
}

} // namespace veltrix
