// SPDX-License-Identifier: GPL-3.0-or-later
// Files that the user picks, behind a seam: screens hand over bytes and take bytes.
#pragma once

#include "effects/file_output.h"
#include "effects/task_scope.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QWidget;

namespace veltrix
{

/// Saves and opens files where the user says.
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

    /// The largest file that is opened, in bytes.
    static constexpr qint64 largestOpened = qint64(16) * 1024 * 1024;

    /// A file that the user picked.
    struct OpenedFile {
        /// Without its folders.
        QString name;
        QByteArray content;
        /// Why it could not be read, in words for the user.
        std::optional<QString> error;
    };

    FileExchange() = default;
    virtual ~FileExchange() = default;
    FileExchange(const FileExchange &) = delete;
    FileExchange &operator=(const FileExchange &) = delete;

    /// Gets the file's path, and what went wrong, in words for the user.
    using Saved = std::function<void(QString path, std::optional<QString> error)>;
    /// Gets the path that was chosen and the file to write there.
    using Chosen = std::function<void(QString path, std::shared_ptr<FileOutput> file)>;

    /// Asks where to save. `chosen` is not called when the user cancels.
    virtual void choosePlace(QWidget *parent, const Request &request, Chosen chosen) = 0;
    /// Asks where to save and writes there. `done` is not called when the user cancels.
    void save(QWidget *parent, const Request &request, const QByteArray &content, Saved done);
    /// Asks for a file and reads it, unless it is larger than largestOpened. `done` is not called
    /// when the user cancels.
    virtual void open(QWidget *parent, const Request &request,
                      std::function<void(const OpenedFile &file)> done) = 0;
    /// Reads a file that the user has brought, as by dropping it, unless it is larger.
    virtual OpenedFile read(const QString &path) = 0;

private:
    static Task<void> writeWhole(std::shared_ptr<FileOutput> file, QByteArray content, QString path,
                                 Saved done, std::stop_token stop);

    TaskScope m_tasks;
};

} // namespace veltrix
