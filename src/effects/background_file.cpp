// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/background_file.h"

#include "effects/atomic_file.h"
#include "effects/one_shot.h"

#include <QCoreApplication>
#include <QThreadPool>

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

BackgroundFile::BackgroundFile(QString path) : m_writer(std::make_shared<Writer>())
{
    m_writer->path = std::move(path);
}

BackgroundFile::~BackgroundFile()
{
    // To give up a large file takes time as well.
    QThreadPool::globalInstance()->start([writer = std::move(m_writer)] {});
}

template <class Work>
Task<void> BackgroundFile::run(Work work, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const std::stop_token token = stop;
    throwIfStopped(token);
    const OneShot<Done> done;
    QThreadPool::globalInstance()->start(
        [done, token, writer = m_writer, work = std::move(work)]() mutable {
            std::exception_ptr failure;
            try {
                throwIfStopped(token);
                // Freed here, with all that it holds.
                Work own = std::move(work);
                own(*writer, token);
            } catch (...) {
                failure = std::current_exception();
            }
            writer.reset();
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [done, failure] {
                    if (failure)
                        done.fail(failure);
                    else
                        done.resolve({});
                },
                Qt::QueuedConnection);
        });
    co_await done.wait(stop);
}

Task<void> BackgroundFile::write(Piece piece, std::stop_token stop)
{
    return run([piece = std::move(piece)](
                   Writer &writer, const std::stop_token &) { writer.opened().write(piece()); },
               std::move(stop));
}

Task<void> BackgroundFile::place(std::stop_token stop)
{
    return run(
        [](Writer &writer, const std::stop_token &token) {
            writer.opened().flush();
            throwIfStopped(token);
            writer.opened().commit();
        },
        std::move(stop));
}

} // namespace veltrix
