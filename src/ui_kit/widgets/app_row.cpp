// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/app_row.h"

#include "model/date.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/date_texts.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/button.h"

#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr qreal starGap = 4;

void drawLine(QPainter &painter, const QRectF &rect, const QString &text, const QFont &font,
              const QColor &color, Qt::Alignment alignment = Qt::AlignLeft)
{
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(rect, int(alignment | Qt::AlignVCenter) | Qt::TextSingleLine,
                     QFontMetricsF(font).elidedText(text, Qt::ElideRight, rect.width()));
}

} // namespace

AppRowTexts AppRowTexts::of(const ITunesAppResult &result)
{
    const QLocale locale;
    AppRowTexts texts;
    texts.name = displayName(result);
    texts.seller = result.sellerName.value_or(QString()).trimmed();
    if (result.averageUserRating)
        texts.rating = locale.toString(*result.averageUserRating, 'f', 1);
    if (result.userRatingCount)
        texts.ratingCount = *result.userRatingCount == 1
                                ? AppSearchRowView::tr("1 rating")
                                : AppSearchRowView::tr("%1 ratings")
                                      .arg(locale.toString(qlonglong(*result.userRatingCount)));
    const auto date = parseInternetDateTime(result.currentVersionReleaseDate.value_or(QString()));
    if (date)
        texts.updated = AppSearchRowView::tr("Updated %1").arg(dateText(*date));
    return texts;
}

AppRowGeometry layoutAppRow(const QRectF &rect, qreal nameHeight, qreal detailHeight,
                            qreal rankWidth, qreal ratingWidth, qreal trailing)
{
    AppRowGeometry geometry;
    const qreal icon = std::round((nameHeight + detailHeight) * 40.0 / 31.0);
    const qreal middle = rect.center().y();
    const qreal top = std::round(middle - (nameHeight + detailHeight) / 2);
    geometry.rank = QRectF(rect.x() + spacing::s, rect.y(), rankWidth, rect.height());
    geometry.icon =
        QRectF(geometry.rank.right() + spacing::m, std::round(middle - icon / 2), icon, icon);
    const qreal textLeft = geometry.icon.right() + spacing::m;
    const qreal ratingRight = rect.right() - trailing;
    const qreal ratingLeft = std::max(textLeft, ratingRight - ratingWidth);
    const qreal textWidth = std::max(0.0, ratingLeft - spacing::m - textLeft);
    geometry.name = QRectF(textLeft, top, textWidth, nameHeight);
    geometry.details = QRectF(textLeft, top + nameHeight, textWidth, detailHeight);
    geometry.star = QRectF(ratingLeft, top + (nameHeight - 12) / 2, 12, 12);
    geometry.rating = QRectF(ratingLeft + 12 + starGap, top,
                             std::max(0.0, ratingRight - ratingLeft - 12 - starGap), nameHeight);
    geometry.ratingCount =
        QRectF(ratingLeft, top + nameHeight, ratingRight - ratingLeft, detailHeight);
    return geometry;
}

AppSearchRowView::AppSearchRowView(const Content &content, ArtworkImages &images, QWidget *parent)
    : QWidget(parent), m_content(content), m_texts(AppRowTexts::of(content.result)),
      m_images(images),
      m_add(new Button(Button::Kind::Plain, QStringLiteral("plus.circle"), QString(), this))
{
    setObjectName(QStringLiteral("appRow"));
    setAccessibleRole(this, QAccessible::ListItem);
    setAccessibleName(m_texts.name);
    QStringList details{m_texts.seller, m_texts.rating, m_texts.ratingCount, m_texts.updated};
    details.removeAll(QString());
    setAccessibleDescription(details.join(QStringLiteral(", ")));
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_add->setObjectName(QStringLiteral("appRowAdd"));
    connect(m_add, &Button::clicked, this, &AppSearchRowView::addRequested);
    connect(&m_images, &ArtworkImages::ready, this, QOverload<>::of(&QWidget::update));
    updateButton();
}

void AppSearchRowView::setTracked(bool isTracked)
{
    m_content.isTracked = isTracked;
    updateButton();
}

