// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/overview/overview_card.h"

#include "ui_kit/text/shown_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLocale>
#include <QPainter>
#include <QStyle>

#include <cmath>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Overview)
};

constexpr int iconSide = 32;
const QString none = QStringLiteral("—");

QString averageText(const std::optional<double> &rank)
{
    return rank ? QLocale().toString(*rank, 'f', 1) : none;
}

QString keywordsText(int count)
{
    return count == 1 ? Texts::tr("1 keyword") : Texts::tr("%L1 keywords").arg(count);
}

void drawText(QPainter &painter, const QRectF &rect, const QString &text, const QFont &font,
              const QColor &color, Qt::LayoutDirection direction)
{
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(rect,
                     int(QStyle::visualAlignment(direction, Qt::AlignLeading | Qt::AlignVCenter)),
                     QFontMetricsF(font).elidedText(text, Qt::ElideRight, rect.width()));
}

QString movesText(MovesButton::Direction direction, const std::optional<int> &count)
{
    const QString figure = count ? QLocale().toString(*count) : none;
    return direction == MovesButton::Direction::Risen ? Texts::tr("%1 risen").arg(figure)
                                                      : Texts::tr("%1 fallen").arg(figure);
}

} // namespace

CardTexts CardTexts::of(const AppStanding &standing, Period period, const QString &measuredAgo)
{
    CardTexts texts;
    texts.name = shownLine(standing.name);
    texts.keywords = keywordsText(standing.keywords);
    texts.average = averageText(standing.averageRank);
    QStringList parts{inSentence(standing.name), texts.keywords};
    if (!standing.measuredAt) {
        texts.measured = Texts::tr("Not measured yet");
        parts << Texts::tr("not measured yet");
        texts.sentence = parts.join(QStringLiteral(", "));
        return texts;
    }
    for (size_t i = 0; i < AppStanding::tops.size(); ++i)
        parts << Texts::tr("%L1 in the top %2").arg(standing.inTop[i]).arg(AppStanding::tops[i]);
    parts << (standing.averageRank ? Texts::tr("average rank %1").arg(texts.average)
                                   : Texts::tr("none ranked"));
    const AppStanding::Moves &moves = standing.movesIn(period);
    parts << (moves.compared == 0 ? Texts::tr("nothing to compare %1").arg(sentenceOf(period))
                                  : Texts::tr("%1 risen and %2 fallen %3")
                                        .arg(QLocale().toString(moves.risen),
                                             QLocale().toString(moves.fallen), sentenceOf(period)));
    const int missing = standing.missingToday;
    texts.isWarning = missing > 0;
    if (missing == 0) {
        texts.measured = Texts::tr("Measured %1").arg(measuredAgo);
        parts << Texts::tr("measured %1").arg(measuredAgo);
    } else {
        texts.measured =
            missing == standing.measurable
                ? Texts::tr("Not measured today")
                : Texts::tr("%L1 of %L2 not measured today").arg(missing).arg(standing.measurable);
        parts << (missing == standing.measurable ? Texts::tr("not measured today") : texts.measured)
              << Texts::tr("last measured %1").arg(measuredAgo);
    }
    texts.sentence = parts.join(QStringLiteral(", "));
    if (const auto ends = standing.averages.ends()) {
        texts.lineSentence = Texts::tr("Average rank over 30 days: from %1 to %2")
                                 .arg(averageText(ends->first), averageText(ends->second));
    }
    return texts;
}

