// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/tag_checklist.h"

#include "model/tag_name.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/veltrix_style.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListView>
#include <QStyledItemDelegate>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int usualRows = 8;
constexpr int fewestRows = 3;

/// A check box and the tag, or a plus and what would be added.
class TagDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        using Kind = TagCheckModel::Row::Kind;
        const auto &row = static_cast<const TagCheckModel *>(index.model())->rowAt(index.row());
        const Tokens tokens = Tokens::of(option.palette);
        // The arrows move the current row from the field, too.
        const bool isCurrent =
            (option.state & QStyle::State_Selected) &&
            option.widget->parentWidget()->isAncestorOf(QApplication::focusWidget());
        if (isCurrent || option.state & QStyle::State_MouseOver)
            drawRoundedRect(*painter, option.rect, 5,
                            tokens[isCurrent ? Token::Selected : Token::Hover]);
        const QRect area = option.rect.adjusted(spacing::s, 0, -spacing::s, 0);
        const int side =
            option.widget->style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, option.widget);
        const QRect box(area.left(), area.top() + (area.height() - side) / 2, side, side);
        const QRect text = area.adjusted(side + spacing::s, 0, 0, 0);
        if (row.kind == Kind::NewTag)
            drawSymbol(*painter, box, QStringLiteral("plus"), tokens[Token::Accent]);
        else
            paintBox(*painter, option, box, row.state);
        if (row.kind == Kind::Tag) {
            paintTagChip(*painter, text, row.chip, tokens, option.font);
        } else {
            painter->setFont(option.font);
            painter->setPen(tokens[Token::Text]);
            painter->drawText(text, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                              option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight,
                                                            text.width()));
        }
        if (showsFocus(option))
            drawFocusRing(*painter, option.rect, 5, tokens[Token::Accent]);
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &) const override
    {
        return {100, controlHeight(option.font)};
    }

    bool editorEvent(QEvent *, QAbstractItemModel *, const QStyleOptionViewItem &,
                     const QModelIndex &) override
    {
        // The list itself checks, wherever in the row is clicked.
        return false;
    }

private:
    static void paintBox(QPainter &painter, const QStyleOptionViewItem &option, const QRect &place,
                         Qt::CheckState state)
    {
        QStyleOption box;
        box.palette = option.palette;
        box.rect = place;
        box.state =
            QStyle::State_Enabled | (state == Qt::Checked ? QStyle::State_On : QStyle::State_Off);
        option.widget->style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter,
                                              option.widget);
        if (state != Qt::PartiallyChecked)
            return;
        QRectF dash(0, 0, place.width() / 2.0, 2);
        dash.moveCenter(QRectF(place).center());
        drawRoundedRect(painter, dash, 1, Tokens::of(option.palette)[Token::Accent]);
    }
};

} // namespace

TagChecklist *TagChecklist::open(QWidget *anchor, TagCheckModel::Offer offer,
                                 const QString &heading, const QString &fieldText)
{
    auto *list = new TagChecklist(offer, heading, fieldText);
    auto *overlay = Overlay::open(Overlay::Kind::Popover, anchor, list);
    connect(overlay, &Overlay::dismissed, list, &TagChecklist::closed);
    return list;
}

