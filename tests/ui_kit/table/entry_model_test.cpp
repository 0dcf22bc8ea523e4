// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/table/numbers_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <set>

namespace veltrix
{
namespace
{

using Ids = std::vector<int>;

class EntryModelTest : public testing::Test
{
protected:
    NumbersModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(EntryModelTest, AFewStretchesGoAsStretchesAndComeBackAsSuch)
{
    model.addTo(100);
    const QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    const QSignalSpy arranged(&model, &QAbstractItemModel::layoutChanged);
    model.removeIf([](const NumberEntry &entry) { return entry.id / 10 % 4 == 1; });
    ASSERT_EQ(removed.size(), 3);
    EXPECT_EQ(removed[2][1].toInt(), 10);
    EXPECT_EQ(removed[2][2].toInt(), 19);
    model.addAll({{10, 0}, {11, 0}, {50, 0}, {200, 0}});
    EXPECT_EQ(inserted.size(), 3);
    EXPECT_EQ(arranged.size(), 0);
}

TEST_F(EntryModelTest, ManyStretchesAreOneRemovalAndOneInsertion)
{
    model.addTo(1000);
    const QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.setDivisor(2);
    EXPECT_EQ(model.rowCount(), 500);
    EXPECT_EQ(removed.size(), 1);
    model.setDivisor(1);
    EXPECT_EQ(model.rowCount(), 1000);
    EXPECT_EQ(inserted.size(), 1);
    EXPECT_EQ(reset.size(), 0);
}

TEST_F(EntryModelTest, NothingIsSaidWhenNothingIsAnother)
{
    model.addTo(20);
    const QSignalSpy announced(&model, &RowModel::rowsAboutToDiffer);
    const QSignalSpy arranged(&model, &QAbstractItemModel::layoutChanged);
    model.setDivisor(1);
    model.removeIf([](const NumberEntry &) { return false; });
    model.resort();
    EXPECT_EQ(announced.size(), 0);
    EXPECT_EQ(arranged.size(), 0);
}

TEST_F(EntryModelTest, NoValueComesLastInEitherOrder)
{
    model.addAll({{1, 5}, {2, std::nullopt}, {3, 2}});
    model.sort(int(NumberColumn::Number));
    EXPECT_EQ(model.shownIds(), (Ids{3, 1, 2}));
    model.sort(int(NumberColumn::Number), Qt::DescendingOrder);
    EXPECT_EQ(model.shownIds(), (Ids{1, 3, 2}));
    model.sort(-1);
    EXPECT_EQ(model.shownIds(), (Ids{1, 2, 3}));
}

TEST_F(EntryModelTest, AChangedEntryStaysWhereItIsUntilTheRowsAreSorted)
{
    model.sort(int(NumberColumn::Number));
    model.addAll({{1, 10}, {2, 20}, {3, 30}});
    model.change(1, 99);
    EXPECT_EQ(model.shownIds(), (Ids{1, 2, 3}));
    model.addAll({{4, 25}});
    EXPECT_EQ(model.shownIds(), (Ids{4, 1, 2, 3})) << "before the first that it comes before";
    model.removeIf([](const NumberEntry &entry) { return entry.id == 2; });
    EXPECT_EQ(model.shownIds(), (Ids{4, 1, 3}));
    model.resort();
    EXPECT_EQ(model.shownIds(), (Ids{4, 3, 1}));
}

TEST_F(EntryModelTest, TheRegistryGivesHeadersCellsAndTexts)
{
    model.addAll({{1, 5}, {2, std::nullopt}});
    const auto header = [&](int role) {
        return model.headerData(0, Qt::Horizontal, role).toString();
    };
    EXPECT_EQ(header(Qt::DisplayRole), QStringLiteral("Name"));
    EXPECT_EQ(header(Qt::ToolTipRole), QStringLiteral("What it is called."));
    EXPECT_EQ(header(Qt::AccessibleDescriptionRole), QStringLiteral("What it is called."));
    model.sort(0, Qt::DescendingOrder);
    EXPECT_EQ(header(Qt::AccessibleDescriptionRole),
              QStringLiteral("Sorted descending. What it is called."));
    const QModelIndex number = model.index(1, 1);
    EXPECT_EQ(number.data().toString(), QStringLiteral("5"));
    EXPECT_EQ(number.data(Qt::ToolTipRole).toString(), QStringLiteral("a hint"));
    EXPECT_EQ(number.data(Qt::TextAlignmentRole).value<Qt::Alignment>(),
              Qt::AlignTrailing | Qt::AlignVCenter);
    EXPECT_TRUE(number.data(RowModel::PaintRole).value<CellPainter>());
    EXPECT_EQ(model.texts({1, 0}, {1, 0}),
              (QList<QStringList>{
                  {QStringLiteral("Number"), QStringLiteral("Name"), QStringLiteral("Id")},
                  {QStringLiteral("5"), QStringLiteral("name 1"), QStringLiteral("1")},
                  {QString(), QStringLiteral("name 2"), QStringLiteral("2")}}));
}

/// What the model promises, done plainly.
struct PlainTable {
    std::vector<NumberEntry> entries;
    int divisor = 1;
    int column = -1;
    Qt::SortOrder order = Qt::AscendingOrder;

