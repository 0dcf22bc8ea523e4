// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the state file while the rest of the program starts.
#pragma once

#include "effects/file_identity.h"
#include "store/persisted_state.h"

#include <QString>

#include <future>
#include <optional>

namespace veltrix
{

/// Begins to read a state file on a thread of its own, before anybody holds its folder or knows
/// whether the file will be wanted. It is a guess and never an answer: what it has read counts only
/// while that very content still lies at the path, and whatever goes wrong is left to the reading
/// proper.
class EarlyStateRead
{
public:
    explicit EarlyStateRead(QString path);

    /// The state, once, if it was read whole from this content of the file; waits for the reading.
    std::optional<PersistedState> take(const FileIdentity &file);

private:
    struct Read {
        FileIdentity file;
        PersistedState state;
    };

    static std::optional<Read> read(const QString &path);

    /// Its end waits for the thread.
    std::future<std::optional<Read>> m_reading;
};

} // namespace veltrix
