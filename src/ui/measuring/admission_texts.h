// SPDX-License-Identifier: GPL-3.0-or-later
// What is told when keywords were to be added: how many were, and which were refused.
#pragma once

#include "store/keyword_admission.h"

#include <QStringList>

namespace veltrix
{

/// "12 added, 3 already there, 2 refused". What did not happen is left out, but for "None added".
QString admissionCount(const KeywordAdmission &admission);

/// One line a refusal, "“photo editor”: “UK” is not a supported storefront"; of more than five the
/// first five, and "and 12 more".
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
AdmissionStatus admissionStatus(const KeywordAdmission &admission, bool isSaved);

/// All refusals with a header line, for the clipboard.
QList<QStringList> refusalTable(const QList<RefusedKeyword> &refused);

} // namespace veltrix
