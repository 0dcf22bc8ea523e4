// SPDX-License-Identifier: GPL-3.0-or-later
// What the store suggests while somebody types.
#include "sample/hints_body.h"
#include "sample/text_folding.h"
#include "services_fixture.h"

#include <QXmlStreamReader>

#include <gmock/gmock.h>

namespace veltrix::sample
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

const HintIndex &testIndex()
{
    static const HintIndex index(testCatalog());
    return index;
}

QStringList termsFor(const char *prefix, Language language = Language::English)
{
    QStringList terms;
    for (const Hint &hint : testIndex().hintsFor(QString::fromUtf8(prefix), language))
        terms += hint.term;
    return terms;
}

/// Whether a text is well-formed XML.
bool isXml(const std::string &text)
{
    QXmlStreamReader xml(QByteArray::fromStdString(text));
    while (!xml.atEnd())
        xml.readNext();
    return !xml.hasError();
}

TEST(HintIndex, SuggestsTermsThatBeginWithThePrefixBestFirst)
{
    const QStringList terms = termsFor("pho");
    ASSERT_EQ(terms.size(), 10);
    EXPECT_EQ(terms.first(), u"photo editor");
    const auto hints = testIndex().hintsFor(u"pho"_qs, Language::English);
    EXPECT_TRUE(std::ranges::is_sorted(hints, std::ranges::greater(), &Hint::weight));
}

TEST(HintIndex, SuggestsTermsInWhichAnotherWordBeginsWithThePrefix)
{
    const QStringList terms = termsFor("camera");
    EXPECT_THAT(terms, Contains(testing::Truly([](const QString &term) {
                    return !term.startsWith(QLatin1String("camera"));
                })));
    for (const QString &term : terms)
        EXPECT_THAT(foldedWords(term), Contains(testing::Truly([](const QString &word) {
                        return word.startsWith(QLatin1String("camera"));
                    })))
            << term.toStdString();
}

TEST(HintIndex, IgnoresCaseAndAccents)
{
    EXPECT_EQ(termsFor("MÉDIT", Language::French), termsFor("medit", Language::French));
    EXPECT_THAT(termsFor("medit", Language::French), Contains(u"méditation"_qs));
}

TEST(HintIndex, SuggestsInTheLanguageAskedFor)
{
    EXPECT_THAT(termsFor("haus", Language::German), Contains(u"haushaltsbuch"_qs));
    EXPECT_THAT(termsFor("写真", Language::Japanese), Contains(u"写真加工"_qs));
    EXPECT_THAT(termsFor("แต่ง", Language::Thai), Contains(u"แต่งรูป"_qs));
    EXPECT_THAT(termsFor("фото", Language::Russian), Contains(u"фоторедактор"_qs));
    EXPECT_THAT(termsFor("مذك", Language::Arabic), Contains(u"مذكرات"_qs));
}

TEST(HintIndex, SuggestsWellKnownAppsByName)
{
    EXPECT_THAT(termsFor("foxglove"), ElementsAre(u"foxglove film camera"_qs));
}

TEST(HintIndex, SuggestsNothingForUnknownOrEmptyPrefixes)
{
    EXPECT_THAT(termsFor("xyzzy"), testing::IsEmpty());
    EXPECT_THAT(termsFor(""), testing::IsEmpty());
    EXPECT_THAT(termsFor("  !"), testing::IsEmpty());
}

TEST(HintsBody, HasTheNewerForm)
{
    EXPECT_THAT(hintsBody({{u"a & b"_qs, 2.5}}, HintsForm::Newer).toStdString(),
                HasSubstr("<dict><key>displayTerm</key><string>a &amp; b</string>"
                          "<key>term</key><string>a &amp; b</string></dict>"));
}

