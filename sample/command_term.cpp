// SPDX-License-Identifier: GPL-3.0-or-later
// Search terms that ask a sample service to misbehave.
#include "sample/command_term.h"

namespace veltrix::sample
{

CommandTerm commandTerm(const QString &text)
{
    const QString prefix = QStringLiteral("sample:");
    const QString trimmed = text.simplified();
    if (!trimmed.startsWith(prefix, Qt::CaseInsensitive))
        return {QString(), text};
    const QString command = trimmed.section(QLatin1Char(' '), 0, 0).mid(prefix.size()).toLower();
    const QString term = trimmed.section(QLatin1Char(' '), 1);
    return {command, term.isEmpty() ? QStringLiteral("photo editor") : term};
}

} // namespace veltrix::sample
