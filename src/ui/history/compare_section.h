// SPDX-License-Identifier: GPL-3.0-or-later
// What stands below a compared chart: the legend, or how to get one.
#pragma once

#include "ui/history/compared_history.h"

#include <QWidget>

namespace veltrix
{

class CompareLegend;
class TextLabel;

/// The legend, and why it has no ranks.
class CompareSection final : public QWidget
{
    Q_OBJECT

public:
    explicit CompareSection(QWidget *parent = nullptr);

    /// `day` is the inspected one.
    void setChart(const ComparedChart &chart, std::optional<size_t> day);
    /// Why ranks of competitors are missing; empty when they are not.
    void setProblem(const QString &problem);
    /// In a picture what can only be done on screen means nothing.
    void setControlsShown(bool shown);

Q_SIGNALS:
    void turned(std::int64_t line, bool on);
    void pointedAt(std::optional<std::int64_t> line);

private:
    TextLabel *m_problem;
    CompareLegend *m_legend;
    TextLabel *m_hint;
    bool m_hasRivals = false;
};

} // namespace veltrix
