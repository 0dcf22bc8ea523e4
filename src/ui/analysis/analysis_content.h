// SPDX-License-Identifier: GPL-3.0-or-later
// What the keyword analysis says about a saved snapshot, as texts and figures. A pure value.
#pragma once

#include "model/keyword_snapshot.h"
#include "ui_kit/widgets/badge.h"
#include "ui_kit/widgets/card.h"

#include <QLocale>
#include <QString>
#include <QTimeZone>

#include <variant>

namespace veltrix
{

/// A paragraph.
struct AnalysisText {
    enum class Kind { Plain, Note, Warning, Info };
    Kind kind = Kind::Plain;
    QString text;
    /// What the text speaks of, in a tool tip; may be empty.
    QString help = {};

    bool operator==(const AnalysisText &) const = default;
};

/// A part of a score: a meter with its weight and its weighted points.
struct AnalysisFactor {
    QString name;
    /// "45% weight"; empty when the weight is not known.
    QString weight;
    /// How full the meter is, 0 to 1.
    double fraction = 0;
    QString detail;
    /// Weighted points, one decimal; empty when the weight is not known.
    QString points;

    bool operator==(const AnalysisFactor &) const = default;
};

/// A piece of evidence: what was tried, and what it showed.
struct AnalysisEvidence {
    QString name;
    QString value;

    bool operator==(const AnalysisEvidence &) const = default;
};

using AnalysisItem = std::variant<AnalysisText, AnalysisFactor, AnalysisEvidence>;

/// One model and how it came to its score.
struct AnalysisCard {
    /// Which model; also the start of the object names of its widgets.
    enum class Model { Popularity, Autocomplete, Difficulty, Competition };
    Model model = Model::Popularity;
    QString title;
    /// 0 to 100.
    std::optional<std::int64_t> score = {};
    /// Words that stand in the place of a score; empty for none.
    QString missing = {};
    QList<AnalysisItem> items = {};

    /// "61 / 100", or what is missing.
    [[nodiscard]] QString scoreText() const;
    bool operator==(const AnalysisCard &) const = default;
};

/// What the sheet says about one keyword.
struct AnalysisContent {
    QString keyword;
    /// Two-letter storefront code.
    QString country;
    /// Without a snapshot only the two texts below are there.
    bool isSaved = false;
    QString emptyTitle;
    QString emptyText;

    /// "Saved observation: " and when it was made.
    QString observation;
    QString guidanceTitle;
    /// The target label with its colour.
    Badge guidance;
    QString guidanceText;
    QList<Figure> figures;
    /// What the position means.
    QString positionNote;
    /// Which of the figures the target comes from; empty without a target.
    QString targetNote;
    QList<AnalysisCard> cards;

    bool operator==(const AnalysisContent &) const = default;
};

/// How numbers and dates are written.
struct AnalysisFormat {
    QLocale locale = QLocale();
    QTimeZone zone = QTimeZone::systemTimeZone();
};

/// `snapshot` may be null.
AnalysisContent analysisContent(const QString &keyword, const QString &country,
                                const KeywordSnapshot *snapshot, const AnalysisFormat &format = {});

/// The whole analysis as text, for the clipboard.
QString plainText(const AnalysisContent &content, const AnalysisFormat &format = {});

} // namespace veltrix
