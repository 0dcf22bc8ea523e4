// SPDX-License-Identifier: GPL-3.0-or-later
// Failures of the store's own.
#pragma once

#include "model/error.h"

#include <QLatin1String>

namespace veltrix
{

/// A store operation that cannot be done. `code` is 404 (not there), 422 (not usable) or 423 (not
/// now: the saved state has not been read).
class StoreError final : public Error
{
public:
    StoreError(int code, QString description) : Error(std::move(description)), m_code(code) {}
    [[nodiscard]] int code() const { return m_code; }
    /// The domain of store errors, "ASOStore".
    static constexpr QLatin1String domain{"ASOStore"};

private:
    int m_code;
};

} // namespace veltrix
