// SPDX-License-Identifier: GPL-3.0-or-later
// How large each App Store storefront is beside that of the United States.
#pragma once

#include <QStringView>

#include <optional>
#include <span>
#include <string_view>

namespace veltrix
{

/// The size of one storefront.
struct StorefrontMarket {
    /// Two upper-case letters.
    std::string_view code;
    /// Market size relative to the United States, which is 1; 0.0001 for the smallest.
    double factor = 0;
};

/// All 175 storefronts that the opportunity model supports.
std::span<const StorefrontMarket> storefrontMarkets();

/// The market factor of a storefront code in any case; no value for one that is not supported.
std::optional<double> storefrontMarketFactor(QStringView storefront);

} // namespace veltrix
