// SPDX-License-Identifier: GPL-3.0-or-later
// The data files: whole, without anything twice, and refused in words when they are damaged.
#include "sample/data_file.h"

#include "sample/artwork.h"
#include "sample/fixtures.h"
#include "sample_printers.h"

#include <QDirIterator>
#include <QFile>
#include <QImage>

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <set>

namespace veltrix::sample
{
namespace
{

/// The names of the compiled-in files of a folder without ".json".
QStringList filesIn(const char *folder)
{
    QStringList names =
        QDir(QStringLiteral(":/sample/") + QLatin1String(folder)).entryList({u"*.json"_qs});
    for (QString &name : names)
        name.chop(5);
    return names;
}

QStringList keysOf(const QString &file)
{
    QFile data(QStringLiteral(":/sample/%1.json").arg(file));
    EXPECT_TRUE(data.open(QIODevice::ReadOnly)) << file.toStdString();
    return QJsonDocument::fromJson(data.readAll()).object().keys();
}

template <typename Records, typename Name>
QStringList namesOf(const Records &records, Name name)
{
    QStringList names;
    for (const auto &record : records)
        names += std::invoke(name, record);
    return names;
}

QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

template <typename Records, typename Value>
bool hasNoTwoAlike(const Records &records, Value value)
{
    std::set<std::decay_t<std::invoke_result_t<Value, decltype(*std::begin(records))>>> seen;
    return std::ranges::all_of(records, [&](const auto &record) {
        return seen.insert(std::invoke(value, record)).second;
    });
}

/// What is said about a file with that content; "" if nothing is.
std::string complaintAbout(const QByteArray &content,
                           const std::function<void(const DataObject &)> &read)
{
    try {
        read(DataObject::parsed(u"themes/photo.json"_qs, content));
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return {};
}

TEST(DataFiles, AreAllReadAndComplete)
{
    EXPECT_EQ(filesIn(""),
              (QStringList{u"brands"_qs, u"catalog"_qs, u"fixtures"_qs, u"storefronts"_qs}));
    EXPECT_EQ(filesIn("themes"), sorted(namesOf(themes(), &Theme::name)));
    EXPECT_EQ(filesIn("languages"), sorted(namesOf(languages(), &LanguageTexts::name)));
    ASSERT_EQ(languages().size(), std::size_t{languageCount});
    for (const LanguageTexts &texts : languages()) {
        EXPECT_EQ(texts.genres.size(), genres().size()) << texts.name.toStdString();
        EXPECT_EQ(texts.themes.size(), themes().size()) << texts.name.toStdString();
        EXPECT_GE(texts.sentences.size(), 6) << texts.name.toStdString();
        EXPECT_EQ(findStorefront(texts.homeCountry)->language, texts.language);
    }
    for (const Storefront &shop : storefronts())
        EXPECT_TRUE(hasAppStore(shop.country)) << shop.country.toStdString();
    EXPECT_EQ(fixtureApps().size(), 6U);
}

TEST(DataFiles, HoldNoKeyThatIsNotRead)
{
    for (const QString &name : filesIn("themes"))
        EXPECT_EQ(keysOf(u"themes/"_qs + name), keysOf(u"themes/photo"_qs)) << name.toStdString();
    for (const QString &name : filesIn("languages")) {
        if (name != u"english") {
            EXPECT_EQ(keysOf(u"languages/"_qs + name), keysOf(u"languages/german"_qs))
                << name.toStdString();
        }
    }
}

TEST(DataFiles, HoldNothingTwice)
{
    EXPECT_TRUE(hasNoTwoAlike(genres(), &Genre::name));
    EXPECT_TRUE(hasNoTwoAlike(genres(), &Genre::id));
    EXPECT_TRUE(hasNoTwoAlike(hues(), &Hue::name));
    EXPECT_TRUE(hasNoTwoAlike(languages(), &LanguageTexts::code));
    EXPECT_TRUE(hasNoTwoAlike(storefronts(), &Storefront::country));
    EXPECT_TRUE(hasNoTwoAlike(storefronts(), &Storefront::hintsId));
    EXPECT_TRUE(hasNoTwoAlike(fixtureApps(), &SampleApp::trackId));
    QStringList names;
    for (const Theme &theme : themes())
        names += theme.names;
    for (const LanguageTexts &texts : languages())
        names += namesOf(texts.apps, &LocalApp::name);
    EXPECT_EQ(names.removeDuplicates(), 0);
}

TEST(DataFiles, LeaveAPlaceForTheBrandInEveryNameOfATheme)
{
    for (const Theme &theme : themes())
        for (const QString &name : theme.names)
            EXPECT_EQ(name.count(u"{}"), 1) << name.toStdString();
}

TEST(DataFiles, NameDrawingsThatComeOutWhite)
{
    for (const Theme &theme : themes())
        for (int number = 0; number < theme.glyphs.size(); ++number) {
            SampleApp app;
            app.theme = &theme;
            app.trackId = number;
            app.hue = static_cast<int>(hues().size()) - 1;
            const QImage icon = QImage::fromData(iconPng(app, 100), "PNG");
            std::map<bool, int> pixels;
            for (int y = 0; y < 100; ++y)
                for (int x = 0; x < 100; ++x) {
                    const QRgb pixel = icon.pixel(x, y);
                    EXPECT_GE(qGray(pixel), qGray(hues().back().bottom) - 1);
                    ++pixels[pixel == 0xFFFFFFFF];
                }
            EXPECT_GT(pixels[true], 400) << theme.glyphs[number].toStdString();
            EXPECT_GT(pixels[false], 6'000) << theme.glyphs[number].toStdString();
        }
}

TEST(DataFile, SaysWhereItIsNotJson)
{
    const auto read = [](const DataObject &) {
    };
    EXPECT_EQ(complaintAbout("{\"names\":", read),
              "themes/photo.json: unterminated object at byte 9");
    EXPECT_EQ(complaintAbout("[]", read), "themes/photo.json: holds no object");
    EXPECT_THROW(DataObject::ofFile(u"themes/none.json"_qs), std::runtime_error);
}

TEST(DataFile, SaysWhichKeyIsWrongAndHow)
{
    const auto text = [](const DataObject &data) {
        (void)data.text(u"name");
    };
    EXPECT_EQ(complaintAbout(R"({"name":"a"})", text), "");
    EXPECT_EQ(complaintAbout("{}", text), "themes/photo.json: name is missing");
    EXPECT_EQ(complaintAbout(R"({"name":1})", text), "themes/photo.json: name is no text");
    EXPECT_EQ(complaintAbout(R"({"name":""})", text), "themes/photo.json: name is empty");
    EXPECT_EQ(
        complaintAbout(R"({"share":"1"})", [](const auto &data) { (void)data.number(u"share"); }),
        "themes/photo.json: share is no number");
    EXPECT_EQ(
        complaintAbout(R"({"whole":1})", [](const auto &data) { (void)data.truth(u"whole"); }),
        "themes/photo.json: whole is neither true nor false");
    const auto theme = [](const DataObject &data) {
        data.oneOf(u"theme", themes(), &Theme::name);
    };
    EXPECT_EQ(complaintAbout(R"({"theme":"photo"})", theme), "");
    EXPECT_EQ(complaintAbout(R"({"theme":"phto"})", theme),
              "themes/photo.json: theme names nothing known: phto");
}

TEST(DataFile, SaysWhichListIsWrongAndHow)
{
    const auto texts = [](const DataObject &data) {
        (void)data.texts(u"names");
    };
    EXPECT_EQ(complaintAbout(R"({"names":["a","b"]})", texts), "");
    EXPECT_EQ(complaintAbout(R"({"names":"a"})", texts), "themes/photo.json: names is no list");
    EXPECT_EQ(complaintAbout(R"({"names":[]})", texts), "themes/photo.json: names is empty");
    EXPECT_EQ(complaintAbout(R"({"names":["a",1]})", texts),
              "themes/photo.json: names holds something that is no text, or an empty one");
    EXPECT_EQ(complaintAbout(R"({"names":["a","b","a"]})", texts),
              "themes/photo.json: names holds a text twice: a");
    const auto lists = [](const DataObject &data) {
        (void)data.lists(u"topics");
    };
    EXPECT_EQ(complaintAbout(R"({"topics":[["a"],["a"]]})", lists), "");
    EXPECT_EQ(complaintAbout(R"({"topics":[["a"],"b"]})", lists),
              "themes/photo.json: topics holds an empty list");
    const auto apps = [](const DataObject &data) {
        for (const DataObject &app : data.objects(u"apps"))
            (void)app.object(u"publisher").text(u"name");
    };
    EXPECT_EQ(complaintAbout(R"({"apps":[{"publisher":{"name":"a"}},{"publisher":{}}]})", apps),
              "themes/photo.json: apps[1].publisher.name is missing");
    EXPECT_EQ(complaintAbout(R"({"apps":[1]})", apps),
              "themes/photo.json: apps holds something that is no object");
}

} // namespace
} // namespace veltrix::sample
