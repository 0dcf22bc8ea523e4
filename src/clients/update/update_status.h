// SPDX-License-Identifier: GPL-3.0-or-later
// What the updater is doing, or what came of it.
#pragma once

#include "clients/update/update_offer.h"

#include <QStringList>

#include <variant>

namespace veltrix
{

/// Who asked for a check.
enum class UpdateCheck {
    Requested,
    /// Veltrix itself: show what it found without getting in the way.
    Background,
};

/// Nothing to say.
struct UpdateIdle {
    bool operator==(const UpdateIdle &) const = default;
};

/// A check that the user asked for is under way.
struct UpdateChecking {
    bool operator==(const UpdateChecking &) const = default;
};

/// There is nothing newer for this installation.
struct UpdateNotNeeded {
    /// Why newer versions of the feed were passed over: sentences for the user.
    QStringList reasons;
    bool operator==(const UpdateNotNeeded &) const = default;
};

/// A version is waiting for the user's decision.
struct UpdateAvailable {
    UpdateOffer offer;
    UpdateCheck foundBy = UpdateCheck::Requested;
    bool operator==(const UpdateAvailable &) const = default;
};

/// The package is on its way.
struct UpdateDownloading {
    UpdateOffer offer;
    /// Bytes, 0 to the length of the offer's package.
    qint64 received = 0;
    bool operator==(const UpdateDownloading &) const = default;
};

/// The package was verified and given to the desktop for the system's installer.
struct UpdateHandedOver {
    UpdateOffer offer;
    /// Where the package is. Always worth showing: a desktop reports success for what it did not
    /// open.
    QString path;
    /// False when the desktop said that it has no program for the package.
    bool isOpened = true;
    bool operator==(const UpdateHandedOver &) const = default;
};

/// A check that the user asked for, or a download, has failed.
struct UpdateFailed {
    enum class Stage { Check, Download };

    /// A text for the user.
    QString description;
    Stage stage = Stage::Check;
    bool operator==(const UpdateFailed &) const = default;
};

/// One of the states above.
using UpdateStatus = std::variant<UpdateIdle, UpdateChecking, UpdateNotNeeded, UpdateAvailable,
                                  UpdateDownloading, UpdateHandedOver, UpdateFailed>;

} // namespace veltrix
