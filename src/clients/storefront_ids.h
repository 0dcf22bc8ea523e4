// SPDX-License-Identifier: GPL-3.0-or-later
// The numbers by which the App Store names its storefronts and their languages.
#pragma once

#include <QString>

#include <optional>

namespace veltrix
{

/// A storefront as its services know it.
struct StorefrontId {
    int storefrontId = 0;
    /// Of the storefront's default language; absent where it is not known.
    std::optional<int> languageId;
    /// The default language, for example "en-GB"; empty where it is not known.
    QString language;

    /// The value of the header "X-Apple-Store-Front".
    [[nodiscard]] QString header() const;

    bool operator==(const StorefrontId &) const = default;
};

/// The storefront of a two-letter country code, in any case; nothing when its number is not known.
std::optional<StorefrontId> storefrontIdOf(const QString &country);

} // namespace veltrix
