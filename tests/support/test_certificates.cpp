// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/test_certificates.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <stdexcept>

namespace veltrix
{

namespace
{

constexpr long hour = 3600;

void require(bool succeeded, const char *what)
{
    if (!succeeded)
        throw std::runtime_error(std::string("OpenSSL failed: ") + what);
}

std::shared_ptr<EVP_PKEY> newKey()
{
    EVP_PKEY *key = EVP_EC_gen("P-256");
    require(key != nullptr, "key");
    return {key, EVP_PKEY_free};
}

void addExtension(X509 *certificate, X509 *issuer, int kind, const char *value)
{
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    X509_EXTENSION *extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value);
    require(extension != nullptr, value);
    X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
}

std::shared_ptr<X509> newCertificate(EVP_PKEY *key, const char *name, long validFrom, long validTo)
{
    const std::shared_ptr<X509> certificate(X509_new(), X509_free);
    X509_set_version(certificate.get(), X509_VERSION_3);
    std::uint64_t serial = 0;
    require(RAND_bytes(reinterpret_cast<unsigned char *>(&serial), sizeof serial) == 1, "serial");
    ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate.get()), serial >> 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), validFrom);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), validTo);
    X509_set_pubkey(certificate.get(), key);
    X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate.get()), "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char *>(name), -1, -1, 0);
    return certificate;
}

} // namespace

QByteArray TestIdentity::certificatePem() const
{
    const std::unique_ptr<BIO, decltype(&BIO_free)> memory(BIO_new(BIO_s_mem()), BIO_free);
    require(PEM_write_bio_X509(memory.get(), certificate.get()) == 1, "PEM");
    char *data = nullptr;
    const long size = BIO_get_mem_data(memory.get(), &data);
    return {data, size};
}

TestAuthority::TestAuthority()
{
    m_identity.key = newKey();
    m_identity.certificate =
        newCertificate(m_identity.key.get(), "Veltrix test authority", -48 * hour, 48 * hour);
    X509 *own = m_identity.certificate.get();
    X509_set_issuer_name(own, X509_get_subject_name(own));
    addExtension(own, own, NID_basic_constraints, "critical,CA:TRUE");
    addExtension(own, own, NID_key_usage, "critical,keyCertSign");
    addExtension(own, own, NID_subject_key_identifier, "hash");
    require(X509_sign(own, m_identity.key.get(), EVP_sha256()) > 0, "signing");
}

TestIdentity TestAuthority::issue(const char *alternativeName, Validity validity) const
{
    TestIdentity identity;
    identity.key = newKey();
    const long from = validity == Validity::NotYet ? 2 * hour : -24 * hour;
    const long to = validity == Validity::Expired ? -1 * hour : 24 * hour;
    identity.certificate = newCertificate(identity.key.get(), "test server", from, to);
    X509 *own = identity.certificate.get();
    X509 *issuer = m_identity.certificate.get();
    X509_set_issuer_name(own, X509_get_subject_name(issuer));
    addExtension(own, issuer, NID_basic_constraints, "CA:FALSE");
    addExtension(own, issuer, NID_subject_alt_name, alternativeName);
    require(X509_sign(own, m_identity.key.get(), EVP_sha256()) > 0, "signing");
    return identity;
}

} // namespace veltrix
