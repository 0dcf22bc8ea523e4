// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitor_search_panel.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/app_row_list.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/loadable_view.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

namespace veltrix
{

CompetitorSearchPanel::CompetitorSearchPanel(CompetitorSearch &search, ArtworkImages &images,
                                             QWidget *parent)
    : QWidget(parent), m_search(search),
      m_field(new TextField(QStringLiteral("competitorSearch"), tr("Search any App Store app"),
                            QStringLiteral("magnifyingglass"))),
      m_title(makeHeading(QString())), m_showAll(new Button(Button::Kind::Link, tr("Show all"))),
      m_message(new EmptyState(QStringLiteral("competitorSearchMessage"))),
      m_failure(
          Banner::makeFailureCard(QStringLiteral("competitorSearchFailure"), tr("Retry search"))),
      m_rows(new AppRowList(QStringLiteral("searchResult"), AppRowLook::Flush,
                            AppRowList::Ranks::Hidden, images))
{
    build();
    connect(&m_search, &CompetitorSearch::changed, this, &CompetitorSearchPanel::showState);
    connect(m_failure, &Banner::actionTriggered, &m_search, &CompetitorSearch::retry);
    connect(m_message, &EmptyState::actionTriggered, &m_search, &CompetitorSearch::retry);
    connect(m_showAll, &Button::clicked, &m_search, &CompetitorSearch::showAll);
    connect(m_rows, &AppRowList::pressed, this, &CompetitorSearchPanel::opened);
    showState();
}

QLayout *CompetitorSearchPanel::makeEntry()
{
    auto *go = new Button(Button::Kind::Primary, QStringLiteral("magnifyingglass"), tr("Search"));
    nameControl(go, QStringLiteral("competitorSearchSubmit"), tr("Search"));
    const auto submit = [this] {
        m_search.submit(m_field->text());
    };
    connect(go, &Button::clicked, this, submit);
    connect(m_field, &QLineEdit::returnPressed, this, submit);
    connect(m_field, &QLineEdit::textChanged, this, [this](const QString &text) {
        // An emptied field gives the competitors their place back.
        if (text.isEmpty())
            m_search.submit(QString());
    });
    auto *entry = makeRow(spacing::s);
    entry->addWidget(m_field, 1);
    entry->addWidget(go);
    return entry;
}

void CompetitorSearchPanel::build()
{
    m_title->setObjectName(QStringLiteral("competitorResultsTitle"));
    nameControl(m_showAll, QStringLiteral("competitorShowAll"), tr("Show all"));
    auto *close = new Button(Button::Kind::Plain, QStringLiteral("xmark"), QString());
    nameControl(close, QStringLiteral("competitorResultsClose"), tr("Close search results"));
    close->setToolTip(tr("Close search results"));
    connect(close, &Button::clicked, this, [this] {
        m_field->clear();
        m_field->setFocus();
    });
    auto *head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(m_showAll);
    head->addWidget(close);
    auto *layout = makeColumn(spacing::s, this);
    layout->addLayout(head);
    layout->addWidget(m_failure);
    layout->addWidget(m_message);
    layout->addWidget(m_rows);
}

void CompetitorSearchPanel::setOwnApp(std::optional<std::int64_t> trackId)
{
    m_rows->setOwnApp(trackId);
}

void CompetitorSearchPanel::focusField(Qt::FocusReason reason)
{
    m_field->setFocus(reason);
}

void CompetitorSearchPanel::focusWholeField()
{
    focusField(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

void CompetitorSearchPanel::showState()
{
    using ShowAll = CompetitorSearch::ShowAll;
    const LoadingWords words{tr("Searching apps…"), tr("Couldn't load app"), tr("Retry search")};
    const QList<ITunesAppResult> apps = m_search.results();
    auto message = words.messageOf(m_search.state());
    if (!message && apps.isEmpty())
        message = {QStringLiteral("magnifyingglass"), tr("No apps found"), QString(), QString()};
    m_message->setContent(message.value_or(EmptyState::Content()));
    setShown(*m_message, message.has_value());
    m_failure->setMessage(m_search.problem());
    m_title->setText(m_search.title());
    const ShowAll showAll = m_search.showAllState();
    m_showAll->setVisible(showAll != ShowAll::Hidden);
    m_showAll->setEnabled(showAll == ShowAll::Offered);
    m_showAll->setText(showAll == ShowAll::UnderWay ? tr("Searching apps…") : tr("Show all"));
    m_rows->setApps(apps);
    setShown(*this, !m_search.term().isEmpty());
}

} // namespace veltrix
