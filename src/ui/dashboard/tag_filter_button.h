// SPDX-License-Identifier: GPL-3.0-or-later
// The button beside the quick filters that chooses tags.
#pragma once

#include "ui/dashboard/tag_filter.h"
#include "ui_kit/widgets/button.h"

#include <functional>

namespace veltrix
{

/// Shows which tags are chosen, and opens the list of them.
class TagFilterButton final : public Button
{
    Q_OBJECT

public:
    explicit TagFilterButton(QWidget *parent = nullptr);

    /// Tells the tags that there are, each time the list opens.
    void setSource(std::function<QStringList()> allTags) { m_allTags = std::move(allTags); }
    /// Why there may be more than is told; empty where there are not.
    void setProblem(const QString &problem) { m_problem = problem; }
    void setChosen(const TagFilter &filter);
    [[nodiscard]] const TagFilter &chosen() const { return m_filter; }

    void openList();

    /// A long name gives way.
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user chose others.
    void picked(const TagFilter &filter);

private:
    std::function<QStringList()> m_allTags;
    QString m_problem;
    TagFilter m_filter;
};

} // namespace veltrix
