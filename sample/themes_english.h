// SPDX-License-Identifier: GPL-3.0-or-later
// The themes one by one; theme.cpp puts them in order.
#pragma once

#include "sample/theme.h"

namespace veltrix::sample
{

Theme photoTheme();
Theme videoTheme();
Theme journalTheme();
Theme budgetTheme();
Theme tradingTheme();
Theme meditationTheme();
Theme privateNetworkTheme();
Theme recipesTheme();
Theme runningTheme();
Theme languagesTheme();
Theme calendarTheme();
Theme notesTheme();
Theme weatherTheme();
Theme puzzlesTheme();
Theme kidsGamesTheme();
Theme socialTheme();
Theme travelTheme();
Theme musicTheme();

} // namespace veltrix::sample
