// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/background_file.h"

#include "effects/atomic_file.h"

#include <optional>

namespace veltrix
{

struct BackgroundFile::Writer {
    QString path;
    std::optional<AtomicFileWriter> file;

    AtomicFileWriter &opened()
    {
        if (!file)
            file.emplace(path);
        return *file;
    }
};

BackgroundFile::BackgroundFile(QString path, std::shared_ptr<FileThread> files)
    : m_files(std::move(files)), m_writer(std::make_shared<Writer>())
{
    m_writer->path = std::move(path);
}

BackgroundFile::~BackgroundFile()
{
    // To give up a large file takes time as well.
    m_files->start([writer = std::move(m_writer)] {});
}

Task<void> BackgroundFile::write(Piece piece, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    throwIfStopped(stop);
    std::function<Done()> work = [writer = m_writer, piece = std::move(piece)]() mutable {
        // Freed before anybody hears of it.
        const Piece own = std::move(piece);
        writer->opened().write(own());
        return Done();
    };
    co_await m_files->run(std::move(work), stop);
}

Task<void> BackgroundFile::place(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    throwIfStopped(stop);
    const std::stop_token token = stop;
    std::function<Done()> work = [writer = m_writer, token] {
        writer->opened().flush();
        throwIfStopped(token);
        writer->opened().commit();
        return Done();
    };
    co_await m_files->run(std::move(work), stop);
}

} // namespace veltrix
