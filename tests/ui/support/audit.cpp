// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/audit.h"

#include "ui_kit/theme/tokens.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/text_label.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QScrollBar>
#include <QtMath>

namespace veltrix
{

namespace
{

bool isControl(const QWidget *widget)
{
    return qobject_cast<const QAbstractButton *>(widget) ||
           qobject_cast<const QLineEdit *>(widget) ||
           (qobject_cast<const QAbstractItemView *>(widget) &&
            !qobject_cast<const QHeaderView *>(widget)) ||
           (widget->focusPolicy() != Qt::NoFocus &&
            !qobject_cast<const QAbstractScrollArea *>(widget) &&
            !qobject_cast<const QScrollBar *>(widget));
}

QString described(const QWidget *widget)
{
    QString text =
        QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName();
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        text += QStringLiteral(" “%1”").arg(label->text());
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        text += QStringLiteral(" “%1”").arg(button->text());
    return text;
}

QList<QWidget *> visibleIn(QWidget *root)
{
    QList<QWidget *> widgets;
    for (QWidget *widget : root->findChildren<QWidget *>()) {
        if (widget->isVisible() && !widget->visibleRegion().isEmpty())
            widgets.append(widget);
    }
    return widgets;
}

bool clips(const QLabel *label)
{
    if (label->text().isEmpty() || qobject_cast<const ElidedLabel *>(label))
        return false;
    const QRect room = label->contentsRect();
    const int flags = int(label->alignment()) | (label->wordWrap() ? Qt::TextWordWrap : 0);
    const QRect needed =
        label->fontMetrics().boundingRect(QRect(0, 0, room.width(), 100'000), flags, label->text());
    return needed.height() > room.height() + 1 || needed.width() > room.width() + 1;
}

bool clips(const QAbstractButton *button)
{
    // Buttons that give way (storefront names) say their whole name in their minimum size.
    const QSize least =
        button->minimumSizeHint().isValid() ? button->minimumSizeHint() : button->sizeHint();
    return button->width() < least.width() || button->height() < least.height();
}

/// The colour that most pixels have: behind a text, that of its background.
QColor commonestColor(const QImage &picture, const QRect &place)
{
    QHash<QRgb, int> counts;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            ++counts[picture.pixel(x, y)];
    QRgb commonest = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() > counts.value(commonest))
            commonest = it.key();
    }
    return QColor::fromRgb(commonest);
}

} // namespace

QStringList unnamedControls(QWidget *root)
{
    QStringList unnamed;
    for (const QWidget *widget : visibleIn(root)) {
        if (!isControl(widget))
            continue;
        if (widget->accessibleName().trimmed().isEmpty())
            unnamed << described(widget) + QStringLiteral(" has no accessible name");
        if (widget->objectName().isEmpty())
            unnamed << described(widget) + QStringLiteral(" has no object name");
    }
    return unnamed;
}

QStringList clippedTexts(QWidget *root)
{
    QStringList clipped;
    for (const QWidget *widget : visibleIn(root)) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        if ((label && clips(label)) || (button && clips(button)))
            clipped << described(widget) +
                           QStringLiteral(" (%1×%2)").arg(widget->width()).arg(widget->height());
        const auto *field = qobject_cast<const QLineEdit *>(widget);
        if (field && field->height() < field->fontMetrics().height() + 4)
            clipped << described(widget);
    }
    return clipped;
}

QStringList faintTexts(QWidget *root)
{
    QStringList faint;
    const QImage picture = root->grab().toImage();
    const qreal scale = picture.devicePixelRatio();
    for (const QWidget *widget : visibleIn(root)) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        if (!label || label->text().isEmpty() ||
            label->visibleRegion().boundingRect() != label->rect())
            continue;
        const QRect place(label->mapTo(root, QPoint(0, 0)) * scale, label->size() * scale);
        if (!picture.rect().contains(place))
            continue;
        const QColor under = commonestColor(picture, place);
        const QColor text = label->palette().color(label->foregroundRole());
        const bool isLarge = QFontInfo(label->font()).pixelSize() >=
                             fontFor(TextStyle::Figure, QFont(root->font())).pixelSize();
        const double least = isLarge ? 3 : 4.5;
        if (contrastRatio(text, under) < least)
            faint
                << QStringLiteral("%1: %2 on %3").arg(described(label), text.name(), under.name());
    }
    return faint;
}

} // namespace veltrix
