// SPDX-License-Identifier: GPL-3.0-or-later
// The state file: read once at start, rewritten whole at every change.
#pragma once

#include "store/persisted_state.h"

#include <QString>

#include <optional>

namespace veltrix
{

/// Reads and writes the state. A failure never throws: it is printed as one line on standard
/// output, and kept as a text for the user.
class StateFile
{
public:
    explicit StateFile(QString path);

    /// The state in the file. Empty when there is no file, and when it cannot be read: then the
    /// line "ASOStore load failed: " and the reason is printed, and the file is kept aside before
    /// the first save replaces it. Clears what interrupted saves have left.
    PersistedState load();

    /// Replaces the file in one step. On failure the old file stays and the line "ASOStore save
    /// failed: " and the reason is printed. `now` dates the copy of an unreadable file.
    void save(const PersistedState &state, Date now);

    /// What went wrong, in words for the user: the last save's failure, and that the file could not
    /// be read. Empty when all is well.
    [[nodiscard]] std::optional<QString> problem() const;

    [[nodiscard]] const QString &path() const { return m_path; }

private:
    void keepUnreadableFile(Date now);

    QString m_path;
    /// The file could not be read and has not been kept aside yet.
    bool m_holdsUnreadable = false;
    std::optional<QString> m_loadProblem;
    std::optional<QString> m_saveProblem;
};

} // namespace veltrix
