// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/early_state_read.h"

#include "store/state_reader.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>
#include <vector>

namespace veltrix
{

namespace
{

/// Takes the memory that reading so large a file needs, some three quarters of it, from the system
/// in pieces, and gives them back to the allocator. On a thread of its own that one asks for every
/// page by itself otherwise, and holds up the main thread with each.
void takeMemoryAhead(qint64 fileSize)
{
    constexpr qint64 usualFile = 16 * 1024 * 1024;
    constexpr qint64 piece = 64 * 1024; // What is much larger does not stay with the allocator.
    std::vector<std::unique_ptr<char[]>> pieces(
        size_t(std::min(fileSize, usualFile) / 4 * 3 / piece));
    for (auto &taken : pieces)
        taken = std::make_unique_for_overwrite<char[]>(piece);
}

} // namespace

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
        takeMemoryAhead(file.size());
        Read result{file.identity(), readState(file)};
        file.requireUnchanged();
        return result;
    } catch (const std::exception &) {
        // A missing or damaged file is told by whoever reads it for good.
        return std::nullopt;
    }
}

} // namespace veltrix
