// SPDX-License-Identifier: GPL-3.0-or-later
// Where an export goes.
#pragma once

#include "effects/atomic_file.h"
#include "headless/export_run.h"

#include <QTemporaryFile>

#include <cstdio>
#include <memory>

namespace veltrix
{

/// Gathers an export on the disk and lets nobody see it before it is whole: then it becomes a file,
/// or goes to standard output. So it can be begun again, and whoever reads slowly keeps nobody
/// waiting that holds the data.
class ExportOutput final : public ExportReceiver
{
public:
    struct Place {
        /// Path of the file; none for standard output.
        std::optional<QString> path;
        /// What stands before the text in a file.
        QByteArray mark;
        std::FILE *standardOutput = stdout;
        /// Where what is for standard output gathers.
        QString scratchFolder;
    };

    explicit ExportOutput(Place place);

    /// Forgets what was gathered.
    void begin();
    /// Throws FileError, as what follows.
    void add(QByteArrayView text);
    Task<void> take(QByteArray piece, std::stop_token stop) override;
    /// It is whole. Ends as soon as nobody reads any more.
    void finish();

private:
    /// Not before there is something to write: until then a signal may end the program at once.
    void open();
    [[noreturn]] void failToGather() const;

    Place m_place;
    std::unique_ptr<AtomicFileWriter> m_file;
    std::unique_ptr<QTemporaryFile> m_gathered;
};

} // namespace veltrix
