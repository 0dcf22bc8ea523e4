// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/layouts.h"

#include "ui_kit/accessibility/accessibility.h"

#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>

#include <algorithm>

namespace veltrix
{

namespace
{

class ScrollPage final : public QScrollArea
{
protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        event->setAccepted(scrollByKey(*this, *event));
    }
};

/// Keeps a layout, which may be null, from being worked out.
class LayoutPause
{
public:
    explicit LayoutPause(QLayout *layout)
        : m_layout(layout && layout->isEnabled() ? layout : nullptr)
    {
        if (m_layout)
            m_layout->setEnabled(false);
    }
    LayoutPause(const LayoutPause &) = delete;
    LayoutPause &operator=(const LayoutPause &) = delete;
    ~LayoutPause()
    {
        if (m_layout)
            m_layout->setEnabled(true);
    }

private:
    QLayout *m_layout;
};

} // namespace

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

void setShown(QWidget &part, bool isShown)
{
    const QWidget *parent = part.parentWidget();
    const LayoutPause pause(parent && parent->isVisible() ? nullptr : part.layout());
    part.setVisible(isShown);
}

void turnTo(QStackedWidget &stack, QWidget *page)
{
    const LayoutPause pause(stack.isVisible() ? nullptr : page->layout());
    stack.setCurrentWidget(page);
}

QScrollArea *makeScrollPage(const QString &objectName, const QString &accessibleName,
                            QWidget *content)
{
    auto *area = new ScrollPage;
    dressScrollPage(*area, objectName, accessibleName, content);
    return area;
}

void dressScrollPage(QScrollArea &area, const QString &objectName, const QString &accessibleName,
                     QWidget *content)
{
    nameControl(&area, objectName, accessibleName);
    area.setFocusPolicy(Qt::ClickFocus);
    area.setFrameShape(QFrame::NoFrame);
    area.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area.setWidgetResizable(true);
    // Or its size would be worked out, which comes from the area.
    content->resize(area.viewport()->size());
    {
        const LayoutPause pause(area.isVisible() ? nullptr : content->layout());
        area.setWidget(content);
    }
    area.viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

bool scrollByKey(QScrollArea &area, const QKeyEvent &event)
{
    QScrollBar *bar = area.verticalScrollBar();
    if (bar->maximum() == bar->minimum() ||
        event.modifiers().testAnyFlags(~Qt::KeyboardModifiers(Qt::KeypadModifier)))
        return false;
    const auto act = [bar](QAbstractSlider::SliderAction action) {
        bar->triggerAction(action);
        return true;
    };
    switch (event.key()) {
    case Qt::Key_Up:
        return act(QAbstractSlider::SliderSingleStepSub);
    case Qt::Key_Down:
        return act(QAbstractSlider::SliderSingleStepAdd);
    case Qt::Key_PageUp:
        return act(QAbstractSlider::SliderPageStepSub);
    case Qt::Key_PageDown:
        return act(QAbstractSlider::SliderPageStepAdd);
    case Qt::Key_Home:
        return act(QAbstractSlider::SliderToMinimum);
    case Qt::Key_End:
        return act(QAbstractSlider::SliderToMaximum);
    default:
        return false;
    }
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
