// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/add_keywords.h"

#include "ui/dashboard/keyword_actions.h"
#include "ui/dashboard/keyword_input.h"
#include "ui/measuring/admission_texts.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int cardWidth = 380;
/// A field of one line takes 32,767 characters of a pasted list unless told otherwise, and drops
/// the rest without a word.
constexpr int longestList = 1'000'000;

} // namespace

AddKeywordsCard::AddKeywordsCard(const QString &country, QWidget *parent)
    : QWidget(parent), m_field(new TextField(QStringLiteral("keywordInput"),
                                             tr("Enter keyword(s), comma-separated"), QString())),
      m_storefront(new StorefrontPicker(QStringLiteral("addKeywordsStorefront"), tr("Storefront"),
                                        StorefrontPicker::Offer::Storefronts)),
      m_note(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_refusals(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Red)),
      m_add(new Button(Button::Kind::Primary, tr("Add keywords")))
{
    setAccessibleName(tr("Add Keyword"));
    setObjectName(QStringLiteral("addKeywordsCard"));
    m_storefront->setCode(country);
    nameControl(m_add, QStringLiteral("addKeywordsSubmit"), tr("Add keywords"));
    m_note->setObjectName(QStringLiteral("addKeywordsNote"));
    m_note->setWrapping(TextLabel::Wrapping::Wrapped);
    m_refusals->setObjectName(QStringLiteral("addKeywordsRefusals"));
    m_refusals->setWrapping(TextLabel::Wrapping::Wrapped);
    m_refusals->hide();
    m_field->setMaxLength(longestList);
    auto *import = new Button(Button::Kind::Link, tr("Import…"));
    nameControl(import, QStringLiteral("addKeywordsImport"), tr("Import keywords from a file"));
    auto *cancel = new Button(Button::Kind::Standard, tr("Cancel"));
    nameControl(cancel, QStringLiteral("addKeywordsCancel"), tr("Cancel"));

    auto *title = new QHBoxLayout;
    title->addWidget(
        new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, tr("Add Keyword")), 1);
    title->addWidget(m_storefront);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(spacing::s);
    buttons->addWidget(import);
    buttons->addStretch(1);
    buttons->addWidget(cancel);
    buttons->addWidget(m_add);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::l, spacing::m, spacing::l, spacing::l);
    layout->setSpacing(spacing::s);
    layout->addLayout(title);
    layout->addWidget(m_field);
    layout->addWidget(m_note);
    layout->addWidget(m_refusals);
    layout->addSpacing(spacing::xs);
    layout->addLayout(buttons);

    m_field->setFocus();
    connect(m_field, &QLineEdit::textChanged, this, &AddKeywordsCard::describe);
    connect(m_field, &QLineEdit::returnPressed, this, &AddKeywordsCard::submit);
    connect(m_storefront, &StorefrontPicker::picked, this, &AddKeywordsCard::describe);
    connect(m_add, &Button::clicked, this, &AddKeywordsCard::submit);
    connect(cancel, &Button::clicked, this, &AddKeywordsCard::cancelled);
    connect(import, &Button::clicked, this,
            [this] { Q_EMIT importRequested(m_storefront->code().value_or(QString())); });
    describe();
}

void AddKeywordsCard::open(QWidget *opener, KeywordActions &actions, std::optional<QUuid> appId,
                           const QString &country)
{
    auto *card = new AddKeywordsCard(country);
    Overlay *overlay = Overlay::open(Overlay::Kind::Popover, opener, card);
    connect(card, &AddKeywordsCard::cancelled, overlay, &Overlay::dismiss);
    connect(card, &AddKeywordsCard::submitted, &actions,
            [&actions, appId, card, overlay](const QStringList &keywords, const QString &place) {
                const auto [problem, admission] = actions.add(appId, keywords, place);
                if (problem)
                    card->showProblem(*problem);
                else if (!admission.refused.isEmpty())
                    card->showAdmission(admission);
                else
                    overlay->dismiss();
            });
    connect(card, &AddKeywordsCard::importRequested, &actions,
            [&actions, appId, overlay, window = opener->window()](const QString &place) {
                overlay->dismiss();
                actions.importFile(window, appId, place);
            });
}

QSize AddKeywordsCard::sizeHint() const
{
    const int width = std::max(cardWidth, layout()->minimumSize().width());
    return {width, layout()->heightForWidth(width)};
}

void AddKeywordsCard::setText(const QString &text)
{
    m_field->setText(text);
}

QList<RefusedKeyword> AddKeywordsCard::refusals(const QStringList &keywords) const
{
    const QString country = m_storefront->code().value_or(QString());
    QList<RefusedKeyword> refused;
    for (const QString &keyword : keywords) {
        if (const auto reason = keywordRefusal(keyword, country))
            refused.append({keyword, country, *reason});
    }
    return refused;
}

void AddKeywordsCard::describe()
{
    const QStringList keywords = splitKeywords(m_field->text());
    const QList<RefusedKeyword> refused = refusals(keywords);
    const auto count = keywords.size();
    QString note = count == 0   ? tr("Paste a list to add many at once: lines, tabs or commas.")
                   : count == 1 ? tr("1 keyword")
                                : tr("%L1 keywords").arg(count);
    if (!refused.isEmpty())
        note += QStringLiteral(", ") + tr("%L1 cannot be added").arg(refused.size());
    m_refusals->setText(refusalLines(refused).join(u'\n'));
    m_refusals->setAccessibleName(m_refusals->text());
    m_refusals->setVisible(!refused.isEmpty());
    m_note->setTone(TextLabel::Tone::Secondary);
    setNote(note);
    m_add->setEnabled(count > 0);
}

void AddKeywordsCard::setNote(const QString &text)
{
    m_note->setText(text);
    m_note->setAccessibleName(text);
}

void AddKeywordsCard::showProblem(const QString &problem)
{
    m_note->setTone(TextLabel::Tone::Red);
    setNote(problem);
    announceNameChange(m_note);
}

void AddKeywordsCard::showAdmission(const KeywordAdmission &admission)
{
    QStringList refused;
    for (const RefusedKeyword &keyword : admission.refused)
        refused << keyword.keyword;
    m_field->setText(refused.join(QStringLiteral(", ")));
    m_field->setCursorPosition(0);
    describe();
    m_note->setTone(TextLabel::Tone::Text);
    setNote(admissionCount(admission));
    announceNameChange(m_note);
    if (m_refusals->isVisibleTo(this))
        announceNameChange(m_refusals);
    m_field->setFocus();
}

void AddKeywordsCard::submit()
{
    const QStringList keywords = splitKeywords(m_field->text());
    if (!keywords.isEmpty())
        Q_EMIT submitted(keywords, m_storefront->code().value_or(QString()));
}

} // namespace veltrix
