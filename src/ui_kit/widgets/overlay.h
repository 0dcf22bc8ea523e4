// SPDX-License-Identifier: GPL-3.0-or-later
// Sheets and popovers: cards over the window, inside it.
#pragma once

#include <QPointer>
#include <QRect>
#include <QWidget>

namespace veltrix
{

class FocusKeeper;

/// Where a sheet lies: centred in `window`, at its preferred size or what leaves a margin of 24
/// pixels at the sides, and of 40 above and below, or as little as 12 in a low window.
QRect layoutSheet(const QRect &window, QSize preferred);

/// Where a popover lies: below `anchor` with their trailing edges aligned, moved into `window` with
/// a margin of 8 pixels; above the anchor when only there it fits.
QRect layoutPopover(const QRect &window, const QRect &anchor, QSize preferred);

/// A card over a whole window. It belongs to the window, takes all its input while it is open,
/// keeps the keyboard focus inside, closes on Escape, and gives the focus back. What lies behind it
/// is out of the reach of assistive technology, too. Drawing inside the window rather than in one
/// of its own gives it round corners and a shadow on every desktop.
class Overlay final : public QWidget
{
    Q_OBJECT

public:
    enum class Kind {
        /// Modal, over a dimmed window.
        Sheet,
        /// At an anchor; a click outside closes it.
        Popover,
    };

    /// Opens `content` over the window of `opener`. The overlay takes the content over and deletes
    /// itself, content included, when it closes. A popover is placed at `opener`.
    static Overlay *open(Kind kind, QWidget *opener, QWidget *content);
    ~Overlay() override;

    /// Closes and deletes. Safe to call from the content's own slots.
    void dismiss();

    [[nodiscard]] QWidget *content() const { return m_content; }
    [[nodiscard]] Kind kind() const { return m_kind; }

    /// The open overlay that holds `widget`, or null.
    static Overlay *of(QWidget *widget);
    /// The overlay that is on top in that window, or null.
    static Overlay *topOf(const QWidget *window);
    /// True while a sheet or popover is open over that window.
    static bool isOpenOver(const QWidget *window) { return topOf(window) != nullptr; }

Q_SIGNALS:
    void dismissed();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    Overlay(Kind kind, QWidget *window, QWidget *opener, QWidget *content);
    void place();
    /// Dims what no sheet below has dimmed.
    void dim(QPainter &painter) const;
    void followFocus(QWidget *now);
    [[nodiscard]] bool showsFocusRing() const;
    enum class Step { Next, Previous };
    /// The widget that Tab reaches from `from` without leaving; null when there is none.
    [[nodiscard]] QWidget *nextStop(QWidget *from, Step step) const;

    Kind m_kind;
    QPointer<QWidget> m_opener;
    QPointer<QWidget> m_content;
    QPointer<QWidget> m_focusBefore;
    FocusKeeper *m_keeper;
    QRect m_card;
    bool m_open = true;
};

} // namespace veltrix
