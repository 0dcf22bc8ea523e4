// SPDX-License-Identifier: GPL-3.0-or-later
// Reads data/languages.
#include "sample/texts.h"

#include "sample/data_file.h"

namespace veltrix::sample
{

namespace
{

QStringList names()
{
    return {u"english"_qs,  u"german"_qs, u"french"_qs, u"spanish"_qs, u"portuguese"_qs,
            u"japanese"_qs, u"korean"_qs, u"thai"_qs,   u"arabic"_qs,  u"russian"_qs};
}

/// In English the apps are made for the world, from the themes themselves.
void takeThemes(LanguageTexts &texts)
{
    for (const Theme &theme : themes()) {
        LocalTheme &own = texts.themes.emplace_back();
        for (const QStringList &topic : theme.topics)
            own.phrases += topic;
    }
}

void readThemesAndApps(LanguageTexts &texts, const DataObject &data)
{
    for (const Theme &theme : themes()) {
        const DataObject local = data.object(u"themes").object(theme.name);
        texts.themes.push_back({local.texts(u"namings"), local.texts(u"phrases")});
    }
    for (const DataObject &app : data.objects(u"apps"))
        texts.apps.push_back({&app.oneOf(u"theme", themes(), &Theme::name), app.text(u"name")});
    texts.publishers = data.texts(u"publishers");
}

LanguageTexts readLanguage(const QString &name, Language language)
{
    const auto data = DataObject::ofFile(QStringLiteral("languages/%1.json").arg(name));
    LanguageTexts texts{.name = name,
                        .language = language,
                        .code = data.text(u"code"),
                        .homeCountry = data.text(u"homeCountry"),
                        .free = data.text(u"free"),
                        .genres = {},
                        .stopWords = data.texts(u"stopWords"),
                        .sentences = data.texts(u"sentences"),
                        .themes = {},
                        .apps = {},
                        .publishers = {}};
    for (const Genre &genre : genres())
        texts.genres.insert(genre.name, data.object(u"genres").text(genre.name));
    if (language == Language::English)
        takeThemes(texts);
    else
        readThemesAndApps(texts, data);
    return texts;
}

std::vector<LanguageTexts> readLanguages()
{
    std::vector<LanguageTexts> languages;
    for (const QString &name : names())
        languages.push_back(readLanguage(name, static_cast<Language>(languages.size())));
    return languages;
}

} // namespace

const std::vector<LanguageTexts> &languages()
{
    static const std::vector<LanguageTexts> all = readLanguages();
    return all;
}

const LanguageTexts &textsOf(Language language)
{
    return languages()[static_cast<std::size_t>(language)];
}

} // namespace veltrix::sample
