// SPDX-License-Identifier: GPL-3.0-or-later
// Who made a package: Ed25519 signatures and the key that they are checked with.
#pragma once

#include <QByteArrayView>
#include <QStringView>

#include <array>
#include <optional>

namespace veltrix
{

/// A signature as it came, genuine or not.
class UpdateSignature
{
public:
    static constexpr size_t size = 64;

    /// Reads base64 of exactly 64 bytes: standard alphabet, padded, nothing around it.
    static std::optional<UpdateSignature> fromBase64(QStringView text);

    bool operator==(const UpdateSignature &) const = default;

private:
    friend class UpdateKey;
    std::array<unsigned char, size> m_bytes{};
};

/// The public key of those who release Veltrix.
class UpdateKey
{
public:
    static constexpr size_t size = 32;

    /// Reads base64 of exactly 32 bytes: standard alphabet, padded, nothing around it.
    static std::optional<UpdateKey> fromBase64(QStringView text);

    /// Throws UpdateError unless `package` has the announced length in bytes and `signature` is
    /// that of this key over exactly these bytes. The length is compared first.
    void requireGenuine(QByteArrayView package, qint64 announcedLength,
                        const UpdateSignature &signature) const;

    bool operator==(const UpdateKey &) const = default;

private:
    std::array<unsigned char, size> m_bytes{};
};

} // namespace veltrix
