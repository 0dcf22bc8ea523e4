// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/text_area.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/typography.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QStyleOption>
#include <QUrl>

namespace veltrix
{

namespace
{

/// Room for the line around the field.
constexpr int frame = 2;

QStringList filesOf(const QMimeData &data)
{
    QStringList paths;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    return paths;
}

} // namespace

TextArea::TextArea(const QString &objectName, const QString &placeholder, QWidget *parent)
    : QPlainTextEdit(parent)
{
    nameControl(this, objectName, placeholder);
    setPlaceholderText(placeholder);
    setTabChangesFocus(true);
    setFrameShape(QFrame::NoFrame);
    setViewportMargins(frame, frame, frame, frame);
    document()->setDocumentMargin(spacing::s - frame);
    viewport()->setAutoFillBackground(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize TextArea::sizeOf(int lines, int characters) const
{
    const int margins = 2 * (frame + int(document()->documentMargin()));
    return {fontMetrics().averageCharWidth() * characters + margins,
            fontMetrics().lineSpacing() * lines + margins};
}

QSize TextArea::sizeHint() const
{
    return sizeOf(5, 26);
}

QSize TextArea::minimumSizeHint() const
{
    return sizeOf(3, 12);
}

bool TextArea::event(QEvent *event)
{
    if (event->type() != QEvent::Paint)
        return QPlainTextEdit::event(event);
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    return true;
}

void TextArea::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && event->modifiers().testFlag(Qt::ControlModifier))
        event->ignore();
    else
        QPlainTextEdit::keyPressEvent(event);
}

void TextArea::focusInEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusInEvent(event);
    update();
}

void TextArea::focusOutEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusOutEvent(event);
    update();
}

bool TextArea::canInsertFromMimeData(const QMimeData *source) const
{
    return !filesOf(*source).isEmpty() || QPlainTextEdit::canInsertFromMimeData(source);
}

void TextArea::insertFromMimeData(const QMimeData *source)
{
    const QStringList files = filesOf(*source);
    if (files.isEmpty())
        QPlainTextEdit::insertFromMimeData(source);
    else
        Q_EMIT filesBrought(files);
}

} // namespace veltrix
