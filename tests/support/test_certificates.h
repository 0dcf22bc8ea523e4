// SPDX-License-Identifier: GPL-3.0-or-later
// Certificates that are made when a test runs: nothing in the tree expires or is secret.
#pragma once

#include <QByteArray>

#include <chrono>
#include <memory>

using X509 = struct x509_st;
using EVP_PKEY = struct evp_pkey_st;

namespace veltrix
{

/// A key with its certificate.
struct TestIdentity {
    std::shared_ptr<EVP_PKEY> key;
    std::shared_ptr<X509> certificate;

    /// The certificate as PEM text.
    [[nodiscard]] QByteArray certificatePem() const;
};

/// A certificate authority that lives as long as the test.
class TestAuthority
{
public:
    TestAuthority();

    enum class Validity { Now, Expired, NotYet };

    /// A server's certificate. `alternativeName` is in OpenSSL's form,
    /// "DNS:localhost,IP:127.0.0.1".
    [[nodiscard]] TestIdentity issue(const char *alternativeName,
                                     Validity validity = Validity::Now) const;

    /// The authority's own certificate as PEM text.
    [[nodiscard]] QByteArray certificatePem() const { return m_identity.certificatePem(); }

private:
    TestIdentity m_identity;
};

} // namespace veltrix
