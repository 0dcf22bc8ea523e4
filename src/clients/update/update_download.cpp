// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/update_download.h"

#include "clients/update/update_error.h"
#include "effects/atomic_file.h"

#include <QDir>
#include <QTemporaryDir>

namespace veltrix
{

namespace
{

constexpr QLatin1String folderPrefix{"update-"};

/// A whole package may take long over a slow line; the user sees it move and can stop it.
constexpr Seconds longestDownload{6 * 3600};

HttpRequest requestFor(const UpdatePackage &package)
{
    HttpRequest request;
    request.url = package.url;
    // The signature is over the very bytes of the file, so nothing may repack them on the way.
    request.headers = {{"Accept-Encoding", "identity"}};
    request.bodyLimit = package.length;
    request.totalTimeout = longestDownload;
    return request;
}

QString store(const QByteArray &content, const QString &folder, const QString &fileName,
              const std::stop_token &stop)
{
    QDir().mkpath(folder);
    // Removes itself, and what is in it, unless all goes well.
    QTemporaryDir own(folder + u'/' + folderPrefix + QStringLiteral("XXXXXX"));
    if (!own.isValid()) {
        throw FileError(QStringLiteral("The update could not be stored in “%1”: %2.")
                            .arg(folder, own.errorString()));
    }
    QString path = own.filePath(fileName);
    writeFileAtomically(path, content);
    throwIfStopped(stop);
    own.setAutoRemove(false);
    return path;
}

} // namespace

Task<QString> downloadUpdate(HttpDownload download, UpdatePackage package, UpdateKey key,
                             ExpectedVersion version, QString folder,
                             std::shared_ptr<FileThread> files, HttpProgress progress,
                             std::stop_token stop)
{
    throwIfStopped(stop);
    const HttpRequest request = requestFor(package);
    const HttpResponse response = co_await download(request, progress, stop);
    throwIfStopped(stop);
    if (response.status != 200) {
        throw UpdateError(QStringLiteral("The update couldn’t be downloaded: the server “%1” "
                                         "answered with status %2.")
                              .arg(package.url.host())
                              .arg(response.status));
    }
    std::function<QString()> checkAndStore = [=, body = response.body] {
        key.requireGenuine(body, package.length, package.signature);
        requirePackageVersion(body, version);
        return store(body, folder, package.fileName, stop);
    };
    co_return co_await files->run(std::move(checkAndStore), stop);
}

void removeDownloadedUpdates(const QString &folder)
{
    const QDir downloads(folder);
    const QStringList own =
        downloads.entryList({folderPrefix + QStringLiteral("??????")},
                            QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    for (const QString &name : own)
        QDir(downloads.filePath(name)).removeRecursively();
}

} // namespace veltrix