CardGeometry layoutOverviewCard(qreal width, const QFont &base)
{
    const auto height = [&](TextStyle style) {
        return std::ceil(QFontMetricsF(fontFor(style, base)).height());
    };
    const qreal body = height(TextStyle::BodySemibold);
    const qreal secondary = height(TextStyle::Secondary);
    const qreal title = height(TextStyle::Title);
    const qreal figure = height(TextStyle::Figure);
    const qreal left = spacing::l;
    const qreal room = std::max(0.0, width - 2 * left);
    CardGeometry geometry;

    qreal y = spacing::l;
    const qreal side = scaledToFont(iconSide, base);
    const qreal head = std::max(side, body + secondary);
    geometry.icon = QRectF(left, y + std::floor((head - side) / 2), side, side);
    const qreal text = left + side + 10;
    const qreal textTop = y + std::floor((head - body - secondary) / 2);
    geometry.name = QRectF(text, textTop, std::max(0.0, left + room - text), body);
    geometry.keywords = geometry.name.translated(0, body);
    geometry.keywords.setHeight(secondary);
    y += head + spacing::m;

    const size_t count = AppStanding::tops.size();
    for (size_t i = 0; i < count; ++i) {
        const qreal column = room / double(count);
        geometry.figures[i] = QRectF(left + double(i) * column, y, column, title);
        geometry.captions[i] = QRectF(left + double(i) * column, y + title, column, secondary);
    }
    y += title + secondary + spacing::m;
    geometry.hairline = y;
    y += spacing::m;

    const qreal half = std::round(room / 2);
    geometry.averageCaption = QRectF(left, y, half, secondary);
    geometry.average = QRectF(left, y + secondary, half, figure);
    geometry.line = QRectF(left + half, y, room - half, secondary + figure);
    y += secondary + figure + spacing::s;
    const qreal moves = std::ceil(secondary + spacing::xs);
    geometry.moves = QRectF(left, y, room, moves);
    y += moves + 1;
    geometry.measured = QRectF(left, y, room, secondary);
    geometry.height = y + secondary + spacing::m + 2;
    return geometry;
}

MovesButton::MovesButton(Direction direction, QWidget *parent)
    : Pressable(parent), m_direction(direction)
{
    setObjectName(direction == Direction::Risen ? QStringLiteral("risenButton")
                                                : QStringLiteral("fallenButton"));
}

void MovesButton::setCount(std::optional<int> count, const QString &appName, Period period)
{
    const QString name =
        QStringLiteral("%1, %2 %3")
            .arg(inSentence(appName), movesText(m_direction, count), sentenceOf(period));
    if (m_count == count && accessibleName() == name)
        return;
    m_count = count;
    setAccessibleName(name);
    const bool hasAny = count.value_or(0) > 0;
    setEnabled(hasAny);
    setCursor(hasAny ? Qt::PointingHandCursor : Qt::ArrowCursor);
    updateGeometry();
    update();
}

QSize MovesButton::sizeHint() const
{
    const QFontMetricsF metrics(fontFor(TextStyle::SecondaryMedium, font()));
    const qreal symbol = std::round(metrics.height() * 0.8);
    return {int(std::ceil(symbol + spacing::xs +
                          tabularWidth(metrics, movesText(m_direction, m_count)))) +
                2,
            int(std::ceil(metrics.height() + spacing::xs))};
}

void MovesButton::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    const bool isRisen = m_direction == Direction::Risen;
    const QColor color = tokens[!isEnabled() ? Token::Secondary
                                : isRisen    ? Token::Green
                                             : Token::Red];
    QFont font = fontFor(TextStyle::SecondaryMedium, this->font());
    font.setUnderline(isEnabled() && isHovered());
    const QFontMetricsF metrics(font);
    const qreal symbol = std::round(metrics.height() * 0.8);
    const QRectF all(rect());
    const auto placed = [&](const QRectF &part) {
        return QRectF(QStyle::visualRect(layoutDirection(), rect(), part.toAlignedRect()));
    };
    drawSymbol(painter,
               placed(QRectF(0, std::round(all.center().y() - symbol / 2), symbol, symbol)),
               isRisen ? QStringLiteral("arrow.up") : QStringLiteral("arrow.down"), color);
    drawText(painter, placed(all.adjusted(symbol + spacing::xs, 0, 0, 0)),
             movesText(m_direction, m_count), font, color, layoutDirection());
    paintFocusRing(painter, 4);
}

OverviewCard::OverviewCard(ArtworkImages &images, QWidget *parent)
    : Pressable(parent), m_images(images),
      m_risen(new MovesButton(MovesButton::Direction::Risen, this)),
      m_fallen(new MovesButton(MovesButton::Direction::Fallen, this))
{
    setObjectName(QStringLiteral("overviewCard"));
    connect(m_risen, &MovesButton::clicked, this, &OverviewCard::risenPressed);
    connect(m_fallen, &MovesButton::clicked, this, &OverviewCard::fallenPressed);
    connect(&m_images, &ArtworkImages::ready, this, [this](const QString &url) {
        if (m_standing.icon && m_standing.icon->text() == url)
            update();
    });
}

