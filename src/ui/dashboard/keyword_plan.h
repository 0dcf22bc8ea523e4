// SPDX-License-Identifier: GPL-3.0-or-later
// What adding keywords would do, before it is done.
#pragma once

#include "store/keyword_admission.h"
#include "ui/dashboard/keyword_input.h"
#include "ui/measuring/admission_texts.h"

#include <QHash>
#include <QMap>
#include <QSet>

namespace veltrix
{

struct KeywordPlan {
    /// Keywords entered, repeated and refused ones included.
    qsizetype entered = 0;
    /// What is to be tracked, in the order of the keywords and then of the storefronts; with what
    /// is tracked already, so that it is measured again.
    QList<KeywordToTrack> keywords;
    /// How many of them are new.
    qsizetype added = 0;
    /// The new ones by storefront.
    QMap<QString, qsizetype> addedIn;
    /// Keywords that were entered before, ignoring case, for the same storefronts.
    qsizetype repeated = 0;
    /// Rows of a file that are about other apps; they are left out.
    qsizetype ofOtherApps = 0;
    /// New ones that a file gives tags; those that are tracked keep the tags that they have.
    struct Tagged {
        KeywordToTrack keyword;
        QStringList tags;

        bool operator==(const Tagged &) const = default;
    };
    QList<Tagged> tagged;
    /// Names that no tag can have, each once; their keywords are added without them.
    QList<RefusedLine> refusedTags;
    /// Keywords that can never be measured; one for each, whatever the number of storefronts.
    QList<RefusedLine> refused;

    [[nodiscard]] qsizetype alreadyTracked() const { return keywords.size() - added; }
};

/// Plans one list after the other: what an earlier one adds is repeated in a later one.
class KeywordPlanner
{
public:
    /// `tracked` are the keywords of the app. Rows of files that name an app are about this one if
    /// they name `appName`, ignoring case; without a name all are.
    explicit KeywordPlanner(const QList<TrackedKeyword> &tracked, const QString &appName = {});

    /// `storefronts` serve the keywords that name none.
    KeywordPlan plan(const QList<EnteredKeyword> &entered, const QStringList &storefronts);
    /// Whether all of these storefronts have the keyword already.
    [[nodiscard]] bool isTracked(const QString &keyword, const QStringList &storefronts) const;

private:
    [[nodiscard]] bool isOfThisApp(const EnteredKeyword &entered) const;
    /// Puts into the plan what of the tags of a new keyword can be used, and what cannot.
    static void planTags(const EnteredKeyword &entered, const QString &storefront,
                         KeywordPlan &plan);

    /// A set of storefronts, a bit for each place in storefrontCodes().
    using Storefronts = quint64;

    /// Folded.
    QString m_appName;
    /// By folded text.
    QHash<QString, Storefronts> m_tracked;
    QHash<QString, Storefronts> m_planned;
    /// The same for storefronts that are none, as pairs of storefront and folded text.
    QSet<std::pair<QString, QString>> m_elsewhere;
};

} // namespace veltrix
