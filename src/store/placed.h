// SPDX-License-Identifier: GPL-3.0-or-later
// Records that are taken out of a list and put back where they stood.
#pragma once

#include <QList>

#include <iterator>
#include <utility>
#include <vector>

namespace veltrix
{

/// A record that was taken out of a list.
template <class Record>
struct Placed {
    /// Its index before anything was taken out.
    qsizetype place = 0;
    Record record;

    bool operator==(const Placed &) const = default;
};

/// Takes out every record of which `isTaken` is true; in the order of the list.
template <class Record, class IsTaken>
std::vector<Placed<Record>> takeOut(QList<Record> &list, IsTaken &&isTaken)
{
    std::vector<Placed<Record>> taken;
    QList<Record> left;
    for (qsizetype place = 0; place < list.size(); ++place) {
        if (isTaken(std::as_const(list)[place]))
            taken.push_back({place, std::move(list[place])});
        else
            left.append(std::move(list[place]));
    }
    list = std::move(left);
    return taken;
}

/// Puts records back, each at its index, or at the end of a list that has become too short for it.
/// The records are in the order of their indices.
template <class Record>
void putBack(QList<Record> &list, const std::vector<Placed<Record>> &taken)
{
    QList<Record> whole;
    whole.reserve(list.size() + qsizetype(taken.size()));
    auto next = list.begin();
    for (const Placed<Record> &placed : taken) {
        while (whole.size() < placed.place && next != list.end())
            whole.append(std::move(*next++));
        whole.append(placed.record);
    }
    std::move(next, list.end(), std::back_inserter(whole));
    list = std::move(whole);
}

} // namespace veltrix
