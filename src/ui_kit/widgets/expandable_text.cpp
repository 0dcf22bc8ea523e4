// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/expandable_text.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/text_label.h"

#include <QTextLayout>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int collapsedLines = 5;

/// Adds an ellipsis to a line, and makes room for it.
QString withEllipsis(const QString &line, const QFont &font, int width)
{
    const QFontMetricsF metrics(font);
    QString kept = line.trimmed();
    while (!kept.isEmpty() && metrics.horizontalAdvance(kept + u'…') > width)
        kept.chop(1);
    return kept.trimmed() + u'…';
}

} // namespace

QString firstLines(const QString &text, const QFont &font, int width, int lines)
{
    QStringList kept;
    const QStringList paragraphs = text.split(u'\n');
    for (qsizetype i = 0; i < paragraphs.size(); ++i) {
        const QString &paragraph = paragraphs[i];
        QTextLayout layout(paragraph, font);
        QTextOption option;
        option.setWrapMode(QTextOption::WordWrap);
        layout.setTextOption(option);
        layout.beginLayout();
        int taken = 0;
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            const int end = line.textStart() + line.textLength();
            const bool isMore = end < paragraph.size() || i + 1 < paragraphs.size();
            if (kept.size() + 1 == lines && isMore) {
                kept << withEllipsis(paragraph.mid(line.textStart(), line.textLength()), font,
                                     width);
                return kept.join(u'\n');
            }
            kept << paragraph.mid(line.textStart(), line.textLength());
            ++taken;
        }
        layout.endLayout();
        if (taken == 0)
            kept << QString();
    }
    return text;
}

ExpandableText::ExpandableText(const QString &objectName, QWidget *parent)
    : QWidget(parent), m_text(new TextLabel(TextStyle::Body, TextLabel::Tone::Text, {}, this)),
      m_toggle(new Button(Button::Kind::Link, tr("More"), this))
{
    setObjectName(objectName);
    m_text->setObjectName(objectName + QStringLiteral("Text"));
    m_text->setWrapping(TextLabel::Wrapping::Wrapped);
    m_text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    nameControl(m_toggle, objectName + QStringLiteral("Toggle"), tr("Show more"));
    setExpandedState(m_toggle, false);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(m_toggle, &Button::clicked, this, [this] { setExpanded(!m_isExpanded); });
}

void ExpandableText::setText(const QString &text)
{
    m_whole = text;
    // Whoever has the text read out does not save room by folding it.
    m_text->setAccessibleName(text);
    updateGeometry();
    place();
}

void ExpandableText::setExpanded(bool expanded)
{
    m_isExpanded = expanded;
    m_toggle->setText(expanded ? tr("Less") : tr("More"));
    m_toggle->setAccessibleName(expanded ? tr("Show less") : tr("Show more"));
    setExpandedState(m_toggle, expanded);
    updateGeometry();
    place();
}

QString ExpandableText::shownText(int width) const
{
    return m_isExpanded ? m_whole : firstLines(m_whole, m_text->font(), width, collapsedLines);
}

int ExpandableText::textHeight(const QString &text, int width) const
{
    return m_text->fontMetrics()
        .boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap, text)
        .height();
}

int ExpandableText::heightForWidth(int width) const
{
    const QString shown = shownText(width);
    const bool isFolding = m_isExpanded || shown != m_whole;
    return textHeight(shown, width) + (isFolding ? m_toggle->sizeHint().height() : 0);
}

QSize ExpandableText::sizeHint() const
{
    return {400, heightForWidth(std::max(width(), 200))};
}

void ExpandableText::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    place();
}

void ExpandableText::place()
{
    const QString shown = shownText(width());
    const int height = textHeight(shown, width());
    m_text->setText(shown);
    m_text->setGeometry(0, 0, width(), height);
    m_toggle->setVisible(m_isExpanded || shown != m_whole);
    const QSize size = m_toggle->sizeHint();
    // A link's text starts a little inside its frame.
    const int left = isRightToLeft() ? width() - size.width() + spacing::xs : -spacing::xs;
    m_toggle->setGeometry(QRect(QPoint(left, height), size));
}

} // namespace veltrix
