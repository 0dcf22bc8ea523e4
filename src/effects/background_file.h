// SPDX-License-Identifier: GPL-3.0-or-later
// Files of the user's that are written on the thread for files.
#pragma once

#include "effects/file_output.h"
#include "effects/file_thread.h"
#include "effects/task_scope.h"

#include <QString>

#include <memory>

namespace veltrix
{

/// An AtomicFileWriter that works on the thread for files: the main thread neither writes nor
/// flushes, however slow the disk is.
class BackgroundFile final : public FileOutput
{
public:
    BackgroundFile(QString path, std::shared_ptr<FileThread> files);
    /// Waits for nothing: what is being written is given up there.
    ~BackgroundFile() override;

    Task<void> write(Piece piece, std::stop_token stop) override;
    /// One that is stopped while the disk flushes leaves no new version.
    Task<void> place(std::stop_token stop) override;

private:
    /// The file, which the thread for files has while it works on it.
    struct Writer;

    std::shared_ptr<FileThread> m_files;
    std::shared_ptr<Writer> m_writer;
    TaskScope m_tasks;
};

} // namespace veltrix
