// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/banner.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/card.h"
#include "ui_kit/widgets/layouts.h"

namespace veltrix
{

namespace
{

/// Puts the buttons below the text where they would leave it too little room.
class ButtonPlace final : public QObject
{
public:
    ButtonPlace(QBoxLayout *line, QBoxLayout *controls, QWidget *banner)
        : QObject(banner), m_line(line), m_controls(controls)
    {
        banner->installEventFilter(this);
    }

    [[nodiscard]] QBoxLayout *controls() const { return m_controls; }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest) {
            const int width = static_cast<QWidget *>(watched)->width();
            const bool isCrowded = m_controls->sizeHint().width() > width * 2 / 5;
            const auto direction = isCrowded ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
            if (m_line->direction() != direction)
                m_line->setDirection(direction);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QBoxLayout *m_line;
    QBoxLayout *m_controls;
};

QBoxLayout *controlsOf(const Banner &banner)
{
    for (QObject *child : banner.children()) {
        if (auto *place = dynamic_cast<ButtonPlace *>(child))
            return place->controls();
    }
    return nullptr;
}

} // namespace

Banner::Banner(const QString &objectName, const QString &symbol, const QString &action,
               QWidget *parent, Shape shape)
    : QWidget(parent), m_shape(shape), m_symbol(symbol), m_symbolSpace(new QWidget),
      m_text(makeParagraph(TextStyle::Body, TextLabel::Tone::Text)),
      m_detail(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Text, QString(),
                             objectName + QStringLiteral("Detail"))),
      m_action(new Button(Button::Kind::Standard, QStringLiteral("arrow.clockwise"), action))
{
    setAccessibleRole(this, QAccessible::AlertMessage);
    setObjectName(objectName);
    nameControl(m_action, objectName + QStringLiteral("Action"), action);
    const bool isStrip = m_shape == Shape::Strip;
    auto *line = isStrip
                     ? makeRow(10, this, {spacing::l, 6, spacing::l, 7})
                     : makeRow(spacing::m, this, {spacing::l, spacing::m, spacing::l, spacing::m});
    auto *texts = makeColumn(1);
    texts->addWidget(m_text);
    texts->addWidget(m_detail);
    auto *message = makeRow(line->spacing());
    message->addWidget(m_symbolSpace);
    message->addLayout(texts, 1);
    auto *controls = makeRow(line->spacing());
    controls->addStretch(1);
    controls->addWidget(m_action);
    line->addLayout(message, 1);
    line->addLayout(controls);
    new ButtonPlace(line, controls, this);
    // Only now that it has a parent: shown before, it would be a window.
    m_action->setVisible(!action.isEmpty());
    m_detail->hide();
    // Not fixed, which would hold it to the height of its first guess at how the text wraps.
    if (isStrip)
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    fitFont();
    connect(m_action, &Button::clicked, this, &Banner::actionTriggered);
    hide();
}

Banner *Banner::makeFailureCard(const QString &objectName, const QString &action)
{
    return new Banner(objectName, QStringLiteral("exclamationmark.triangle"), action, nullptr,
                      Shape::Card);
}

void Banner::setMessage(const QString &message, const QString &detail)
{
    // What stands there already is not read aloud again.
    if (message == this->message() && detail == this->detail())
        return;
    m_text->setText(message);
    m_detail->setText(detail);
    m_detail->setVisible(!detail.isEmpty());
    setAccessibleName(detail.isEmpty() ? message : message + u'\n' + detail);
    setVisible(!message.isEmpty());
    if (!message.isEmpty()) {
        QAccessibleEvent event(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

void Banner::addControl(QWidget *control)
{
    controlsOf(*this)->addWidget(control);
}

QString Banner::message() const
{
    return m_text->text();
}

QString Banner::detail() const
{
    return m_detail->text();
}

void Banner::setActionEnabled(bool enabled)
{
    m_action->setEnabled(enabled);
}

void Banner::setActionSymbol(const QString &symbol)
{
    m_action->setSymbol(symbol);
}

void Banner::makeDismissible()
{
    auto *dismiss = new Button(Button::Kind::Plain, QStringLiteral("xmark"), QString());
    nameControl(dismiss, objectName() + QStringLiteral("Dismiss"), tr("Dismiss"));
    dismiss->setToolTip(tr("Dismiss"));
    controlsOf(*this)->addWidget(dismiss);
    connect(dismiss, &Button::clicked, this, [this] {
        setMessage(QString());
        Q_EMIT dismissed();
    });
}

void Banner::setAction(const QString &text)
{
    m_action->setText(text);
    nameControl(m_action, m_action->objectName(), text);
    m_action->setVisible(!text.isEmpty());
}

void Banner::setLook(const QString &symbol, Token token)
{
    m_symbol = symbol;
    m_token = token;
    update();
}

void Banner::fitFont()
{
    const int size = qRound(controlHeight(font()) * 16.0 / 30.0);
    m_symbolSpace->setFixedSize(size, size);
    if (m_shape == Shape::Strip)
        setMinimumHeight(controlHeight(font()) + 13);
}

void Banner::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitFont();
}

void Banner::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    if (m_shape == Shape::Card) {
        Card::paint(painter, rect(), m_token, tokens);
    } else {
        painter.fillRect(rect(), tokens.tint(m_token));
        drawHorizontalHairline(painter, 0, width(), height() - 1, tokens[Token::Hairline]);
    }
    drawSymbol(painter, m_symbolSpace->geometry(), m_symbol, tokens[m_token]);
}

} // namespace veltrix
