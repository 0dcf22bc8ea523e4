// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/sheet_frame.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/tool_tip_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/text_label.h"

#include <QEvent>
#include <QPainter>
#include <QScrollArea>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int standardControlHeight = 30;

/// Fills its content into the room there is, and scrolls it where it needs more than that.
class FittedPage final : public QScrollArea
{
public:
    FittedPage(const QString &objectName, const QString &accessibleName, QWidget *content)
    {
        dressScrollPage(*this, objectName, accessibleName, content);
        setWidgetResizable(false);
        content->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isHandled = QScrollArea::eventFilter(watched, event);
        if (watched == widget() && event->type() == QEvent::LayoutRequest)
            fit();
        return isHandled;
    }
    void resizeEvent(QResizeEvent *event) override
    {
        QScrollArea::resizeEvent(event);
        fit();
    }

private:
    void fit()
    {
        const QLayout &layout = *widget()->layout();
        const int width = viewport()->width();
        const int least =
            std::max(layout.totalMinimumSize().height(), layout.totalMinimumHeightForWidth(width));
        widget()->resize(width, std::max(viewport()->height(), least));
    }
};

} // namespace

SheetFrame::SheetFrame(const QString &objectName, const QString &title, Body body, QSize preferred,
                       QWidget *parent)
    : QWidget(parent), m_preferred(preferred), m_header(new QWidget),
      m_back(new Button(Button::Kind::Standard, QStringLiteral("chevron.left"), tr("Back"))),
      m_title(new ElidedLabel(TextStyle::Title, TextLabel::Tone::Text, title)),
      m_subtitle(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_actions(makeRow(spacing::s))
{
    nameControl(this, objectName, title);
    m_title->setObjectName(objectName + QStringLiteral("Title"));
    m_subtitle->setObjectName(objectName + QStringLiteral("Subtitle"));
    m_subtitle->hide();
    auto *titles = makeColumn(1);
    titles->addWidget(m_title);
    titles->addWidget(m_subtitle);
    auto *header =
        makeRow(spacing::l, m_header, {spacing::xl, spacing::l, spacing::xl, spacing::l});
    m_back->setObjectName(objectName + QStringLiteral("Back"));
    connect(m_back, &Button::clicked, this, &SheetFrame::dismissed);
    header->addWidget(m_back);
    m_back->hide();
    header->addLayout(titles, 1);
    header->addLayout(m_actions);

    auto *content = new QWidget;
    m_body = makeColumn(spacing::l, content, {spacing::xl, spacing::l, spacing::xl, spacing::xl});
    auto *layout = makeColumn(0, this, {1, 1, 1, 1});
    layout->addWidget(m_header);
    // The card below shows through, so that its round corners stay.
    const QString scrollName = objectName + QStringLiteral("Scroll");
    m_scroll = body == Body::Fixed ? new FittedPage(scrollName, title, content)
                                   : makeScrollPage(scrollName, title, content);
    layout->addWidget(m_scroll, 1);
    takeScrollBarFromMargin(*m_scroll, *m_body);
}

void SheetFrame::setPreferredSize(QSize preferred)
{
    m_preferred = preferred;
    updateGeometry();
}

QHBoxLayout *SheetFrame::footer()
{
    if (!m_footer) {
        m_footer = new QWidget;
        makeRow(spacing::s, m_footer, {spacing::xl, spacing::m + 1, spacing::xl, spacing::m});
        layout()->addWidget(m_footer);
    }
    return static_cast<QHBoxLayout *>(m_footer->layout());
}

void SheetFrame::setSubtitle(const QString &subtitle)
{
    m_subtitle->setText(subtitle);
    m_subtitle->setVisible(!subtitle.isEmpty());
}

void SheetFrame::showWayBack(const QString &place)
{
    const QString name = tr("Back to %1").arg(place);
    m_back->setAccessibleName(name);
    m_back->setToolTip(toolTipText(name));
    m_back->show();
}

void SheetFrame::insertAction(int index, QWidget *control)
{
    QWidget *before = m_back;
    for (int i = 0; i < index; ++i)
        before = m_actions->itemAt(i)->widget();
    m_actions->insertWidget(index, control);
    setTabOrder(before, control);
}

void SheetFrame::addAction(QWidget *control)
{
    insertAction(0, control);
}

Button *SheetFrame::addCloseButton(const QString &objectName, const QString &symbol,
                                   const QString &text, const QString &accessibleName)
{
    auto *button =
        new Button(text.isEmpty() ? Button::Kind::Plain : Button::Kind::Primary, symbol, text);
    nameControl(button, objectName, accessibleName);
    if (text.isEmpty())
        button->setToolTip(accessibleName);
    insertAction(m_actions->count(), button);
    connect(button, &Button::clicked, this, &SheetFrame::dismissed);
    return button;
}

QSize SheetFrame::sizeHint() const
{
    return m_preferred * controlHeight(font()) / standardControlHeight;
}

void SheetFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawHorizontalHairline(painter, 1, width() - 1, m_header->geometry().bottom(),
                           Tokens::of(this)[Token::Hairline]);
    if (m_footer)
        drawHorizontalHairline(painter, 1, width() - 1, m_footer->geometry().top(),
                               Tokens::of(this)[Token::Hairline]);
}

void openSheet(QWidget *opener, SheetFrame *sheet)
{
    const Overlay *below = Overlay::topOf(opener->window());
    if (below && below->kind() == Overlay::Kind::Sheet)
        sheet->showWayBack(below->content()->accessibleName());
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, opener, sheet);
    QObject::connect(sheet, &SheetFrame::dismissed, overlay, &Overlay::dismiss);
}

} // namespace veltrix
