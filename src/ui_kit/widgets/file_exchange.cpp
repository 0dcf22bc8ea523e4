// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/file_exchange.h"

namespace veltrix
{

void FileExchange::save(QWidget *parent, const Request &request, const QByteArray &content,
                        Saved done)
{
    choosePlace(parent, request,
                [this, content, done = std::move(done)](const QString &path,
                                                        std::shared_ptr<FileOutput> file) {
                    m_tasks.own(writeWhole(std::move(file), content, path, done, m_tasks.token()));
                });
}

Task<void> FileExchange::writeWhole(std::shared_ptr<FileOutput> file, QByteArray content,
                                    QString path, Saved done, std::stop_token stop)
{
    std::optional<QString> problem;
    try {
        // Named: what the compiler makes of a closure within an awaited call is freed twice.
        FileOutput::Piece whole = [content] {
            return content;
        };
        co_await file->write(std::move(whole), stop);
        co_await file->place(stop);
    } catch (const Error &error) {
        throwIfStopped(stop);
        problem = error.description();
    }
    done(path, problem);
}

} // namespace veltrix
