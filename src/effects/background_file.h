// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are written on a thread of their own.
#pragma once

#include "effects/file_output.h"
#include "effects/task_scope.h"

#include <QString>

#include <memory>

namespace veltrix
{

/// An AtomicFileWriter that works on another thread: the main thread neither writes nor flushes,
/// however slow the disk is. The application must be there for as long as a task is awaited.
class BackgroundFile final : public FileOutput
{
public:
    explicit BackgroundFile(QString path);
    /// Waits for nothing: what is being written is given up there.
    ~BackgroundFile() override;

    Task<void> write(Piece piece, std::stop_token stop) override;
    /// One that is stopped while the disk flushes leaves no new version.
    Task<void> place(std::stop_token stop) override;

private:
    /// The file, which one thread at a time has.
    struct Writer;
    template <class Work>
    Task<void> run(Work work, std::stop_token stop);

    std::shared_ptr<Writer> m_writer;
    TaskScope m_tasks;
};

} // namespace veltrix
