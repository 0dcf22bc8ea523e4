// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/add_keywords.h"

#include "model/storefront_codes.h"
#include "ui/dashboard/import_preview.h"
#include "ui/dashboard/keyword_actions.h"
#include "ui/dashboard/keyword_plan_texts.h"
#include "ui/suggestions/suggestion_panel.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/text/table_file.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/storefront_checklist.h"
#include "ui_kit/widgets/tag_field.h"
#include "ui_kit/widgets/text_area.h"
#include "ui_kit/widgets/text_label.h"

#include <QKeyEvent>
#include <QScrollArea>

#include <algorithm>
#include <chrono>

namespace veltrix
{

namespace
{

constexpr int wideCard = 684;
constexpr int narrowCard = 420;
/// Narrower windows have no room for the list beside the field.
constexpr int narrowWindow = 700;
/// How long typing must rest before a screen reader is told what would be added.
constexpr std::chrono::milliseconds typingPause{800};

} // namespace

AddKeywordsCard::AddKeywordsCard(const QString &country, const KeywordPlanner &planner,
                                 const Suggesting &suggesting, QWidget *parent)
    : QWidget(parent), m_country(country), m_planner(planner), m_afterFile(planner),
      m_suggestions(new TypedSuggestions(suggesting.source, suggesting.clock, this)),
      m_storefronts(new StorefrontCheckModel(this)),
      m_field(
          new TextArea(QStringLiteral("keywordInput"), tr("Enter keyword(s), comma-separated"))),
      m_note(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                           QStringLiteral("addKeywordsNote"))),
      m_refusals(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Red, QString(),
                               QStringLiteral("addKeywordsRefusals"))),
      m_suggested(new SuggestionPanel(*m_suggestions,
                                      [this](const QString &term) {
                                          return m_planner.isTracked(term,
                                                                     m_storefronts->checked());
                                      })),
      m_pick(new Button(Button::Kind::Standard, QStringLiteral("globe"), QString())),
      m_list(new StorefrontChecklist(*m_storefronts)),
      m_tags(new TagField(QStringLiteral("addKeywordsTags"), tr("Tags"))),
      m_preview(new ImportPreview), m_import(new Button(Button::Kind::Link, tr("Import…"))),
      m_cancel(new Button(Button::Kind::Standard, tr("Cancel"))),
      m_add(new Button(Button::Kind::Primary, tr("Add keywords")))
{
    nameControl(this, QStringLiteral("addKeywordsCard"), tr("Add Keyword"));
    nameControl(m_pick, QStringLiteral("addKeywordsStorefronts"), QString());
    nameControl(m_import, QStringLiteral("addKeywordsImport"), tr("Import keywords from a file"));
    nameControl(m_cancel, QStringLiteral("addKeywordsCancel"), tr("Cancel"));
    nameControl(m_add, QStringLiteral("addKeywordsSubmit"), tr("Add keywords"));
    m_add->setToolTip(tr("Add keywords (Ctrl+Enter)"));
    m_storefronts->setChecked({country});
    m_content = makeContent();
    m_footer = makeFooter();
    QScrollArea *scroll =
        makeScrollPage(QStringLiteral("addKeywordsScroll"), tr("Add Keyword"), m_content);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto *layout = makeColumn(0, this);
    layout->addWidget(scroll, 1);
    layout->addWidget(m_footer);
    m_typingPause.setSingleShot(true);
    m_typingPause.setInterval(typingPause);
    m_field->setFocus();
    connectParts();
    connectSuggestions();
    arrange();
    removeFile();
}

AddKeywordsCard::~AddKeywordsCard()
{
    // It shows the list of this card.
    if (m_openList)
        m_openList->dismiss();
}

QWidget *AddKeywordsCard::makeContent()
{
    auto *content = new QWidget;
    auto *typing = makeColumn(spacing::s);
    typing->addWidget(
        new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, tr("Add Keyword")));
    typing->addWidget(m_field, 1);
    typing->addWidget(m_pick, 0, Qt::AlignLeading);
    typing->addWidget(m_note);
    typing->addWidget(m_refusals);
    typing->addWidget(m_suggested);
    auto *columns = makeRow(spacing::l);
    columns->addLayout(typing, 1);
    columns->addWidget(m_list);
    auto *layout =
        makeColumn(spacing::m, content, {spacing::l, spacing::m, spacing::l, spacing::s});
    layout->addLayout(columns, 1);
    auto *tags = makeRow(spacing::m);
    tags->addWidget(new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, tr("Tags")), 0,
                    Qt::AlignTop);
    tags->addWidget(m_tags, 1);
    layout->addLayout(tags);
    layout->addWidget(m_preview);
    return content;
}

QWidget *AddKeywordsCard::makeFooter()
{
    auto *footer = new QWidget;
    auto *layout = makeRow(spacing::s, footer, {spacing::l, spacing::xs, spacing::l, spacing::l});
    layout->addWidget(m_import);
    layout->addStretch(1);
    layout->addWidget(m_cancel);
    layout->addWidget(m_add);
    return footer;
}

