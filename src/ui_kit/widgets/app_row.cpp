// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/app_row.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/app_facts.h"
#include "ui_kit/text/figures.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/badge.h"

#include <QEvent>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr qreal starSide = 12;
constexpr qreal starGap = 4;

QString ratingCountOf(const ITunesAppResult &app)
{
    if (!app.userRatingCount || hasNoRatings(app))
        return {};
    if (*app.userRatingCount == 1)
        return AppRow::tr("1 rating");
    return AppRow::tr("%1 ratings").arg(QLocale().toString(qlonglong(*app.userRatingCount)));
}

Badge ownBadge()
{
    return {AppRow::tr("You"), Token::Accent};
}

QString joined(QStringList parts, const QString &separator)
{
    parts.removeAll(QString());
    return parts.join(separator);
}

void drawLine(QPainter &painter, const QRectF &rect, const QString &text, const QFont &font,
              const QColor &color, Qt::LayoutDirection direction)
{
    painter.setFont(font);
    painter.setPen(color);
    const auto alignment = QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter);
    painter.drawText(rect, int(alignment) | Qt::TextSingleLine,
                     QFontMetricsF(font).elidedText(text, Qt::ElideRight, rect.width() + 0.5));
}

void drawRank(QPainter &painter, const QRectF &rect, int rank, const QFont &font)
{
    const QFontMetricsF metrics(font);
    const QString text = QLocale().toString(rank);
    painter.setFont(font);
    drawTabularText(painter,
                    {rect.right() - tabularWidth(metrics, text),
                     rect.center().y() + (metrics.ascent() - metrics.descent()) / 2},
                    text);
}

} // namespace

AppRowTexts AppRowTexts::of(const ITunesAppResult &app, AppRowLook look, int rank)
{
    const QString separator = QStringLiteral(", ");
    AppRowTexts texts;
    texts.name = shownName(app);
    texts.details = inSentence(sellerText(app));
    texts.rating = ratingText(app);
    if (look == AppRowLook::Full) {
        const auto date = updatedText(app, {wordLocale()});
        const QString updated = date ? AppRow::tr("Updated %1").arg(*date) : QString();
        texts.ratingCount = ratingCountOf(app);
        texts.description =
            joined({texts.details, texts.rating, texts.ratingCount, updated}, separator);
        texts.details = joined({texts.details, updated}, QStringLiteral(" · "));
        return texts;
    }
    const bool isRated = !texts.rating.isEmpty() && !hasNoRatings(app);
    texts.description =
        joined({rank > 0 ? AppRow::tr("Rank %1").arg(rank) : QString(), texts.details,
                isRated ? AppRow::tr("rated %1").arg(texts.rating) : texts.rating},
               separator);
    return texts;
}

AppRowGeometry layoutAppRow(const QRectF &rect, const AppRowMetrics &metrics,
                            Qt::LayoutDirection direction)
{
    AppRowGeometry geometry;
    const qreal middle = rect.center().y();
    const qreal top = std::round(middle - (metrics.nameHeight + metrics.detailsHeight) / 2);
    const qreal bottom = top + metrics.nameHeight;
    qreal x = rect.x() + metrics.padding;
    if (metrics.rankWidth > 0) {
        geometry.rank = QRectF(x, rect.y(), metrics.rankWidth, rect.height());
        x = geometry.rank.right() + spacing::m;
    }
    geometry.icon =
        QRectF(x, std::round(middle - metrics.iconSide / 2), metrics.iconSide, metrics.iconSide);
    x = geometry.icon.right() + metrics.iconGap;

    const qreal end = std::max(x, rect.right() - metrics.padding - metrics.trailing);
    qreal textEnd = end;
    if (metrics.ratingWidth > 0) {
        const qreal left = std::max(x, end - metrics.ratingWidth);
        const QRectF line = metrics.hasRatingCount
                                ? QRectF(left, top, end - left, metrics.nameHeight)
                                : QRectF(left, rect.y(), end - left, rect.height());
        geometry.star =
            QRectF(left, std::round(line.center().y() - starSide / 2), starSide, starSide);
        geometry.rating = line.adjusted(std::min(line.width(), starSide + starGap), 0, 0, 0);
        if (metrics.hasRatingCount)
            geometry.ratingCount = QRectF(left, bottom, end - left, metrics.detailsHeight);
        textEnd = left - spacing::m;
    }
    const qreal width = std::max(0.0, textEnd - x);
    geometry.name = QRectF(x, top, width, metrics.nameHeight);
    if (metrics.badgeWidth > 0) {
        const qreal room = std::max(0.0, width - metrics.badgeWidth - spacing::s);
        geometry.name.setWidth(std::min(room, metrics.nameWidth));
        geometry.badge = QRectF(geometry.name.right() + spacing::s, top,
                                std::min(metrics.badgeWidth, width), metrics.nameHeight);
    }
    geometry.details = QRectF(x, bottom, width, metrics.detailsHeight);
    if (direction == Qt::RightToLeft) {
        for (QRectF *part :
             {&geometry.rank, &geometry.icon, &geometry.name, &geometry.badge, &geometry.details,
              &geometry.star, &geometry.rating, &geometry.ratingCount})
            part->moveLeft(rect.left() + rect.right() - part->right());
    }
    return geometry;
}

