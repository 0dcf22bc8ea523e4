// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/quick_filter_bar.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/segmented_control.h"

#include <QEvent>
#include <QLocale>
#include <QMenu>

namespace veltrix
{

namespace
{

QList<SegmentedControl::Choice> choicesFor(const QuickFilterCounts &counts)
{
    QList<SegmentedControl::Choice> choices;
    for (const QuickFilter filter : quickFilters) {
        const int count = counts[size_t(filter)];
        const QString title = quickFilterTitle(filter);
        const QString name = count == 1 ? QuickFilterBar::tr("%1, %2 keyword, %3 of %4")
                                        : QuickFilterBar::tr("%1, %2 keywords, %3 of %4");
        const QLocale locale;
        choices.append({title,
                        name.arg(title, locale.toString(count), locale.toString(int(filter) + 1),
                                 locale.toString(qulonglong(quickFilters.size()))),
                        locale.toString(count)});
    }
    return choices;
}

} // namespace

QuickFilterBar::QuickFilterBar(QWidget *parent)
    : QWidget(parent),
      m_filters(new SegmentedControl(QStringLiteral("quickFilters"), tr("Keywords to show"),
                                     QStringLiteral("quickFilter"), choicesFor({}))),
      m_more(new Button(Button::Kind::Standard, QStringLiteral("chevron.down"), tr("More")))
{
    nameControl(this, QStringLiteral("quickFilterBar"), tr("Quick filters"));
    nameControl(m_more, QStringLiteral("moreQuickFilters"), tr("More filters"));
    // The arrows reach these filters, too.
    m_more->setFocusPolicy(Qt::NoFocus);
    auto *row = makeRow(spacing::s, this, {spacing::l, spacing::s - 1, spacing::l, spacing::s});
    row->addWidget(m_filters);
    row->addWidget(m_more);
    row->addStretch(1);
    // A narrow window is no wider for its filters: they fit themselves in.
    row->setSizeConstraint(QLayout::SetNoConstraint);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    connect(m_filters, &SegmentedControl::changed, this, [this](int place) {
        fit();
        Q_EMIT changed(quickFilters[size_t(place)]);
    });
    connect(m_more, &Button::clicked, this, &QuickFilterBar::openMenu);
}

QuickFilter QuickFilterBar::chosen() const
{
    return quickFilters[size_t(m_filters->chosen())];
}

void QuickFilterBar::choose(QuickFilter filter)
{
    m_filters->choose(int(filter));
}

void QuickFilterBar::setCounts(const QuickFilterCounts &counts)
{
    if (counts == m_counts)
        return;
    m_counts = counts;
    const QList<SegmentedControl::Choice> choices = choicesFor(counts);
    for (int place = 0; place < choices.size(); ++place)
        m_filters->setChoice(place, choices[place]);
    fit();
}

void QuickFilterBar::setOtherFilter(QWidget *filter)
{
    m_other = filter;
    // Before what stretches.
    static_cast<QBoxLayout *>(layout())->insertWidget(layout()->count() - 1, filter);
    fit();
}

void QuickFilterBar::fit()
{
    const int others = m_other ? spacing::s + m_other->sizeHint().width() : 0;
    const int room = width() - 2 * spacing::l - others;
    const bool isWhole = m_filters->wholeWidth() <= room;
    m_filters->fitInto(isWhole ? room : room - spacing::s - m_more->sizeHint().width());
    m_more->setVisible(!isWhole);
}

void QuickFilterBar::openMenu()
{
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("quickFilterMenu"));
    menu->setAccessibleName(m_more->accessibleName());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const int place : m_filters->hiddenChoices()) {
        const QuickFilter filter = quickFilters[size_t(place)];
        QAction *action = menu->addAction(quickFilterTitle(filter) + u'\t' +
                                          QLocale().toString(m_counts[size_t(place)]));
        connect(action, &QAction::triggered, this, [this, filter] { choose(filter); });
    }
    menu->popup(m_more->mapToGlobal(QPoint(0, m_more->height())));
}

bool QuickFilterBar::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
        fit();
    return isHandled;
}

void QuickFilterBar::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    painter.fillRect(rect(), tokens[Token::Surface]);
    drawHorizontalHairline(painter, 0, width(), height() - 1, tokens[Token::Hairline]);
}

} // namespace veltrix
