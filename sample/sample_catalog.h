// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store: every app of it, the same on every machine and at every start.
#pragma once

#include "sample/sample_app.h"

#include <vector>

namespace veltrix::sample
{

class SampleCatalog
{
public:
    /// Makes all apps: the fixtures, the apps made for the world, and those of each language.
    SampleCatalog();

    /// In a fixed order; track IDs are unique.
    [[nodiscard]] const std::vector<SampleApp> &apps() const { return m_apps; }
    /// None if there is no such app.
    [[nodiscard]] const SampleApp *find(std::int64_t trackId) const;

private:
    std::vector<SampleApp> m_apps;
};

} // namespace veltrix::sample
