// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/atomic_file.h"
#include "support/json_printers.h"
#include "ui_kit/text/csv.h"
#include "ui_kit/text/date_texts.h"
#include "ui_kit/text/figures.h"
#include "ui_kit/text/relative_time.h"
#include "ui_kit/text/release_notes.h"
#include "ui_kit/text/storefronts.h"

#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const QLocale english(QLocale::English, QLocale::UnitedStates);
const QLocale german(QLocale::German, QLocale::Germany);

QString phrase(double secondsAgo, const QLocale &locale = english)
{
    const Date now = dateFromUnixSeconds(1'795'262'400);
    return RelativeTime(locale).sinceUpdate(now - Seconds(secondsAgo), now);
}

TEST(Storefronts, AreTheFortySevenInTheirFixedOrder)
{
    EXPECT_EQ(storefrontCodes().size(), 47);
    EXPECT_EQ(storefrontCodes().join(u' '),
              QStringLiteral("US GB CA AU DE FR IT ES NL SE NO DK FI IE CH AT BE PT PL CZ HU RO GR "
                             "TR BR MX AR CL CO PE JP KR CN HK TW SG MY TH PH VN ID IN AE SA IL ZA "
                             "NZ"));
}

TEST(Storefronts, AreNamedInTheUsersLanguage)
{
    EXPECT_EQ(storefrontName(QStringLiteral("DE"), english), QStringLiteral("Germany"));
    EXPECT_EQ(storefrontName(QStringLiteral("DE"), german), QStringLiteral("Deutschland"));
    EXPECT_EQ(storefrontName(QStringLiteral("us"), english), QStringLiteral("United States"));
    EXPECT_EQ(storefrontName(QStringLiteral("JP"), QLocale(QLocale::Japanese)),
              QStringLiteral("日本"));
}

TEST(Storefronts, AreFoundByCodeAndByNameInEnglishAndInTheUsersLanguage)
{
    const auto named = [](const char *text) {
        return storefrontNamed(QString::fromUtf8(text), german).value_or(QString());
    };
    for (const char *text :
         {"DE", "de", " De ", "Germany", "GERMANY", "Deutschland", "deutschland"})
        EXPECT_EQ(named(text), QStringLiteral("DE")) << text;
    EXPECT_EQ(named("Österreich"), QStringLiteral("AT"));
    EXPECT_EQ(named("United  Kingdom"), QStringLiteral("GB"));
    EXPECT_EQ(named("Hong Kong"), QStringLiteral("HK"));
    EXPECT_EQ(named("Türkei"), QStringLiteral("TR"));
    for (const char *text : {"", "UK", "Europe", "Deutsch", "usa", "Afghanistan"})
        EXPECT_EQ(named(text), QString()) << text;
    for (const QString &code : storefrontCodes())
        EXPECT_EQ(storefrontNamed(storefrontName(code, english), english), code);
}

TEST(Storefronts, AllHaveANameInEnglish)
{
    for (const QString &code : storefrontCodes())
        EXPECT_NE(storefrontName(code, english), code);
}

TEST(Storefronts, ACodeWithoutANameStandsForItself)
{
    EXPECT_EQ(storefrontName(QStringLiteral("QX"), english), QStringLiteral("QX"));
}

TEST(TimeSinceUpdate, IsJustNowBelowAMinuteInEitherDirection)
{
    EXPECT_EQ(phrase(0), QStringLiteral("just now"));
    EXPECT_EQ(phrase(59.9), QStringLiteral("just now"));
    EXPECT_EQ(phrase(-59.9), QStringLiteral("just now"));
}

TEST(TimeSinceUpdate, IsTheSystemsShortPhraseFromAMinuteOn)
{
    EXPECT_EQ(phrase(60), QStringLiteral("1 min. ago"));
    EXPECT_EQ(phrase(4 * 60 + 59), QStringLiteral("4 min. ago"));
    EXPECT_EQ(phrase(2 * 3600), QStringLiteral("2 hr. ago"));
    EXPECT_EQ(phrase(86'399), QStringLiteral("23 hr. ago"));
    EXPECT_EQ(phrase(86'400), QStringLiteral("1 day ago"));
    EXPECT_EQ(phrase(8 * 86'400), QStringLiteral("1 wk. ago"));
    EXPECT_EQ(phrase(70 * 86'400), QStringLiteral("2 mo. ago"));
    EXPECT_EQ(phrase(800 * 86'400.0), QStringLiteral("2 yr. ago"));
    EXPECT_EQ(phrase(-120), QStringLiteral("in 2 min."));
}

TEST(TimeSinceUpdate, IsInTheUsersLanguage)
{
    EXPECT_EQ(phrase(4 * 60, german), QStringLiteral("vor 4 Min."));
}

const QList<Date> &datesOfNoCalendar()
{
    static const QList<Date> dates{dateFromReferenceSeconds(1e300),
                                   dateFromReferenceSeconds(-1e300), dateFromReferenceSeconds(1e18),
                                   dateFromReferenceSeconds(-1e18)};
    return dates;
}

TEST(DateTexts, ADateOfNoCalendarIsShownAsMissing)
{
    const Date now = dateFromUnixSeconds(1'795'262'400);
    for (const Date date : datesOfNoCalendar()) {
        EXPECT_EQ(dateText(date, english), QStringLiteral("—"));
        EXPECT_EQ(dateTimeText(date, english), QStringLiteral("—"));
        EXPECT_EQ(RelativeTime(english).sinceUpdate(date, now), QStringLiteral("—"));
    }
}

bool hasOtherDigits(const QString &text)
{
    return text != withPlainDigits(text);
}

TEST(Digits, AreZeroToNineInEveryLanguage)
{
    const Date now = dateFromUnixSeconds(1'795'262'400);
    int changed = 0;
    for (const QLocale &locale : QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript,
                                                          QLocale::AnyTerritory)) {
        setUserLocale(locale);
        EXPECT_EQ(wordLocale(), locale);
        changed += locale == QLocale() ? 0 : 1;
        const QStringList texts{QStringLiteral("%L1").arg(1'234'567),
                                QLocale().toString(4.5, 'f', 1),
                                QLocale().formattedDataSize(1'234'567),
                                dateText(now),
                                dateTimeText(now),
                                RelativeTime().sinceUpdate(now - Seconds(720), now)};
        for (const QString &text : texts)
            EXPECT_FALSE(hasOtherDigits(text))
                << locale.name().toStdString() << ": " << text.toStdString();
    }
    EXPECT_GT(changed, 20);
    setUserLocale(english);
}

TEST(Digits, WordsStayInTheUsersLanguage)
{
    setUserLocale(QLocale(QLocale::Persian, QLocale::Iran));
    EXPECT_EQ(QStringLiteral("%L1").arg(1'234), QStringLiteral("1,234"));
    EXPECT_EQ(storefrontName(QStringLiteral("DE")), QStringLiteral("آلمان"));
    setUserLocale(german);
    EXPECT_EQ(QStringLiteral("%L1").arg(1'234), QStringLiteral("1.234"));
    setUserLocale(english);
}

TEST(Digits, OfEveryScriptBecomePlain)
{
    EXPECT_EQ(withPlainDigits(QStringLiteral("۱۲ ٣٤ १२ ๕ 𑄷 rank 7")),
              QStringLiteral("12 34 12 5 1 rank 7"));
}

TEST(ReleaseNotes, PlainTextStaysAsItIs)
{
    EXPECT_EQ(plainNotes(QStringLiteral("  Faster rankings.\r\n- fixes 1 < 2\n\n\n\nThanks!\n")),
              QStringLiteral("Faster rankings.\n- fixes 1 < 2\n\nThanks!"));
    EXPECT_EQ(plainNotes(QString()), QString());
}

TEST(ReleaseNotes, HtmlBecomesLinesAndListsKeepTheirMarks)
{
    EXPECT_EQ(plainNotes(QStringLiteral(
                  "<h2>What is new</h2><p>Much &amp; more<br>here</p><ul><li>Rankings <b>load</b> "
                  "faster.</li><li>Charts</li></ul><ol><li>one</li><li>two</li></ol>")),
              QStringLiteral("What is new\nMuch & more\nhere\n• Rankings load faster.\n• Charts\n"
                             "1. one\n2. two"));
}

TEST(ReleaseNotes, NothingIsLoadedRunOrHidden)
{
    const QTemporaryDir folder;
    const QString secret = folder.filePath(QStringLiteral("secret.txt"));
    writeFileAtomically(secret, "p { color: red } secret");
    const QString address = QUrl::fromLocalFile(secret).toString();
    const QString notes =
        plainNotes(QStringLiteral("<html><head><title>T</title><link rel=stylesheet href=\"%1\">"
                                  "<style>@import url(%1); p{}</style><script>alert(1)</script>"
                                  "</head><body><p>a<img src=\"%1\" alt=x>b\u202Ec</p>"
                                  "<iframe src=\"%1\"></iframe><object data=\"%1\"></object>"
                                  "<p><a href=\"javascript:x\">link</a></p></body></html>")
                       .arg(address));
    EXPECT_EQ(notes, QStringLiteral("abc\nlink"));
}

TEST(ReleaseNotes, HostileNotesAreShort)
{
    // What takes more than a line's time a piece does not come to an end within the test's time.
    for (const char *piece : {"<ul><li>", "<table><tr><td>", "<b>", "<div>", "<blockquote>",
                              "&amp;", "<p>x", "a", "\n\n", "<!--", "<a href='"}) {
        const QString notes = plainNotes(QStringLiteral("<p>start</p>") +
                                         QString::fromLatin1(piece).repeated(50'000));
        EXPECT_LE(notes.size(), 4001) << piece;
    }
    EXPECT_TRUE(plainNotes(QString(5000, u'x')).endsWith(QStringLiteral("x…")));
}

TEST(TabSeparatedText, KeepsCellsInTheirPlaces)
{
    EXPECT_EQ(toTabSeparated({{QStringLiteral("a\tb"), QStringLiteral("c")},
                              {QStringLiteral("d\ne\u2028f"), QString()}}),
              QStringLiteral("a b\tc\nd e f\t\n"));
}

} // namespace
} // namespace veltrix