void AddKeywordsCard::connectParts()
{
    connect(m_field, &QPlainTextEdit::textChanged, this, [this] {
        // It is also told of what changes only the looks of the text.
        if (m_field->toPlainText() != m_text)
            planTyped();
    });
    connect(m_field, &TextArea::filesBrought, this, [this](const QStringList &paths) {
        if (paths.size() == 1)
            Q_EMIT fileBrought(paths.constFirst());
        else
            showProblem(tr("One file can be imported at a time."));
    });
    connect(m_storefronts, &StorefrontCheckModel::checkedChanged, this, &AddKeywordsCard::planAll);
    connect(m_tags, &TagField::tagsChanged, this, &AddKeywordsCard::describeTyped);
    connect(m_pick, &Button::clicked, this, &AddKeywordsCard::openStorefronts);
    connect(m_preview, &ImportPreview::removed, this, [this] {
        removeFile();
        m_field->setFocus();
    });
    connect(m_import, &Button::clicked, this, &AddKeywordsCard::importRequested);
    connect(m_cancel, &Button::clicked, this, &AddKeywordsCard::cancelled);
    connect(m_add, &Button::clicked, this, &AddKeywordsCard::submit);
    connect(&m_typingPause, &QTimer::timeout, this, [this] {
        m_note->setAccessibleName(m_note->text());
        m_refusals->setAccessibleName(m_refusals->text());
    });
}

AddKeywordsCard *AddKeywordsCard::open(QWidget *opener, KeywordActions &actions,
                                       std::optional<QUuid> appId, const QString &country)
{
    auto *card = new AddKeywordsCard(country, actions.planner(appId),
                                     {actions.suggestions(), actions.clock()});
    if (appId)
        card->m_tags->setKnownTags(actions.knownTags(*appId));
    Overlay *overlay = Overlay::open(Overlay::Kind::Popover, opener, card);
    connect(card, &AddKeywordsCard::cancelled, overlay, &Overlay::dismiss);
    connect(card, &AddKeywordsCard::submitted, &actions,
            [&actions, appId, card, overlay](const KeywordPlan &file, const KeywordPlan &typed,
                                             const QStringList &tags) {
                const auto [problem, count] = actions.add(appId, file, typed, tags);
                if (problem)
                    card->showProblem(*problem);
                else if (!typed.refused.isEmpty())
                    card->showAdded(count, actions.planner(appId));
                else
                    overlay->dismiss();
            });
    connect(card, &AddKeywordsCard::importRequested, &actions,
            [&actions, card = QPointer(card), window = opener->window()] {
                actions.chooseFile(window, [card](const FileExchange::OpenedFile &file) {
                    if (card)
                        card->showFile(file);
                });
            });
    connect(card, &AddKeywordsCard::fileBrought, &actions,
            [&actions, card](const QString &path) { card->showFile(actions.readFile(path)); });
    return card;
}

bool AddKeywordsCard::isNarrow() const
{
    const int columns = m_field->minimumSizeHint().width() + m_list->sizeHint().width();
    return window()->width() < std::max(narrowWindow, columns + 4 * spacing::l);
}

void AddKeywordsCard::arrange()
{
    if (m_list->isHidden() == isNarrow() && m_pick->isHidden() != isNarrow())
        return;
    m_list->setVisible(!isNarrow());
    m_pick->setVisible(isNarrow());
    if (m_openList && !isNarrow()) {
        m_openList->dismiss();
        m_field->setFocus();
    }
    updateGeometry();
}

void AddKeywordsCard::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void AddKeywordsCard::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // It was laid out for the least height while it got its own.
    m_content->layout()->invalidate();
    m_content->layout()->activate();
}

QSize AddKeywordsCard::sizeHint() const
{
    const int wanted = isNarrow() ? narrowCard : wideCard;
    const int width = std::max(
        {wanted, m_content->minimumSizeHint().width(), m_footer->minimumSizeHint().width()});
    return {width, m_content->layout()->totalHeightForWidth(width) + m_footer->sizeHint().height()};
}

void AddKeywordsCard::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && event->modifiers().testFlag(Qt::ControlModifier))
        submit();
    else
        QWidget::keyPressEvent(event);
}

void AddKeywordsCard::planAll()
{
    const QStringList &storefronts = m_storefronts->checked();
    m_afterFile = m_planner;
    m_filePlan = KeywordPlan();
    if (m_file) {
        m_filePlan = m_afterFile.plan(m_file->content.keywords, storefronts);
        for (const qsizetype line : std::as_const(m_file->content.overlongLines))
            m_filePlan.refused.append({tr("more cells than the header line"), line});
    }
    m_pick->setText(storefronts.isEmpty()    ? tr("No storefront")
                    : storefronts.size() > 1 ? tr("%L1 storefronts").arg(storefronts.size())
                                             : storefrontName(storefronts.constFirst()));
    m_pick->setAccessibleName(tr("Storefronts: %1").arg(m_pick->text()));
    describeFile();
    planTyped();
}

