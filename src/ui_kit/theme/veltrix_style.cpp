// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/veltrix_style.h"

#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"

#include <QMenu>
#include <QScrollBar>
#include <QStyleOptionMenuItem>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int scrollBarExtent = 12;
constexpr int smallestSlider = 28;
constexpr int menuSymbol = 16;
constexpr int menuPadding = 10;

int menuTextLeft()
{
    return menuPadding + menuSymbol + spacing::s;
}

} // namespace

VeltrixStyle::VeltrixStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void VeltrixStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                                 QPainter *painter, const QWidget *widget) const
{
    const Tokens tokens = Tokens::of(option->palette);
    switch (element) {
    case PE_PanelLineEdit:
        // A field without a frame is part of something that draws one.
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            !frame || frame->lineWidth > 0)
            drawField(*option, *painter);
        return;
    case PE_IndicatorCheckBox:
        drawCheckIndicator(*option, *painter);
        return;
    case PE_FrameFocusRect:
        if (showsFocus(*option))
            drawFocusRing(*painter, option->rect, 5, tokens[Token::Accent]);
        return;
    case PE_PanelItemViewRow:
    case PE_PanelItemViewItem:
        // Views and delegates of this program fill their rows themselves; file dialogs have none.
        if (!widget || !widget->property(ownRowsProperty).toBool())
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    case PE_PanelScrollAreaCorner:
        return;
    case PE_PanelTipLabel:
    case PE_FrameMenu:
        painter->fillRect(option->rect, tokens[Token::Raised]);
        drawRoundedRect(*painter, option->rect, 0, Qt::transparent, tokens[Token::Hairline]);
        return;
    case PE_PanelMenu:
        painter->fillRect(option->rect, tokens[Token::Raised]);
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void VeltrixStyle::drawField(const QStyleOption &option, QPainter &painter)
{
    const Tokens tokens = Tokens::of(option.palette);
    const bool focused = option.state & State_HasFocus;
    drawRoundedRect(painter, option.rect, radius::control, tokens[Token::Surface],
                    tokens[focused ? Token::Accent : Token::Hairline], focused ? 2 : 1);
}

void VeltrixStyle::drawCheckIndicator(const QStyleOption &option, QPainter &painter)
{
    const Tokens tokens = Tokens::of(option.palette);
    const QRectF box = option.rect;
    const bool enabled = option.state & State_Enabled;
    if (option.state & State_On) {
        drawRoundedRect(painter, box, 4, tokens[enabled ? Token::Accent : Token::Gray]);
        drawSymbol(painter, box.adjusted(2, 2, -2, -2), QStringLiteral("checkmark"),
                   tokens.onAccent());
    } else {
        drawRoundedRect(painter, box, 4, tokens[Token::Surface],
                        tokens[enabled ? Token::Gray : Token::Hairline]);
    }
}

void VeltrixStyle::drawMenuItem(const QStyleOption &option, QPainter &painter)
{
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(&option);
    if (!item)
        return;
    const Tokens tokens = Tokens::of(option.palette);
    const QRect rect = item->rect;
    painter.fillRect(rect, tokens[Token::Raised]);
    if (item->menuItemType == QStyleOptionMenuItem::Separator) {
        drawHorizontalHairline(painter, rect.left() + menuPadding, rect.right() - menuPadding,
                               rect.center().y(), tokens[Token::Hairline]);
        return;
    }
    const bool enabled = item->state & State_Enabled;
    if (enabled && (item->state & State_Selected))
        drawRoundedRect(painter, rect.adjusted(4, 0, -4, 0), 5, tokens[Token::Selected]);

    const QRect symbol(rect.left() + menuPadding, rect.center().y() - menuSymbol / 2 + 1,
                       menuSymbol, menuSymbol);
    if (item->checked)
        drawSymbol(painter, symbol, QStringLiteral("checkmark"), tokens[Token::Accent]);
    else if (!item->icon.isNull())
        item->icon.paint(&painter, symbol, Qt::AlignCenter,
                         enabled ? QIcon::Normal : QIcon::Disabled);

    const QStringList parts = item->text.split(u'\t');
    const QRect textRect = rect.adjusted(menuTextLeft(), 0, -menuPadding - spacing::s, 0);
    painter.setFont(item->font);
    painter.setPen(tokens[enabled ? Token::Text : Token::Secondary]);
    painter.drawText(textRect, Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextSingleLine,
                     parts.value(0));
    painter.setPen(tokens[Token::Secondary]);
    if (parts.size() > 1)
        painter.drawText(textRect, Qt::AlignVCenter | Qt::AlignRight, parts.value(1));
    if (item->menuItemType == QStyleOptionMenuItem::SubMenu)
        drawSymbol(painter, QRect(rect.right() - 22, rect.center().y() - 6, 14, 14),
                   QStringLiteral("chevron.right"), tokens[Token::Secondary]);
}

void VeltrixStyle::drawControl(ControlElement element, const QStyleOption *option,
                               QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case CE_MenuItem:
        drawMenuItem(*option, *painter);
        return;
    case CE_MenuEmptyArea:
        painter->fillRect(option->rect, Tokens::of(option->palette)[Token::Raised]);
        return;
    default:
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void VeltrixStyle::drawScrollBar(const QStyleOptionComplex &option, QPainter &painter,
                                 const QRect &slider)
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(&option);
    if (!bar || bar->minimum >= bar->maximum)
        return;
    const Tokens tokens = Tokens::of(option.palette);
    QColor color = tokens[Token::Gray];
    const bool busy = option.state & (State_MouseOver | State_Sunken);
    color.setAlphaF(busy ? 0.8F : 0.45F);
    const QRectF thumb = QRectF(slider).adjusted(3, 3, -3, -3);
    drawRoundedRect(painter, thumb, std::min(thumb.width(), thumb.height()) / 2, color);
}

void VeltrixStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                      QPainter *painter, const QWidget *widget) const
{
    if (control == CC_ScrollBar) {
        drawScrollBar(*option, *painter,
                      subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget));
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect VeltrixStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                   SubControl subControl, const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !bar)
        return QProxyStyle::subControlRect(control, option, subControl, widget);

    // No arrow buttons: the groove is the whole bar.
    const bool horizontal = bar->orientation == Qt::Horizontal;
    const int length = horizontal ? bar->rect.width() : bar->rect.height();
    const qint64 range = qint64(bar->maximum) - bar->minimum;
    int slider = length;
    if (range > 0) {
        slider = int(qint64(bar->pageStep) * length / (range + bar->pageStep));
        slider = std::clamp(slider, std::min(smallestSlider, length), length);
    }
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                              length - slider, bar->upsideDown);
    const auto piece = [&](int from, int size) {
        const QRect rect =
            horizontal ? QRect(bar->rect.x() + from, bar->rect.y(), size, bar->rect.height())
                       : QRect(bar->rect.x(), bar->rect.y() + from, bar->rect.width(), size);
        return visualRect(bar->direction, bar->rect, rect);
    };
    switch (subControl) {
    case SC_ScrollBarSlider:
        return piece(start, slider);
    case SC_ScrollBarSubPage:
        return piece(0, start);
    case SC_ScrollBarAddPage:
        return piece(start + slider, length - start - slider);
    case SC_ScrollBarGroove:
        return bar->rect;
    default:
        return {};
    }
}

