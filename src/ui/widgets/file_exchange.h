// SPDX-License-Identifier: GPL-3.0-or-later
// Files that the user picks, behind a seam: screens hand over bytes and take bytes.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QWidget;

namespace veltrix
{

class FileExchange
{
public:
    struct Request {
        /// Title of the dialog.
        QString title;
        /// File name offered when saving; empty when opening.
        QString suggestedName;
        /// File types, as QFileDialog writes them: "CSV (*.csv)".
        QString filter;
    };

    FileExchange() = default;
    virtual ~FileExchange() = default;
    FileExchange(const FileExchange &) = delete;
    FileExchange &operator=(const FileExchange &) = delete;

    /// Asks where to save and writes there. `done` gets the file's path, or the error's text; it is
    /// not called when the user cancels.
    virtual void save(QWidget *parent, const Request &request, const QByteArray &content,
                      std::function<void(QString path, std::optional<QString> error)> done) = 0;
    /// Asks for a file and reads it. `done` is not called when the user cancels.
    virtual void
    open(QWidget *parent, const Request &request,
         std::function<void(QByteArray content, std::optional<QString> error)> done) = 0;
};

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
              std::function<void(QByteArray content, std::optional<QString> error)> done) override;

private:
    Read m_read;
    Write m_write;
    /// The folder that was used last, where the next dialog starts.
    std::shared_ptr<QString> m_folder = std::make_shared<QString>();
};

} // namespace veltrix
