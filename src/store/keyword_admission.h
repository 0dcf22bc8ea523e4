// SPDX-License-Identifier: GPL-3.0-or-later
// What became of texts that were to be tracked, and in words why a keyword cannot be measured.
#pragma once

#include "model/keyword_rule.h"
#include "model/tracked_keyword.h"

#include <QList>

namespace veltrix
{

/// A text that is to be tracked in a storefront.
struct KeywordToTrack {
    QString keyword;
    QString country;

    bool operator==(const KeywordToTrack &) const = default;
};

/// A text that is not tracked because it could never be measured.
struct RefusedKeyword {
    /// Text and storefront as they were given.
    QString keyword;
    QString country;
    KeywordRefusal reason = KeywordRefusal::Empty;

    bool operator==(const RefusedKeyword &) const = default;
};

/// What became of texts that were to be tracked. A text that was given twice for a storefront,
/// ignoring case, counts once.
struct KeywordAdmission {
    /// The keywords that stand for the texts: the new ones and those that were tracked already, in
    /// the order of the texts.
    QList<TrackedKeyword> kept;
    /// How many of them are new.
    qsizetype added = 0;
    QList<RefusedKeyword> refused;

    [[nodiscard]] qsizetype alreadyTracked() const { return kept.size() - added; }
};

/// Why a keyword cannot be measured, as a clause without a full stop: "longer than 100
/// characters", "“UK” is not a supported storefront".
[[nodiscard]] QString refusalReason(KeywordRefusal refusal, const QString &country);

/// The same for a keyword whose app is gone.
[[nodiscard]] QString appGoneReason();

/// "“photo editor” cannot be measured: " and the reason, as a sentence.
[[nodiscard]] QString unmeasurableSentence(const QString &keyword, const QString &reason);

/// The text in quotation marks, cut after 24 characters; a control character in it is seen as "�".
[[nodiscard]] QString quotedKeyword(const QString &text);

} // namespace veltrix
