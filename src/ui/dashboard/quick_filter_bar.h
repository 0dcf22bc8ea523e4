// SPDX-License-Identifier: GPL-3.0-or-later
// The strip over the keyword table that chooses a quick filter.
#pragma once

#include "ui/dashboard/quick_filter.h"

#include <QWidget>

namespace veltrix
{

class Button;
class SegmentedControl;

/// The quick filters as one choice, with how many keywords each shows. Those that the width has no
/// room for are in the menu of "More".
class QuickFilterBar final : public QWidget
{
    Q_OBJECT

public:
    explicit QuickFilterBar(QWidget *parent = nullptr);

    [[nodiscard]] QuickFilter chosen() const;
    void choose(QuickFilter filter);
    void setCounts(const QuickFilterCounts &counts);
    /// Puts another filter behind the quick ones, which give way to it.
    void setOtherFilter(QWidget *filter);

Q_SIGNALS:
    /// Another filter was chosen.
    void changed(QuickFilter filter);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void fit();
    void openMenu();

    SegmentedControl *m_filters;
    Button *m_more;
    QWidget *m_other = nullptr;
    QuickFilterCounts m_counts{};
};

} // namespace veltrix
