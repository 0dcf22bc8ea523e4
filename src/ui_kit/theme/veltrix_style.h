// SPDX-License-Identifier: GPL-3.0-or-later
// How standard controls look: fields, check boxes, menus, scroll bars, tool tips.
#pragma once

#include <QProxyStyle>

namespace veltrix
{

/// A view with this property set to true fills its rows itself.
inline constexpr char ownRowsProperty[] = "veltrixOwnRows";

class VeltrixStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    VeltrixStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                       SubControl subControl, const QWidget *widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option,
                                         const QSize &contents,
                                         const QWidget *widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override;
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returned) const override;
    void polish(QWidget *widget) override;
    using QProxyStyle::polish;

private:
    static void drawField(const QStyleOption &option, QPainter &painter);
    static void drawCheckIndicator(const QStyleOption &option, QPainter &painter);
    static void drawMenuItem(const QStyleOption &option, QPainter &painter);
    static void drawScrollBar(const QStyleOptionComplex &option, QPainter &painter,
                              const QRect &slider);
};

} // namespace veltrix
