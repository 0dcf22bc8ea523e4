// SPDX-License-Identifier: GPL-3.0-or-later
// Tells when a window has been painted for the first time.
#pragma once

#include <QWidget>

namespace veltrix
{

/// Emits shown() once, when the first picture of the window is on its way to the screen: what that
/// picture does not show is better begun then. Belongs to the window.
class FirstFrame final : public QObject
{
    Q_OBJECT

public:
    explicit FirstFrame(QWidget *window);

    bool eventFilter(QObject *object, QEvent *event) override;

Q_SIGNALS:
    void shown();

private:
    QWidget *m_window;
};

} // namespace veltrix
