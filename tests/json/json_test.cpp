// SPDX-License-Identifier: GPL-3.0-or-later
// JSON texts at the edges: numbers, strings, broken and hostile input.
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "json/string_pool.h"
#include "model/app_profile.h"
#include "model/itunes_app_result.h"
#include "support/generators.h"
#include "support/json_printers.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace veltrix
{

/// One field of each scalar kind.
struct Scalars {
    std::int64_t whole = 0;
    double number = 0;
    bool flag = false;
    QString text;
    bool operator==(const Scalars &) const = default;
};

template <>
inline constexpr auto fieldsOf<Scalars> = std::tuple{
    field("whole", &Scalars::whole),
    field("number", &Scalars::number),
    field("flag", &Scalars::flag),
    field("text", &Scalars::text),
};

namespace
{

Scalars read(const QByteArray &whole, const QByteArray &number = "0",
             const QByteArray &text = "\"\"")
{
    return fromJson<Scalars>(R"({"whole":)" + whole + R"(,"number":)" + number +
                             R"(,"flag":true,"text":)" + text + "}");
}

QString written(double value)
{
    return QString::fromUtf8(toJson(value));
}

TEST(JsonNumbers, WholeNumbersAreRead)
{
    EXPECT_EQ(read("5.0").whole, 5);
    EXPECT_EQ(read("5e0").whole, 5);
    EXPECT_EQ(read("-0").whole, 0);
    EXPECT_EQ(read("9223372036854775807").whole, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(read("-9223372036854775808").whole, std::numeric_limits<std::int64_t>::min());
}

TEST(JsonNumbers, FractionsAndNumbersBeyond64BitsAreNoWholeNumbers)
{
    for (const char *text : {"1.5", "9223372036854775808", "-9223372036854775809",
                             "18446744073709551615", "1e300", "\"5\"", "true", "null", "[5]"})
        EXPECT_THROW(read(text), DecodingError) << text;
}

TEST(JsonNumbers, AreWrittenInTheShortestFormThatReadsBack)
{
    EXPECT_EQ(written(5), QStringLiteral("5"));
    EXPECT_EQ(written(0.1), QStringLiteral("0.1"));
    EXPECT_EQ(written(4.62802000000000024471091819577850401401519775390625),
              QStringLiteral("4.62802"));
    EXPECT_EQ(written(757382400.125), QStringLiteral("757382400.125"));
    EXPECT_TRUE(std::signbit(read("0", written(-0.0).toUtf8()).number));
}

TEST(JsonNumbers, AnyFiniteNumberReadsBackBitForBit)
{
    EXPECT_TRUE(rc::check("read(write(x)) has the bits of x", [](std::uint64_t bits) {
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        RC_PRE(std::isfinite(value));
        const double back = read("0", toJson(value)).number;
        RC_ASSERT(std::memcmp(&back, &value, sizeof value) == 0);
    }));
}

TEST(JsonNumbers, NumbersThatAreNotFiniteCannotBeWritten)
{
    for (const double value :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()})
        EXPECT_THROW(toJson(value), EncodingError);
}

TEST(JsonStrings, ControlCharactersQuotesAndOtherPlanesSurvive)
{
    const QString text =
        QString::fromUtf8("\"\\/\b\f\n\r\t\x01\x1f\x7f é 日本 ไทย 🎞️ \u2028") +
        QChar(0) + QStringLiteral("end");
    EXPECT_EQ(read("0", "0", toJson(text)).text, text);
}

TEST(JsonStrings, ATextThatBeginsWithAByteOrderMarkComesBackAsItWas)
{
    const QString mark(QChar(0xFEFF));
    for (const QString &rest : {QString(), QStringLiteral("a"), QStringLiteral("photo é"), mark,
                                mark + QStringLiteral("日本"), QString(2000, u'x')}) {
        const QString text = mark + rest;
        EXPECT_EQ(read("0", "0", toJson(text)).text, text) << rest.toStdString();
        const QList<QString> twice{text, rest, text};
        EXPECT_EQ(fromJson<QList<QString>>(toJson(twice)), twice);
        const FactorMap map{{text, 1}, {QStringLiteral("x"), 2}};
        EXPECT_TRUE(fromJson<FactorMap>(toJson(map)) == map) << rest.toStdString();
    }
}

TEST(JsonStrings, HalfACharacterIsWrittenAsTheReplacementCharacter)
{
    EXPECT_EQ(toJson(QString(QChar(0xD800))), "\"\xEF\xBF\xBD\"");
    EXPECT_EQ(toJson(QString(QChar(0xDC00)) + QStringLiteral("a")), "\"\xEF\xBF\xBD"
                                                                    "a\"");
}

TEST(JsonStrings, ASpecialCharacterAtAnyPlaceOfAnyLengthSurvives)
{
    for (int length = 0; length < 40; ++length) {
        const QString plain =
            QStringLiteral("abcdefghijklmnopqrstuvwxyz0123456789ABCD").left(length);
        ASSERT_EQ(toJson(plain), "\"" + plain.toLatin1() + "\"");
        for (int place = 0; place < length; ++place) {
            for (const char16_t special : {u'"', u'\\', u'\n', u'\x7f', u'é', u'日'}) {
                QString text = plain;
                text[place] = special;
                ASSERT_EQ(read("0", "0", toJson(text)).text, text) << length << ' ' << place;
            }
        }
    }
}

TEST(JsonStrings, AFieldThatRepeatsItsTextIsReadAsItStands)
{
    // The bytes of "é" are those of "Ã©" in Latin-1, which must not make them equal.
    const QList<QString> texts{QStringLiteral("same"),
                               QStringLiteral("same"),
                               QStringLiteral("sane"),
                               QStringLiteral("Ã©"),
                               QStringLiteral("é"),
                               QStringLiteral("Ã©"),
                               QStringLiteral("a\"b"),
                               QStringLiteral("a\"b"),
                               QString(),
                               QString(),
                               QStringLiteral("same"),
                               QString(2000, u'x'),
                               QString(2000, u'x'),
                               QString(2000, u'y')};
    QList<Scalars> records;
    for (const QString &text : texts)
        records.append({1, 2, true, text});
    const auto back = fromJson<QList<Scalars>>(toJson(records));
    EXPECT_EQ(back, records);
    EXPECT_EQ(back[0].text.constData(), back[1].text.constData());
}

TEST(JsonStrings, AnotherParserReadsTheSameTexts)
{
    EXPECT_TRUE(rc::check("an independent parser reads what is written", [](const QString &text) {
        // In front of a U+FEFF, which the other parser would take away from the start.
        const QString whole = u'>' + text;
        const auto document = QJsonDocument::fromJson("{\"text\":" + toJson(whole) + "}");
        RC_ASSERT(document.object().value(QStringLiteral("text")).toString() == whole);
    }));
}

TEST(BrokenJson, IsAnErrorNeverAValue)
{
    const QByteArray good =
        R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","trackId":1,"appName":"é","platform":"p",)"
        R"("country":"US","iconURL":"https://icons.example/1.png"})";
    EXPECT_NO_THROW(fromJson<AppProfile>(good));
    for (qsizetype length = 0; length < good.size(); ++length)
        EXPECT_THROW(fromJson<AppProfile>(good.left(length)), DecodingError) << length;
    EXPECT_THROW(fromJson<AppProfile>(good + "x"), DecodingError);
    EXPECT_THROW(fromJson<AppProfile>(good + good), DecodingError);
    EXPECT_THROW(fromJson<AppProfile>("[" + good + "]"), DecodingError);
    EXPECT_THROW(fromJson<AppProfile>(QByteArray(100, '\0')), DecodingError);
    EXPECT_THROW(fromJson<AppProfile>("\xff\xfe{}"), DecodingError);
    EXPECT_THROW(fromJson<AppProfile>("null"), DecodingError);
    EXPECT_THROW(fromJson<AppProfile>("\"text\""), DecodingError);
}

TEST(BrokenJson, AnEmptyUrlIsAnError)
{
    EXPECT_THROW(fromJson<QList<Url>>(R"(["https://icons.example/1.png",""])"), DecodingError);
}

TEST(BrokenJson, DeepNestingIsSkippedOrRefusedButNeverOverflowsTheStack)
{
    const QByteArray deep = QByteArray(100'000, '[') + QByteArray(100'000, ']');
    EXPECT_THROW(fromJson<AppProfile>(deep), DecodingError);
    EXPECT_THROW(fromJson<AppProfile>(R"({"unknown":)" + deep + "}"), DecodingError);
}

/// The body of an answer with results that hold nothing.
QByteArray emptyResults(qsizetype count)
{
    return R"({"resultCount":1,"results":[)" + QByteArray("{},").repeated(count) + "{}]}";
}

TEST(ListLimits, TheFirstElementsAreReadAndTheOthersPassedOver)
{
    const QByteArray body =
        R"({"results":[{"trackId":1,"screenshotUrls":["a","b","c"]},{"trackId":2},{"trackId":3}],)"
        R"("resultCount":3})";
    const auto two = fromJson<ITunesSearchResponse>(body, ListLimit{2});
    ASSERT_EQ(two.results.size(), 2);
    EXPECT_EQ(two.results[1].trackId, 2);
    EXPECT_EQ(two.results[0].screenshotUrls, (QStringList{"a", "b"}));
    EXPECT_EQ(two.resultCount, 3);
    EXPECT_EQ(fromJson<ITunesSearchResponse>(body, ListLimit{3}),
              fromJson<ITunesSearchResponse>(body));
}

TEST(ListLimits, AMillionEmptyResultsCostNoMoreThanTheOnesThatAreRead)
{
    const QByteArray body = emptyResults(999'999);
    // The parser's index is some multiple of the text that it is given.
    EXPECT_LT(JsonText(body, ListLimit{200}).padded().size(), 1000U);
    EXPECT_EQ(fromJson<ITunesSearchResponse>(body, ListLimit{200}).results.size(), 200);
    const QByteArray texts = R"({"resultCount":1,"results":[{"screenshotUrls":[)" +
                             QByteArray("\"\",").repeated(999'999) + R"(""]}]})";
    EXPECT_LT(JsonText(texts, ListLimit{200}).padded().size(), 1000U);
    EXPECT_EQ(
        fromJson<ITunesSearchResponse>(texts, ListLimit{200}).results[0].screenshotUrls->size(),
        200);
}

TEST(ListLimits, ATextOfMarksIsReadAsIfItWereShort)
{
    // In and around lists that are full: lists in lists, objects, texts with marks in them.
    const QByteArray record =
        R"({"trackId":7,"x":[[1,2,3],[],{"a":[]}],"trackName":"[{\"],","screenshotUrls":["a",""]},)";
    const QByteArray body = R"( {"results" : [)" + record.repeated(3) +
                            QByteArray("{} , [], ").repeated(20'000) +
                            R"({}] , "resultCount":-1.0e0, "b":[true,false,null,[]]} )";
    EXPECT_EQ(fromJson<ITunesSearchResponse>(body, ListLimit{4}).results,
              fromJson<ITunesSearchResponse>(R"({"resultCount":-1,"results":[)" +
                                             record.repeated(3) + "{}]}")
                  .results);
}

TEST(ListLimits, ATextOfMarksIsRefusedWhereItIsNotJsonToo)
{
    const QByteArray good = emptyResults(25'000);
    EXPECT_NO_THROW(fromJson<ITunesSearchResponse>(good, ListLimit{2}));
    const qsizetype end = good.size() - 2;
    for (const char *wrong : {",",
                              ",]",
                              ",{",
                              "}",
                              ",[}",
                              ",{]",
                              ",{\"a\"}",
                              ",{\"a\":}",
                              ",{1:2}",
                              ",{,}",
                              ",tru",
                              ",01",
                              ",1.",
                              ",.5",
                              ",-",
                              ",1e",
                              ",+1",
                              ",\"\\q\"",
                              ",\"\\u12G4\"",
                              ",\"\\ude00\"",
                              ",\"\\ud83dx\"",
                              ",\"\\ud83d\\u0041\"",
                              ",\"\\u-123\"",
                              ",\"\n\"",
                              ",\"",
                              ",\"\\\"",
                              ",\"\xff\"",
                              ",{}{}",
                              ",1 2",
                              ",nul",
                              ",'a'",
                              ",{\"a\" 1}",
                              ",{\"a\":1,}"}) {
        EXPECT_THROW(
            fromJson<ITunesSearchResponse>(QByteArray(good).insert(end, wrong), ListLimit{2}),
            DecodingError)
            << wrong;
    }
    for (const qsizetype length : {qsizetype(70'000), good.size() - 1, good.size() - 2})
        EXPECT_THROW(fromJson<ITunesSearchResponse>(good.left(length), ListLimit{2}),
                     DecodingError);
    EXPECT_THROW(fromJson<ITunesSearchResponse>(good + "}", ListLimit{2}), DecodingError);
    EXPECT_THROW(fromJson<ITunesSearchResponse>(QByteArray(100'000, '['), ListLimit{2}),
                 DecodingError);
}

TEST(BrokenJson, AnErrorInAListNamesTheElement)
{
    try {
        fromJson<QList<AppProfile>>("[1]");
        FAIL() << "no error";
    } catch (const DecodingError &error) {
        EXPECT_EQ(error.description(),
                  QStringLiteral("The data couldn’t be read: at “[0]” an object was expected."));
    }
}

TEST(StringPool, EqualTextsShareTheirMemory)
{
    StringPool pool;
    const QString one = pool.share("a text");
    const QString two = pool.share("a text");
    EXPECT_EQ(one.constData(), two.constData());
    EXPECT_NE(pool.share("another").constData(), one.constData());
}

TEST(StringPool, ManyTextsComeBackAsTheyWere)
{
    StringPool pool;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 20'000; ++i)
            ASSERT_EQ(pool.share(std::to_string(i)), QString::number(i));
    }
    const std::string longText(StringPool::longestShared + 1, 'x');
    EXPECT_EQ(pool.share(longText), QString::fromStdString(longText));
    EXPECT_EQ(pool.share(""), QString());
}

TEST(StringLists, EqualListsShareTheirMemory)
{
    const auto lists = fromJson<QList<QStringList>>(R"([["a","b"],["a","b"],["a","c"]])");
    EXPECT_EQ(lists[0].constData(), lists[1].constData());
    EXPECT_EQ(lists[2], (QStringList{QStringLiteral("a"), QStringLiteral("c")}));
    EXPECT_THROW(fromJson<QList<QStringList>>(R"([["a",1]])"), DecodingError);
}

} // namespace
} // namespace veltrix
