// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/loadable_view.h"

#include "ui_kit/widgets/focus_keeper.h"
#include "ui_kit/widgets/layouts.h"

namespace veltrix
{

LoadableView::LoadableView(const QString &messageName, QWidget *parent)
    : QStackedWidget(parent), m_messagePage(new QWidget), m_column(makeColumn(0, m_messagePage)),
      m_message(new EmptyState(messageName))
{
    m_column->addWidget(m_message);
    addWidget(m_messagePage);
    connect(m_message, &EmptyState::actionTriggered, this, &LoadableView::retryRequested);
}

void LoadableView::addWayOut(QWidget *control)
{
    // The message keeps its height, so that the way out stands right below it.
    m_column->insertStretch(0, 4);
    m_column->addWidget(control, 0, Qt::AlignHCenter);
    m_column->addStretch(5);
    m_wayOut = control;
    m_wayOut->hide();
}

void LoadableView::turnTo(QWidget *page)
{
    // The stack would give the focus to the first control of the page, whatever it does.
    if (FocusKeeper *keeper = page == currentWidget() ? nullptr : FocusKeeper::of(this))
        keeper->leave(currentWidget());
    setCurrentWidget(page);
}

void LoadableView::showMessage(const EmptyState::Content &content)
{
    m_message->setContent(content);
    if (m_wayOut)
        m_wayOut->setVisible(!content.action.isEmpty());
    turnTo(m_messagePage);
}

void LoadableView::showPage(QWidget *page)
{
    if (indexOf(page) < 0)
        addWidget(page);
    turnTo(page);
}

} // namespace veltrix
