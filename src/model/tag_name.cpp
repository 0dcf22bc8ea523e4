// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/tag_name.h"

#include <algorithm>

namespace veltrix
{

namespace
{

bool isControl(QChar character)
{
    // Among the second are those that turn the direction of a text.
    return character.category() == QChar::Other_Control ||
           character.category() == QChar::Other_Format;
}

} // namespace

std::optional<QString> usableTagName(const QString &text)
{
    return tagRefusal(text) ? std::nullopt : std::optional(text.simplified());
}

std::optional<QString> tagRefusal(const QString &text)
{
    const QString name = text.simplified();
    if (name.isEmpty())
        return QStringLiteral("A tag needs a name.");
    if (name.size() > mostTagLength) {
        return QStringLiteral("The name of a tag has %1 characters at most.").arg(mostTagLength);
    }
    if (name.contains(u',') || name.contains(u';'))
        return QStringLiteral("The name of a tag has no comma and no semicolon.");
    if (std::ranges::any_of(name, isControl))
        return QStringLiteral("The name of a tag has no invisible characters.");
    return std::nullopt;
}

} // namespace veltrix
