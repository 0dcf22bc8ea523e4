// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/text_field.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QPainter>

namespace veltrix
{

namespace
{

constexpr int symbolLeft = 11;

int symbolSize(const QFont &font)
{
    return qRound(controlHeight(font) * 16.0 / 30.0);
}

} // namespace

TextField::TextField(const QString &objectName, const QString &placeholder, const QString &symbol,
                     QWidget *parent)
    : QLineEdit(parent), m_symbol(symbol)
{
    nameControl(this, objectName, placeholder);
    setPlaceholderText(placeholder);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    updateMargins();
}

void TextField::updateMargins()
{
    const int left = m_symbol.isEmpty() ? spacing::s - 2 : symbolLeft + symbolSize(font()) + 3;
    if (isRightToLeft())
        setTextMargins(spacing::xs, 0, left, 0);
    else
        setTextMargins(left, 0, spacing::xs, 0);
}

QSize TextField::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 26, controlHeight(font())};
}

QSize TextField::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 12, controlHeight(font())};
}

void TextField::keyPressEvent(QKeyEvent *event)
{
    // A field that nobody listens to leaves Escape to the sheet around it.
    static const QMetaMethod signal = QMetaMethod::fromSignal(&TextField::escaped);
    if (event->key() == Qt::Key_Escape && !text().isEmpty() && isSignalConnected(signal)) {
        Q_EMIT escaped();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void TextField::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    if (m_symbol.isEmpty())
        return;
    QPainter painter(this);
    const int size = symbolSize(font());
    const int x = isRightToLeft() ? width() - symbolLeft - size : symbolLeft;
    drawSymbol(painter, QRectF(x, (height() - size) / 2.0, size, size), m_symbol,
               Tokens::of(this)[Token::Secondary]);
}

void TextField::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange) {
        updateMargins();
        updateGeometry();
    }
}

} // namespace veltrix
