// SPDX-License-Identifier: GPL-3.0-or-later
// A certificate for loopback and its authority.
#include "sample/server_identity.h"

#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <cstdint>
#include <stdexcept>

namespace veltrix::sample
{

namespace
{

constexpr long secondsPerDay = 86'400;
constexpr long validDays = 30;

void require(bool succeeded)
{
    if (!succeeded)
        throw std::runtime_error("A certificate could not be made.");
}

KeyPointer newKey()
{
    KeyPointer key(EVP_EC_gen("P-256"));
    require(key != nullptr);
    return key;
}

/// A certificate with names, dates and key, still without extensions and signature.
CertificatePointer newCertificate(const char *subject, EVP_PKEY *key, const X509 *issuer)
{
    CertificatePointer certificate(X509_new());
    require(certificate != nullptr && X509_set_version(certificate.get(), X509_VERSION_3) == 1);
    std::uint64_t serial = 0;
    require(RAND_bytes(reinterpret_cast<unsigned char *>(&serial), sizeof serial) == 1);
    require(ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate.get()), serial >> 1) == 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -secondsPerDay);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), validDays * secondsPerDay);
    X509_NAME *name = X509_get_subject_name(certificate.get());
    require(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                                       reinterpret_cast<const unsigned char *>(subject), -1, -1,
                                       0) == 1);
    const X509_NAME *issuerName = issuer ? X509_get_subject_name(issuer) : name;
    require(X509_set_issuer_name(certificate.get(), issuerName) == 1);
    require(X509_set_pubkey(certificate.get(), key) == 1);
    return certificate;
}

void addExtension(X509 *certificate, X509 *issuer, int kind, const char *value)
{
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    X509_EXTENSION *extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value);
    const bool added = extension && X509_add_ext(certificate, extension, -1) == 1;
    X509_EXTENSION_free(extension);
    require(added);
}

QByteArray pemOf(X509 *certificate)
{
    BIO *memory = BIO_new(BIO_s_mem());
    const bool written = memory && PEM_write_bio_X509(memory, certificate) == 1;
    char *data = nullptr;
    const long size = written ? BIO_get_mem_data(memory, &data) : 0;
    const QByteArray pem(data, size);
    BIO_free(memory);
    require(written);
    return pem;
}

} // namespace

ServerIdentity makeServerIdentity()
{
    const KeyPointer authorityKey = newKey();
    const CertificatePointer authority =
        newCertificate("Veltrix Sample Authority", authorityKey.get(), nullptr);
    addExtension(authority.get(), authority.get(), NID_basic_constraints, "critical,CA:TRUE");
    addExtension(authority.get(), authority.get(), NID_key_usage, "critical,keyCertSign,cRLSign");
    addExtension(authority.get(), authority.get(), NID_subject_key_identifier, "hash");
    require(X509_sign(authority.get(), authorityKey.get(), EVP_sha256()) > 0);

    ServerIdentity identity;
    identity.key = newKey();
    identity.certificate = newCertificate("localhost", identity.key.get(), authority.get());
    X509 *certificate = identity.certificate.get();
    addExtension(certificate, authority.get(), NID_basic_constraints, "critical,CA:FALSE");
    addExtension(certificate, authority.get(), NID_key_usage, "critical,digitalSignature");
    addExtension(certificate, authority.get(), NID_ext_key_usage, "serverAuth");
    addExtension(certificate, authority.get(), NID_subject_alt_name, "IP:127.0.0.1,DNS:localhost");
    addExtension(certificate, authority.get(), NID_authority_key_identifier, "keyid");
    require(X509_sign(certificate, authorityKey.get(), EVP_sha256()) > 0);
    identity.authorityPem = pemOf(authority.get());
    return identity;
}

} // namespace veltrix::sample
