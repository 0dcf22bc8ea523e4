// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_controls.h"

#include "ui/dashboard/keyword_filter.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/page_toolbar.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_field.h"

#include <QTimer>

namespace veltrix
{

namespace
{

/// How long typing must rest before the table is filtered.
constexpr std::chrono::milliseconds searchDelay{150};
constexpr int searchWidth = 220;

} // namespace

KeywordControls::KeywordControls(PageToolbar &toolbar, KeywordFilter &filter)
    : QObject(&toolbar), m_filter(filter),
      m_search(new TextField(QStringLiteral("keywordSearch"), tr("Search keywords"),
                             QStringLiteral("magnifyingglass"))),
      m_storefront(new StorefrontPicker(QStringLiteral("storefrontFilter"), tr("Storefront filter"),
                                        StorefrontPicker::Offer::AllAndStorefronts)),
      m_refresh(new Button(Button::Kind::Standard, QStringLiteral("arrow.clockwise"), QString())),
      m_add(new Button(Button::Kind::Primary, QStringLiteral("plus"), tr("Add keywords")))
{
    m_search->setMaximumWidth(searchWidth);
    m_search->setMinimumWidth(searchWidth / 2);
    nameControl(m_refresh, QStringLiteral("refreshButton"), tr("Refresh"));
    m_refresh->setToolTip(tr("Refresh (F5)"));
    nameControl(m_add, QStringLiteral("addKeywordsButton"), tr("Add keywords"));
    m_add->setToolTip(tr("Add keywords (Ctrl+N)"));
    for (QWidget *control : {static_cast<QWidget *>(m_search), static_cast<QWidget *>(m_storefront),
                             static_cast<QWidget *>(m_refresh), static_cast<QWidget *>(m_add)})
        toolbar.addTrailing(control);
    connectFilter();
    connect(m_refresh, &Button::clicked, this, &KeywordControls::refreshRequested);
    connect(m_add, &Button::clicked, this, &KeywordControls::addRequested);
}

void KeywordControls::connectFilter()
{
    auto *delay = new QTimer(this);
    delay->setSingleShot(true);
    delay->setInterval(searchDelay);
    connect(m_search, &QLineEdit::textChanged, delay, qOverload<>(&QTimer::start));
    const auto search = [this, delay] {
        delay->stop();
        m_filter.setSearch(m_search->text());
    };
    connect(delay, &QTimer::timeout, this, search);
    connect(m_search, &QLineEdit::returnPressed, this, search);
    connect(m_search, &TextField::escaped, this, [this, search] {
        m_search->clear();
        search();
    });
    connect(m_storefront, &StorefrontPicker::picked, &m_filter, &KeywordFilter::setStorefront);
}

void KeywordControls::focusSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void KeywordControls::showOnly(QuickFilter filter)
{
    m_search->clear();
    m_storefront->setCode(std::nullopt);
    m_filter.showOnly(filter);
}

void KeywordControls::setRefreshEnabled(bool isEnabled)
{
    m_refresh->setEnabled(isEnabled);
}

QWidget *KeywordControls::addButton() const
{
    return m_add;
}

} // namespace veltrix