AppRow::AppRow(AppRowLook look, ArtworkImages &images, QWidget *parent)
    : Pressable(parent), m_look(look), m_images(images), m_purpose(tr("Research %1"))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    if (m_look == AppRowLook::Full) {
        setAccessibleRole(this, QAccessible::ListItem);
        setFocusPolicy(Qt::NoFocus);
        unsetCursor();
    }
    connect(&m_images, &ArtworkImages::ready, this, [this](const QString &url) {
        const auto icon = iconUrl(m_app);
        if (icon && icon->text() == url)
            update();
    });
}

void AppRow::setApp(const ITunesAppResult &app, int rank)
{
    m_app = app;
    m_rank = rank;
    m_texts = AppRowTexts::of(app, m_look, rank);
    updateDescription();
    updateName();
    update();
}

void AppRow::setOwn(bool isOwn)
{
    if (m_isOwn == isOwn)
        return;
    m_isOwn = isOwn;
    updateDescription();
    update();
}

void AppRow::updateDescription()
{
    setAccessibleDescription(
        joined({m_isOwn ? tr("Your app") : QString(), m_texts.description}, QStringLiteral(", ")));
}

void AppRow::setPurpose(const QString &purpose)
{
    m_purpose = purpose;
    updateName();
}

void AppRow::updateName()
{
    setAccessibleName(m_look == AppRowLook::Full ? m_texts.name
                                                 : m_purpose.arg(inSentence(m_texts.name)));
}

void AppRow::setTrailing(QWidget *control)
{
    if (m_trailing) {
        // It may be the one that was pressed.
        m_trailing->hide();
        m_trailing->setParent(nullptr);
        m_trailing->deleteLater();
    }
    m_trailing = control;
    m_trailing->setParent(this);
    m_trailing->show();
    placeTrailing();
}

