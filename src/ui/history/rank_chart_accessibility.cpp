// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_chart_accessibility.h"

#include "ui/history/compared_text.h"
#include "ui/history/rank_chart.h"
#include "ui_kit/accessibility/cover.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QPointer>
#include <QWindow>

#include <algorithm>

namespace veltrix
{

namespace
{

/// The checks of a day: "Rank 12" or "Not ranked" of the own app, with the day as the description,
/// and what others have done on it.
class CheckInterface final : public QAccessibleInterface
{
    Q_DECLARE_TR_FUNCTIONS(RankChart)

public:
    CheckInterface(RankChart *chart, size_t day) : m_chart(chart), m_day(day) {}

    [[nodiscard]] bool isValid() const override { return m_chart != nullptr; }
    [[nodiscard]] QObject *object() const override { return nullptr; }
    [[nodiscard]] QWindow *window() const override
    {
        return m_chart ? m_chart->window()->windowHandle() : nullptr;
    }
    [[nodiscard]] QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *parent() const override
    {
        return m_chart ? QAccessible::queryAccessibleInterface(m_chart) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (!m_chart)
            return {};
        if (kind == QAccessible::Name) {
            const auto &check = m_chart->data().days[m_day].observation;
            if (!check)
                return tr("No check saved");
            return check->position ? tr("Rank %1").arg(*check->position) : tr("Not ranked");
        }
        if (kind == QAccessible::Description) {
            const ComparedChart &compared = m_chart->compared();
            if (compared.isCompared() || !compared.marksOf(m_day).empty())
                return spokenDay(compared, m_day);
            return dayLabel(m_chart->data().days[m_day].date, m_chart->data().days);
        }
        return {};
    }
    void setText(QAccessible::Text, const QString &) override {}
    [[nodiscard]] QRect rect() const override
    {
        if (!m_chart)
            return {};
        const QRect mark = m_chart->markOf(m_day).toAlignedRect();
        return {m_chart->mapToGlobal(mark.topLeft()), mark.size()};
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Graphic; }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        state.selectable = true;
        state.focusable = true;
        state.readOnly = true;
        state.selected = m_chart && m_chart->selectedDay() == m_day;
        state.focused = state.selected && m_chart->hasFocus();
        state.invisible = !m_chart || !m_chart->isVisible();
        return state;
    }

private:
    QPointer<RankChart> m_chart;
    size_t m_day;
};

class ChartInterface final : public QAccessibleWidget
{
public:
    explicit ChartInterface(RankChart *chart)
        : QAccessibleWidget(chart, QAccessible::Chart), m_chart(chart)
    {
    }
    ~ChartInterface() override { forget(); }

    /// Gives up the interfaces of the checks.
    void forget()
    {
        for (const QAccessible::Id id : std::exchange(m_checks, {}))
            QAccessible::deleteAccessibleInterface(id);
    }

    [[nodiscard]] int childCount() const override { return int(m_chart->checkedDays().size()); }

    [[nodiscard]] QAccessibleInterface *child(int index) const override
    {
        const auto &days = m_chart->checkedDays();
        if (index < 0 || size_t(index) >= days.size())
            return nullptr;
        if (m_checks.empty()) {
            for (const size_t day : days)
                m_checks.push_back(
                    QAccessible::registerAccessibleInterface(new CheckInterface(m_chart, day)));
        }
        return QAccessible::accessibleInterface(m_checks[size_t(index)]);
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        for (int index = 0; index < childCount(); ++index) {
            if (this->child(index) == child)
                return index;
        }
        return -1;
    }

    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override
    {
        for (int index = 0; index < childCount(); ++index) {
            QAccessibleInterface *check = child(index);
            if (check->rect().contains(x, y))
                return check;
        }
        return nullptr;
    }

    [[nodiscard]] QAccessibleInterface *focusChild() const override
    {
        const auto selected = m_chart->selectedDay();
        if (!selected || !m_chart->hasFocus())
            return QAccessibleWidget::focusChild();
        const auto &days = m_chart->checkedDays();
        const auto day = std::ranges::find(days, *selected);
        return day == days.end() ? QAccessibleWidget::focusChild() : child(int(day - days.begin()));
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value)
            return spokenDay(m_chart->compared(), m_chart->selectedDay());
        if (kind == QAccessible::Description)
            return QCoreApplication::translate("RankChart", "Shown: %1. %2")
                .arg(spanText(m_chart->data().days), m_chart->accessibleDescription());
        return QAccessibleWidget::text(kind);
    }

private:
    RankChart *m_chart;
    mutable std::vector<QAccessible::Id> m_checks;
};

QAccessibleInterface *chartInterface(const QString &className, QObject *object)
{
    if (className != QLatin1String("veltrix::RankChart"))
        return nullptr;
    auto *chart = static_cast<RankChart *>(object);
    // Behind the popover of a note.
    if (QAccessibleInterface *standIn = standInFor(chart))
        return standIn;
    return new ChartInterface(chart);
}

} // namespace

void installRankChartAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(chartInterface);
        return true;
    }();
    Q_UNUSED(installed)
}

void forgetRankChartAccessibility(RankChart &chart)
{
    if (chart.checkedDays().empty())
        return;
    if (auto *known = dynamic_cast<ChartInterface *>(QAccessible::queryAccessibleInterface(&chart)))
        known->forget();
}

} // namespace veltrix
