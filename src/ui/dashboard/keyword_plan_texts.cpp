// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_plan_texts.h"

#include "ui_kit/text/storefronts.h"

#include <QCoreApplication>
#include <QLocale>

namespace veltrix
{

namespace
{

/// Storefronts that are told one by one.
constexpr qsizetype mostStorefronts = 5;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(KeywordPlan)
};

QString counted(const QString &one, const QString &many, qsizetype count)
{
    return count == 1 ? one : many.arg(count);
}

QStringList whatHappens(const KeywordPlan &plan)
{
    QStringList parts;
    if (plan.added > 0)
        parts << Texts::tr("%L1 will be added").arg(plan.added);
    if (plan.alreadyTracked() > 0)
        parts << counted(Texts::tr("1 is tracked already"), Texts::tr("%L1 are tracked already"),
                         plan.alreadyTracked());
    if (plan.repeated > 0)
        parts << counted(Texts::tr("1 is repeated"), Texts::tr("%L1 are repeated"), plan.repeated);
    if (plan.ofOtherApps > 0)
        parts << counted(Texts::tr("1 is of another app and left out"),
                         Texts::tr("%L1 are of other apps and left out"), plan.ofOtherApps);
    if (!plan.refused.isEmpty())
        parts << Texts::tr("%L1 cannot be added").arg(plan.refused.size());
    if (!plan.refusedTags.isEmpty())
        parts << counted(Texts::tr("1 tag cannot be used"), Texts::tr("%L1 tags cannot be used"),
                         plan.refusedTags.size());
    return parts;
}

} // namespace

QString typedNote(const KeywordPlan &plan, qsizetype storefronts)
{
    const QString keywords =
        counted(Texts::tr("1 keyword"), Texts::tr("%L1 keywords"), plan.entered);
    if (storefronts == 0)
        return Texts::tr("%1: choose a storefront").arg(keywords);
    if (storefronts == 1 && plan.added == plan.entered)
        return keywords;
    const QString all =
        storefronts == 1 ? keywords : keywords + Texts::tr(" × %L1 storefronts").arg(storefronts);
    return all + QStringLiteral(": ") + whatHappens(plan).join(QStringLiteral(", "));
}

QString fileNote(const KeywordPlan &plan)
{
    QStringList storefronts;
    for (const QString &code : storefrontCodes()) {
        if (const qsizetype count = plan.addedIn.value(code); count > 0)
            storefronts << Texts::tr("%1 %2").arg(storefrontName(code), QLocale().toString(count));
    }
    const qsizetype more = storefronts.size() - mostStorefronts;
    QString places = storefronts.mid(0, mostStorefronts).join(QStringLiteral(", "));
    if (more > 0)
        places += u' ' + Texts::tr("and %L1 more").arg(more);
    return (QStringList{whatHappens(plan).join(QStringLiteral(", ")), places})
        .join(u'\n')
        .trimmed();
}

QString addLabel(qsizetype added)
{
    return added == 0 ? Texts::tr("Add keywords")
                      : counted(Texts::tr("Add 1 keyword"), Texts::tr("Add %L1 keywords"), added);
}

} // namespace veltrix
