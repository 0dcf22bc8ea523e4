// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/compare_legend.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/tool_tip_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/focus_steps.h"
#include "ui_kit/widgets/pressable.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace veltrix
{

namespace
{

/// Of an entry, at the standard font.
constexpr int entryHeight = 34;
constexpr int leastEntryWidth = 252;
constexpr int mostColumns = 3;
/// The piece of line with its mark.
constexpr int sampleWidth = 26;
constexpr qreal sampleMark = 8;
constexpr qreal sampleStroke = 1.6;
constexpr qreal ringCorner = 5;

} // namespace

class CompareLegend::Entry final : public Pressable
{
public:
    explicit Entry(CompareLegend &legend) : Pressable(&legend), m_legend(legend)
    {
        setAccessibleRole(this, QAccessible::CheckBox);
        setCheckable(true);
    }

    void show(const LegendEntry &entry)
    {
        if (entry == m_entry)
            return;
        m_entry = entry;
        setObjectName(QStringLiteral("historyLine%1").arg(entry.key));
        setAccessibleName(entry.spoken);
        setChecked(entry.isOn);
        updateToolTip();
        update();
    }

    [[nodiscard]] const LegendEntry &entry() const { return m_entry; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const Tokens tokens = Tokens::of(this);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (isHovered())
            drawRoundedRect(painter, rect(), ringCorner, tokens[Token::Hover]);
        paintCheck(painter);
        paintSample(painter, tokens);
        paintTexts(painter, tokens);
        paintFocusRing(painter, ringCorner);
    }
    void resizeEvent(QResizeEvent *event) override
    {
        Pressable::resizeEvent(event);
        updateToolTip();
    }
    void enterEvent(QEnterEvent *event) override
    {
        Pressable::enterEvent(event);
        // One that is off has no line for which the others could make room.
        if (m_entry.isOn)
            Q_EMIT m_legend.pointedAt(m_entry.key);
    }
    void leaveEvent(QEvent *event) override
    {
        Pressable::leaveEvent(event);
        Q_EMIT m_legend.pointedAt(std::nullopt);
    }

private:
    [[nodiscard]] QRect placed(const QRect &part) const
    {
        return QStyle::visualRect(layoutDirection(), rect(), part);
    }
    [[nodiscard]] int boxSide() const
    {
        return style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this);
    }
    [[nodiscard]] QRect sampleRect() const
    {
        return {spacing::xs + boxSide() + spacing::s, 0, scaledToFont(sampleWidth, font()),
                height()};
    }
    /// A sentence in place of a rank stands below the name: beside it, it would leave no room.
    [[nodiscard]] bool hasSentence() const { return m_entry.isSentence; }
    [[nodiscard]] QFont rankFont() const
    {
        return fontFor(hasSentence() ? TextStyle::Secondary : TextStyle::BodySemibold, font());
    }
    [[nodiscard]] int rankWidth() const
    {
        return m_entry.rank.isEmpty()
                   ? 0
                   : int(std::ceil(QFontMetricsF(rankFont()).horizontalAdvance(m_entry.rank)));
    }
    /// What the name has, with the rank behind it.
    [[nodiscard]] QRect nameRect() const
    {
        const int left = sampleRect().right() + 1 + spacing::s;
        const int rank = rankWidth() > 0 && !hasSentence() ? rankWidth() + spacing::m : 0;
        return {left, 0, std::max(0, width() - left - rank - spacing::xs),
                hasSentence() ? height() / 2 : height()};
    }
    void updateToolTip()
    {
        const bool isCut =
            QFontMetrics(font()).horizontalAdvance(m_entry.name) > nameRect().width();
        QStringList lines;
        if (isCut)
            lines << m_entry.name;
        if (hasSentence() && rankWidth() > nameRect().width())
            lines << m_entry.rank;
        if (!m_entry.detail.isEmpty())
            lines << m_entry.detail;
        setToolTip(toolTipText(lines.join(u'\n')));
    }
    void paintCheck(QPainter &painter) const
    {
        QStyleOption box;
        box.initFrom(this);
        box.state = QStyle::State_Enabled | (isChecked() ? QStyle::State_On : QStyle::State_Off);
        const int side = boxSide();
        box.rect = placed({spacing::xs, (height() - side) / 2, side, side});
        style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, this);
    }
    void paintSample(QPainter &painter, const Tokens &tokens) const
    {
        const QRectF sample = placed(sampleRect());
        const QColor color = tokens[m_entry.isOn ? m_entry.look.token : Token::Gray];
        painter.setPen(QPen(color, sampleStroke, Qt::SolidLine, Qt::RoundCap));
        const QPointF middle = sample.center();
        painter.drawLine(QPointF(sample.left(), middle.y()), QPointF(sample.right(), middle.y()));
        paintMark(painter, m_entry.look, middle, sampleMark, color,
                  m_entry.look.isFilled ? color : tokens[Token::Raised], sampleStroke);
    }
    void paintTexts(QPainter &painter, const Tokens &tokens) const
    {
        const QRect name = nameRect();
        const QString shown =
            QFontMetrics(font()).elidedText(m_entry.name, Qt::ElideRight, name.width());
        const auto flags =
            int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter)) |
            int(Qt::TextSingleLine);
        painter.setFont(font());
        painter.setPen(tokens[m_entry.isOn ? Token::Text : Token::Secondary]);
        painter.drawText(placed(name), flags, shown);
        if (m_entry.rank.isEmpty())
            return;
        painter.setFont(rankFont());
        if (hasSentence()) {
            const QRect below(name.left(), name.bottom() + 1, name.width(),
                              height() - name.height());
            painter.setPen(tokens[Token::Secondary]);
            painter.drawText(
                placed(below), flags,
                QFontMetrics(rankFont()).elidedText(m_entry.rank, Qt::ElideRight, below.width()));
            return;
        }
        const int nameWidth = QFontMetrics(font()).horizontalAdvance(shown);
        const QRect rank(name.left() + nameWidth + spacing::m, 0, rankWidth() + 1, height());
        painter.drawText(placed(rank), flags | int(Qt::TextDontClip), m_entry.rank);
    }

    CompareLegend &m_legend;
    LegendEntry m_entry;
};

