// SPDX-License-Identifier: GPL-3.0-or-later
// What keyword searches have left behind, without asking any service.
#pragma once

#include "effects/task.h"
#include "model/saved_results.h"

#include <optional>
#include <stop_token>

namespace veltrix
{

/// Keeps the ranked results of keyword searches. Implemented by ResearchClient and
/// RankedAppsKeeper.
class RankedAppsSaving
{
public:
    RankedAppsSaving() = default;
    virtual ~RankedAppsSaving() = default;
    RankedAppsSaving(const RankedAppsSaving &) = delete;
    RankedAppsSaving &operator=(const RankedAppsSaving &) = delete;

    /// What is kept for a keyword in a storefront, however old; both in any case. Nothing when it
    /// was never searched for. Throws Cancelled only.
    [[nodiscard]] virtual Task<std::optional<SavedResults>>
    savedResults(QString keyword, QString country, std::stop_token stop) = 0;
};

} // namespace veltrix
