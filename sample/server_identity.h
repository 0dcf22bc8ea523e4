// SPDX-License-Identifier: GPL-3.0-or-later
// A certificate for loopback, signed by an authority that exists for one run of the services.
#pragma once

#include <QByteArray>

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <memory>

namespace veltrix::sample
{

struct OpenSslDelete {
    void operator()(X509 *certificate) const { X509_free(certificate); }
    void operator()(EVP_PKEY *key) const { EVP_PKEY_free(key); }
};
using CertificatePointer = std::unique_ptr<X509, OpenSslDelete>;
using KeyPointer = std::unique_ptr<EVP_PKEY, OpenSslDelete>;

struct ServerIdentity {
    /// For 127.0.0.1 and localhost.
    CertificatePointer certificate;
    KeyPointer key;
    /// The authority's certificate, for clients to trust. Its key is thrown away.
    QByteArray authorityPem;
};

/// Makes new keys and certificates, valid from yesterday for 30 days. Throws std::runtime_error if
/// OpenSSL fails.
ServerIdentity makeServerIdentity();

} // namespace veltrix::sample