QSize VeltrixStyle::sizeFromContents(ContentsType type, const QStyleOption *option,
                                     const QSize &contents, const QWidget *widget) const
{
    if (type == CT_MenuItem) {
        const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
        if (item && item->menuItemType == QStyleOptionMenuItem::Separator)
            return {contents.width(), 9};
        const QFont font = item ? item->font : QFont();
        int width = menuTextLeft() + contents.width() + menuPadding + spacing::xxl;
        if (item && item->text.contains(u'\t'))
            width += item->reservedShortcutWidth + spacing::l;
        return {width, controlHeight(font)};
    }
    return QProxyStyle::sizeFromContents(type, option, contents, widget);
}

int VeltrixStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                              const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return scrollBarExtent;
    case PM_ScrollBarSliderMin:
        return smallestSlider;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
        return 16;
    case PM_CheckBoxLabelSpacing:
        return spacing::s;
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuVMargin:
        return 4;
    case PM_MenuHMargin:
        return 0;
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
        return menuSymbol;
    case PM_ToolTipLabelFrameWidth:
        return 6;
    case PM_FocusFrameHMargin:
        return 3;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int VeltrixStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                            QStyleHintReturn *returned) const
{
    switch (hint) {
    case SH_ScrollBar_Transient:
    case SH_ScrollBar_LeftClickAbsolutePosition:
    case SH_UnderlineShortcut:
    case SH_ItemView_ActivateItemOnSingleClick:
        return 0;
    case SH_ToolTipLabel_Opacity:
        return 255;
    case SH_Menu_MouseTracking:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

void VeltrixStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QScrollBar *>(widget))
        widget->setAttribute(Qt::WA_Hover);
}

} // namespace veltrix