void OverviewCard::setStanding(const AppStanding &standing, Period period,
                               const QString &measuredAgo)
{
    m_standing = standing;
    m_texts = CardTexts::of(standing, period, measuredAgo);
    setAccessibleName(m_texts.sentence);
    setAccessibleDescription(m_texts.lineSentence);
    setToolTip(m_texts.name);
    const AppStanding::Moves &moves = standing.movesIn(period);
    const bool isKnown = moves.compared > 0;
    m_risen->setCount(isKnown ? std::optional(moves.risen) : std::nullopt, standing.name, period);
    m_fallen->setCount(isKnown ? std::optional(moves.fallen) : std::nullopt, standing.name, period);
    placeMoves();
    update();
}

QSize OverviewCard::sizeHint() const
{
    return {220, int(std::ceil(layoutOverviewCard(width(), font()).height))};
}

QRectF OverviewCard::seen(const QRectF &part) const
{
    return QStyle::visualRect(layoutDirection(), rect(), part.toAlignedRect());
}

void OverviewCard::placeMoves()
{
    QRectF place = layoutOverviewCard(width(), font()).moves;
    for (MovesButton *button : {m_risen, m_fallen}) {
        const QSize size = button->sizeHint();
        button->setGeometry(
            seen(QRectF(place.topLeft(), QSizeF(size.width(), place.height()))).toRect());
        place.setLeft(place.left() + size.width() + spacing::m);
    }
}

void OverviewCard::resizeEvent(QResizeEvent *event)
{
    Pressable::resizeEvent(event);
    placeMoves();
}

void OverviewCard::changeEvent(QEvent *event)
{
    Pressable::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
        placeMoves();
    }
}

void OverviewCard::paintFigures(QPainter &painter, const CardGeometry &geometry,
                                const Tokens &tokens) const
{
    const bool isMeasured = m_standing.measuredAt.has_value();
    const QFont figure = fontFor(TextStyle::Title, font());
    const QFont caption = fontFor(TextStyle::Secondary, font());
    for (size_t i = 0; i < AppStanding::tops.size(); ++i) {
        const QString count = isMeasured ? QLocale().toString(m_standing.inTop[i]) : none;
        drawText(painter, seen(geometry.figures[i]), count, figure, tokens[Token::Text],
                 layoutDirection());
        drawText(painter, seen(geometry.captions[i]), Texts::tr("Top %1").arg(AppStanding::tops[i]),
                 caption, tokens[Token::Secondary], layoutDirection());
    }
    drawText(painter, seen(geometry.averageCaption), Texts::tr("Average rank"), caption,
             tokens[Token::Secondary], layoutDirection());
    drawText(painter, seen(geometry.average), m_texts.average, fontFor(TextStyle::Figure, font()),
             tokens[Token::Text], layoutDirection());
    paintSmallLine(painter, seen(geometry.line), m_standing.averages, Token::Accent, tokens);
}

void OverviewCard::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    const CardGeometry geometry = layoutOverviewCard(width(), font());
    QPainter painter(this);
    drawRoundedRect(painter, rect(), radius::card,
                    tokens[isHovered() ? Token::Hover : Token::Surface], tokens[Token::Hairline]);
    paintArtwork(painter, seen(geometry.icon),
                 m_standing.icon ? m_images.image(*m_standing.icon) : QImage(),
                 QStringLiteral("app.dashed"), tokens);
    drawText(painter, seen(geometry.name), m_texts.name, fontFor(TextStyle::BodySemibold, font()),
             tokens[Token::Text], layoutDirection());
    const QFont secondary = fontFor(TextStyle::Secondary, font());
    drawText(painter, seen(geometry.keywords), m_texts.keywords, secondary,
             tokens[Token::Secondary], layoutDirection());
    paintFigures(painter, geometry, tokens);
    drawHorizontalHairline(painter, spacing::l, width() - spacing::l, geometry.hairline,
                           tokens[Token::Hairline]);
    QRectF measured = geometry.measured;
    if (m_texts.isWarning) {
        const qreal symbol = std::round(measured.height() * 0.85);
        drawSymbol(painter,
                   seen(QRectF(measured.x(), std::round(measured.center().y() - symbol / 2), symbol,
                               symbol)),
                   QStringLiteral("exclamationmark.triangle"), tokens[Token::Orange]);
        measured.setLeft(measured.left() + symbol + spacing::s);
    }
    drawText(painter, seen(measured), m_texts.measured, secondary, tokens[Token::Secondary],
             layoutDirection());
    paintFocusRing(painter, radius::card);
}

} // namespace veltrix
