// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/update_selection.h"

#include "clients/update/update_error.h"
#include "clients/update/version_order.h"

#include <QRegularExpression>

#include <variant>

namespace veltrix
{

namespace
{

using Reason = SkippedUpdate::Reason;

/// The package for this system, else the first one, else nothing in it.
AppcastEnclosure enclosureOf(const AppcastItem &item)
{
    for (const AppcastEnclosure &enclosure : item.enclosures) {
        if (enclosure.os == u"linux")
            return enclosure;
    }
    return item.enclosures.value(0);
}

/// An absolute address of one of the schemes; empty for anything else.
QUrl safeUrl(const QString &text, std::initializer_list<QStringView> schemes)
{
    const QUrl url(text, QUrl::StrictMode);
    const bool isSafe = url.isValid() && !url.host().isEmpty() &&
                        std::find(schemes.begin(), schemes.end(), url.scheme()) != schemes.end();
    return isSafe ? url : QUrl();
}

QUrl pageUrl(const QString &text)
{
    return safeUrl(text, {u"https", u"http"});
}

/// The last part of the address where it is a plain name: no folders, nothing hidden, nothing that
/// a program could take for an option.
QString plainFileName(const QUrl &url)
{
    static const QRegularExpression plain(
        QStringLiteral("\\A[A-Za-z0-9][A-Za-z0-9._+~-]{0,127}\\z"));
    const QString name = url.fileName(QUrl::FullyEncoded);
    return plain.match(name).hasMatch() ? name : QStringLiteral("veltrix-update");
}

/// A text of the feed, short enough to stand in a sentence.
QString inSentence(const QString &text)
{
    constexpr qsizetype longest = 64;
    return text.simplified().left(longest);
}

/// Judges one item of a feed.
class Judgement
{
public:
    using Result = std::variant<UpdateOffer, SkippedUpdate>;

    Judgement(const AppcastItem &item, const UpdateTarget &target)
        : m_item(item), m_target(target), m_enclosure(enclosureOf(item)),
          m_version(item.version.isEmpty() ? m_enclosure.version : item.version),
          m_displayVersion(inSentence(item.shortVersionString.isEmpty()
                                          ? m_enclosure.shortVersionString
                                          : item.shortVersionString))
    {
        if (m_displayVersion.isEmpty())
            m_displayVersion = inSentence(m_version);
    }

    [[nodiscard]] Result result() const
    {
        if (std::optional<SkippedUpdate> other = notForThisInstallation())
            return *std::move(other);
        UpdateOffer offer;
        offer.version = m_version;
        offer.displayVersion = m_displayVersion;
        offer.notes = m_item.description;
        offer.notesLink = pageUrl(m_item.releaseNotesLink);
        offer.link = pageUrl(m_item.link);
        offer.isCritical = m_item.isCritical;
        if (m_item.isInformational) {
            if (offer.link.isEmpty())
                return skipped(Reason::NothingToRead,
                               QStringLiteral("has no page to read about it"));
            return offer;
        }
        std::variant<UpdatePackage, SkippedUpdate> package = soundPackage();
        if (auto *refused = std::get_if<SkippedUpdate>(&package))
            return std::move(*refused);
        offer.package = std::get<UpdatePackage>(std::move(package));
        return offer;
    }

private:
    [[nodiscard]] std::optional<SkippedUpdate> notForThisInstallation() const
    {
        const bool hasVersion = isMachineVersion(m_version);
        if (hasVersion && compareVersions(m_version, m_target.installedVersion) <= 0)
            return skipped(Reason::NotNewer, QStringLiteral("is not newer than this one"));
        const bool isOnlyNews = m_item.isInformational && m_item.enclosures.isEmpty();
        if (m_enclosure.os != u"linux" && !isOnlyNews)
            return skipped(Reason::OtherSystem, QStringLiteral("is for another system"));
        if (!hasVersion) {
            return SkippedUpdate{Reason::NoVersion,
                                 QStringLiteral("A version of the update feed has no number.")};
        }
        if (!m_item.channel.isEmpty()) {
            return skipped(
                Reason::OtherChannel,
                QStringLiteral("is in the channel “%1”").arg(inSentence(m_item.channel)));
        }
        if (isAboveSystem()) {
            return skipped(Reason::SystemTooOld, QStringLiteral("needs version %1 of the system")
                                                     .arg(inSentence(m_item.minimumSystemVersion)));
        }
        if (!isItsTurn())
            return skipped(Reason::NotItsTurn, QStringLiteral("is released in steps"));
        return std::nullopt;
    }

    [[nodiscard]] std::variant<UpdatePackage, SkippedUpdate> soundPackage() const
    {
        if (m_enclosure.edSignature.isEmpty())
            return refused(Reason::NoSignature, QStringLiteral("it is not signed"));
        const auto signature = UpdateSignature::fromBase64(m_enclosure.edSignature);
        if (!signature)
            return refused(Reason::UnreadableSignature,
                           QStringLiteral("its signature can’t be read"));
        const QUrl url = safeUrl(m_enclosure.url, {u"https"});
        if (url.isEmpty())
            return refused(Reason::UnsafeAddress, QStringLiteral("its address is not safe"));
        const qint64 length = m_enclosure.length.value_or(0);
        if (length <= 0)
            return refused(Reason::UnacceptableLength, QStringLiteral("its length is not known"));
        if (length > largestUpdatePackage)
            return refused(Reason::UnacceptableLength, QStringLiteral("it is too large"));
        return UpdatePackage{url, length, *signature, plainFileName(url)};
    }

    [[nodiscard]] bool isAboveSystem() const
    {
        const QString &least = m_item.minimumSystemVersion;
        return !least.isEmpty() && !m_target.systemVersion.isEmpty() &&
               compareVersions(least, leadingNumbers(m_target.systemVersion)) > 0;
    }

    /// A release in steps reaches one group after another, an interval apart; what is critical
    /// reaches all at once.
    [[nodiscard]] bool isItsTurn() const
    {
        if (!m_target.rolloutGroup || !m_item.phasedRolloutInterval || !m_item.pubDate ||
            m_item.isCritical)
            return true;
        return m_target.now >=
               *m_item.pubDate + *m_item.phasedRolloutInterval * *m_target.rolloutGroup;
    }

    [[nodiscard]] SkippedUpdate skipped(Reason reason, const QString &what) const
    {
        return {reason, QStringLiteral("Version %1 %2.").arg(m_displayVersion, what)};
    }

    [[nodiscard]] SkippedUpdate refused(Reason reason, const QString &why) const
    {
        return {reason, QStringLiteral("Version %1 was refused: %2.").arg(m_displayVersion, why)};
    }

    const AppcastItem &m_item;
    const UpdateTarget &m_target;
    AppcastEnclosure m_enclosure;
    QString m_version;
    QString m_displayVersion;
};

} // namespace

UpdateSelection selectUpdate(const Appcast &appcast, const UpdateTarget &target)
{
    if (!isMachineVersion(target.installedVersion)) {
        throw UpdateError(QStringLiteral(
            "This copy of Veltrix doesn’t know its version, so no update can be chosen for it."));
    }
    UpdateSelection selection;
    for (const AppcastItem &item : appcast.items) {
        Judgement::Result result = Judgement(item, target).result();
        if (auto *skipped = std::get_if<SkippedUpdate>(&result)) {
            selection.skipped.append(std::move(*skipped));
            continue;
        }
        auto &offer = std::get<UpdateOffer>(result);
        if (!selection.offer || compareVersions(offer.version, selection.offer->version) > 0)
            selection.offer = std::move(offer);
    }
    return selection;
}

} // namespace veltrix
