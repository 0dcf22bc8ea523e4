// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/note_popover.h"

#include "store/aso_store.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QLocale>

namespace veltrix
{

namespace
{

constexpr int popoverWidth = 340;

} // namespace

NotePopover::NotePopover(Wish wish)
    : m_wish(std::move(wish)),
      m_text(new TextField(QStringLiteral("noteText"), tr("What did you do?"), QString())),
      m_problem(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Red)),
      m_save(new Button(Button::Kind::Primary,
                        m_wish.note.id.isNull() ? tr("Add note") : tr("Save note")))
{
    const QString title = m_wish.note.id.isNull() ? tr("New note on %1").arg(m_wish.day)
                                                  : tr("Note on %1").arg(m_wish.day);
    nameControl(this, QStringLiteral("notePopover"), title);
    setAccessibleRole(this, QAccessible::Dialog);
    build();
    m_text->setText(m_wish.note.text);
    m_text->selectAll();
    connect(m_text, &QLineEdit::textChanged, this, &NotePopover::followText);
    connect(m_text, &QLineEdit::returnPressed, this, &NotePopover::save);
    connect(m_save, &Button::clicked, this, &NotePopover::save);
    m_text->setFocus();
}

void NotePopover::build()
{
    auto *layout = makeColumn(spacing::s, this, {spacing::l, spacing::m, spacing::l, spacing::l});
    layout->addWidget(
        new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, accessibleName()));
    auto *whose =
        new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary,
                        tr("Shown for all keywords of %1.").arg(inSentence(m_wish.appName)));
    layout->addWidget(whose);
    layout->addWidget(m_text);
    m_problem->setObjectName(QStringLiteral("noteProblem"));
    m_problem->setWrapping(TextLabel::Wrapping::Wrapped);
    m_problem->hide();
    layout->addWidget(m_problem);
    auto *buttons = makeRow(spacing::s);
    if (!m_wish.note.id.isNull()) {
        auto *removal = new Button(Button::Kind::Link, QStringLiteral("trash"), tr("Remove note"));
        nameControl(removal, QStringLiteral("noteRemove"), tr("Remove note"));
        connect(removal, &Button::clicked, this, &NotePopover::remove);
        buttons->addWidget(removal);
    }
    buttons->addStretch(1);
    auto *cancel = new Button(Button::Kind::Standard, tr("Cancel"));
    nameControl(cancel, QStringLiteral("noteCancel"), tr("Cancel"));
    connect(cancel, &Button::clicked, this, &NotePopover::close);
    buttons->addWidget(cancel);
    nameControl(m_save, QStringLiteral("noteSave"), m_save->text());
    buttons->addWidget(m_save);
    layout->addLayout(buttons);
}

NotePopover *NotePopover::open(QWidget *anchor, Wish wish)
{
    auto *popover = new NotePopover(std::move(wish));
    Overlay::open(Overlay::Kind::Popover, anchor, popover);
    return popover;
}

QSize NotePopover::sizeHint() const
{
    const int width = std::max(scaledToFont(popoverWidth, font()), layout()->minimumSize().width());
    return {width, layout()->hasHeightForWidth() ? layout()->heightForWidth(width)
                                                 : layout()->sizeHint().height()};
}

void NotePopover::followText()
{
    const qsizetype length = m_text->text().trimmed().size();
    tell(length > ASOStore::mostNoteLength
             ? tr("A note has at most %1 characters; this one has %2.")
                   .arg(QLocale().toString(qlonglong(ASOStore::mostNoteLength)),
                        QLocale().toString(qlonglong(length)))
             : QString());
}

void NotePopover::tell(const QString &problem)
{
    if (problem == m_problem->text())
        return;
    m_problem->setText(problem);
    m_problem->setAccessibleName(problem);
    m_problem->setVisible(!problem.isEmpty());
    updateGeometry();
    if (!problem.isEmpty())
        announceNameChange(m_problem);
}

void NotePopover::save()
{
    if (m_isDone)
        return;
    AppNote note = m_wish.note;
    note.text = m_text->text().trimmed();
    if (note.text.isEmpty()) {
        tell(tr("Write what you did: an empty note is not saved."));
        m_text->setFocus(Qt::OtherFocusReason);
        return;
    }
    try {
        m_wish.save(note);
    } catch (const Error &error) {
        followText();
        if (m_problem->text().isEmpty())
            tell(error.description());
        m_text->setFocus(Qt::OtherFocusReason);
        return;
    }
    close();
}

void NotePopover::remove()
{
    if (m_isDone)
        return;
    m_wish.remove(m_wish.note.id);
    close();
}

void NotePopover::close()
{
    m_isDone = true;
    if (Overlay *overlay = Overlay::of(this))
        overlay->dismiss();
}

} // namespace veltrix