TagChecklist::TagChecklist(TagCheckModel::Offer offer, const QString &heading,
                           const QString &fieldText)
    : m_model(new TagCheckModel(offer, this)),
      m_field(new TextField(QStringLiteral("tagSearch"), fieldText,
                            offer == TagCheckModel::Offer::NewTag
                                ? QStringLiteral("tag")
                                : QStringLiteral("magnifyingglass"))),
      m_view(new QListView), m_note(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary,
                                                  QString(), QStringLiteral("tagNote"))),
      m_problem(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Red, QString(),
                              QStringLiteral("tagProblem")))
{
    setObjectName(QStringLiteral("tagChecklist"));
    setAccessibleName(heading);
    nameControl(m_view, QStringLiteral("tagList"), heading);
    m_view->setModel(m_model);
    m_view->setItemDelegate(new TagDelegate(m_view));
    m_view->setProperty(ownRowsProperty, true);
    m_view->setFrameShape(QFrame::NoFrame);
    m_view->setUniformItemSizes(true);
    m_view->setMouseTracking(true);
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->viewport()->setAutoFillBackground(false);
    auto *done = new Button(Button::Kind::Standard, tr("Done"));
    nameControl(done, QStringLiteral("tagsDone"), tr("Done"));
    connect(done, &Button::clicked, this, [this] {
        if (Overlay *overlay = Overlay::of(this))
            overlay->dismiss();
    });
    auto *title = new ElidedLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, heading);
    auto *foot = makeRow(spacing::s);
    foot->addWidget(m_note, 1);
    foot->addWidget(done, 0, Qt::AlignBottom);
    auto *layout = makeColumn(spacing::s, this, {spacing::m, spacing::m, spacing::m, spacing::m});
    layout->addWidget(title);
    layout->addWidget(m_field);
    layout->addWidget(m_problem);
    layout->addWidget(m_view, 1);
    layout->addLayout(foot);
    m_problem->hide();
    m_field->installEventFilter(this);
    m_view->installEventFilter(this);
    connect(m_field, &QLineEdit::textChanged, this, [this](const QString &text) {
        setProblem({});
        m_model->setFilter(text);
        goToFirst();
    });
    connect(m_view, &QListView::clicked, this, &TagChecklist::toggle);
    // The popover is as high as it needs to be.
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        updateGeometry();
        // An empty list would have nothing to show the focus by.
        m_view->setFocusPolicy(m_model->rowCount() > 0 ? Qt::StrongFocus : Qt::NoFocus);
        if (!m_view->currentIndex().isValid())
            goToFirst();
    });
    m_field->setFocus();
}

int TagChecklist::widthFor(const QFont &font)
{
    return QFontMetrics(font).averageCharWidth() * 42;
}

void TagChecklist::setNote(const QString &note)
{
    m_note->setText(note);
    updateGeometry();
}

void TagChecklist::setProblem(const QString &problem)
{
    if (m_problem->text() == problem)
        return;
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    if (!problem.isEmpty()) {
        QAccessibleEvent event(m_problem, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

void TagChecklist::goToFirst()
{
    m_view->setCurrentIndex(m_model->index(0));
}

void TagChecklist::toggle(const QModelIndex &index)
{
    if (!index.isValid()) {
        // A name that can be none finds nothing and adds nothing.
        if (!m_field->text().trimmed().isEmpty())
            setProblem(tagRefusal(m_field->text()).value_or(tr("No tag is called like that.")));
        return;
    }
    const TagCheckModel::Row row = m_model->rowAt(index.row());
    setProblem({});
    Q_EMIT wanted(row, row.state != Qt::Checked);
    if (row.kind == TagCheckModel::Row::Kind::NewTag && m_problem->text().isEmpty())
        m_field->clear();
    const int place =
        row.kind == TagCheckModel::Row::Kind::Untagged ? index.row() : m_model->rowOf(row.name);
    if (place < 0)
        return;
    m_view->setCurrentIndex(m_model->index(place));
    QAccessibleEvent changed(m_view, QAccessible::NameChanged);
    changed.setChild(place);
    QAccessible::updateAccessibility(&changed);
}

QSize TagChecklist::sizeHint() const
{
    const int rows = std::clamp(m_model->rowCount(), fewestRows, usualRows);
    const int width = widthFor(font());
    // Without a note no part of it wraps.
    const int whole = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width)
                                                    : layout()->totalSizeHint().height();
    return {width, whole - m_view->sizeHint().height() + rows * controlHeight(font())};
}

bool TagChecklist::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        m_view->viewport()->update();
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *pressed = static_cast<QKeyEvent *>(event);
    const int key = pressed->key();
    const bool isPlain =
        !pressed->modifiers().testAnyFlags(~Qt::KeyboardModifiers(Qt::KeypadModifier));
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (isPlain && (isEnter || (watched == m_view && key == Qt::Key_Space))) {
        if (!pressed->isAutoRepeat())
            toggle(m_view->currentIndex());
        return true;
    }
    const bool moves = key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_PageDown ||
                       key == Qt::Key_PageUp;
    if (watched == m_field && moves) {
        QCoreApplication::sendEvent(m_view, event);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace veltrix
