// SPDX-License-Identifier: GPL-3.0-or-later
// An app's standing as a card.
#pragma once

#include "ui/overview/app_standing.h"
#include "ui_kit/theme/tokens.h"
#include "ui_kit/widgets/pressable.h"

#include <QFontMetricsF>

namespace veltrix
{

class ArtworkImages;

/// The texts of a card, which depend on period and time.
struct CardTexts {
    QString name;
    QString keywords;
    QString average;
    /// "Measured 4 min. ago", or what is missing.
    QString measured;
    /// Something is missing today that was there before.
    bool isWarning = false;
    /// The card as one sentence, and its line as another; the latter is empty without a line.
    QString sentence;
    QString lineSentence;

    /// `measuredAgo` are the words for the newest measurement's age; not looked at without one.
    static CardTexts of(const AppStanding &standing, Period period, const QString &measuredAgo);
    bool operator==(const CardTexts &) const = default;
};

/// Where the parts of a card lie.
struct CardGeometry {
    QRectF icon;
    QRectF name;
    QRectF keywords;
    std::array<QRectF, AppStanding::tops.size()> figures;
    std::array<QRectF, AppStanding::tops.size()> captions;
    qreal hairline = 0;
    QRectF averageCaption;
    QRectF average;
    QRectF line;
    /// The row of what has risen and fallen.
    QRectF moves;
    QRectF measured;
    /// The height that a card needs.
    qreal height = 0;
};

/// `base` is the body font. The geometry is that of a left-to-right layout.
CardGeometry layoutOverviewCard(qreal width, const QFont &base);

/// "↑ 5 risen", which can be pressed.
class MovesButton final : public Pressable
{
    Q_OBJECT

public:
    enum class Direction { Risen, Fallen };

    explicit MovesButton(Direction direction, QWidget *parent = nullptr);
    /// Without any there is nothing to press; no value where nothing is known.
    void setCount(std::optional<int> count, const QString &appName, Period period);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Direction m_direction;
    std::optional<int> m_count;
};

/// Pressed, it opens the app's keywords; its risen or fallen, those alone.
class OverviewCard final : public Pressable
{
    Q_OBJECT

public:
    explicit OverviewCard(ArtworkImages &images, QWidget *parent = nullptr);

    void setStanding(const AppStanding &standing, Period period, const QString &measuredAgo);
    [[nodiscard]] const AppStanding &standing() const { return m_standing; }
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void risenPressed();
    void fallenPressed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void placeMoves();
    void paintFigures(QPainter &painter, const CardGeometry &geometry, const Tokens &tokens) const;
    [[nodiscard]] QRectF seen(const QRectF &part) const;

    ArtworkImages &m_images;
    AppStanding m_standing;
    CardTexts m_texts;
    MovesButton *m_risen;
    MovesButton *m_fallen;
};

} // namespace veltrix
