// SPDX-License-Identifier: GPL-3.0-or-later
// Quiet column headers: secondary text, a small arrow at the sorted column, a hairline below. One
// column may be held in view.
#pragma once

#include <QHeaderView>

#include <optional>

namespace veltrix
{

class TableHeader final : public QHeaderView
{
    Q_OBJECT

public:
    explicit TableHeader(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

    /// Keeps a section in view at the leading edge while the others scroll beneath it. One that is
    /// wider than half of the table is not held: it would leave no room for the others.
    void holdSection(int section);
    /// -1 when there is none to be held.
    [[nodiscard]] int heldSection() const { return m_held; }
    /// Where the held section is while it isn't in its own place; else empty. Of the viewport.
    [[nodiscard]] QRect heldRect() const;
    /// Parts what is held in `held` from what scrolls beneath it.
    void paintHeldEdge(QPainter &painter, const QRect &held) const;
    /// Where a section is seen, in the viewport.
    [[nodiscard]] QRect sectionRect(int section) const;

Q_SIGNALS:
    /// The held section is dragged: the table is to be scrolled to this offset, at which it is in
    /// its own place.
    void ownPlaceWanted(int offset);

protected:
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    /// A press on the held section, which the toolkit would take for the one beneath.
    struct HeldPress {
        QPoint position;
        int size = 0;
        bool isOnHandle = false;
    };

    /// The room for a section's text, and for its arrow where it has one.
    [[nodiscard]] static QRect contentOf(const QRect &section);
    [[nodiscard]] qreal arrowRoom(int logicalIndex) const;
    [[nodiscard]] bool isElided(int logicalIndex) const;
    [[nodiscard]] int sectionAt(const QPoint &position) const;
    /// Whether a press there changes the width of the held section.
    [[nodiscard]] bool isOnHeldHandle(const QPoint &position) const;
    void dragHeld(const QMouseEvent &event);
    void sortByHeld();

    int m_held = -1;
    std::optional<HeldPress> m_heldPress;
};

} // namespace veltrix
