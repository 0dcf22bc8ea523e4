// SPDX-License-Identifier: GPL-3.0-or-later
// Whose certificates are believed. Only for NetworkHttp: whoever includes it needs Qt Network.
#pragma once

#include <QSslConfiguration>
#include <QString>

namespace veltrix
{

/// TLS settings that verify every server, against the system's certificate authorities and those of
/// a file.
struct TrustedCertificates {
    QSslConfiguration tls;
    /// What is wrong with the file, as a sentence for the user; empty when nothing is.
    QString problem;
};

/// `path` is a PEM file; empty or missing means none besides the system's. Of a broken file the
/// certificates that can be read are trusted, and the problem is told. Called before anything else
/// uses TLS, it makes exits safe while the network's thread ends.
TrustedCertificates loadTrustedCertificates(const QString &path);

} // namespace veltrix
