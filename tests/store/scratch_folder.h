// SPDX-License-Identifier: GPL-3.0-or-later
// Folders for tests that save thousands of times.
#pragma once

#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

namespace veltrix
{

/// A temporary folder, in memory where the system has room for that, so that flushing costs
/// nothing.
inline std::unique_ptr<QTemporaryDir> scratchFolder()
{
    const QString memory = QStringLiteral("/dev/shm");
    if (QFileInfo(memory).isWritable())
        return std::make_unique<QTemporaryDir>(memory + QStringLiteral("/veltrix-XXXXXX"));
    return std::make_unique<QTemporaryDir>();
}

} // namespace veltrix
