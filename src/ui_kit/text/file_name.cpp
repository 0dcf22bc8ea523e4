// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/file_name.h"

namespace veltrix
{

QString suggestedFileName(const QString &subject, const QString &what)
{
    QString name = subject + u' ' + what;
    for (QChar &c : name) {
        if (QStringLiteral("/\\:*?\"<>|").contains(c) || c.category() == QChar::Other_Control)
            c = u'-';
    }
    return name.simplified() + QStringLiteral(".csv");
}

} // namespace veltrix
