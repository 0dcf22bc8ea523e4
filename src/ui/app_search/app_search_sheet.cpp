// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/app_search/app_search_sheet.h"

#include "ui/app_search/app_search.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/app_row_list.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/card.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/loadable_view.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QScrollArea>
#include <QScrollBar>

namespace veltrix
{

namespace
{

constexpr QSize sheetSize{640, 620};

}

AppSearchSheet::AppSearchSheet(ASOStore &store, ArtworkImages &images, const QString &country,
                               QWidget *parent)
    : QWidget(parent), m_search(new AppSearch(store, this)),
      m_field(new TextField(QStringLiteral("appSearchField"),
                            tr("Search app name, ID, or App Store URL"),
                            QStringLiteral("magnifyingglass"))),
      m_submit(new Button(Button::Kind::Primary, QStringLiteral("magnifyingglass"), tr("Search"))),
      m_storefront(new StorefrontPicker(QStringLiteral("appSearchStorefront"), tr("Storefront"),
                                        StorefrontPicker::Offer::Storefronts)),
      m_view(new LoadableView(QStringLiteral("appSearchMessage"))),
      m_count(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_rows(new AppRowList(QStringLiteral("appRow"), AppRowLook::Full, AppRowList::Ranks::Shown,
                            images, [this](AppRow &row) { addTrackButton(row); }))
{
    nameControl(this, QStringLiteral("appSearchSheet"), tr("Add App"));
    m_storefront->setPrefix(tr("Search the App Store in "));
    m_storefront->setCode(country);
    build();
    m_field->setFocus();
    connect(m_field, &QLineEdit::returnPressed, this, &AppSearchSheet::submit);
    connect(m_submit, &Button::clicked, this, &AppSearchSheet::submit);
    connect(m_view, &LoadableView::retryRequested, m_search, &AppSearch::retry);
    connect(m_search, &AppSearch::stateChanged, this, [this] {
        showState();
        m_scroll->verticalScrollBar()->setValue(0);
    });
    connect(m_search, &AppSearch::appTracked, this, &AppSearchSheet::showAdded);
    connect(m_storefront, &StorefrontPicker::picked, this,
            [this](const std::optional<QString> &code) {
                Q_EMIT storefrontChanged(code.value_or(QString()));
                m_search->searchIn(code.value_or(QString()));
            });
    showState();
}

void AppSearchSheet::build()
{
    nameControl(m_submit, QStringLiteral("appSearchSubmit"), tr("Search"));
    auto *close = new Button(Button::Kind::Plain, QStringLiteral("xmark.circle.fill"), QString());
    nameControl(close, QStringLiteral("appSearchClose"), tr("Close app search"));
    close->setToolTip(tr("Close app search"));
    connect(close, &Button::clicked, this, &AppSearchSheet::closeRequested);
    m_results = makeResults();
    m_view->addWidget(m_results);

    auto *header = new QHBoxLayout;
    header->addWidget(new TextLabel(TextStyle::Title, TextLabel::Tone::Text, tr("Add App")), 1);
    header->addWidget(m_storefront);
    header->addWidget(close);
    auto *entry = makeRow(spacing::s, nullptr, {0, 0, 6, 0});
    entry->addWidget(m_field, 1);
    entry->addWidget(m_submit);
    auto *upper =
        makeColumn(spacing::m, nullptr, {spacing::xl, spacing::l, spacing::m + 2, spacing::m});
    upper->addLayout(header);
    upper->addLayout(entry);
    m_added = makeAdded();
    auto *layout = makeColumn(0, this, {0, 0, 0, spacing::s});
    layout->addLayout(upper);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_added);
    m_added->hide();
}

QWidget *AppSearchSheet::makeAdded()
{
    auto *added = new QWidget;
    m_addedName = new ElidedLabel(TextStyle::Body, TextLabel::Tone::Text);
    m_addedName->setObjectName(QStringLiteral("appSearchAdded"));
    auto *done = new Button(Button::Kind::Standard, tr("Done"));
    nameControl(done, QStringLiteral("appSearchDone"), tr("Done"));
    connect(done, &Button::clicked, this, &AppSearchSheet::closeRequested);
    auto *row = makeRow(spacing::s, added, {spacing::xl, spacing::s, spacing::xl, spacing::s});
    row->addWidget(new SymbolView(QStringLiteral("checkmark.circle.fill"), Token::Green));
    row->addWidget(m_addedName, 1);
    row->addWidget(done);
    return added;
}

QWidget *AppSearchSheet::makeResults()
{
    m_count->setObjectName(QStringLiteral("appSearchCount"));
    auto *heading = makeColumn(0, nullptr, {spacing::xl, 0, spacing::xl, spacing::s});
    heading->addWidget(makeHeading(tr("Top Apps")));
    heading->addWidget(m_count);
    auto *list = new QWidget;
    auto *rows = makeColumn(0, list, {spacing::m, 0, spacing::m, spacing::m});
    rows->addWidget(m_rows);
    rows->addStretch(1);
    m_scroll = makeScrollPage(QStringLiteral("appSearchResults"), tr("Top Apps"), list);
    auto *results = new QWidget;
    auto *layout = makeColumn(2, results, {0, spacing::s, 0, 0});
    layout->addLayout(heading);
    layout->addWidget(m_scroll, 1);
    return results;
}

QSize AppSearchSheet::sizeHint() const
{
    return sheetSize.expandedTo(layout()->minimumSize());
}

void AppSearchSheet::submit()
{
    m_search->submit(m_field->text(), m_storefront->code().value_or(QString()));
}

void AppSearchSheet::showState()
{
    const Loadable<AppSearchResults> &state = m_search->state();
    const LoadingWords words{tr("Getting app results…"), tr("Couldn't search apps"),
                             tr("Try again")};
    if (state.is<NotAsked>()) {
        m_view->showMessage({QStringLiteral("magnifyingglass"), tr("Search for an app"),
                             tr("Search an app name, App Store ID, or App Store URL to see ranked "
                                "results."),
                             QString()});
        return;
    }
    if (const auto message = words.messageOf(state)) {
        m_view->showMessage(*message);
        return;
    }
    const AppSearchResults &found = *state.value();
    if (found.apps.isEmpty()) {
        m_view->showMessage({QStringLiteral("magnifyingglass"), tr("No apps found"),
                             found.notFound.isEmpty()
                                 ? tr("Try a different app name or storefront.")
                                 : found.notFound,
                             QString()});
        return;
    }
    const QString place = storefrontName(found.country);
    m_count->setText(found.apps.size() == 1
                         ? tr("1 result for “%1” in %2").arg(inSentence(found.query), place)
                         : tr("%L1 results for “%2” in %3")
                               .arg(found.apps.size())
                               .arg(inSentence(found.query), place));
    m_rows->setApps(found.apps);
    m_view->showPage(m_results);
}

void AppSearchSheet::showAdded(const AppProfile &app)
{
    Q_EMIT appTracked(app);
    m_addedName->setText(tr("Added %1").arg(inSentence(app.appName)));
    m_added->show();
    // The rows tell anew which apps are tracked; the field is ready for the next search.
    showState();
    m_field->setFocus();
    m_field->selectAll();
}

void AppSearchSheet::addTrackButton(AppRow &row)
{
    const ITunesAppResult &app = row.app();
    const bool isTracked = m_search->isTracked(app);
    const QString label = isTracked ? tr("Already tracking") : tr("Track %1").arg(displayName(app));
    auto *add = new Button(Button::Kind::Plain,
                           isTracked ? QStringLiteral("checkmark.circle.fill")
                                     : QStringLiteral("plus.circle"),
                           QString());
    nameControl(add, QStringLiteral("appRowAdd"), label);
    add->setToolTip(label);
    add->setEnabled(!isTracked && app.trackId.has_value());
    connect(add, &Button::clicked, m_search, [this, app] { m_search->track(app); });
    row.setTrailing(add);
}

} // namespace veltrix
