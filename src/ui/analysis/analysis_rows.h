// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of an analysis card.
#pragma once

#include "ui/analysis/analysis_content.h"
#include "ui_kit/theme/tokens.h"

#include <QWidget>

namespace veltrix
{

/// A paragraph, with a symbol in front where it warns or informs.
QWidget *makeTextRow(const AnalysisText &text);
/// Name and weight, the meter with its explanation below, the weighted points.
QWidget *makeFactorRow(const AnalysisFactor &factor, Token meter);
/// What was tried and what it showed, on one line.
QWidget *makeEvidenceRow(const AnalysisEvidence &evidence);

} // namespace veltrix
