// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/measuring/admission_texts.h"

#include <QCoreApplication>

#include <algorithm>

namespace veltrix
{

namespace
{

/// Refusals and names that are told one by one.
constexpr qsizetype mostNamed = 5;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(AdmissionTexts)
};

} // namespace

QString admissionCount(const KeywordAdmission &admission)
{
    QStringList parts{admission.added == 0 ? Texts::tr("None added")
                                           : Texts::tr("%L1 added").arg(admission.added)};
    if (admission.alreadyTracked() > 0)
        parts << Texts::tr("%L1 already there").arg(admission.alreadyTracked());
    if (!admission.refused.isEmpty())
        parts << Texts::tr("%L1 refused").arg(admission.refused.size());
    return parts.join(QStringLiteral(", "));
}

QStringList refusalLines(const QList<RefusedKeyword> &refused)
{
    QStringList lines;
    for (const RefusedKeyword &keyword : refused.first(std::min(refused.size(), mostNamed)))
        lines << Texts::tr("%1: %2").arg(quotedKeyword(keyword.keyword),
                                         refusalReason(keyword.reason, keyword.country));
    if (refused.size() > mostNamed)
        lines << Texts::tr("and %L1 more").arg(refused.size() - mostNamed);
    return lines;
}

QString namesInShort(const QStringList &keywords)
{
    QStringList names;
    for (const QString &keyword : keywords.first(std::min(keywords.size(), mostNamed)))
        names << quotedKeyword(keyword);
    QString text = names.join(QStringLiteral(", "));
    if (keywords.size() > mostNamed)
        text += u' ' + Texts::tr("and %L1 more").arg(keywords.size() - mostNamed);
    return text;
}

QString keywordsSaved()
{
    return Texts::tr("Keywords saved. Metrics will update in the background.");
}

AdmissionStatus admissionStatus(const KeywordAdmission &admission, bool isSaved)
{
    const QString count = admissionCount(admission);
    if (admission.added == 0)
        return {count, QString(), !admission.refused.isEmpty()};
    if (!isSaved)
        return {Texts::tr("The new keywords are not saved yet."), count, true};
    return {keywordsSaved(), count, false, true};
}

QList<QStringList> refusalTable(const QList<RefusedKeyword> &refused)
{
    QList<QStringList> table{{Texts::tr("Keyword"), Texts::tr("Storefront"), Texts::tr("Reason")}};
    for (const RefusedKeyword &keyword : refused)
        table.append(
            {keyword.keyword, keyword.country, refusalReason(keyword.reason, keyword.country)});
    return table;
}

} // namespace veltrix
