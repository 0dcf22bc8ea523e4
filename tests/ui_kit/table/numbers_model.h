// SPDX-License-Identifier: GPL-3.0-or-later
// A small model for the tests of row tables: numbers with names.
#pragma once

#include "ui_kit/table/entry_model.h"

#include <optional>

namespace veltrix
{

struct NumberEntry {
    int id = 0;
    /// Absent for "no value".
    std::optional<int> number;
};

enum class NumberColumn { Name, Number };

QString nameOf(const NumberEntry &entry);

std::span<const Column<NumberEntry, NumberColumn>> numberColumns();

class NumbersModel final : public EntryModel<NumberEntry, NumberColumn>
{
public:
    NumbersModel() : EntryModel(numberColumns()) {}

    void addAll(const std::vector<NumberEntry> &added) { EntryModel::add(added); }
    void addTo(int count);
    template <class IsGone>
    void removeIf(IsGone &&isGone)
    {
        EntryModel::remove(isGone);
    }
    /// Shows only what leaves no remainder.
    void setDivisor(int divisor)
    {
        m_divisor = divisor;
        refilter();
    }
    void change(int id, std::optional<int> number);
    [[nodiscard]] int rowOf(int id) const;
    [[nodiscard]] std::vector<int> shownIds() const;

protected:
    [[nodiscard]] bool isShown(const NumberEntry &entry) const override
    {
        return entry.id % m_divisor == 0;
    }
    [[nodiscard]] bool comesFirstOfEquals(const NumberEntry &left,
                                          const NumberEntry &right) const override
    {
        return left.id < right.id;
    }

private:
    int m_divisor = 1;
};

} // namespace veltrix
