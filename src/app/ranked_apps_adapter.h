// SPDX-License-Identifier: GPL-3.0-or-later
// The research client's saved results, as the store asks for them.
#pragma once

#include "clients/research_client.h"
#include "store/aso_store.h"

#include <memory>

namespace veltrix
{

class RankedAppsAdapter final : public RankedAppsSaving
{
public:
    explicit RankedAppsAdapter(std::shared_ptr<ResearchClient> client) : m_client(std::move(client))
    {
    }

    [[nodiscard]] std::optional<SavedRankedApps> savedRankedApps(QString keyword,
                                                                 QString country) const override;

private:
    std::shared_ptr<ResearchClient> m_client;
};

} // namespace veltrix
