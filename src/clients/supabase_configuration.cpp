// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/supabase_configuration.h"

#include "clients/property_list.h"
#include "effects/atomic_file.h"

#include <QFileInfo>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr QLatin1String keyPrefix{"sb_publishable_"};

QString textOf(ConfigurationError::Reason reason)
{
    switch (reason) {
    case ConfigurationError::Reason::MissingResource:
        return QStringLiteral("Supabase development configuration is missing.");
    case ConfigurationError::Reason::InvalidConfiguration:
        return QStringLiteral(
            "Supabase requires an HTTPS project URL and a public publishable key.");
    }
    Q_UNREACHABLE();
}

QString requiredText(const PropertyListValue &list, const QString &key)
{
    const std::optional<QString> text = list.textMember(key);
    if (!text)
        throw PropertyListError(QStringLiteral("it has no text “%1”").arg(key));
    return *text;
}

/// Such a text could end a header, or the line of a request, and begin another one.
bool hasLineBreakOrControl(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) {
        return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
               c.category() == QChar::Separator_Paragraph;
    });
}

QString pathIn(const QString &resourceFolder)
{
    return resourceFolder + u'/' + SupabaseConfiguration::fileName;
}

} // namespace

ConfigurationError::ConfigurationError(Reason reason) : Error(textOf(reason)), m_reason(reason) {}

bool SupabaseConfiguration::exists(const QString &resourceFolder)
{
    return QFileInfo::exists(pathIn(resourceFolder));
}

SupabaseConfiguration SupabaseConfiguration::load(const QString &resourceFolder)
{
    if (!exists(resourceFolder))
        throw ConfigurationError(ConfigurationError::Reason::MissingResource);
    return fromPropertyList(readWholeFile(pathIn(resourceFolder)));
}

SupabaseConfiguration SupabaseConfiguration::fromPropertyList(const QByteArray &document)
{
    const PropertyListValue list = readPropertyList(document);
    const QString address = requiredText(list, QStringLiteral("projectURL"));
    const QString key = requiredText(list, QStringLiteral("publishableKey"));
    const QUrl url(address, QUrl::StrictMode);
    // The scheme is compared as it is written; QUrl would make it lower-case.
    if (hasLineBreakOrControl(address) || hasLineBreakOrControl(key) ||
        !address.startsWith(QLatin1String("https:")) || !url.isValid() || url.host().isEmpty() ||
        !key.startsWith(keyPrefix) || key.size() == keyPrefix.size())
        throw ConfigurationError(ConfigurationError::Reason::InvalidConfiguration);
    return {url, key};
}

} // namespace veltrix
