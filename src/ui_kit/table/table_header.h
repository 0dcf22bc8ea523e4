// SPDX-License-Identifier: GPL-3.0-or-later
// Quiet column headers: secondary text, a small arrow at the sorted column, a hairline below.
#pragma once

#include <QHeaderView>

namespace veltrix
{

class TableHeader final : public QHeaderView
{
    Q_OBJECT

public:
    explicit TableHeader(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// The room for a section's text, and for its arrow where it has one.
    [[nodiscard]] static QRect contentOf(const QRect &section);
    [[nodiscard]] qreal arrowRoom(int logicalIndex) const;
    [[nodiscard]] bool isElided(int logicalIndex) const;
};

} // namespace veltrix
