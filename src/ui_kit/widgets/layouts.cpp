// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/layouts.h"

#include "ui_kit/accessibility/accessibility.h"

#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace veltrix
{

QHBoxLayout *makeRow(int spacing, QWidget *parent, const QMargins &margins)
{
    auto *row = new QHBoxLayout(parent);
    row->setContentsMargins(margins);
    row->setSpacing(spacing);
    return row;
}

QVBoxLayout *makeColumn(int spacing, QWidget *parent, const QMargins &margins)
{
    auto *column = new QVBoxLayout(parent);
    column->setContentsMargins(margins);
    column->setSpacing(spacing);
    return column;
}

QScrollArea *makeScrollPage(const QString &objectName, const QString &accessibleName,
                            QWidget *content)
{
    auto *area = new QScrollArea;
    nameControl(area, objectName, accessibleName);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidgetResizable(true);
    area->setWidget(content);
    area->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    return area;
}

void takeScrollBarFromMargin(QScrollArea &area, QLayout &content)
{
    QScrollBar *bar = area.verticalScrollBar();
    QObject::connect(bar, &QScrollBar::rangeChanged, &content, [bar, &content](int, int largest) {
        const bool isMirrored = bar->isRightToLeft();
        QMargins margins = content.contentsMargins();
        const int whole = isMirrored ? margins.right() : margins.left();
        const int rest = std::max(0, whole - (largest > 0 ? bar->sizeHint().width() : 0));
        if (isMirrored)
            margins.setLeft(rest);
        else
            margins.setRight(rest);
        content.setContentsMargins(margins);
    });
}

} // namespace veltrix
