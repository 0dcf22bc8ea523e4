// SPDX-License-Identifier: GPL-3.0-or-later
// Reads data/catalog.json and the themes that it lists.
#include "sample/theme.h"

#include "sample/data_file.h"

#include <QColor>

namespace veltrix::sample
{

namespace
{

DataObject catalogFile()
{
    return DataObject::ofFile(QStringLiteral("catalog.json"));
}

QRgb colour(const DataObject &data, QStringView key)
{
    const QColor colour = QColor::fromString(data.text(key));
    if (!colour.isValid())
        data.refuse(key, "is no colour");
    return colour.rgb();
}

std::vector<Genre> readGenres()
{
    std::vector<Genre> genres;
    for (const DataObject &data : catalogFile().objects(u"genres"))
        genres.push_back({data.text(u"name"), static_cast<int>(data.number(u"id"))});
    return genres;
}

std::vector<Hue> readHues()
{
    std::vector<Hue> hues;
    for (const DataObject &data : catalogFile().objects(u"hues"))
        hues.push_back({data.text(u"name"), colour(data, u"top"), colour(data, u"bottom")});
    return hues;
}

std::vector<Theme> readThemes()
{
    std::vector<Theme> themes;
    for (const QString &name : catalogFile().texts(u"themes")) {
        const auto data = DataObject::ofFile(QStringLiteral("themes/%1.json").arg(name));
        themes.push_back({.name = name,
                          .number = static_cast<int>(themes.size()),
                          .primary = data.oneOf(u"primaryGenre", genres(), &Genre::name),
                          .secondary = data.oneOf(u"secondaryGenre", genres(), &Genre::name),
                          .glyphs = data.texts(u"glyphs"),
                          .topRatings = data.number(u"topRatings"),
                          .ratingsFall = data.number(u"ratingsFall"),
                          .paidShare = data.number(u"paidShare"),
                          .names = data.texts(u"names"),
                          .topics = data.lists(u"topics")});
    }
    return themes;
}

} // namespace

const std::vector<Genre> &genres()
{
    static const std::vector<Genre> all = readGenres();
    return all;
}

const std::vector<Hue> &hues()
{
    static const std::vector<Hue> all = readHues();
    return all;
}

const std::vector<Theme> &themes()
{
    static const std::vector<Theme> all = readThemes();
    return all;
}

} // namespace veltrix::sample
