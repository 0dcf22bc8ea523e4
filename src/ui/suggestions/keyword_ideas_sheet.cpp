// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/keyword_ideas_sheet.h"

#include "ui/suggestions/idea_row.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/focus_steps.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/text_label.h"

#include <QKeyEvent>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{720, 680};

} // namespace

KeywordIdeasSheet::KeywordIdeasSheet(ASOStore &store, QUuid appId, QWidget *parent)
    : SheetFrame(QStringLiteral("ideasSheet"), tr("Keyword ideas"), Body::Scrolled, preferredSize,
                 parent),
      m_ideas(store, appId),
      m_track(new Button(Button::Kind::Standard, QStringLiteral("plus"), tr("Track selected"))),
      m_read(new Button(Button::Kind::Standard, QString())),
      m_progress(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                               QStringLiteral("ideasProgress"))),
      m_failure(Banner::makeFailureCard(QStringLiteral("ideasFailure"), tr("Try again"))),
      m_outcome(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                              QStringLiteral("ideasOutcome"))),
      m_empty(new EmptyState(QStringLiteral("ideasEmpty"))), m_list(new QWidget),
      m_listLayout(makeColumn(0, m_list))
{
    nameControl(m_track, QStringLiteral("ideasTrack"), tr("Track selected ideas"));
    m_read->setObjectName(QStringLiteral("ideasRead"));
    const auto app = store.app(appId);
    if (app)
        setSubtitle(inSentence(app->appName));
    addAction(m_track);
    addCloseButton(QStringLiteral("ideasDone"), QString(), tr("Done"), tr("Done"))->setFocus();
    build();
    connect(&m_ideas, &RivalIdeas::changed, this, &KeywordIdeasSheet::showState);
    connect(&m_ideas.tracking(), &KeywordTracking::outcomeChanged, this,
            &KeywordIdeasSheet::showOutcome);
    connect(m_track, &Button::clicked, this, [this] { m_ideas.tracking().track(chosen()); });
    connect(m_read, &Button::clicked, this, [this] {
        if (m_ideas.isReading())
            m_ideas.stopReading();
        else
            m_ideas.readListings();
    });
    connect(m_failure, &Banner::actionTriggered, &m_ideas, &RivalIdeas::readListings);
    m_ideas.start();
}

void KeywordIdeasSheet::build()
{
    body()->setSpacing(spacing::s);
    auto *reading = makeRow(spacing::m);
    reading->addWidget(m_read);
    reading->addWidget(m_progress, 1);
    body()->addWidget(makeParagraph(
        TextStyle::Secondary, TextLabel::Tone::Secondary,
        tr("Phrases of your competitors' listings that you don't track. Their order is an estimate "
           "from where a phrase stands, how many competitors use it, and what is known of searches "
           "for it.")));
    body()->addLayout(reading);
    for (QWidget *part : std::initializer_list<QWidget *>{m_failure, m_outcome, m_list})
        body()->addWidget(part);
    body()->addWidget(m_empty, 1);
    body()->addStretch(0);
    m_list->installEventFilter(this);
    m_outcome->hide();
    m_failure->setMessage(QString());
}

void KeywordIdeasSheet::showState()
{
    showReading();
    showRows();
    showChosen();
}

void KeywordIdeasSheet::showReading()
{
    const qsizetype unread = m_ideas.unread();
    m_read->setVisible(unread > 0);
    m_read->setText(m_ideas.isReading() ? tr("Stop")
                    : unread == 1       ? tr("Read 1 listing")
                                        : tr("Read %L1 listings").arg(unread));
    m_read->setAccessibleName(m_ideas.isReading() ? tr("Stop reading listings") : m_read->text());
    m_progress->setText(m_ideas.isReading() ? m_ideas.progressText()
                        : unread > 0 ? tr("Only the name is known of %L1 of %L2 competitors.")
                                           .arg(unread)
                                           .arg(m_ideas.competitors())
                                     : QString());
    m_progress->setVisible(!m_progress->text().isEmpty());
    m_failure->setMessage(m_ideas.error());
}

void KeywordIdeasSheet::addRow()
{
    auto *row = new IdeaRow;
    m_rows.append(row);
    row->setObjectName(QStringLiteral("idea%1").arg(m_rows.size()));
    connect(row, &IdeaRow::toggled, this, &KeywordIdeasSheet::showChosen);
    connect(row, &IdeaRow::trackRequested, this, [this, row] {
        m_ideas.tracking().track({{row->idea().phrase, row->idea().country}});
    });
    m_listLayout->addWidget(row);
}

void KeywordIdeasSheet::showRows()
{
    const QList<KeywordToTrack> kept = chosen();
    const QList<KeywordIdea> &ideas = m_ideas.ideas();
    while (m_rows.size() < ideas.size())
        addRow();
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        m_rows[i]->setVisible(i < ideas.size());
        if (i >= ideas.size()) {
            m_rows[i]->setChecked(false);
            continue;
        }
        m_rows[i]->setIdea(ideas[i]);
        m_rows[i]->setChecked(kept.contains({ideas[i].phrase, ideas[i].country}));
    }
    putInTabOrder(*m_list, {m_rows.begin(), m_rows.end()});
    m_list->setVisible(!ideas.isEmpty());
    m_empty->setVisible(ideas.isEmpty());
    const QString symbol = QStringLiteral("lightbulb");
    if (!m_ideas.isGathered())
        m_empty->setContent(EmptyState::Content::working(tr("Looking for ideas…")));
    else if (m_ideas.competitors() == 0)
        m_empty->setContent({symbol, tr("No competitors yet"),
                             tr("Track competitors to find ideas in their listings."), QString()});
    else
        m_empty->setContent({symbol, tr("No ideas left"),
                             tr("You track every phrase that is known of your competitors' "
                                "listings."),
                             QString()});
}

QList<KeywordToTrack> KeywordIdeasSheet::chosen() const
{
    QList<KeywordToTrack> keywords;
    for (const IdeaRow *row : m_rows) {
        if (row->isChecked())
            keywords.append({row->idea().phrase, row->idea().country});
    }
    return keywords;
}

void KeywordIdeasSheet::showChosen()
{
    const qsizetype count = chosen().size();
    m_track->setEnabled(count > 0);
    m_track->setText(count > 0 ? tr("Track %L1 selected").arg(count) : tr("Track selected"));
}

void KeywordIdeasSheet::showOutcome()
{
    const KeywordTracking::Outcome &outcome = m_ideas.tracking().outcome();
    m_outcome->setTone(outcome.isProblem ? TextLabel::Tone::Red : TextLabel::Tone::Secondary);
    m_outcome->setText(outcome.message);
    m_outcome->setAccessibleName(outcome.message);
    m_outcome->show();
    announceNameChange(m_outcome);
}

bool KeywordIdeasSheet::eventFilter(QObject *watched, QEvent *event)
{
    // Before the page around the list scrolls by the arrows.
    if (watched == m_list && event->type() == QEvent::KeyPress &&
        moveFocusAmong({m_rows.begin(), m_rows.end()}, *static_cast<QKeyEvent *>(event)))
        return true;
    return SheetFrame::eventFilter(watched, event);
}

} // namespace veltrix
