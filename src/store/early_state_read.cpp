// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/early_state_read.h"

#include "store/state_reader.h"

#include <exception>
#include <utility>

namespace veltrix
{

EarlyStateRead::EarlyStateRead(QString path)
    : m_reading(std::async(std::launch::async, read, std::move(path)))
{
}

std::optional<PersistedState> EarlyStateRead::take(const FileIdentity &file)
{
    if (!m_reading.valid())
        return std::nullopt;
    std::optional<Read> found = m_reading.get();
    if (!found || found->file != file)
        return std::nullopt;
    return std::move(found->state);
}

std::optional<EarlyStateRead::Read> EarlyStateRead::read(const QString &path)
{
    try {
        const FileReader file(path);
        Read result{file.identity(), readState(file)};
        file.requireUnchanged();
        return result;
    } catch (const std::exception &) {
        // A missing or damaged file is told by whoever reads it for good.
        return std::nullopt;
    }
}

} // namespace veltrix
