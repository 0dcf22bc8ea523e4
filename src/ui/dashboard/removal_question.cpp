// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/removal_question.h"

#include "ui_kit/text/shown_text.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(RemovalQuestion)
};

} // namespace

ConfirmSheet::Question removalQuestion(const QStringList &keywords)
{
    if (keywords.size() == 1) {
        return {Texts::tr("Delete Keyword?"),
                Texts::tr("This will delete %1 and its saved ranking snapshot history.\n"
                          "This action cannot be undone.")
                    .arg(inSentence(keywords.first())),
                Texts::tr("Delete Keyword")};
    }
    return {Texts::tr("Delete %L1 Keywords?").arg(keywords.size()),
            Texts::tr("This will delete %L1 keywords and their saved ranking snapshot history.\n"
                      "This action cannot be undone.")
                .arg(keywords.size()),
            Texts::tr("Delete %L1 Keywords").arg(keywords.size())};
}

} // namespace veltrix
