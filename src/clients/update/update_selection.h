// SPDX-License-Identifier: GPL-3.0-or-later
// Which version of a feed this installation should get, and why not the others.
#pragma once

#include "clients/update/appcast.h"
#include "clients/update/update_offer.h"

#include <QList>

namespace veltrix
{

/// Largest package that is accepted, in bytes.
inline constexpr qint64 largestUpdatePackage = 256LL * 1024 * 1024;

/// Installations are spread over this many groups, 0 and up, for releases in steps.
inline constexpr int rolloutGroups = 7;

/// The installation that a version must fit.
struct UpdateTarget {
    /// The machine version that is installed.
    QString installedVersion;
    /// Version of the system, with or without a build after its numbers ("6.1.0-18-amd64"). Empty:
    /// not known, and no version is refused for it; the system's installer knows better.
    QString systemVersion;
    /// When it gets its turn in a release in steps. Nothing: at once.
    std::optional<int> rolloutGroup;
    Date now;
};

/// A version that was passed over.
struct SkippedUpdate {
    /// Why; isRefusal() depends on the order.
    enum class Reason {
        // The version is not for this installation.
        NotNewer,
        OtherSystem,
        OtherChannel,
        SystemTooOld,
        NotItsTurn,
        // The version would be for this installation, but is not acceptable.
        NoVersion,
        NoSignature,
        UnreadableSignature,
        UnsafeAddress,
        UnacceptableLength,
        NothingToRead,
    };

    Reason reason = Reason::NotNewer;
    /// A sentence for the user.
    QString description;

    /// True when the version would have been offered if it were sound.
    [[nodiscard]] bool isRefusal() const { return reason >= Reason::NoVersion; }
    bool operator==(const SkippedUpdate &) const = default;
};

/// The version to offer, and what became of the others.
struct UpdateSelection {
    std::optional<UpdateOffer> offer;
    /// In the order of the feed.
    QList<SkippedUpdate> skipped;
};

/// Picks the newest version of the feed, wherever it stands there, that is for Linux, newer than
/// the installed one, of the default channel, not above this system, and signed. A version without
/// a package counts as one for another system, unless it is only to be read about. Throws
/// UpdateError when the installed version cannot be compared with.
UpdateSelection selectUpdate(const Appcast &appcast, const UpdateTarget &target);

} // namespace veltrix
