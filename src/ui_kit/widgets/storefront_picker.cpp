// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/storefront_picker.h"

#include "model/text_folding.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/theme/veltrix_style.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/text_field.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QListView>
#include <QPointer>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <functional>

namespace veltrix
{

namespace
{

constexpr int listWidth = 280;
constexpr int visibleRows = 11;

QString nameOf(const std::optional<QString> &code)
{
    return code ? storefrontName(*code)
                : QCoreApplication::translate("StorefrontPicker", "All Countries");
}

/// One-line rows with a check mark at the chosen one.
class PickerDelegate final : public QStyledItemDelegate
{
public:
    PickerDelegate(QPersistentModelIndex chosen, QObject *parent)
        : QStyledItemDelegate(parent), m_chosen(std::move(chosen))
    {
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        const Tokens tokens = Tokens::of(option.palette);
        const bool isSelected = option.state & QStyle::State_Selected;
        if (isSelected || option.state & QStyle::State_MouseOver)
            drawRoundedRect(*painter, option.rect, 5,
                            tokens[isSelected ? Token::Selected : Token::Hover]);
        if (showsFocus(option))
            drawFocusRing(*painter, option.rect, 5, tokens[Token::Accent]);
        const QRect text = option.rect.adjusted(spacing::s, 0, -spacing::s - 20, 0);
        painter->setFont(option.font);
        painter->setPen(tokens[Token::Text]);
        painter->drawText(
            text, Qt::AlignVCenter | Qt::TextSingleLine,
            option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, text.width()));
        const int role = StorefrontListModel::codeRole;
        if (m_chosen.isValid() && index.data(role) == m_chosen.data(role))
            drawSymbol(*painter,
                       QRectF(option.rect.right() - 22, option.rect.center().y() - 6, 14, 14),
                       QStringLiteral("checkmark"), tokens[Token::Accent]);
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &) const override
    {
        return {100, controlHeight(option.font)};
    }

private:
    QPersistentModelIndex m_chosen;
};

/// The card with the filter field and the list.
class PickerCard final : public QWidget
{
public:
    PickerCard(const QString &purpose, StorefrontListModel::Offer offer,
               const std::optional<QString> &code,
               std::function<void(const std::optional<QString> &)> pick)
        : m_model(new StorefrontListModel(offer, this)), m_view(new QListView),
          m_filter(new TextField(QStringLiteral("storefrontSearch"),
                                 StorefrontPicker::tr("Search storefronts"),
                                 QStringLiteral("magnifyingglass"))),
          m_pick(std::move(pick))
    {
        setAccessibleName(purpose);
        const int row = m_model->rowOf(code);
        nameControl(m_view, QStringLiteral("storefrontList"), purpose);
        m_view->setModel(m_model);
        m_view->setItemDelegate(new PickerDelegate(m_model->index(row), m_view));
        m_view->setProperty(ownRowsProperty, true);
        m_view->setFrameShape(QFrame::NoFrame);
        m_view->setUniformItemSizes(true);
        m_view->setMouseTracking(true);
        m_view->viewport()->setAutoFillBackground(false);
        m_view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        m_view->setCurrentIndex(m_model->index(row));
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(spacing::s, spacing::s, spacing::s, spacing::s);
        layout->addWidget(m_filter);
        layout->addWidget(m_view);
        m_filter->installEventFilter(this);
        connect(m_filter, &QLineEdit::textChanged, this, [this](const QString &text) {
            m_model->setFilter(text);
            m_view->setCurrentIndex(m_model->index(0));
        });
        connect(m_filter, &QLineEdit::returnPressed, this,
                [this] { choose(m_view->currentIndex()); });
        connect(m_view, &QListView::clicked, this, [this](const QModelIndex &i) { choose(i); });
        connect(m_view, &QListView::activated, this, [this](const QModelIndex &i) { choose(i); });
        m_filter->setFocus();
        QMetaObject::invokeMethod(
            m_view,
            [this] { m_view->scrollTo(m_view->currentIndex(), QListView::PositionAtCenter); },
            Qt::QueuedConnection);
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        const int row = controlHeight(font());
        return {listWidth, m_filter->sizeHint().height() + row * visibleRows + 3 * spacing::s};
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // Arrows in the field move through the list.
        if (watched == m_filter && event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            if (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_PageDown ||
                key == Qt::Key_PageUp) {
                QCoreApplication::sendEvent(m_view, event);
                return true;
            }
        }
        return QWidget::eventFilter(watched, event);
    }

private:
    void choose(const QModelIndex &index)
    {
        if (!index.isValid())
            return;
        const auto code = m_model->codeAt(index.row());
        const auto pick = m_pick;
        if (Overlay *overlay = Overlay::of(this))
            overlay->dismiss();
        pick(code);
    }

