// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/tag_field.h"

#include "model/tag_name.h"
#include "model/text_folding.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/focus_steps.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/tag_chip.h"
#include "ui_kit/widgets/text_label.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpression>
#include <QStringListModel>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>

namespace veltrix
{

namespace
{

/// Between the frame and what is in it.
constexpr int frame = 5;
constexpr int gap = 4;

const QRegularExpression &separator()
{
    static const QRegularExpression expression(QStringLiteral("[,;\\n]"));
    return expression;
}

} // namespace

/// The frame with the chips and the line in it, in as many rows as they need.
class TagField::Box final : public QWidget
{
public:
    explicit Box(TagField &field) : QWidget(&field), m_field(field)
    {
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        setCursor(Qt::IBeamCursor);
    }

    [[nodiscard]] QSize sizeHint() const override { return {lineWidth() * 2, height()}; }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return {lineWidth() + 2 * frame, controlHeight(font())};
    }

    /// Places everything, and takes the height that this needs.
    void place()
    {
        const int rowHeight = controlHeight(font()) - 2 * frame;
        const int right = std::max(width() - frame, frame + lineWidth());
        QPoint at(frame, frame);
        const auto put = [&](QWidget *widget, QSize size) {
            if (at.x() > frame && at.x() + size.width() > right)
                at = QPoint(frame, at.y() + rowHeight + gap);
            size.setWidth(std::min(size.width(), right - at.x()));
            const int y = at.y() + (rowHeight - size.height()) / 2;
            widget->setGeometry(
                QStyle::visualRect(layoutDirection(), rect(), QRect(QPoint(at.x(), y), size)));
            at.rx() += size.width() + gap;
        };
        for (RemovableTag *chip : m_field.m_chips)
            put(chip, chip->sizeHint().boundedTo({right - frame, rowHeight}));
        put(m_field.m_line, {lineWidth(), rowHeight});
        // The line takes the rest of its row.
        const int rest = right - (at.x() - gap - lineWidth());
        QRect line(QPoint(at.x() - gap - lineWidth(), at.y()), QSize(rest, rowHeight));
        m_field.m_line->setGeometry(QStyle::visualRect(layoutDirection(), rect(), line));
        const int height = at.y() + rowHeight + frame;
        if (height != this->height() || minimumHeight() != height)
            setFixedHeight(height);
    }

protected:
    bool event(QEvent *event) override
    {
        const bool isHandled = QWidget::event(event);
        if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange ||
            event->type() == QEvent::LayoutDirectionChange)
            place();
        return isHandled;
    }
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        QStyleOption option;
        option.initFrom(this);
        option.state.setFlag(QStyle::State_HasFocus, m_field.m_line->hasFocus());
        style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    }
    void mousePressEvent(QMouseEvent *) override { m_field.m_line->setFocus(Qt::MouseFocusReason); }

private:
    /// The least that there is to type in.
    [[nodiscard]] int lineWidth() const { return fontMetrics().averageCharWidth() * 14; }

    TagField &m_field;
};

