// SPDX-License-Identifier: GPL-3.0-or-later
// The cards of the keyword analysis, one a model.
#pragma once

#include "ui/analysis/analysis_content.h"

#include <QCoreApplication>

namespace veltrix
{

/// The translation context of the analysis.
struct AnalysisTexts {
    Q_DECLARE_TR_FUNCTIONS(KeywordAnalysis)
};

/// The version of the model that scores autocomplete visibility. Saved evidence names no version;
/// there has been no other.
inline constexpr QLatin1String autocompleteModelVersion{"autocomplete-visibility-v2"};

/// From this spread of daily scores on, visibility counts as having varied substantially.
inline constexpr std::int64_t variableScoreSpread = 26;
/// More observed days than this, and the score is their median.
inline constexpr std::int64_t daysBeforeMedian = 2;

AnalysisCard popularityCard(const KeywordSnapshot &snapshot, const QLocale &locale);
AnalysisCard autocompleteCard(const KeywordSnapshot &snapshot);
AnalysisCard difficultyCard(const KeywordSnapshot &snapshot, const QLocale &locale);
AnalysisCard competitionCard(const KeywordSnapshot &snapshot, const QLocale &locale);

} // namespace veltrix