    StorefrontListModel *m_model;
    QListView *m_view;
    TextField *m_filter;
    std::function<void(const std::optional<QString> &)> m_pick;
};

} // namespace

bool isStorefrontFound(const QString &code, const QString &typed)
{
    const QString text = typed.trimmed();
    return foldedForSearch(storefrontName(code)).contains(foldedForSearch(text)) ||
           code.compare(text, Qt::CaseInsensitive) == 0;
}

StorefrontListModel::StorefrontListModel(Offer offer, QObject *parent)
    : QAbstractListModel(parent), m_offer(offer)
{
    setFilter(QString());
}

void StorefrontListModel::setFilter(const QString &text)
{
    const QString folded = foldedForSearch(text.trimmed());
    beginResetModel();
    m_codes.clear();
    if (m_offer == Offer::AllAndStorefronts && foldedForSearch(nameOf({})).contains(folded))
        m_codes.append(QString());
    for (const QString &code : storefrontCodes()) {
        if (isStorefrontFound(code, text))
            m_codes.append(code);
    }
    endResetModel();
}

int StorefrontListModel::rowOf(const std::optional<QString> &code) const
{
    return int(m_codes.indexOf(code.value_or(QString())));
}

std::optional<QString> StorefrontListModel::codeAt(int row) const
{
    const QString code = m_codes.value(row);
    return code.isEmpty() ? std::nullopt : std::optional(code);
}

int StorefrontListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_codes.size());
}

QVariant StorefrontListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
        return nameOf(codeAt(index.row()));
    if (role == codeRole)
        return m_codes[index.row()];
    return {};
}

StorefrontPicker::StorefrontPicker(const QString &objectName, const QString &purpose, Offer offer,
                                   QWidget *parent)
    : Button(Kind::Standard, QStringLiteral("globe"), QString(), parent), m_purpose(purpose),
      m_offer(offer)
{
    setObjectName(objectName);
    // A long name gives way before the toolbar does.
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    if (offer == Offer::Storefronts)
        m_code = storefrontCodes().first();
    updateText();
    connect(this, &Button::clicked, this, &StorefrontPicker::openList);
}

void StorefrontPicker::setCode(const std::optional<QString> &code)
{
    m_code = code;
    updateText();
}

void StorefrontPicker::setPrefix(const QString &prefix)
{
    m_prefix = prefix;
    updateText();
}

QSize StorefrontPicker::minimumSizeHint() const
{
    return {std::min(sizeHint().width(), fontMetrics().averageCharWidth() * 16),
            sizeHint().height()};
}

void StorefrontPicker::updateText()
{
    setText(m_prefix + nameOf(m_code).replace(u'&', QStringLiteral("&&")));
    setAccessibleName(m_prefix.isEmpty() ? m_purpose + QStringLiteral(": ") + nameOf(m_code)
                                         : m_prefix + nameOf(m_code));
    updateGeometry();
}

void StorefrontPicker::openList()
{
    auto *card = new PickerCard(m_purpose, m_offer, m_code,
                                [picker = QPointer(this)](const std::optional<QString> &code) {
                                    if (!picker || picker->code() == code)
                                        return;
                                    picker->setCode(code);
                                    Q_EMIT picker->picked(code);
                                });
    Overlay::open(Overlay::Kind::Popover, this, card);
}

} // namespace veltrix
