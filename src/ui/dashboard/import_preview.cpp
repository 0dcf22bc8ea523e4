// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/import_preview.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"

#include <QVBoxLayout>

namespace veltrix
{

ImportPreview::ImportPreview(QWidget *parent)
    : Card(QStringLiteral("importPreview"), parent),
      m_name(new ElidedLabel(TextStyle::BodySemibold, TextLabel::Tone::Text)),
      m_note(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                           QStringLiteral("importNote"))),
      m_refusals(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Red, QString(),
                               QStringLiteral("importRefusals")))
{
    m_name->setObjectName(QStringLiteral("importFileName"));
    auto *remove = new Button(Button::Kind::Plain, QStringLiteral("xmark"), QString());
    nameControl(remove, QStringLiteral("importRemove"), tr("Take the file off"));
    remove->setToolTip(tr("Take the file off"));
    connect(remove, &Button::clicked, this, &ImportPreview::removed);

    auto *heading = makeRow(spacing::s);
    heading->addWidget(new SymbolView(QStringLiteral("doc.text"), Token::Secondary));
    heading->addWidget(m_name, 1);
    heading->addWidget(remove);
    content()->setSpacing(spacing::xs);
    content()->addLayout(heading);
    content()->addWidget(m_note);
    content()->addWidget(m_refusals);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
}

void ImportPreview::setFileName(const QString &name)
{
    m_name->setText(name);
    setAccessibleName(tr("File %1").arg(name));
}

void ImportPreview::setContent(const QString &note, const QStringList &refusals)
{
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
    m_refusals->setText(refusals.join(u'\n'));
    m_refusals->setVisible(!refusals.isEmpty());
}

} // namespace veltrix
