// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/app_header.h"

#include "ui_kit/text/app_facts.h"
#include "ui_kit/theme/tokens.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/badge.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/text_label.h"

#include <QPainter>

namespace veltrix
{

namespace
{

constexpr int headerIcon = 72;
constexpr int standardControlHeight = 30;

/// Icons are shown larger here than in lists, so the largest artwork is taken.
std::optional<Url> largeIconUrl(const ITunesAppResult &app)
{
    if (const auto large = Url::fromText(app.artworkUrl512.value_or(QString())))
        return large;
    return iconUrl(app);
}

} // namespace

ArtworkView::ArtworkView(ArtworkImages &images, int side, const QString &placeholder,
                         QWidget *parent)
    : QWidget(parent), m_images(images), m_side(side), m_placeholder(placeholder)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&m_images, &ArtworkImages::ready, this, [this](const QString &url) {
        if (m_url && m_url->text() == url)
            update();
    });
}

void ArtworkView::setUrl(const std::optional<Url> &url)
{
    m_url = url;
    update();
}

QSize ArtworkView::sizeHint() const
{
    const int side = m_side * controlHeight(font()) / standardControlHeight;
    return {side, side};
}

void ArtworkView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintArtwork(painter, rect(), m_url ? m_images.image(*m_url) : QImage(), m_placeholder,
                 Tokens::of(this));
}

AppHeader::AppHeader(ArtworkImages &images, QWidget *parent)
    : QWidget(parent), m_icon(new ArtworkView(images, headerIcon, QStringLiteral("app.fill"))),
      m_name(new ElidedLabel(TextStyle::Figure, TextLabel::Tone::Text)), m_own(new BadgeView),
      m_byline(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_actions(makeRow(spacing::m))
{
    m_name->setObjectName(QStringLiteral("appName"));
    m_byline->setObjectName(QStringLiteral("appByline"));
    m_own->setObjectName(QStringLiteral("appOwn"));
    m_own->setBadge({tr("You"), Token::Accent});
    m_own->hide();
    m_name->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    auto *name = makeRow(spacing::s);
    name->addWidget(m_name);
    name->addWidget(m_own, 0, Qt::AlignVCenter);
    name->addStretch(1);
    auto *titles = makeColumn(2);
    titles->addStretch(1);
    titles->addLayout(name);
    titles->addWidget(m_byline);
    titles->addStretch(1);
    auto *layout = makeRow(spacing::l, this);
    layout->addWidget(m_icon);
    layout->addLayout(titles, 1);
    layout->addLayout(m_actions);
}

void AppHeader::setApp(const ITunesAppResult &app)
{
    m_icon->setUrl(largeIconUrl(app));
    m_name->setText(shownName(app));
    m_byline->setText(bylineText(app));
}

void AppHeader::setOwn(bool isOwn)
{
    m_own->setVisible(isOwn);
}

void AppHeader::addAction(QWidget *control)
{
    m_actions->addWidget(control);
}

} // namespace veltrix
