// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/theme_controller.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/theme/veltrix_style.h"

#include <QApplication>
#include <QEvent>
#include <QToolTip>

namespace veltrix
{

ThemeController::ThemeController(ColorSchemeSource &source, QObject *parent)
    : QObject(parent), m_source(source)
{
    installAccessibleRoles();
    QApplication::setStyle(new VeltrixStyle);
    applyFont();
    applyPalette();
    connect(&m_source, &ColorSchemeSource::colorSchemeChanged, this,
            &ThemeController::applyPalette);
    qApp->installEventFilter(this);
}

bool ThemeController::eventFilter(QObject *watched, QEvent *event)
{
    // A new font of the desktop's arrives as a change of the application's font.
    if (watched == qApp && event->type() == QEvent::ApplicationFontChange &&
        QApplication::font() != m_appliedFont)
        applyFont();
    return QObject::eventFilter(watched, event);
}

void ThemeController::applyPalette()
{
    const QPalette palette = paletteFor(m_source.colorScheme());
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

void ThemeController::applyFont()
{
    m_appliedFont = bodyFont(QApplication::font());
    QApplication::setFont(m_appliedFont);
    m_appliedFont = QApplication::font();
    QToolTip::setFont(fontFor(TextStyle::Secondary, m_appliedFont));
}

} // namespace veltrix
