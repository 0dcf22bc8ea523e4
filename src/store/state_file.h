// SPDX-License-Identifier: GPL-3.0-or-later
// The state file: read once at start, rewritten whole at every change.
#pragma once

#include "effects/kept_copy.h"
#include "store/persisted_state.h"

#include <QString>

#include <optional>

namespace veltrix
{

class DataFolderLock;
class EarlyStateRead;

/// What the user has to know about the state file.
struct PersistenceProblem {
    /// What can be done about it.
    enum class Remedy {
        /// It has happened; nothing is left to do.
        Dismiss,
        /// Something could not be saved, or nothing can be.
        TryAgain,
        /// The file could not be read. Nothing can be changed until it was, or until the user
        /// begins
        /// without it.
        TryAgainOrBeginAnew,
    };

    /// Sentences, a line each.
    QString text;
    Remedy remedy = Remedy::Dismiss;

    bool operator==(const PersistenceProblem &) const = default;
};

/// Reads and writes the state. A failure never throws: it is printed as one line on standard
/// output, and kept as a problem for the user.
///
/// No content is overwritten that was not read. What lies at the path before a save must be what
/// was read or written last; anything else is first kept under a dated name. A file of which it
/// cannot even be told whether it is there is not replaced at all.
class StateFile
{
public:
    /// `lock` holds the file's folder; it is looked at before each save, and may be null.
    explicit StateFile(QString path, DataFolderLock *lock = nullptr);

    /// The state in the file. Empty when there is no file. Empty, too, when it cannot be read: then
    /// the line "ASOStore load failed: " and the reason is printed. If its content is damaged, it
    /// will be kept aside before the first save replaces it; if it cannot be reached, isRead() is
    /// false from now on. Clears what interrupted saves have left, and finds out whether the folder
    /// can be written. What `early` has read of the same content is not read again; it may be null.
    PersistedState load(EarlyStateRead *early = nullptr);

    /// Whether it is known what the file holds. Until then nothing is saved.
    [[nodiscard]] bool isRead() const { return !m_notRead; }

    /// Gives up a file that could not be read: keeps it aside, whatever it is, and writes an empty
    /// state. False when that fails; then all stays as it was.
    bool beginAnew(Date now);

    /// Replaces the file in one step. On failure the old file stays and the line "ASOStore save
    /// failed: " and the reason is printed. `now` dates what is kept aside.
    void save(const PersistedState &state, Date now);

    /// Replaces the file by a shorter form of what was saved last. Throws FileError when that
    /// fails; the old file stays, and nothing is unsaved.
    void replace(const PersistedState &shorter, Date now);
    /// Throws FileError when another has the folder, or when what lies at the path is not what was
    /// read or written last: whatever belongs to the file is another's then.
    void requireInPlace() const;
    /// Bytes of what was read or written last; 0 when there is no such content.
    [[nodiscard]] qint64 size() const;

    /// The last save has failed.
    [[nodiscard]] bool hasUnsavedChange() const { return m_saveProblem.has_value(); }
    /// Finds out again whether the folder can be written, when it could not.
    void tryFolderAgain();

    /// What went wrong. None when all is well.
    [[nodiscard]] std::optional<PersistenceProblem> problem() const;
    /// Forgets what needs nothing more to be done.
    void dismissNotices();

    [[nodiscard]] const QString &path() const { return m_path; }

private:
    /// `wasMissed`: it could not be told before whether there is a file.
    PersistedState read(bool wasMissed, EarlyStateRead *early);
    void requireOneWriter() const;
    void probeFolder();
    void write(const PersistedState &state, Date now);
    void keepForeignContent(Date now);
    void noticeOtherFolder();

    QString m_path;
    DataFolderLock *m_lock;
    OverwriteGuard m_guard;
    /// The folder that was read or written last.
    std::optional<FolderIdentity> m_folder;

    /// Why the file was not read, and why beginning anew did not work.
    std::optional<QString> m_notRead;
    std::optional<QString> m_anewProblem;
    /// What is there is unreadable: damaged, or given up.
    bool m_isUnreadable = false;
    /// Why the last change is not saved.
    std::optional<QString> m_saveProblem;
    /// Why no change could be saved.
    std::optional<QString> m_folderProblem;
    /// What happened to an unreadable file, and to one that something else had written.
    std::optional<QString> m_unreadableNotice;
    std::optional<QString> m_foreignNotice;
    bool m_lockWarningDismissed = false;
};

/// What the user is told of a failure.
QString descriptionOf(const std::exception &error);

} // namespace veltrix
