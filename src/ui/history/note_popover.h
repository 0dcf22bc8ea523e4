// SPDX-License-Identifier: GPL-3.0-or-later
// Writing a note on a day of an app, changing it, removing it.
#pragma once

#include "model/app_note.h"

#include <QWidget>

#include <functional>

namespace veltrix
{

class Button;
class TextField;
class TextLabel;

/// A popover with the text of one note. Enter saves it, Escape leaves it as it was.
class NotePopover final : public QWidget
{
    Q_OBJECT

public:
    struct Wish {
        /// Without an id it is a new one.
        AppNote note;
        /// "Nov 19, 2026"
        QString day;
        /// Whose note it is.
        QString appName;
        /// Throws an Error with the reason why the text cannot be a note.
        std::function<void(const AppNote &)> save;
        std::function<void(QUuid)> remove;
    };

    /// Opens it at `anchor`.
    static NotePopover *open(QWidget *anchor, Wish wish);

    [[nodiscard]] QSize sizeHint() const override;

private:
    explicit NotePopover(Wish wish);
    void build();
    void save();
    void remove();
    void followText();
    void tell(const QString &problem);
    void close();

    Wish m_wish;
    TextField *m_text;
    TextLabel *m_problem;
    Button *m_save;
    /// Pressed: a second press while it closes does nothing.
    bool m_isDone = false;
};

} // namespace veltrix
