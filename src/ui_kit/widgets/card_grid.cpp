// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/card_grid.h"

#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/focus_steps.h"

#include <QKeyEvent>
#include <QResizeEvent>
#include <QStyle>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int standardControlHeight = 30;

int columnsIn(int width, int leastWidth, int gap)
{
    return std::max(1, (width + gap) / (leastWidth + gap));
}

} // namespace

std::vector<QRect> layoutCards(int width, int count, int leastWidth, int height, int gap)
{
    const int columns = columnsIn(width, leastWidth, gap);
    const int cardWidth = std::max(0, (width - (columns - 1) * gap) / columns);
    std::vector<QRect> places;
    for (int card = 0; card < count; ++card)
        places.emplace_back((card % columns) * (cardWidth + gap), (card / columns) * (height + gap),
                            cardWidth, height);
    return places;
}

CardGrid::CardGrid(int leastWidth, Width width, QWidget *parent)
    : QWidget(parent), m_leastWidth(leastWidth), m_width(width)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void CardGrid::setCards(const QList<QWidget *> &cards)
{
    for (QWidget *card : std::as_const(m_cards)) {
        if (!cards.contains(card)) {
            card->hide();
            // It may be the one whose menu is at work.
            card->deleteLater();
        }
    }
    m_cards = cards;
    for (QWidget *card : std::as_const(m_cards)) {
        if (card->parentWidget() != this) {
            card->setParent(this);
            card->show();
        }
    }
    // Cards come later than what stands after the grid.
    followInTabOrder();
    updateGeometry();
    place();
}

void CardGrid::followInTabOrder()
{
    putInTabOrder(*this, m_cards);
}

int CardGrid::leastWidth() const
{
    return m_leastWidth * controlHeight(font()) / standardControlHeight;
}

int CardGrid::columns() const
{
    return columnsIn(width(), leastWidth(), spacing::m);
}

std::vector<QRect> CardGrid::places(int width) const
{
    const int count = int(m_cards.size());
    int least = leastWidth();
    if (m_width == Width::OfTheCards && count > 0) {
        // As many in each row: four cards that don't fit abreast stand two by two.
        const int most = std::min(count, columnsIn(width, least, spacing::m));
        const int rows = (count + most - 1) / most;
        const int abreast = (count + rows - 1) / rows;
        least = std::max(least, (width - (abreast - 1) * spacing::m) / abreast);
    }
    const auto layOut = [&](int height) {
        return layoutCards(width, count, least, height, spacing::m);
    };
    std::vector<QRect> cards = layOut(0);
    int height = 0;
    for (size_t i = 0; i < cards.size(); ++i) {
        const QWidget *card = m_cards[qsizetype(i)];
        height = std::max(height, card->hasHeightForWidth() ? card->heightForWidth(cards[i].width())
                                                            : card->sizeHint().height());
    }
    return layOut(height);
}

int CardGrid::heightForWidth(int width) const
{
    const std::vector<QRect> cards = places(width);
    return cards.empty() ? 0 : cards.back().bottom() + 1;
}

QSize CardGrid::sizeHint() const
{
    return {400, heightForWidth(std::max(width(), 400))};
}

void CardGrid::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // Another width may need another number of rows.
    if (event->size().width() != event->oldSize().width())
        updateGeometry();
    place();
}

void CardGrid::keyPressEvent(QKeyEvent *event)
{
    const auto abreast = std::count_if(m_cards.begin(), m_cards.end(), [this](const QWidget *card) {
        return card->y() == m_cards.constFirst()->y();
    });
    event->setAccepted(moveFocusAmong(m_cards, *event, std::max(1, int(abreast))));
}

void CardGrid::place()
{
    const std::vector<QRect> cards = places(width());
    for (size_t i = 0; i < cards.size(); ++i)
        m_cards[qsizetype(i)]->setGeometry(QStyle::visualRect(layoutDirection(), rect(), cards[i]));
}

} // namespace veltrix
