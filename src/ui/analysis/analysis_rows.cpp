// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/analysis/analysis_rows.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/tool_tip_text.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/card.h"
#include "ui_kit/widgets/layouts.h"

namespace veltrix
{

namespace
{

/// Shares of a factor row: name, meter, points.
constexpr int nameShare = 5;
constexpr int meterShare = 13;
constexpr int pointsShare = 3;

QString symbolOf(AnalysisText::Kind kind)
{
    switch (kind) {
    case AnalysisText::Kind::Warning:
        return QStringLiteral("exclamationmark.triangle");
    case AnalysisText::Kind::Info:
        return QStringLiteral("info.circle");
    case AnalysisText::Kind::Plain:
    case AnalysisText::Kind::Note:
        return {};
    }
    Q_UNREACHABLE();
}

} // namespace

QWidget *makeTextRow(const AnalysisText &text)
{
    const bool isPlain = text.kind == AnalysisText::Kind::Plain;
    auto *label = makeParagraph(isPlain ? TextStyle::Body : TextStyle::Secondary,
                                isPlain || text.kind == AnalysisText::Kind::Warning
                                    ? TextLabel::Tone::Text
                                    : TextLabel::Tone::Secondary,
                                text.text);
    label->setToolTip(toolTipText(text.help));
    label->setAccessibleDescription(text.help);
    const QString symbol = symbolOf(text.kind);
    if (symbol.isEmpty())
        return label;
    auto *row = new QWidget;
    auto *layout = makeRow(spacing::s, row);
    const bool isWarning = text.kind == AnalysisText::Kind::Warning;
    layout->addWidget(new SymbolView(symbol, isWarning ? Token::Orange : Token::Secondary), 0,
                      Qt::AlignTop);
    layout->addWidget(label, 1);
    return row;
}

QWidget *makeFactorRow(const AnalysisFactor &factor, Token token)
{
    auto *row = new QWidget;
    setAccessibleRole(row, QAccessible::Grouping);
    QStringList sentence{factor.name};
    for (const QString &part : {factor.weight, factor.points, factor.detail}) {
        if (!part.isEmpty())
            sentence << part;
    }
    row->setAccessibleName(sentence.join(QStringLiteral(", ")));

    auto *names = makeColumn(0);
    names->addStretch(1);
    names->addWidget(makeParagraph(TextStyle::BodyMedium, TextLabel::Tone::Text, factor.name));
    names->addWidget(
        makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, factor.weight));
    names->addStretch(1);
    auto *middle = makeColumn(spacing::xs);
    auto *meter = new Meter(token);
    meter->setFraction(factor.fraction);
    middle->addSpacing(5);
    middle->addWidget(meter);
    middle->addWidget(
        makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, factor.detail));
    auto *points = new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, factor.points);
    points->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    auto *layout = makeRow(spacing::m, row, {0, spacing::xs, 0, spacing::xs});
    layout->addLayout(names, nameShare);
    layout->addLayout(middle, meterShare);
    layout->addWidget(points, pointsShare);
    return row;
}

QWidget *makeEvidenceRow(const AnalysisEvidence &evidence)
{
    auto *row = new QWidget;
    setAccessibleRole(row, QAccessible::Grouping);
    row->setAccessibleName(evidence.name + QStringLiteral(", ") + evidence.value);
    auto *layout = makeRow(spacing::m, row);
    layout->addWidget(new ElidedLabel(TextStyle::BodyMedium, TextLabel::Tone::Text, evidence.name),
                      nameShare);
    layout->addWidget(new ElidedLabel(TextStyle::Body, TextLabel::Tone::Secondary, evidence.value),
                      meterShare + pointsShare);
    return row;
}

} // namespace veltrix
