// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/app_search/app_search_sheet.h"

#include "ui/app_search/app_search.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/widgets/app_row.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace veltrix
{

namespace
{

constexpr QSize sheetSize{640, 620};

}

AppSearchSheet::AppSearchSheet(ASOStore &store, ArtworkImages &images, const QString &country,
                               QWidget *parent)
    : QWidget(parent), m_search(new AppSearch(store, this)), m_images(images),
      m_field(new TextField(QStringLiteral("appSearchField"),
                            tr("Search app name, ID, or App Store URL"),
                            QStringLiteral("magnifyingglass"))),
      m_submit(new Button(Button::Kind::Primary, QStringLiteral("magnifyingglass"), tr("Search"))),
      m_storefront(new StorefrontPicker(QStringLiteral("appSearchStorefront"), tr("Storefront"),
                                        StorefrontPicker::Offer::Storefronts)),
      m_stack(new QStackedWidget), m_message(new EmptyState(QStringLiteral("appSearchMessage"))),
      m_results(new QWidget),
      m_count(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_rows(new QVBoxLayout), m_scroll(new QScrollArea)
{
    setObjectName(QStringLiteral("appSearchSheet"));
    setAccessibleName(tr("Add App"));
    nameControl(m_submit, QStringLiteral("appSearchSubmit"), tr("Search"));
    auto *close = new Button(Button::Kind::Plain, QStringLiteral("xmark.circle.fill"), QString());
    nameControl(close, QStringLiteral("appSearchClose"), tr("Close app search"));
    close->setToolTip(tr("Close app search"));
    m_storefront->setPrefix(tr("Search the App Store in "));
    m_storefront->setCode(country);
    m_count->setObjectName(QStringLiteral("appSearchCount"));

    auto *header = new QHBoxLayout;
    header->addWidget(new TextLabel(TextStyle::Title, TextLabel::Tone::Text, tr("Add App")), 1);
    header->addWidget(m_storefront);
    header->addWidget(close);
    auto *entry = new QHBoxLayout;
    entry->setSpacing(spacing::s);
    entry->addWidget(m_field, 1);
    entry->addWidget(m_submit);

    auto *content = new QWidget;
    m_rows->setContentsMargins(spacing::m, 0, spacing::m, spacing::m);
    m_rows->setSpacing(0);
    content->setLayout(m_rows);
    nameControl(m_scroll, QStringLiteral("appSearchResults"), tr("Top Apps"));
    m_scroll->setWidget(content);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    auto *results = new QVBoxLayout(m_results);
    results->setContentsMargins(0, spacing::s, 0, 0);
    results->setSpacing(2);
    auto *heading = new QVBoxLayout;
    heading->setContentsMargins(spacing::xl, 0, spacing::xl, spacing::s);
    heading->setSpacing(0);
    heading->addWidget(
        new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, tr("Top Apps")));
    heading->addWidget(m_count);
    results->addLayout(heading);
    results->addWidget(m_scroll, 1);
    m_stack->addWidget(m_message);
    m_stack->addWidget(m_results);

    auto *upper = new QVBoxLayout;
    upper->setContentsMargins(spacing::xl, spacing::l, spacing::m + 2, spacing::m);
    upper->setSpacing(spacing::m);
    upper->addLayout(header);
    entry->setContentsMargins(0, 0, 6, 0);
    upper->addLayout(entry);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, spacing::s);
    layout->setSpacing(0);
    layout->addLayout(upper);
    layout->addWidget(m_stack, 1);

    m_field->setFocus();
    connect(m_field, &QLineEdit::returnPressed, this, &AppSearchSheet::submit);
    connect(m_submit, &Button::clicked, this, &AppSearchSheet::submit);
    connect(close, &Button::clicked, this, &AppSearchSheet::closeRequested);
    connect(m_message, &EmptyState::actionTriggered, m_search, &AppSearch::retry);
    connect(m_search, &AppSearch::stateChanged, this, &AppSearchSheet::showState);
    connect(m_search, &AppSearch::appTracked, this, &AppSearchSheet::appTracked);
    connect(m_storefront, &StorefrontPicker::picked, this,
            [this](const std::optional<QString> &code) {
                Q_EMIT storefrontChanged(code.value_or(QString()));
            });
    showState();
}

QSize AppSearchSheet::sizeHint() const
{
    return sheetSize.expandedTo(layout()->minimumSize());
}

void AppSearchSheet::submit()
{
    m_search->submit(m_field->text(), m_storefront->code().value_or(QString()));
}

void AppSearchSheet::showMessage(const QString &symbol, const QString &title, const QString &text,
                                 const QString &action)
{
    m_message->setContent({symbol, title, text, action});
    m_stack->setCurrentWidget(m_message);
}

void AppSearchSheet::showState()
{
    const AppSearchState &state = m_search->state();
    if (std::holds_alternative<app_search_state::Idle>(state)) {
        showMessage(QStringLiteral("magnifyingglass"), tr("Search for an app"),
                    tr("Search an app name, App Store ID, or App Store URL to see ranked "
                       "results."));
    } else if (std::holds_alternative<app_search_state::Searching>(state)) {
        showMessage(QString(), tr("Getting app results…"), QString());
    } else if (const auto *failed = std::get_if<app_search_state::Failed>(&state)) {
        showMessage(QStringLiteral("wifi.exclamationmark"), tr("Couldn't search apps"),
                    failed->message, tr("Try again"));
    } else if (std::get<app_search_state::Found>(state).results.isEmpty()) {
        showMessage(QStringLiteral("magnifyingglass"), tr("No apps found"),
                    tr("Try a different app name or storefront."));
    } else {
        showResults();
    }
}

void AppSearchSheet::showResults()
{
    const auto &found = std::get<app_search_state::Found>(m_search->state());
    while (QLayoutItem *item = m_rows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    m_count->setText(
        found.results.size() == 1
            ? tr("1 result for “%1” in %2").arg(found.query, storefrontName(found.country))
            : tr("%L1 results for “%2” in %3")
                  .arg(found.results.size())
                  .arg(found.query, storefrontName(found.country)));
    int rank = 0;
    for (const ITunesAppResult &result : found.results) {
        const AppSearchRowView::Content content{++rank, result, m_search->isTracked(result),
                                                result.trackId.has_value(),
                                                tr("Track %1").arg(displayName(result))};
        auto *row = new AppSearchRowView(content, m_images);
        connect(row, &AppSearchRowView::addRequested, this,
                [this, result] { m_search->track(result); });
        m_rows->addWidget(row);
    }
    m_rows->addStretch(1);
    m_scroll->verticalScrollBar()->setValue(0);
    m_stack->setCurrentWidget(m_results);
}

} // namespace veltrix