void AddKeywordsCard::planTyped()
{
    KeywordPlanner planner = m_afterFile;
    m_text = m_field->toPlainText();
    m_typedPlan = planner.plan(enteredKeywords(m_text), m_storefronts->checked());
    describeTyped();
}

void AddKeywordsCard::describeFile()
{
    m_preview->setVisible(m_file.has_value());
    if (!m_file)
        return;
    const bool isRead = m_file->problem.isEmpty();
    const bool lacksStorefront = m_filePlan.keywords.isEmpty() && m_filePlan.refused.isEmpty() &&
                                 m_filePlan.ofOtherApps == 0;
    m_preview->setContent(!isRead           ? QString()
                          : lacksStorefront ? typedNote(m_filePlan, 0)
                                            : fileNote(m_filePlan),
                          isRead ? refusalLines(m_filePlan.refused + m_filePlan.refusedTags)
                                 : QStringList{m_file->problem});
}

void AddKeywordsCard::describeTyped()
{
    const QStringList &storefronts = m_storefronts->checked();
    const QStringList refused = refusalLines(m_typedPlan.refused);
    m_refusals->setText(refused.join(u'\n'));
    m_refusals->setVisible(!refused.isEmpty());
    m_note->setTone(TextLabel::Tone::Secondary);
    if (m_typedPlan.entered == 0)
        setNote(tr("Paste a list to add many at once: lines, tabs or commas."));
    else if (storefronts.isEmpty() && !isStorefrontCode(m_country))
        setNote(tr("%1: choose another")
                    .arg(refusalReason(KeywordRefusal::UnknownStorefront, m_country)));
    else
        setNote(typedNote(m_typedPlan, storefronts.size()));
    if (!m_tags->tags().isEmpty() && m_filePlan.alreadyTracked() + m_typedPlan.alreadyTracked() > 0)
        setNote(m_note->text() + u'\n' + tr("Tags go to the keywords that are added."));
    const QString label = addLabel(m_filePlan.added + m_typedPlan.added);
    m_add->setText(label);
    m_add->setAccessibleDescription(label);
    m_add->setEnabled(!m_filePlan.keywords.isEmpty() || !m_filePlan.refused.isEmpty() ||
                      !m_typedPlan.keywords.isEmpty() || !m_typedPlan.refused.isEmpty());
    updateGeometry();
}

void AddKeywordsCard::setNote(const QString &text)
{
    m_note->setText(text);
    m_typingPause.start();
}

void AddKeywordsCard::showProblem(const QString &problem)
{
    m_note->setTone(TextLabel::Tone::Red);
    setNote(problem);
    m_note->setAccessibleName(problem);
    updateGeometry();
}

void AddKeywordsCard::showFile(const FileExchange::OpenedFile &file)
{
    ShownFile shown{{}, file.error.value_or(QString())};
    try {
        if (!file.error)
            shown.content = readKeywordFile(file.content);
    } catch (const TableFileError &error) {
        shown.problem = error.description();
    }
    if (shown.problem.isEmpty() && shown.content == KeywordFile())
        shown.problem = tr("The file holds no keywords.");
    m_file = shown;
    m_preview->setFileName(file.name);
    planAll();
}

void AddKeywordsCard::removeFile()
{
    m_file.reset();
    planAll();
}

void AddKeywordsCard::showAdded(const AdmissionCount &count, const KeywordPlanner &planner)
{
    QStringList refused;
    for (const RefusedLine &line : std::as_const(m_typedPlan.refused))
        refused << line.keyword;
    m_planner = planner;
    m_field->setPlainText(refused.join(u'\n'));
    removeFile();
    m_note->setTone(TextLabel::Tone::Text);
    setNote(admissionCount(count));
    m_note->setAccessibleName(m_note->text());
    m_refusals->setAccessibleName(m_refusals->text());
    m_field->setFocus();
}

void AddKeywordsCard::submit()
{
    if (!m_add->isEnabled())
        return;
    const QString refusal = m_tags->refusal();
    if (refusal.isEmpty()) {
        Q_EMIT submitted(m_filePlan, m_typedPlan, m_tags->tags());
        return;
    }
    showProblem(refusal);
    m_tags->setFocus();
}

void AddKeywordsCard::openStorefronts()
{
    // What is chosen leads whenever the list opens.
    m_storefronts->setChecked(m_storefronts->checked());
    auto *list = new StorefrontChecklist(*m_storefronts);
    list->layout()->setContentsMargins(spacing::m, spacing::m, spacing::m, spacing::s);
    m_openList = Overlay::open(Overlay::Kind::Popover, m_pick, list);
}

} // namespace veltrix
