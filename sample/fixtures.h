// SPDX-License-Identifier: GPL-3.0-or-later
// Apps with known names and numbers, for demonstrations and tests to hold on to.
#pragma once

#include "sample/sample_app.h"

#include <vector>

namespace veltrix::sample
{

/// A photo editor with some 4,000 ratings in the United States.
inline constexpr std::int64_t lumenPhotoEditorId = 1'482'203'417;
/// A diary, at home in the United Kingdom; its number needs more than 32 bits.
inline constexpr std::int64_t tidewaterJournalId = 6'451'880'243;
/// A household budget, at home in Germany.
inline constexpr std::int64_t orchardBudgetId = 1'130'274'468;
/// Well-known competitors of the photo editor.
inline constexpr std::int64_t foxgloveFilmCameraId = 968'140'233;
inline constexpr std::int64_t dovetailCamId = 1'267'501'912;
inline constexpr std::int64_t quietApertureId = 6'470'119'086;

std::vector<SampleApp> fixtureApps();

} // namespace veltrix::sample
