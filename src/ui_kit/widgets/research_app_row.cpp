// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/research_app_row.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/app_facts.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr qreal starSide = 12;
constexpr qreal starGap = 4;

void drawLine(QPainter &painter, const QRectF &rect, const QString &text, const QFont &font,
              const QColor &color, Qt::LayoutDirection direction)
{
    painter.setFont(font);
    painter.setPen(color);
    const auto alignment = QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter);
    painter.drawText(rect, int(alignment) | Qt::TextSingleLine,
                     QFontMetricsF(font).elidedText(text, Qt::ElideRight, rect.width() + 0.5));
}

} // namespace

ResearchRowGeometry layoutResearchRow(const QRectF &rect, const ResearchRowMetrics &metrics,
                                      Qt::LayoutDirection direction)
{
    ResearchRowGeometry geometry;
    const qreal middle = rect.center().y();
    const qreal textHeight = metrics.nameHeight + metrics.sellerHeight;
    const qreal icon = std::round(textHeight);
    const qreal top = std::round(middle - textHeight / 2);
    qreal x = rect.x() + metrics.padding;
    if (metrics.rankWidth > 0) {
        geometry.rank = QRectF(x, rect.y(), metrics.rankWidth, rect.height());
        x = geometry.rank.right() + spacing::m;
    }
    geometry.icon = QRectF(x, std::round(middle - icon / 2), icon, icon);
    x = geometry.icon.right() + spacing::m - 2;

    qreal end = rect.right() - metrics.padding - metrics.trailing;
    if (metrics.ratingWidth > 0) {
        geometry.rating =
            QRectF(end - metrics.ratingWidth, rect.y(), metrics.ratingWidth, rect.height());
        geometry.star = QRectF(geometry.rating.x() - starGap - starSide,
                               std::round(middle - starSide / 2), starSide, starSide);
        end = geometry.star.x() - spacing::m;
    }
    const qreal width = std::max(0.0, end - x);
    geometry.name = QRectF(x, top, width, metrics.nameHeight);
    geometry.seller = QRectF(x, top + metrics.nameHeight, width, metrics.sellerHeight);
    if (direction == Qt::RightToLeft) {
        for (QRectF *part : {&geometry.rank, &geometry.icon, &geometry.name, &geometry.seller,
                             &geometry.star, &geometry.rating})
            part->moveLeft(rect.left() + rect.right() - part->right());
    }
    return geometry;
}

ResearchAppRow::ResearchAppRow(const ITunesAppResult &app, ArtworkImages &images, QWidget *parent)
    : QWidget(parent), m_app(app), m_images(images)
{
    setObjectName(QStringLiteral("researchAppRow"));
    setAccessibleRole(this, QAccessible::Button);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&m_images, &ArtworkImages::ready, this, [this](const QString &url) {
        const auto icon = iconUrl(m_app);
        if (icon && icon->text() == url)
            update();
    });
    ResearchAppRow::updateAccessibleTexts();
}

QString ResearchAppRow::openText() const
{
    return tr("Research %1").arg(displayName(m_app));
}

void ResearchAppRow::updateAccessibleTexts()
{
    setAccessibleName(openText());
    QStringList sentence;
    if (m_rank > 0)
        sentence << tr("Rank %1").arg(m_rank);
    sentence << sellerText(m_app);
    const QString rating = ratingText(m_app);
    if (!rating.isEmpty())
        sentence << tr("rated %1").arg(rating);
    sentence.removeAll(QString());
    setAccessibleDescription(sentence.join(QStringLiteral(", ")));
}

void ResearchAppRow::setApp(const ITunesAppResult &app)
{
    m_app = app;
    updateAccessibleTexts();
    update();
}

void ResearchAppRow::setRank(int rank)
{
    m_rank = rank;
    updateAccessibleTexts();
    update();
}

void ResearchAppRow::setEnds(Ends ends)
{
    m_ends = ends;
    placeTrailing();
    update();
}

void ResearchAppRow::setTrailing(QWidget *control)
{
    m_trailing = control;
    m_trailing->setParent(this);
    m_trailing->show();
    placeTrailing();
}