TagField::TagField(const QString &objectName, const QString &name, QWidget *parent)
    : QWidget(parent), m_box(new Box(*this)), m_line(new QLineEdit(m_box)),
      m_completions(new QStringListModel(this)),
      m_refusal(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Red, QString(),
                              objectName + QStringLiteral("Refusal")))
{
    setObjectName(objectName);
    setAccessibleRole(this, QAccessible::Grouping);
    setAccessibleName(name);
    nameControl(m_line, objectName + QStringLiteral("Line"), name);
    m_line->setPlaceholderText(tr("Add a tag"));
    m_line->setFrame(false);
    m_line->installEventFilter(this);
    auto *layout = makeColumn(spacing::xs, this);
    layout->addWidget(m_box);
    layout->addWidget(m_refusal);
    m_refusal->hide();
    setFocusProxy(m_line);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto *completer = new QCompleter(m_completions, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    m_line->setCompleter(completer);
    // Queued: the line writes the chosen name into itself first.
    connect(completer, qOverload<const QString &>(&QCompleter::activated), this, &TagField::finish,
            Qt::QueuedConnection);
    connect(m_line, &QLineEdit::textEdited, this, &TagField::take);
    m_box->place();
}

QStringList TagField::tags() const
{
    QStringList names;
    for (const RemovableTag *chip : m_chips)
        names.append(chip->name());
    const auto pending = usableTagName(m_line->text());
    if (pending && !contains(*pending))
        names.append(spelled(*pending));
    return names;
}

QString TagField::refusal() const
{
    return m_line->text().trimmed().isEmpty() ? QString()
                                              : tagRefusal(m_line->text()).value_or(QString());
}

void TagField::setTags(const QStringList &tags)
{
    const QStringList before = this->tags();
    for (RemovableTag *chip : std::exchange(m_chips, {}))
        delete chip;
    m_line->clear();
    say({});
    for (const QString &tag : tags) {
        const auto name = usableTagName(tag);
        if (name && !contains(*name))
            addChip(*name);
    }
    offerCompletions();
    m_box->place();
    if (this->tags() != before)
        Q_EMIT tagsChanged();
}

void TagField::setKnownTags(const QStringList &tags)
{
    m_known = tags;
    offerCompletions();
}

void TagField::offerCompletions()
{
    QStringList offered;
    for (const QString &tag : std::as_const(m_known)) {
        if (!contains(tag))
            offered.append(tag);
    }
    m_completions->setStringList(offered);
}

bool TagField::contains(const QString &name) const
{
    const QString folded = foldedCase(name);
    return std::any_of(m_chips.begin(), m_chips.end(), [&](const RemovableTag *chip) {
        return foldedCase(chip->name()) == folded;
    });
}

QString TagField::spelled(const QString &name) const
{
    const QString folded = foldedCase(name);
    const auto known = std::find_if(m_known.begin(), m_known.end(),
                                    [&](const QString &tag) { return foldedCase(tag) == folded; });
    return known == m_known.end() ? name : *known;
}

void TagField::take(const QString &text)
{
    say({});
    const QStringList parts = text.split(separator());
    for (qsizetype i = 0; i + 1 < parts.size(); ++i) {
        if (parts[i].trimmed().isEmpty())
            continue;
        if (const auto refusal = tagRefusal(parts[i])) {
            // It stays to be mended, with what follows it.
            QStringList left = parts.mid(i);
            left.removeAll(QString());
            m_line->setText(left.join(QStringLiteral(", ")));
            say(*refusal);
            Q_EMIT tagsChanged();
            return;
        }
        add(*usableTagName(parts[i]));
    }
    if (parts.size() > 1)
        m_line->setText(parts.last().trimmed());
    Q_EMIT tagsChanged();
}

void TagField::finish()
{
    m_line->completer()->popup()->hide();
    if (!m_line->text().trimmed().isEmpty())
        take(m_line->text() + u',');
}

void TagField::add(const QString &name)
{
    if (contains(name))
        return;
    addChip(spelled(name));
    offerCompletions();
    m_box->place();
}

void TagField::addChip(const QString &name)
{
    auto *chip = new RemovableTag(name, m_box);
    chip->setObjectName(objectName() + QStringLiteral("Chip") + QString::number(m_chips.size()));
    chip->installEventFilter(this);
    connect(chip, &RemovableTag::clicked, this, [this, chip] { remove(chip); });
    m_chips.append(chip);
    // The chips stand before the line.
    QWidget *before = m_line->previousInFocusChain();
    while (before != chip && before != m_line && before->focusPolicy() == Qt::NoFocus)
        before = before->previousInFocusChain();
    if (before == chip || before == m_line)
        setTabOrder(chip, m_line);
    else
        setTabOrder(before, chip);
    chip->show();
}

void TagField::remove(RemovableTag *chip)
{
    m_chips.removeOne(chip);
    m_line->setFocus(Qt::OtherFocusReason);
    chip->hide();
    // It was pressed just now.
    chip->deleteLater();
    offerCompletions();
    m_box->place();
    Q_EMIT tagsChanged();
}

void TagField::say(const QString &refusal)
{
    if (m_refusal->text() == refusal)
        return;
    m_refusal->setText(refusal);
    m_refusal->setVisible(!refusal.isEmpty());
    updateGeometry();
    if (!refusal.isEmpty()) {
        QAccessibleEvent event(m_refusal, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

QList<QWidget *> TagField::stops() const
{
    QList<QWidget *> stops(m_chips.begin(), m_chips.end());
    stops.append(m_line);
    return stops;
}

bool TagField::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_line)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        m_box->update();
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        // A list of completions and another window take the focus for a moment only.
        if (event->type() == QEvent::FocusOut && reason != Qt::PopupFocusReason &&
            reason != Qt::ActiveWindowFocusReason)
            finish();
    }
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const bool isPlain = !key->modifiers().testAnyFlags(~Qt::KeyboardModifiers(Qt::KeypadModifier));
    const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (isEnter && isPlain && !m_line->text().trimmed().isEmpty()) {
        finish();
        return true;
    }
    if (key->key() == Qt::Key_Backspace && m_line->text().isEmpty() && !m_chips.isEmpty()) {
        // A key that is held has emptied the line only.
        if (!key->isAutoRepeat())
            remove(m_chips.last());
        return true;
    }
    const bool isBack = key->key() == (isRightToLeft() ? Qt::Key_Right : Qt::Key_Left);
    if (isBack && isPlain && m_line->cursorPosition() == 0 && !m_line->hasSelectedText() &&
        !m_chips.isEmpty()) {
        m_chips.last()->setFocus(Qt::TabFocusReason);
        return true;
    }
    return false;
}

void TagField::keyPressEvent(QKeyEvent *event)
{
    // What a chip does not want.
    const QList<QWidget *> all = stops();
    event->setAccepted(moveFocusAmong(all, *event, int(all.size())));
}

} // namespace veltrix
