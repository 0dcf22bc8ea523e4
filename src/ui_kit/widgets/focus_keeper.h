// SPDX-License-Identifier: GPL-3.0-or-later
// Where the keyboard focus goes when the control that has it vanishes.
#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QWidget;

namespace veltrix
{

/// The toolkit hands the focus of a control that is hidden, disabled or deleted on to the next
/// control of the Tab order, where the key that was meant for the first one presses something else.
/// This takes it to a harmless place instead. Where that place is no control, so that nothing can
/// have been meant for it, the control gets the focus back when it returns.
class FocusKeeper final : public QObject
{
    Q_OBJECT

public:
    /// `goHome` gives the focus to something in `scope` that nothing presses.
    FocusKeeper(QWidget *scope, std::function<void()> goHome);

    /// The keeper of the sheet or window that holds the widget, or null.
    static FocusKeeper *of(const QWidget *widget);

    /// For focusNextPrevChild() of the scope: true when it was called because the focused control
    /// has vanished. The focus is taken home then.
    bool keep();
    /// Takes the focus home when it is in that part, which is about to vanish.
    void leave(const QWidget *part);
    /// Where Tab goes on from while the focus is at home: the control that vanished, or null.
    [[nodiscard]] QWidget *resumePoint() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void takeHome(QWidget *from);
    void followFocus(QWidget *old, QWidget *now);
    void giveBack();
    void forget();

    QWidget *m_scope;
    std::function<void()> m_goHome;
    QPointer<QWidget> m_home;
    QPointer<QWidget> m_vanished;
    QString m_vanishedName;
};

} // namespace veltrix
