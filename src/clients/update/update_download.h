// SPDX-License-Identifier: GPL-3.0-or-later
// From an offered package to a verified file.
#pragma once

#include "clients/http.h"
#include "clients/update/package_version.h"
#include "clients/update/update_offer.h"
#include "effects/file_thread.h"

namespace veltrix
{

/// Downloads a package, checks its length, its signature and then the version inside, and only then
/// stores it: nothing that is not genuine and new ever reaches the disk. (A signature covers the
/// package as a whole, so the whole must be in memory to be checked; the announced length limits
/// it.)
///
/// The file has its own new folder inside `folder`, both for this user alone; the result is its
/// path. Checking and storing is `files`'s work. Whatever fails or is stopped leaves nothing
/// behind. Throws UpdateError, TransportError, BadUrlError, FileError or Cancelled.
Task<QString> downloadUpdate(HttpDownload download, UpdatePackage package, UpdateKey key,
                             ExpectedVersion version, QString folder,
                             std::shared_ptr<FileThread> files, HttpProgress progress,
                             std::stop_token stop);

/// Removes the packages that downloadUpdate() stored in `folder`, and nothing else there. Failures
/// are ignored.
void removeDownloadedUpdates(const QString &folder);

} // namespace veltrix
