// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/information_dictionary.h"

#include "effects/atomic_file.h"

#include <QFileInfo>

namespace veltrix
{

InformationDictionary::InformationDictionary(PropertyListValue content)
    : m_content(std::move(content))
{
    if (!m_content.dictionary())
        throw PropertyListError(QStringLiteral("it is not a dictionary"));
}

InformationDictionary InformationDictionary::load(const QString &path)
{
    if (!QFileInfo::exists(path))
        return {};
    return InformationDictionary(readPropertyList(readWholeFile(path)));
}

std::optional<QString> InformationDictionary::text(const QString &key) const
{
    const std::optional<PropertyListValue> entry = m_content.member(key);
    return entry ? entry->text() : std::nullopt;
}

} // namespace veltrix