void AppSearchRowView::setOpens(bool opens)
{
    m_opens = opens;
    setFocusPolicy(opens ? Qt::StrongFocus : Qt::NoFocus);
    setAccessibleRole(this, opens ? QAccessible::Button : QAccessible::ListItem);
    setAccessibleName(opens ? tr("View details for %1").arg(m_texts.name) : m_texts.name);
}

void AppSearchRowView::updateButton()
{
    m_add->setSymbol(m_content.isTracked ? QStringLiteral("checkmark.circle.fill")
                                         : QStringLiteral("plus.circle"));
    const QString label = m_content.isTracked ? tr("Already tracking") : m_content.actionLabel;
    m_add->setAccessibleName(label);
    m_add->setToolTip(label);
    m_add->setEnabled(!m_content.isTracked && m_content.canTrack);
}

QSize AppSearchRowView::sizeHint() const
{
    return {420, twoLineRowHeight(font()) + 4};
}

void AppSearchRowView::placeButton()
{
    const QSize size = m_add->sizeHint();
    m_add->setGeometry(
        QRect(QPoint(width() - spacing::s - size.width(), (height() - size.height()) / 2), size));
}

void AppSearchRowView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeButton();
}

bool AppSearchRowView::event(QEvent *event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    return QWidget::event(event);
}

void AppSearchRowView::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    const QFont nameFont = fontFor(TextStyle::BodyMedium, font());
    const QFont detailFont = fontFor(TextStyle::Secondary, font());
    const QFontMetricsF details(detailFont);
    const qreal rankWidth = tabularWidth(details, QStringLiteral("000"));
    // The same for every row, so that stars stand in a column; the largest apps have millions.
    const qreal ratingWidth =
        std::max(details.horizontalAdvance(m_texts.ratingCount),
                 details.horizontalAdvance(tr("%1 ratings").arg(QLocale().toString(88'888'888))));
    const AppRowGeometry geometry = layoutAppRow(
        rect(), std::ceil(QFontMetricsF(nameFont).height()), std::ceil(details.height()), rankWidth,
        ratingWidth, m_add->width() + 2 * spacing::s);

    QPainter painter(this);
    if (underMouse())
        drawRoundedRect(painter, rect(), radius::control, tokens[Token::Hover]);
    painter.setFont(detailFont);
    painter.setPen(tokens[Token::Secondary]);
    const QString rank = QLocale().toString(m_content.rank);
    drawTabularText(painter,
                    {geometry.rank.right() - tabularWidth(details, rank),
                     geometry.rank.center().y() + (details.ascent() - details.descent()) / 2},
                    rank);
    const auto url = iconUrl(m_content.result);
    paintArtwork(painter, geometry.icon, url ? m_images.image(*url) : QImage(),
                 QStringLiteral("app.fill"), tokens);
    QStringList lower{m_texts.seller, m_texts.updated};
    lower.removeAll(QString());
    const QRectF name = lower.isEmpty() ? geometry.name.united(geometry.details) : geometry.name;
    drawLine(painter, name, m_texts.name, nameFont, tokens[Token::Text]);
    drawLine(painter, geometry.details, lower.join(QStringLiteral(" · ")), detailFont,
             tokens[Token::Secondary]);
    if (!m_texts.rating.isEmpty()) {
        drawSymbol(painter, geometry.star, QStringLiteral("star.fill"), tokens[Token::Yellow]);
        drawLine(painter, geometry.rating, m_texts.rating, detailFont, tokens[Token::Text]);
    }
    drawLine(painter, geometry.ratingCount, m_texts.ratingCount, detailFont,
             tokens[Token::Secondary]);
    QStyleOption option;
    option.initFrom(this);
    if (showsFocus(option))
        drawFocusRing(painter, rect(), radius::control, tokens[Token::Accent]);
}

void AppSearchRowView::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (m_opens && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space))
        Q_EMIT opened();
    else
        QWidget::keyPressEvent(event);
}

void AppSearchRowView::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_opens && event->button() == Qt::LeftButton &&
        rect().contains(event->position().toPoint()))
        Q_EMIT opened();
}

} // namespace veltrix