TEST(HintsBody, HasTheOlderForm)
{
    EXPECT_THAT(hintsBody({{u"写真"_qs, 2.5}}, HintsForm::Older).toStdString(),
                HasSubstr("<dict><key>term</key><string>写真</string>"
                          "<key>priority</key><integer>250</integer><key>url</key><string>"
                          "https://search.example/search?media=software&amp;src=hint&amp;term="
                          "%E5%86%99%E7%9C%9F</string></dict>"));
}

TEST(HintsBody, IsAPropertyListWithADocumentType)
{
    for (const HintsForm form : {HintsForm::Newer, HintsForm::Older}) {
        const std::string body = hintsBody({{u"<a>"_qs, 1}, {u"b"_qs, 1}}, form).toStdString();
        EXPECT_TRUE(isXml(body));
        EXPECT_THAT(body, HasSubstr("<!DOCTYPE plist PUBLIC"));
    }
    EXPECT_TRUE(isXml(hintsBody({}, HintsForm::Newer).toStdString()));
    EXPECT_THAT(hintsBody({}, HintsForm::Newer).toStdString(),
                HasSubstr("<key>hints</key><array/></dict></plist>"));
}

class HintsServiceTest : public ServicesTest
{
protected:
    static httplib::Response ask(const std::string &query, const char *storefront = "143441-1,29")
    {
        httplib::Headers headers;
        if (storefront)
            headers.emplace("X-Apple-Store-Front", storefront);
        auto client = httpClient();
        const auto result = client.Get(std::string(hintsPath) + "?" + query, headers);
        if (!result) {
            ADD_FAILURE() << "no answer: " << httplib::to_string(result.error());
            return {};
        }
        return *result;
    }
};

TEST_F(HintsServiceTest, AnswersForTheStorefrontOfTheHeader)
{
    const auto us = ask("clientApplication=Software&term=pho");
    EXPECT_EQ(us.status, 200);
    EXPECT_THAT(us.body, HasSubstr("<string>photo editor</string>"));
    const auto de = ask("clientApplication=Software&term=haus", "143443-4,29");
    EXPECT_THAT(de.body, HasSubstr("<string>haushaltsbuch</string>"));
}

TEST_F(HintsServiceTest, IsEmptyWithoutAKnownStorefront)
{
    for (const char *header : {static_cast<const char *>(nullptr), "", "1-1,29", "US"}) {
        const auto answer = ask("clientApplication=Software&term=pho", header);
        EXPECT_EQ(answer.status, 200);
        EXPECT_THAT(answer.body, HasSubstr("<array/>"));
    }
    EXPECT_THAT(ask("term=pho").body, HasSubstr("<array/>"));
}

TEST_F(HintsServiceTest, UsesBothForms)
{
    int newer = 0;
    int older = 0;
    for (const char *prefix : {"ph",  "pho", "phot", "bu", "bud", "me", "med", "ca", "cal", "re",
                               "rec", "ru",  "run",  "ve", "vpn", "we", "wea", "no", "not", "so"}) {
        const std::string body = ask(std::string("clientApplication=Software&term=") + prefix).body;
        newer += body.find("displayTerm") != std::string::npos ? 1 : 0;
        older += body.find("priority") != std::string::npos ? 1 : 0;
    }
    EXPECT_EQ(newer + older, 20);
    EXPECT_GT(older, 1);
    EXPECT_GT(newer, older);
}

TEST_F(HintsServiceTest, RefusesByCommand)
{
    EXPECT_EQ(ask("clientApplication=Software&term=sample:throttled").status, 403);
    EXPECT_EQ(ask("clientApplication=Software&term=sample:limited").status, 429);
    EXPECT_EQ(ask("clientApplication=Software&term=sample:unavailable").status, 503);
    EXPECT_EQ(ask("clientApplication=Software&term=sample:error").status, 500);
    EXPECT_THAT(ask("clientApplication=Software&term=sample:garbage").body,
                HasSubstr("<!DOCTYPE html>"));
}

} // namespace
} // namespace veltrix::sample
