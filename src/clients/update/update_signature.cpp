// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/update_signature.h"

#include "clients/update/update_error.h"

#include <sodium.h>

namespace veltrix
{

namespace
{

static_assert(UpdateSignature::size == crypto_sign_BYTES);
static_assert(UpdateKey::size == crypto_sign_PUBLICKEYBYTES);

/// Fills `bytes`; false unless the text is base64 of exactly that many.
template <size_t size>
bool decodeBase64(QStringView text, std::array<unsigned char, size> &bytes)
{
    // Whatever is outside Latin-1 becomes a question mark, which base64 does not have.
    const QByteArray encoded = text.toLatin1();
    size_t decoded = 0;
    const int result =
        sodium_base642bin(bytes.data(), bytes.size(), encoded.constData(), size_t(encoded.size()),
                          nullptr, &decoded, nullptr, sodium_base64_VARIANT_ORIGINAL);
    return result == 0 && decoded == size;
}

} // namespace

std::optional<UpdateSignature> UpdateSignature::fromBase64(QStringView text)
{
    UpdateSignature signature;
    return decodeBase64(text, signature.m_bytes) ? std::optional(signature) : std::nullopt;
}

std::optional<UpdateKey> UpdateKey::fromBase64(QStringView text)
{
    UpdateKey key;
    return decodeBase64(text, key.m_bytes) ? std::optional(key) : std::nullopt;
}

void UpdateKey::requireGenuine(QByteArrayView package, qint64 announcedLength,
                               const UpdateSignature &signature) const
{
    if (package.size() != announcedLength) {
        throw UpdateError(QStringLiteral("The update was refused: it has %1 bytes, not the "
                                         "announced %2.")
                              .arg(package.size())
                              .arg(announcedLength));
    }
    const auto *bytes = reinterpret_cast<const unsigned char *>(package.data());
    if (sodium_init() < 0 ||
        crypto_sign_verify_detached(signature.m_bytes.data(), bytes,
                                    static_cast<unsigned long long>(package.size()),
                                    m_bytes.data()) != 0) {
        throw UpdateError(
            QStringLiteral("The update was refused: its signature is not that of Veltrix."));
    }
}

} // namespace veltrix
