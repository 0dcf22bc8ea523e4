// SPDX-License-Identifier: GPL-3.0-or-later
// Notes and noticed changes as controls between plot and dates.
#pragma once

#include "ui/history/mark_row.h"

#include <QWidget>

namespace veltrix
{

/// Lies over the chart where its marks stand. One stop of Tab; arrows, Home and End move among the
/// marks.
class MarkRowView final : public QWidget
{
    Q_OBJECT

public:
    explicit MarkRowView(QWidget *parent = nullptr);

    /// `marks` in the coordinates of a chart that lies at `origin` in the parent; dates are told as
    /// those of `days`.
    void show(const std::vector<PlacedMark> &marks, QPoint origin,
              const std::vector<RankingTimeline::Day> &days);

Q_SIGNALS:
    void notePressed(QUuid noteId);
    /// A change was pressed.
    void dayPressed(std::int64_t day);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    class Mark;

    void press(Mark &mark);
    /// The stop of Tab is the mark that had the focus last.
    void stopAt(Mark *mark);

    std::vector<Mark *> m_marks;
};

} // namespace veltrix