AppRowMetrics AppRow::metrics() const
{
    const QFontMetricsF details(fontFor(TextStyle::Secondary, font()));
    const bool isFull = m_look == AppRowLook::Full;
    AppRowMetrics metrics;
    metrics.nameHeight = std::ceil(QFontMetricsF(fontFor(TextStyle::BodyMedium, font())).height());
    metrics.detailsHeight = std::ceil(details.height());
    const qreal textHeight = metrics.nameHeight + metrics.detailsHeight;
    metrics.iconSide = std::round(isFull ? textHeight * 40 / 31 : textHeight);
    metrics.iconGap = isFull ? spacing::m : spacing::m - 2;
    metrics.hasRatingCount = isFull;
    if (m_isOwn) {
        const QFontMetricsF badge(fontFor(TextStyle::SecondarySemibold, font()));
        metrics.badgeWidth =
            layoutBadge(QRectF(0, 0, width(), height()), badge, ownBadge()).capsule.width();
        metrics.nameWidth = std::ceil(QFontMetricsF(fontFor(TextStyle::BodyMedium, font()))
                                          .horizontalAdvance(m_texts.name)) +
                            1;
    }
    metrics.padding = m_look == AppRowLook::Flush ? 0 : spacing::s;
    if (m_rank > 0)
        metrics.rankWidth = std::ceil(tabularWidth(details, QStringLiteral("000")));
    if (isFull) {
        // The same for every row, so that stars stand in a column; the largest apps have millions.
        const QString widest = tr("%1 ratings").arg(QLocale().toString(88'888'888));
        metrics.ratingWidth = std::max(details.horizontalAdvance(m_texts.ratingCount),
                                       details.horizontalAdvance(widest));
    } else if (!m_texts.rating.isEmpty()) {
        metrics.ratingWidth =
            starSide + starGap + std::ceil(details.horizontalAdvance(m_texts.rating)) + 1;
    }
    if (m_trailing)
        metrics.trailing = m_trailing->width() + (isFull ? spacing::s : spacing::m);
    return metrics;
}

QSize AppRow::sizeHint() const
{
    const int height = twoLineRowHeight(font());
    return {420, m_look == AppRowLook::Full ? height + 4 : qRound(height * 48.0 / 52.0)};
}

QSize AppRow::minimumSizeHint() const
{
    return {160, sizeHint().height()};
}

void AppRow::placeTrailing()
{
    if (!m_trailing)
        return;
    const QSize size = m_trailing->sizeHint();
    const int padding = m_look == AppRowLook::Flush ? 0 : spacing::s;
    const int left = isRightToLeft() ? padding : width() - padding - size.width();
    m_trailing->setGeometry(QRect(QPoint(left, (height() - size.height()) / 2), size));
}

bool AppRow::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest) {
        placeTrailing();
        update();
    }
    return Pressable::event(event);
}

void AppRow::resizeEvent(QResizeEvent *event)
{
    Pressable::resizeEvent(event);
    placeTrailing();
}

void AppRow::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    const AppRowGeometry geometry = layoutAppRow(rect(), metrics(), layoutDirection());
    const QFont details = fontFor(TextStyle::Secondary, font());
    const QColor quiet = tokens[Token::Secondary];
    const bool isFull = m_look == AppRowLook::Full;
    const bool isFlush = m_look == AppRowLook::Flush;
    QPainter painter(this);
    if (isHovered() && !isFlush)
        drawRoundedRect(painter, rect(), radius::control, tokens[Token::Hover]);
    painter.setPen(quiet);
    if (m_rank > 0)
        drawRank(painter, geometry.rank, m_rank, details);
    const auto icon = iconUrl(m_app);
    paintArtwork(painter, geometry.icon, icon ? m_images.image(*icon) : QImage(),
                 QStringLiteral("app.fill"), tokens);
    const auto draw = [&](const QRectF &place, const QString &text, const QFont &font,
                          const QColor &color) {
        drawLine(painter, place, text, font, color, layoutDirection());
    };
    const bool isAlone = isFull && m_texts.details.isEmpty();
    draw(isAlone ? geometry.name.united(geometry.details) : geometry.name, m_texts.name,
         fontFor(TextStyle::BodyMedium, font()),
         tokens[isHovered() && isFlush ? Token::Accent : Token::Text]);
    if (m_isOwn)
        paintBadge(painter, geometry.badge, ownBadge(), tokens, font());
    draw(geometry.details, m_texts.details, details, quiet);
    if (hasNoRatings(m_app)) {
        draw(geometry.star.united(geometry.rating), m_texts.rating, details, quiet);
    } else if (!m_texts.rating.isEmpty()) {
        drawSymbol(painter, geometry.star, QStringLiteral("star.fill"), tokens[Token::Yellow]);
        draw(geometry.rating, m_texts.rating, details, isFull ? tokens[Token::Text] : quiet);
    }
    draw(geometry.ratingCount, m_texts.ratingCount, details, quiet);
    paintFocusRing(painter, radius::control);
}

} // namespace veltrix
