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
    /// Throws an Error when it fails.
    using Read = std::function<QByteArray(const QString &path)>;
    using Create = std::function<std::shared_ptr<FileOutput>(const QString &path)>;

    FileDialogs(Read read, Create create) : m_read(std::move(read)), m_create(std::move(create)) {}

    void choosePlace(QWidget *parent, const Request &request, Chosen chosen) override;
    void open(QWidget *parent, const Request &request,
              std::function<void(const OpenedFile &file)> done) override;
    OpenedFile read(const QString &path) override;

private:
    Read m_read;
    Create m_create;
    /// The folder that was used last, where the next dialog starts.
    std::shared_ptr<QString> m_folder = std::make_shared<QString>();
};

} // namespace veltrix
