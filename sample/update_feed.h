// SPDX-License-Identifier: GPL-3.0-or-later
// A signed feed of program versions, and the package that it offers.
#pragma once

#include <QByteArray>
#include <QString>

#include <httplib.h>

namespace veltrix::sample
{

inline constexpr const char *feedPath = "/updates/appcast.xml";

/// An Ed25519 key pair.
struct SigningKey {
    /// 32 bytes.
    QByteArray publicKey;
    /// 64 bytes.
    QByteArray secretKey;
};

/// The key pair of a seed of 32 bytes; of a new one if the seed is empty. Throws
/// std::runtime_error for a seed of another length.
SigningKey signingKey(const QByteArray &seed);

/// Serves GET feedPath, /updates/<package>.deb and /updates/notes.html.
/// The feed's newest fitting item is `version` for Linux; around it stand, in no order, an older
/// item, a newer one for another system (without `os`) and a newer one of a beta channel.
class UpdateFeed
{
public:
    UpdateFeed(QString version, SigningKey key);

    /// Adds the routes; addresses in the feed begin with `origin`. The feed must outlive the
    /// server.
    void install(httplib::Server &server, const QString &origin);

    [[nodiscard]] const QByteArray &package() const { return m_package; }
    [[nodiscard]] QByteArray appcast(const QString &origin) const;

private:
    [[nodiscard]] QString packagePath() const;

    QString m_version;
    SigningKey m_key;
    QByteArray m_package;
};

} // namespace veltrix::sample
