// SPDX-License-Identifier: GPL-3.0-or-later
// Rows, cards and pictures that are pressed as one.
#pragma once

#include <QAbstractButton>

namespace veltrix
{

/// Presses the button when the key is Enter without Ctrl, Alt or Shift. A key that is held presses
/// once. False for other keys.
bool pressByEnter(QAbstractButton &button, const QKeyEvent &event);

/// A widget that paints itself and is a button as a whole: pressed with the mouse, Enter, Space or
/// by assistive technology, it sends clicked(). Controls in it keep their own presses.
class Pressable : public QAbstractButton
{
    Q_OBJECT

public:
    explicit Pressable(QWidget *parent = nullptr);

protected:
    /// The pointer is over it.
    [[nodiscard]] bool isHovered() const { return underMouse(); }
    /// The focus came by keyboard, so that it has to be seen.
    [[nodiscard]] bool showsFocusRing() const;
    /// Paints the ring where showsFocusRing().
    void paintFocusRing(QPainter &painter, qreal radius) const;

    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace veltrix
