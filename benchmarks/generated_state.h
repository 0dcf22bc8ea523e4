// SPDX-License-Identifier: GPL-3.0-or-later
// States of the size and shape that years of use leave, for benchmarks.
#pragma once

#include "store/persisted_state.h"

namespace veltrix
{

/// Two apps with `keywords` keywords, each measured daily for `days` days, some 3 kB of JSON a
/// snapshot. As in life, icons and suggestions change slowly, dates and figures every day. The same
/// arguments give the same state.
PersistedState generatedState(int keywords, int days);

/// One more measurement of a keyword of such a state, a day after the last.
SharedSnapshot nextMeasurement(const PersistedState &state, int keyword);

/// A state of bare snapshots, 0.5 kB of JSON each, for what depends on their number alone.
PersistedState generatedBareState(int keywords, int days);

} // namespace veltrix
