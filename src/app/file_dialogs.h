// SPDX-License-Identifier: GPL-3.0-or-later
// The file dialogs of the desktop.
#pragma once

#include "ui_kit/widgets/file_exchange.h"

#include <memory>

namespace veltrix
{

/// The desktop's file dialogs; what reads and writes files is handed in.
class FileDialogs final : public FileExchange
{
public:
    /// Both throw an Error when they fail.
    using Read = std::function<QByteArray(const QString &path)>;
    using Write = std::function<void(const QString &path, const QByteArray &content)>;

    FileDialogs(Read read, Write write) : m_read(std::move(read)), m_write(std::move(write)) {}

    void save(QWidget *parent, const Request &request, const QByteArray &content,
              std::function<void(QString path, std::optional<QString> error)> done) override;
    void open(QWidget *parent, const Request &request,
              std::function<void(const OpenedFile &file)> done) override;
    OpenedFile read(const QString &path) override;

private:
    Read m_read;
    Write m_write;
    /// The folder that was used last, where the next dialog starts.
    std::shared_ptr<QString> m_folder = std::make_shared<QString>();
};

} // namespace veltrix
