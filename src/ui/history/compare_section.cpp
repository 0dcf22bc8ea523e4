// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/compare_section.h"

#include "ui/history/compare_legend.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/text_label.h"

namespace veltrix
{

CompareSection::CompareSection(QWidget *parent)
    : QWidget(parent), m_problem(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Red,
                                               QString(), QStringLiteral("historyRivalsProblem"))),
      m_legend(new CompareLegend),
      m_hint(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary,
                           tr("Track competitors to compare them here."),
                           QStringLiteral("historyNoRivals")))
{
    auto *layout = makeColumn(spacing::xs, this);
    layout->addWidget(m_problem);
    layout->addWidget(m_legend);
    layout->addWidget(m_hint);
    setProblem(QString());
    connect(m_legend, &CompareLegend::turned, this, &CompareSection::turned);
    connect(m_legend, &CompareLegend::pointedAt, this, &CompareSection::pointedAt);
}

void CompareSection::setChart(const ComparedChart &chart, std::optional<size_t> day)
{
    m_hasRivals = !chart.rivals.empty();
    m_hint->setVisible(!m_hasRivals);
    m_legend->setVisible(m_hasRivals);
    if (!m_hasRivals) {
        m_legend->setEntries({});
        return;
    }
    m_legend->setEntries(legendEntries(chart, day));
}

void CompareSection::setProblem(const QString &problem)
{
    m_problem->setText(problem);
    m_problem->setAccessibleName(problem);
    m_problem->setVisible(!problem.isEmpty());
}

void CompareSection::setControlsShown(bool shown)
{
    m_legend->setOffShown(shown);
    m_hint->setVisible(shown && !m_hasRivals);
}

} // namespace veltrix
