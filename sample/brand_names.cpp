// SPDX-License-Identifier: GPL-3.0-or-later
// Invented names for apps and publishers.
#include "sample/brand_names.h"

#include "sample/data_file.h"
#include "sample/dice.h"

#include <QStringList>

namespace veltrix::sample
{

namespace
{

/// Brand names from here on are publishers.
constexpr int firstPublisherBrand = 1'000;

DataObject brandsFile()
{
    return DataObject::ofFile(QStringLiteral("brands.json"));
}

/// Every compound whose parts do not meet in the same letter, in rounds: within a round every
/// beginning comes once, so that neighbours in a search result differ.
QStringList compoundsInRounds()
{
    QStringList order = brandsFile().texts(u"beginnings");
    const QStringList endings = brandsFile().texts(u"endings");
    Dice dice(stableTextHash("brand names"));
    for (qsizetype left = order.size(); left > 1; --left)
        order.swapItemsAt(left - 1, dice.below(static_cast<int>(left)));
    QStringList all;
    for (qsizetype round = 0; round < endings.size(); ++round) {
        qsizetype place = round;
        for (const QString &beginning : order) {
            place += 5;
            const QString &ending = endings[place % endings.size()];
            if (beginning.back() != ending.front())
                all += beginning + ending;
        }
    }
    return all;
}

const QStringList &compounds()
{
    static const QStringList all = compoundsInRounds();
    return all;
}

} // namespace

int brandNameCount()
{
    return static_cast<int>(compounds().size());
}

const QString &brandName(int number)
{
    return compounds()[number % brandNameCount()];
}

QString publisherName(int number)
{
    static const QStringList endings = brandsFile().texts(u"publisherEndings");
    return brandName(firstPublisherBrand + number) + endings[number % endings.size()];
}

} // namespace veltrix::sample
