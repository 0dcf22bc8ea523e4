// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/file_dialogs.h"

#include "model/error.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace veltrix
{

namespace
{

/// Where people keep their files: their documents, where the desktop has such a folder.
QString usualFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

QFileDialog *makeDialog(QWidget *parent, const FileExchange::Request &request,
                        QFileDialog::AcceptMode mode, const std::shared_ptr<QString> &folder)
{
    if (folder->isEmpty())
        *folder = usualFolder();
    auto *dialog = new QFileDialog(parent, request.title, *folder, request.filter);
    QObject::connect(dialog, &QFileDialog::fileSelected, dialog,
                     [folder](const QString &path) { *folder = QFileInfo(path).absolutePath(); });
    dialog->setObjectName(QStringLiteral("fileDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(mode);
    dialog->setFileMode(mode == QFileDialog::AcceptSave ? QFileDialog::AnyFile
                                                        : QFileDialog::ExistingFile);
    if (!request.suggestedName.isEmpty())
        dialog->selectFile(request.suggestedName);
    return dialog;
}

} // namespace

void FileDialogs::choosePlace(QWidget *parent, const Request &request, Chosen chosen)
{
    QFileDialog *dialog = makeDialog(parent, request, QFileDialog::AcceptSave, m_folder);
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    QObject::connect(dialog, &QFileDialog::fileSelected, parent,
                     [create = m_create, chosen = std::move(chosen)](const QString &path) {
                         chosen(path, create(path));
                     });
    dialog->open();
}

void FileDialogs::open(QWidget *parent, const Request &request,
                       std::function<void(const OpenedFile &)> done)
{
    QFileDialog *dialog = makeDialog(parent, request, QFileDialog::AcceptOpen, m_folder);
    QObject::connect(dialog, &QFileDialog::fileSelected, parent,
                     [this, done = std::move(done)](const QString &path) { done(read(path)); });
    dialog->open();
}

FileExchange::OpenedFile FileDialogs::read(const QString &path)
{
    const QFileInfo info(path);
    const QString name = info.fileName();
    if (info.size() > largestOpened)
        return {
            name, {}, QCoreApplication::translate("FileDialogs", "The file is larger than 16 MB.")};
    try {
        return {name, m_read(path), std::nullopt};
    } catch (const Error &error) {
        return {name, {}, error.description()};
    }
}

} // namespace veltrix
