// SPDX-License-Identifier: GPL-3.0-or-later
// Cards of equal size in as many columns as fit.
#pragma once

#include <QRect>
#include <QWidget>

#include <vector>

namespace veltrix
{

/// The place of each card in `width`: at least `leastWidth` wide (less when there is no more room),
/// `height` high, parted by `gap`, filling rows from the first.
std::vector<QRect> layoutCards(int width, int count, int leastWidth, int height, int gap);

/// Shows cards as layoutCards() places them, as high as they need. The focus moves among them by
/// arrows and pages.
class CardGrid final : public QWidget
{
    Q_OBJECT

public:
    /// Whether cards that leave room for more of them share it out between them.
    enum class Width { OfTheColumns, OfTheCards };

    /// `leastWidth` is that of a card, in pixels at the standard font.
    explicit CardGrid(int leastWidth, Width width = Width::OfTheColumns, QWidget *parent = nullptr);

    /// Shows these cards in this order; they become children. Cards that are no longer among them
    /// are deleted.
    void setCards(const QList<QWidget *> &cards);
    [[nodiscard]] const QList<QWidget *> &cards() const { return m_cards; }
    /// To be called when controls that came later stand before the grid: Tab comes to them first
    /// again.
    void followInTabOrder();

    /// How many cards of leastWidth stand abreast.
    [[nodiscard]] int columns() const;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] int leastWidth() const;
    [[nodiscard]] std::vector<QRect> places(int width) const;
    void place();

    int m_leastWidth;
    Width m_width;
    QList<QWidget *> m_cards;
};

} // namespace veltrix
