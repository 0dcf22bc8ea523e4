// SPDX-License-Identifier: GPL-3.0-or-later
// The update feed: an RSS 2.0 document whose items are versions of the program.
#pragma once

#include "clients/safe_xml_reader.h"
#include "model/date.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace veltrix
{

/// Largest feed that is accepted, in bytes.
inline constexpr qint64 largestAppcast = 4LL * 1024 * 1024;

/// The most items and packages that a feed may have, together.
inline constexpr int mostAppcastEntries = 10'000;

/// A feed is not whole, not a feed, or beyond a limit.
class AppcastError final : public Error
{
public:
    /// `problem` is a sentence.
    explicit AppcastError(const QString &problem);
};

/// A package to download, as the feed announces it. Nothing in it is checked yet.
struct AppcastEnclosure {
    QString url;
    /// Bytes; nothing when absent or not a number.
    std::optional<qint64> length;
    /// Base64 Ed25519 signature over the package.
    QString edSignature;
    /// The system that the package is for.
    QString os;
    /// Where older feeds keep the versions.
    QString version;
    QString shortVersionString;

    bool operator==(const AppcastEnclosure &) const = default;
};

/// One version of the program. Texts are trimmed and empty when absent; nothing is checked yet.
struct AppcastItem {
    /// The machine version, which is compared.
    QString version;
    /// The version that people read.
    QString shortVersionString;
    QString minimumSystemVersion;
    /// Empty for the default channel.
    QString channel;
    QString link;
    QString releaseNotesLink;
    /// Notes, possibly HTML.
    QString description;
    std::optional<Date> pubDate;
    /// Time between two groups of installations that get the version.
    std::optional<Seconds> phasedRolloutInterval;
    bool isCritical = false;
    /// Only tells of a version; there is nothing to download.
    bool isInformational = false;
    QList<AppcastEnclosure> enclosures;

    bool operator==(const AppcastItem &) const = default;
};

/// All versions of a feed, in its order, which means nothing.
struct Appcast {
    QList<AppcastItem> items;

    bool operator==(const Appcast &) const = default;
};

/// Reads a whole feed; half of one is an error. Elements of the feed's own are known by their
/// namespace, whatever its prefix. Elements that are not known are passed over. No entity is ever
/// expanded and nothing outside the feed loaded. Where something stands twice the first counts.
/// Throws AppcastError.
Appcast readAppcast(const QByteArray &xml, XmlLimits limits = {largestAppcast});

} // namespace veltrix
