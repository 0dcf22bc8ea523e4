// SPDX-License-Identifier: GPL-3.0-or-later
// What is told when keywords were to be added: how many were, and which were refused.
#pragma once

#include "store/keyword_admission.h"

#include <QStringList>

namespace veltrix
{

/// How many keywords came to what.
struct AdmissionCount {
    qsizetype added = 0;
    qsizetype alreadyTracked = 0;
    qsizetype refused = 0;

    AdmissionCount() = default;
    AdmissionCount(const KeywordAdmission &admission);
    bool operator==(const AdmissionCount &) const = default;
};

/// A keyword that was refused, as it is told.
struct RefusedLine {
    /// Both may be empty.
    QString keyword;
    QString country;
    /// A clause without a full stop.
    QString reason;
    /// Where in a file it stands; 0 for what is in none.
    qsizetype line = 0;

    RefusedLine() = default;
    RefusedLine(const RefusedKeyword &refused, qsizetype inLine = 0);
    /// A line that no keyword can be made of.
    RefusedLine(const QString &why, qsizetype inLine) : reason(why), line(inLine) {}
    bool operator==(const RefusedLine &) const = default;
};

/// "12 added, 3 already there, 2 refused". What did not happen is left out, but for "None added".
QString admissionCount(const AdmissionCount &count);

/// One line a refusal, "“photo editor”: “UK” is not a supported storefront" or "Line 18, “photo…”:
/// longer than 100 characters"; of more than five the first five, and "and 12 more".
QStringList refusalLines(const QList<RefusedLine> &refused);
QStringList refusalLines(const QList<RefusedKeyword> &refused);

/// Keywords in one line, "“moon”, “tide”"; of more than five the first five "and 12 more".
QString namesInShort(const QStringList &keywords);

/// The promise that is made once keywords are saved and queued; it holds until they are measured.
QString keywordsSaved();

/// What to say once keywords were to be added.
struct AdmissionStatus {
    QString message;
    /// The count, where the message does not give it.
    QString detail;
    bool isProblem = false;
    /// It promises measurements: it holds until measuring has ended or failed.
    bool isPromise = false;

    bool operator==(const AdmissionStatus &) const = default;
};

/// `isSaved` tells whether the state is on disk.
AdmissionStatus admissionStatus(const AdmissionCount &admission, bool isSaved);

/// All refusals with a header line, for the clipboard.
QList<QStringList> refusalTable(const QList<RefusedLine> &refused);

} // namespace veltrix
