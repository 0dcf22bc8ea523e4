// SPDX-License-Identifier: GPL-3.0-or-later
// Invented names for apps and publishers.
#include "sample/brand_names.h"

#include "sample/dice.h"

#include <QList>
#include <QStringView>

#include <cstddef>
#include <iterator>

namespace veltrix::sample
{

namespace
{

constexpr QStringView beginnings[] = {
    u"Amber",    u"Anvil",   u"Aspen",    u"Barley",  u"Birch",  u"Bramble", u"Brass",   u"Bristle",
    u"Burrow",   u"Candle",  u"Cinder",   u"Clover",  u"Cobble", u"Copper",  u"Coral",   u"Cricket",
    u"Dapple",   u"Dewdrop", u"Dusk",     u"Elder",   u"Ember",  u"Fable",   u"Fallow",  u"Feather",
    u"Fennel",   u"Fern",    u"Flint",    u"Gable",   u"Garnet", u"Ginger",  u"Glimmer", u"Gorse",
    u"Hazel",    u"Heather", u"Heron",    u"Ivory",   u"Jasper", u"Juniper", u"Kestrel", u"Kettle",
    u"Lantern",  u"Larch",   u"Lichen",   u"Linden",  u"Maple",  u"Marrow",  u"Minnow",  u"Moss",
    u"Mulberry", u"Myrtle",  u"Nettle",   u"Nutmeg",  u"Oaken",  u"Ochre",   u"Osprey",  u"Otter",
    u"Pebble",   u"Pewter",  u"Plover",   u"Poppy",   u"Quill",  u"Russet",  u"Saffron", u"Sable",
    u"Sorrel",   u"Spindle", u"Starling", u"Tansy",   u"Teasel", u"Thistle", u"Thrush",  u"Umber",
    u"Vesper",   u"Walnut",  u"Warbler",  u"Whistle", u"Willow", u"Wren",    u"Yarrow",
};

constexpr QStringView endings[] = {
    u"beck", u"croft", u"dell",    u"fen",   u"holt",  u"knoll", u"ledge", u"loom",
    u"mere", u"moor",  u"nook",    u"quay",  u"reeve", u"spire", u"stile", u"sward",
    u"tarn", u"thorn", u"thwaite", u"wharf", u"weir",  u"wick",  u"wold",
};

/// Every compound whose parts do not meet in the same letter, in rounds: within a round every
/// beginning comes once, so that neighbours in a search result differ.
QList<QString> compoundsInRounds()
{
    QList<QStringView> order(std::begin(beginnings), std::end(beginnings));
    Dice dice(stableTextHash("brand names"));
    for (qsizetype left = order.size(); left > 1; --left)
        order.swapItemsAt(left - 1, dice.below(static_cast<int>(left)));
    QList<QString> all;
    for (std::size_t round = 0; round < std::size(endings); ++round) {
        std::size_t place = round;
        for (const QStringView beginning : order) {
            place += 5;
            const QStringView ending = endings[place % std::size(endings)];
            if (beginning.back() != ending.front())
                all += beginning.toString().append(ending);
        }
    }
    return all;
}

const QList<QString> &compounds()
{
    static const QList<QString> all = compoundsInRounds();
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

} // namespace veltrix::sample
