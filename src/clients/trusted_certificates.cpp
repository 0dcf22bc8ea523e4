// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/trusted_certificates.h"

#include "effects/atomic_file.h"

#include <QFileInfo>
#include <QLibrary>
#include <QSslCertificate>
#include <QSslSocket>

#include <openssl/crypto.h>

namespace veltrix
{

namespace
{

/// Keeps OpenSSL from cleaning up when the program exits. Qt's network thread may not have ended
/// then, although it was waited for: QThread tells of its end before OpenSSL frees what that thread
/// has of it, and both would free the same. Looked up, not linked, because loading it would hold up
/// the start; the toolkit loads it for TLS.
void leaveOpenSslAtExit()
{
    QLibrary crypto(QStringLiteral("crypto"), OPENSSL_VERSION_MAJOR);
    const auto initialize =
        reinterpret_cast<decltype(&OPENSSL_init_crypto)>(crypto.resolve("OPENSSL_init_crypto"));
    if (initialize != nullptr)
        initialize(OPENSSL_INIT_NO_ATEXIT, nullptr);
}

/// What is wrong with a file of which these certificates could be read.
QString problemOf(const QString &path, const QByteArray &content, qsizetype readable)
{
    const qsizetype announced = content.count("-----BEGIN CERTIFICATE-----");
    if (readable == 0)
        return QStringLiteral("The file “%1” holds no certificate that can be read.").arg(path);
    if (readable < announced) {
        return QStringLiteral("Of the %1 certificates in the file “%2” only %3 can be read.")
            .arg(announced)
            .arg(path)
            .arg(readable);
    }
    return {};
}

} // namespace

TrustedCertificates loadTrustedCertificates(const QString &path)
{
    leaveOpenSslAtExit();
    TrustedCertificates trusted;
    trusted.tls = QSslConfiguration::defaultConfiguration();
    trusted.tls.setPeerVerifyMode(QSslSocket::VerifyPeer);
    const QFileInfo file(path);
    if (path.isEmpty() || (!file.exists() && !file.isSymLink()))
        return trusted;
    QList<QSslCertificate> further;
    try {
        const QByteArray content = readWholeFile(path);
        further = QSslCertificate::fromData(content, QSsl::Pem);
        trusted.problem = problemOf(path, content, further.size());
    } catch (const FileError &error) {
        trusted.problem = error.description();
    }
    // Named whole: a list of one's own would otherwise switch off the system's, which are loaded on
    // demand.
    if (!further.isEmpty())
        trusted.tls.setCaCertificates(QSslConfiguration::systemCaCertificates() + further);
    return trusted;
}

} // namespace veltrix
