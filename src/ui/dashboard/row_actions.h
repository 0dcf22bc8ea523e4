// SPDX-License-Identifier: GPL-3.0-or-later
// The buttons that appear in the row under the pointer or with the focus.
#pragma once

#include <QWidget>

namespace veltrix
{

class Button;
struct DashboardKeywordRow;

class RowActions final : public QWidget
{
    Q_OBJECT

public:
    explicit RowActions(QWidget *parent = nullptr);

    enum class Extent {
        All,
        /// "More actions" alone, whose menu has the others.
        More,
    };
    void setExtent(Extent extent);
    /// Pixels.
    [[nodiscard]] int widthOf(Extent extent) const;

    /// Names the buttons for that keyword.
    void setRow(const DashboardKeywordRow &row);

Q_SIGNALS:
    void rankedAppsRequested();
    void historyRequested();
    void menuRequested(const QPoint &globalPosition);

private:
    Button *m_rankedApps;
    Button *m_history;
    Button *m_more;
};

} // namespace veltrix
