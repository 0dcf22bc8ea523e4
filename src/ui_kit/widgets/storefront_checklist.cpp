// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/storefront_checklist.h"

#include "model/storefront_codes.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/veltrix_style.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListView>
#include <QStyledItemDelegate>

namespace veltrix
{

namespace
{

constexpr int listWidth = 232;
constexpr int usualRows = 8;
constexpr int fewestRows = 3;

/// A check box, the name, and the code at the far end.
class CheckDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        const Tokens tokens = Tokens::of(option.palette);
        // The arrows move the current row from the field, too.
        const bool isCurrent =
            (option.state & QStyle::State_Selected) &&
            option.widget->parentWidget()->isAncestorOf(QApplication::focusWidget());
        if (isCurrent || option.state & QStyle::State_MouseOver)
            drawRoundedRect(*painter, option.rect, 5,
                            tokens[isCurrent ? Token::Selected : Token::Hover]);
        const auto place = [&option](const QRect &rect) {
            return QStyle::visualRect(option.direction, option.rect, rect);
        };
        const QRect row = option.rect.adjusted(spacing::xs, 0, -spacing::s, 0);
        const QStyle *style = option.widget->style();

        QStyleOption box;
        box.palette = option.palette;
        const bool isChecked = index.data(Qt::CheckStateRole) == Qt::Checked;
        box.state = QStyle::State_Enabled | (isChecked ? QStyle::State_On : QStyle::State_Off);
        const int side = style->pixelMetric(QStyle::PM_IndicatorWidth, &box, option.widget);
        box.rect = place({row.left(), row.center().y() - side / 2, side, side});
        style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, option.widget);

        const QFont small = fontFor(TextStyle::SecondarySemibold, option.font);
        const QString code = index.data(StorefrontCheckModel::codeRole).toString();
        const int codeWidth = QFontMetrics(small).horizontalAdvance(QStringLiteral("MM")) + 10;
        const int codeHeight = QFontMetrics(small).height() + 4;
        const QRect codeRect = place(
            {row.right() - codeWidth, row.center().y() - codeHeight / 2, codeWidth, codeHeight});
        drawRoundedRect(*painter, codeRect, 4, tokens.tint(Token::Gray));
        painter->setFont(small);
        painter->setPen(tokens[Token::Text]);
        painter->drawText(codeRect, Qt::AlignCenter, code);

        const int textLeft = row.left() + side + spacing::s;
        const QRect text = place(
            {textLeft, row.top(), row.right() - codeWidth - spacing::s - textLeft, row.height()});
        painter->setFont(option.font);
        painter->drawText(
            text,
            int(QStyle::visualAlignment(option.direction, Qt::AlignLeading | Qt::AlignVCenter)) |
                Qt::TextSingleLine,
            option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, text.width()));
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
};

} // namespace

StorefrontCheckModel::StorefrontCheckModel(QObject *parent)
    : QAbstractListModel(parent), m_order(storefrontCodes())
{
    show();
}

void StorefrontCheckModel::setChecked(const QStringList &codes)
{
    QStringList checked;
    for (const QString &code : codes) {
        if (isStorefrontCode(code) && !checked.contains(code.toUpper()))
            checked << code.toUpper();
    }
    // `codes` may be checked() itself.
    m_checked = m_order = checked;
    for (const QString &code : storefrontCodes()) {
        if (!m_checked.contains(code))
            m_order << code;
    }
    show();
    Q_EMIT checkedChanged();
}

void StorefrontCheckModel::toggle(const QModelIndex &index)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return;
    const QString code = m_shown[index.row()];
    const bool isChecked = !m_checked.contains(code);
    QStringList checked;
    for (const QString &other : std::as_const(m_order)) {
        if (other == code ? isChecked : m_checked.contains(other))
            checked << other;
    }
    m_checked = checked;
    Q_EMIT dataChanged(index, index);
    Q_EMIT checkedChanged();
}

void StorefrontCheckModel::setFilter(const QString &text)
{
    m_filter = text;
    show();
}

void StorefrontCheckModel::show()
{
    beginResetModel();
    m_shown.clear();
    for (const QString &code : std::as_const(m_order)) {
        if (isStorefrontFound(code, m_filter))
            m_shown << code;
    }
    endResetModel();
}

int StorefrontCheckModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size());
}

QVariant StorefrontCheckModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QString code = m_shown[index.row()];
    const bool isChecked = m_checked.contains(code);
    switch (role) {
    case Qt::DisplayRole:
        return storefrontName(code);
    case Qt::AccessibleTextRole:
        return (isChecked ? tr("%1, checked") : tr("%1, not checked")).arg(storefrontName(code));
    case Qt::CheckStateRole:
        return isChecked ? Qt::Checked : Qt::Unchecked;
    case codeRole:
        return code;
    default:
        return {};
    }
}

Qt::ItemFlags StorefrontCheckModel::flags(const QModelIndex &index) const
{
    return QAbstractListModel::flags(index) | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren;
}

StorefrontChecklist::StorefrontChecklist(StorefrontCheckModel &model, QWidget *parent)
    : QWidget(parent), m_model(model),
      m_count(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_filter(new TextField(QStringLiteral("storefrontChecklistSearch"), tr("Search storefronts"),
                             QStringLiteral("magnifyingglass"))),
      m_view(new QListView)
{
    setAccessibleName(tr("Storefronts"));
    m_model.setFilter(QString());
    m_count->setObjectName(QStringLiteral("storefrontChecklistCount"));
    nameControl(m_view, QStringLiteral("storefrontChecklist"), tr("Storefronts"));
    m_view->setModel(&m_model);
    m_view->setItemDelegate(new CheckDelegate(m_view));
    m_view->setProperty(ownRowsProperty, true);
    m_view->setFrameShape(QFrame::NoFrame);
    m_view->setUniformItemSizes(true);
    m_view->setMouseTracking(true);
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->viewport()->setAutoFillBackground(false);
    m_view->setCurrentIndex(m_model.index(0));

    auto *heading = makeRow(spacing::s);
    heading->addWidget(
        new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, tr("Storefronts")), 1);
    heading->addWidget(m_count);
    auto *layout = makeColumn(spacing::s, this);
    layout->addLayout(heading);
    layout->addWidget(m_filter);
    layout->addWidget(m_view, 1);

    m_filter->installEventFilter(this);
    m_view->installEventFilter(this);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_model.setFilter(text);
        m_view->setCurrentIndex(m_model.index(0));
    });
    connect(m_view, &QListView::clicked, this, &StorefrontChecklist::toggle);
    connect(&m_model, &StorefrontCheckModel::checkedChanged, this, &StorefrontChecklist::showCount);
    showCount();
}

void StorefrontChecklist::toggle(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    m_model.toggle(index);
    QAccessibleEvent changed(m_view, QAccessible::NameChanged);
    changed.setChild(index.row());
    QAccessible::updateAccessibility(&changed);
}

void StorefrontChecklist::hideEvent(QHideEvent *event)
{
    m_filter->clear();
    QWidget::hideEvent(event);
}

void StorefrontChecklist::showCount()
{
    m_count->setText(tr("%L1 chosen").arg(m_model.checked().size()));
}

int StorefrontChecklist::heightOf(int rows) const
{
    return QWidget::minimumSizeHint().height() - m_view->minimumSizeHint().height() +
           rows * controlHeight(font());
}

QSize StorefrontChecklist::sizeHint() const
{
    return {std::max(listWidth, fontMetrics().averageCharWidth() * 30), heightOf(usualRows)};
}

QSize StorefrontChecklist::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 20, heightOf(fewestRows)};
}

bool StorefrontChecklist::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        m_view->viewport()->update();
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *pressed = static_cast<QKeyEvent *>(event);
    const int key = pressed->key();
    const bool isPlain = !(pressed->modifiers() & ~Qt::KeypadModifier);
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (isPlain && (isEnter || (watched == m_view && key == Qt::Key_Space))) {
        toggle(m_view->currentIndex());
        return true;
    }
    const bool moves = key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_PageDown ||
                       key == Qt::Key_PageUp;
    if (watched == m_filter && moves) {
        QCoreApplication::sendEvent(m_view, event);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace veltrix
