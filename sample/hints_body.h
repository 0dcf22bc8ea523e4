// SPDX-License-Identifier: GPL-3.0-or-later
// The property lists of the search-hints service, in both of its forms.
#pragma once

#include "sample/hint_index.h"

#include <QByteArray>

#include <vector>

namespace veltrix::sample
{

enum class HintsForm {
    /// Each hint has `term` and `displayTerm`.
    Newer,
    /// Each hint has `term`, `priority` and `url`.
    Older,
};

/// An XML property list with a document type; its hints stand in the given order.
QByteArray hintsBody(const std::vector<Hint> &hints, HintsForm form);

} // namespace veltrix::sample