CompareLegend::CompareLegend(QWidget *parent) : QWidget(parent)
{
    setAccessibleRole(this, QAccessible::Grouping);
    nameControl(this, QStringLiteral("historyLegend"), tr("Compared apps"));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void CompareLegend::setEntries(const std::vector<LegendEntry> &entries)
{
    const std::vector<Entry *> before = m_entries;
    std::vector<Entry *> ordered;
    for (const LegendEntry &entry : entries) {
        const auto known = std::ranges::find_if(
            m_entries, [&](const Entry *one) { return one && one->entry().key == entry.key; });
        Entry *shown = known != m_entries.end() ? std::exchange(*known, nullptr) : nullptr;
        if (!shown) {
            shown = new Entry(*this);
            connect(shown, &Entry::toggled, this, [this, shown](bool on) {
                if (on == shown->entry().isOn)
                    return;
                Q_EMIT turned(shown->entry().key, on);
            });
        }
        shown->show(entry);
        ordered.push_back(shown);
    }
    for (Entry *gone : m_entries) {
        if (!gone)
            continue;
        gone->hide();
        // It may be the one that was pressed.
        gone->deleteLater();
    }
    m_entries = std::move(ordered);
    if (before == m_entries)
        return;
    putInTabOrder(*this, {m_entries.begin(), m_entries.end()});
    place();
    updateGeometry();
}

void CompareLegend::setOffShown(bool shown)
{
    m_isOffShown = shown;
    place();
    updateGeometry();
}

std::vector<CompareLegend::Entry *> CompareLegend::shownEntries() const
{
    std::vector<Entry *> shown;
    std::ranges::copy_if(m_entries, std::back_inserter(shown), [this](const Entry *entry) {
        return m_isOffShown || entry->entry().isOn;
    });
    return shown;
}

int CompareLegend::columns(int width) const
{
    return std::clamp(width / scaledToFont(leastEntryWidth, font()), 1, mostColumns);
}

int CompareLegend::heightForWidth(int width) const
{
    const int abreast = columns(width);
    const int rows = (int(shownEntries().size()) + abreast - 1) / abreast;
    return rows * scaledToFont(entryHeight, font());
}

QSize CompareLegend::sizeHint() const
{
    const int width = mostColumns * scaledToFont(leastEntryWidth, font());
    return {width, heightForWidth(width)};
}

QSize CompareLegend::minimumSizeHint() const
{
    return {scaledToFont(leastEntryWidth, font()) / 2, scaledToFont(entryHeight, font())};
}

void CompareLegend::place()
{
    const int abreast = columns(width());
    const int height = scaledToFont(entryHeight, font());
    const std::vector<Entry *> shown = shownEntries();
    for (Entry *entry : m_entries)
        entry->setVisible(std::ranges::find(shown, entry) != shown.end());
    for (size_t i = 0; i < shown.size(); ++i) {
        const int column = int(i) % abreast;
        const int left = width() * column / abreast;
        const int right = width() * (column + 1) / abreast - spacing::s;
        const QRect place(left, int(i) / abreast * height, right - left, height);
        shown[i]->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    }
}

void CompareLegend::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    place();
}

void CompareLegend::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange) {
        place();
        updateGeometry();
    }
}

void CompareLegend::keyPressEvent(QKeyEvent *event)
{
    const std::vector<Entry *> shown = shownEntries();
    event->setAccepted(moveFocusAmong({shown.begin(), shown.end()}, *event, columns(width())));
}

} // namespace veltrix
