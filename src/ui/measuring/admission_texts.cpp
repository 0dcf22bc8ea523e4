// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/measuring/admission_texts.h"

#include <QCoreApplication>
#include <QLocale>

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

QString refusalText(const RefusedLine &line)
{
    if (line.line == 0)
        return Texts::tr("%1: %2").arg(quotedKeyword(line.keyword), line.reason);
    const QString number = QLocale().toString(qlonglong(line.line));
    return line.keyword.isEmpty()
               ? Texts::tr("Line %1: %2").arg(number, line.reason)
               : Texts::tr("Line %1, %2: %3").arg(number, quotedKeyword(line.keyword), line.reason);
}

} // namespace

AdmissionCount::AdmissionCount(const KeywordAdmission &admission)
    : added(admission.added), alreadyTracked(admission.alreadyTracked()),
      refused(admission.refused.size())
{
}

RefusedLine::RefusedLine(const RefusedKeyword &refused, qsizetype inLine)
    : keyword(refused.keyword), country(refused.country),
      reason(refusalReason(refused.reason, refused.country)), line(inLine)
{
}

QString admissionCount(const AdmissionCount &count)
{
    QStringList parts{count.added == 0 ? Texts::tr("None added")
                                       : Texts::tr("%L1 added").arg(count.added)};
    if (count.alreadyTracked > 0)
        parts << Texts::tr("%L1 already there").arg(count.alreadyTracked);
    if (count.refused > 0)
        parts << Texts::tr("%L1 refused").arg(count.refused);
    return parts.join(QStringLiteral(", "));
}

QStringList refusalLines(const QList<RefusedLine> &refused)
{
    QStringList lines;
    for (const RefusedLine &line : refused.first(std::min(refused.size(), mostNamed)))
        lines << refusalText(line);
    if (refused.size() > mostNamed)
        lines << Texts::tr("and %L1 more").arg(refused.size() - mostNamed);
    return lines;
}

QStringList refusalLines(const QList<RefusedKeyword> &refused)
{
    return refusalLines(QList<RefusedLine>(refused.begin(), refused.end()));
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

AdmissionStatus admissionStatus(const AdmissionCount &admission, bool isSaved)
{
    const QString count = admissionCount(admission);
    if (admission.added == 0)
        return {count, QString(), admission.refused > 0};
    if (!isSaved)
        return {Texts::tr("The new keywords are not saved yet."), count, true};
    return {keywordsSaved(), count, false, true};
}

QList<QStringList> refusalTable(const QList<RefusedLine> &refused)
{
    QList<QStringList> table{
        {Texts::tr("Keyword"), Texts::tr("Storefront"), Texts::tr("Reason"), Texts::tr("Line")}};
    for (const RefusedLine &line : refused) {
        table.append({line.keyword, line.country, line.reason,
                      line.line > 0 ? QString::number(line.line) : QString()});
    }
    return table;
}

} // namespace veltrix