ResearchRowMetrics ResearchAppRow::metrics() const
{
    const QFontMetricsF name(fontFor(TextStyle::BodyMedium, font()));
    const QFontMetricsF details(fontFor(TextStyle::Secondary, font()));
    ResearchRowMetrics metrics;
    metrics.nameHeight = std::ceil(name.height());
    metrics.sellerHeight = std::ceil(details.height());
    if (m_rank > 0)
        metrics.rankWidth = std::ceil(tabularWidth(details, QStringLiteral("000")));
    if (m_app.averageUserRating)
        metrics.ratingWidth = std::ceil(details.horizontalAdvance(ratingText(m_app))) + 1;
    if (m_trailing)
        metrics.trailing = m_trailing->width() + spacing::m;
    metrics.padding = m_ends == Ends::Padded ? spacing::s : 0;
    return metrics;
}

QSize ResearchAppRow::sizeHint() const
{
    return {420, qRound(twoLineRowHeight(font()) * 48.0 / 52.0)};
}

QSize ResearchAppRow::minimumSizeHint() const
{
    return {160, sizeHint().height()};
}

void ResearchAppRow::placeTrailing()
{
    if (!m_trailing)
        return;
    const QSize size = m_trailing->sizeHint();
    const int padding = m_ends == Ends::Padded ? spacing::s : 0;
    const int left = isRightToLeft() ? padding : width() - padding - size.width();
    m_trailing->setGeometry(QRect(QPoint(left, (height() - size.height()) / 2), size));
}

bool ResearchAppRow::event(QEvent *event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    if (event->type() == QEvent::LayoutRequest) {
        placeTrailing();
        update();
    }
    return QWidget::event(event);
}

void ResearchAppRow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeTrailing();
}

void ResearchAppRow::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    const ResearchRowGeometry geometry = layoutResearchRow(rect(), metrics(), layoutDirection());
    const QFont details = fontFor(TextStyle::Secondary, font());
    QPainter painter(this);
    const bool isFlush = m_ends == Ends::Flush;
    if (underMouse() && !isFlush)
        drawRoundedRect(painter, rect(), radius::control, tokens[Token::Hover]);
    if (m_rank > 0) {
        const QFontMetricsF metrics(details);
        const QString rank = QLocale().toString(m_rank);
        painter.setFont(details);
        painter.setPen(tokens[Token::Secondary]);
        drawTabularText(painter,
                        {geometry.rank.right() - tabularWidth(metrics, rank),
                         geometry.rank.center().y() + (metrics.ascent() - metrics.descent()) / 2},
                        rank);
    }
    const auto icon = iconUrl(m_app);
    paintArtwork(painter, geometry.icon, icon ? m_images.image(*icon) : QImage(),
                 QStringLiteral("app.fill"), tokens);
    drawLine(painter, geometry.name, displayName(m_app), fontFor(TextStyle::BodyMedium, font()),
             tokens[underMouse() && isFlush ? Token::Accent : Token::Text], layoutDirection());
    drawLine(painter, geometry.seller, sellerText(m_app), details, tokens[Token::Secondary],
             layoutDirection());
    if (m_app.averageUserRating) {
        drawSymbol(painter, geometry.star, QStringLiteral("star.fill"), tokens[Token::Yellow]);
        drawLine(painter, geometry.rating, ratingText(m_app), details, tokens[Token::Secondary],
                 layoutDirection());
    }
    QStyleOption option;
    option.initFrom(this);
    if (showsFocus(option))
        drawFocusRing(painter, rect(), radius::control, tokens[Token::Accent]);
}

void ResearchAppRow::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
        Q_EMIT opened();
    else
        QWidget::keyPressEvent(event);
}

void ResearchAppRow::mousePressEvent(QMouseEvent *event)
{
    m_isPressed = event->button() == Qt::LeftButton;
}

void ResearchAppRow::mouseReleaseEvent(QMouseEvent *event)
{
    const bool wasPressed = std::exchange(m_isPressed, false);
    if (wasPressed && event->button() == Qt::LeftButton &&
        rect().contains(event->position().toPoint()))
        Q_EMIT opened();
}

} // namespace veltrix