    [[nodiscard]] bool comesBefore(const NumberEntry &left, const NumberEntry &right) const
    {
        const bool ascending = order == Qt::AscendingOrder;
        if (column == 0)
            return ascending ? left.id < right.id : left.id > right.id;
        if (column == 1 && left.number.has_value() != right.number.has_value())
            return left.number.has_value();
        if (column == 1 && left.number != right.number)
            return ascending ? left.number < right.number : left.number > right.number;
        return left.id < right.id;
    }
    void sort()
    {
        std::stable_sort(
            entries.begin(), entries.end(),
            [this](const auto &left, const auto &right) { return comesBefore(left, right); });
    }
    void add(const NumberEntry &entry)
    {
        const auto place = std::find_if(entries.begin(), entries.end(), [&](const auto &other) {
            return comesBefore(entry, other);
        });
        entries.insert(place, entry);
    }
    [[nodiscard]] Ids shownIds() const
    {
        Ids ids;
        for (const NumberEntry &entry : entries) {
            if (entry.id % divisor == 0)
                ids.push_back(entry.id);
        }
        return ids;
    }
};

/// Knows the rows from the model's signals alone.
class Follower
{
public:
    explicit Follower(const NumbersModel &model)
    {
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &m_context,
                         [this, &model](const QModelIndex &, int first, int last) {
                             for (int row = first; row <= last; ++row)
                                 ids.insert(ids.begin() + row, model.entryAt(row).id);
                         });
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &m_context,
                         [this](const QModelIndex &, int first, int last) {
                             ids.erase(ids.begin() + first, ids.begin() + last + 1);
                         });
        QObject::connect(&model, &QAbstractItemModel::layoutChanged, &m_context, [this, &model] {
            const size_t before = ids.size();
            ids = model.shownIds();
            RC_ASSERT(ids.size() == before);
        });
    }

    Ids ids;

private:
    QObject m_context;
};

RC_GTEST_PROP(EntryModelProperty, IsThePlainTableWhateverHappensToIt, ())
{
    NumbersModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const Follower follower(model);
    PlainTable plain;
    int nextId = 0;
    const int steps = *rc::gen::inRange(1, 30);
    for (int step = 0; step < steps; ++step) {
        std::vector<std::pair<QPersistentModelIndex, int>> held;
        for (int row = 0; row < model.rowCount(); ++row)
            held.emplace_back(model.index(row, 1), model.entryAt(row).id);
        switch (*rc::gen::inRange(0, 6)) {
        case 0: {
            std::vector<NumberEntry> added;
            for (int count = *rc::gen::inRange(0, 80); count > 0; --count) {
                const int number = *rc::gen::inRange(-3, 20);
                added.push_back({nextId++, number < 0 ? std::nullopt : std::optional(number)});
            }
            model.addAll(added);
            std::sort(added.begin(), added.end(), [&](const auto &left, const auto &right) {
                return plain.comesBefore(left, right);
            });
            for (const NumberEntry &entry : added)
                plain.add(entry);
            break;
        }
        case 1: {
            const auto chosen =
                *rc::gen::container<std::set<int>>(rc::gen::inRange(0, std::max(1, nextId)));
            const auto isGone = [&](const NumberEntry &entry) {
                return chosen.contains(entry.id);
            };
            model.removeIf(isGone);
            std::erase_if(plain.entries, isGone);
            break;
        }
        case 2:
            plain.divisor = *rc::gen::inRange(1, 5);
            plain.sort();
            model.setDivisor(plain.divisor);
            break;
        case 3:
            plain.column = *rc::gen::inRange(-1, 2);
            plain.order = *rc::gen::element(Qt::AscendingOrder, Qt::DescendingOrder);
            plain.sort();
            model.sort(plain.column, plain.order);
            break;
        case 4:
            for (NumberEntry &entry : plain.entries) {
                if (*rc::gen::inRange(0, 4) == 0)
                    model.change(entry.id, entry.number = *rc::gen::inRange(0, 20));
            }
            break;
        default:
            plain.sort();
            model.resort();
        }
        RC_ASSERT(model.shownIds() == plain.shownIds());
        RC_ASSERT(follower.ids == plain.shownIds());
        for (const auto &[index, id] : held) {
            RC_ASSERT(index.isValid() == (model.rowOf(id) >= 0));
            if (index.isValid())
                RC_ASSERT(model.entryAt(index.row()).id == id);
        }
    }
}

} // namespace
} // namespace veltrix
