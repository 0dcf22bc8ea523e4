// SPDX-License-Identifier: GPL-3.0-or-later
// A version of the program that fits this installation.
#pragma once

#include "clients/update/update_signature.h"

#include <QString>
#include <QUrl>

#include <optional>

namespace veltrix
{

/// A package that may be downloaded.
struct UpdatePackage {
    /// https, with a host.
    QUrl url;
    /// Bytes, more than zero.
    qint64 length = 0;
    UpdateSignature signature;
    /// A plain name for the file, safe in any folder; its ending tells the system's installer what
    /// it is.
    QString fileName;

    bool operator==(const UpdatePackage &) const = default;
};

/// What the user is asked about.
struct UpdateOffer {
    /// The machine version.
    QString version;
    /// The version that people read.
    QString displayVersion;
    /// Notes from the feed, possibly HTML. Show them as text: nothing that they name may be loaded.
    QString notes;
    /// A page with notes, http or https; empty when there is none.
    QUrl notesLink;
    /// A page about the version, http or https; empty when there is none.
    QUrl link;
    bool isCritical = false;
    /// Nothing when the version can only be read about, at `link`.
    std::optional<UpdatePackage> package;

    bool operator==(const UpdateOffer &) const = default;
};

} // namespace veltrix
