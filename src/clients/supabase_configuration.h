// SPDX-License-Identifier: GPL-3.0-or-later
// Where the research service is, and the public key to show it.
#pragma once

#include "model/error.h"

#include <QString>
#include <QUrl>

#include <functional>

namespace veltrix
{

/// The configuration is absent or breaks a rule.
class ConfigurationError final : public Error
{
public:
    /// Which of the two.
    enum class Reason {
        /// There is no configuration file.
        MissingResource,
        /// The address is not https with a host, or the key is not a publishable one.
        InvalidConfiguration,
    };

    explicit ConfigurationError(Reason reason);
    [[nodiscard]] Reason reason() const { return m_reason; }

private:
    Reason m_reason;
};

/// The project of the research service.
struct SupabaseConfiguration {
    /// Name of its file in the resource folder.
    static constexpr QLatin1String fileName{"SupabaseDevelopment.plist"};

    /// https, with a host.
    QUrl projectURL;
    /// Begins with "sb_publishable_"; safe to ship.
    QString publishableKey;

    bool operator==(const SupabaseConfiguration &) const = default;

    /// Whether there is a configuration file, right or wrong.
    static bool exists(const QString &resourceFolder);
    /// Reads it. Throws ConfigurationError, PropertyListError when the file is no property list
    /// with both keys, or FileError when it cannot be read.
    static SupabaseConfiguration load(const QString &resourceFolder);
    /// The same from the content of the file.
    static SupabaseConfiguration fromPropertyList(const QByteArray &document);
};

/// Asked for the configuration at each request; may throw.
using ConfigurationProvider = std::function<SupabaseConfiguration()>;

} // namespace veltrix
