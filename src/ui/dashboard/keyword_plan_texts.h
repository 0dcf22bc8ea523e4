// SPDX-License-Identifier: GPL-3.0-or-later
// What adding keywords would do, in words.
#pragma once

#include "ui/dashboard/keyword_plan.h"

#include <QString>

namespace veltrix
{

/// "12 keywords × 2 storefronts: 22 will be added, 2 are tracked already, 1 cannot be added". What
/// would not happen is left out; "5 keywords" where all of them go to one storefront.
QString typedNote(const KeywordPlan &plan, qsizetype storefronts);

/// "41 will be added, 6 are tracked already, 2 cannot be added", and on a line of its own how many
/// in which storefront: "United States 21, Germany 20"; of more than five the first five, and "and
/// 3 more".
QString fileNote(const KeywordPlan &plan);

/// The label of the button that carries both plans out: "Add 53 keywords".
QString addLabel(qsizetype added);

} // namespace veltrix
