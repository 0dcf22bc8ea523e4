// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/version_order.h"

#include "support/generators.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

/// '<', '=' or '>'.
char order(const QString &one, const QString &other)
{
    const std::weak_ordering result = compareVersions(one, other);
    return result < 0 ? '<' : result > 0 ? '>' : '=';
}

TEST(VersionOrder, EachVersionOfThisListIsNewerThanThoseBeforeIt)
{
    const QStringList versions =
        QStringLiteral("0 0.0.1 0.9 1.0a 1.0b1 1.0b2 1.0b10 1.0rc1 1.0 1.0.1 "
                       "1.2 1.9 1.10 2 2.0.1 9 10 99.0.0 2026.11.21 "
                       "18446744073709551616 18446744073709551617")
            .split(u' ');
    for (int i = 0; i < versions.size(); ++i) {
        for (int j = 0; j < versions.size(); ++j) {
            EXPECT_EQ(order(versions[i], versions[j]), i < j   ? '<'
                                                       : i > j ? '>'
                                                               : '=')
                << versions[i].toStdString() << " and " << versions[j].toStdString();
        }
    }
}

TEST(VersionOrder, ZerosAndSeparatorsThatSayNothingDoNotCount)
{
    const QString version = QStringLiteral("1.2");
    for (const char *same : {"1.2", "1.2.0", "1.2.0.0", "01.002", "1-2", "1_2", "1.2."})
        EXPECT_EQ(order(version, QString::fromUtf8(same)), '=') << same;
    EXPECT_EQ(order(QStringLiteral("1.0RC1"), QStringLiteral("1.0rc1")), '=');
}

TEST(VersionOrder, OnlyPlainTextsThatBeginWithADigitAreVersions)
{
    for (const char *good : {"1", "0.1.0", "1.0b1", "2:1.0~rc1+dfsg-1"})
        EXPECT_TRUE(isMachineVersion(QString::fromUtf8(good))) << good;
    for (const char *bad : {"", "v1", ".1", "-1", "1.0 beta", "1/2", "1\n", "１.0", "1é"})
        EXPECT_FALSE(isMachineVersion(QString::fromUtf8(bad))) << bad;
    EXPECT_TRUE(isMachineVersion(QString(64, u'1')));
    EXPECT_FALSE(isMachineVersion(QString(65, u'1')));
}

TEST(VersionOrder, LeadingNumbersLeaveTheBuildOut)
{
    EXPECT_EQ(leadingNumbers(u"6.1.0-18-amd64"), u"6.1.0");
    EXPECT_EQ(leadingNumbers(u"6.1.0"), u"6.1.0");
    EXPECT_EQ(leadingNumbers(u"5.15.167.4-microsoft"), u"5.15.167.4");
    EXPECT_EQ(leadingNumbers(u"6.1.-x"), u"6.1");
    EXPECT_EQ(leadingNumbers(u"unknown"), u"");
}

/// Versions with few different parts, so that equal ones turn up.
rc::Gen<QString> versions()
{
    const auto part = rc::gen::element<std::string>("0", "1", "2", "02", "10", ".", ".", ".", "-",
                                                    "a", "B", "rc");
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(part), [](const auto &parts) {
        std::string text;
        for (const std::string &each : parts)
            text += each;
        return QString::fromStdString(text);
    });
}

RC_GTEST_PROP(VersionOrderProperty, OrderIsTheSameFromBothSides, ())
{
    const QString a = *versions();
    const QString b = *versions();
    RC_ASSERT((order(a, b) == '<') == (order(b, a) == '>'));
    RC_ASSERT((order(a, b) == '=') == (order(b, a) == '='));
    RC_ASSERT(order(a, a) == '=');
}

RC_GTEST_PROP(VersionOrderProperty, OrderIsTransitive, ())
{
    std::vector<QString> three{*versions(), *versions(), *versions()};
    std::sort(three.begin(), three.end(),
              [](const QString &a, const QString &b) { return compareVersions(a, b) < 0; });
    RC_ASSERT(order(three[0], three[1]) != '>');
    RC_ASSERT(order(three[1], three[2]) != '>');
    RC_ASSERT(order(three[0], three[2]) != '>');
}

RC_GTEST_PROP(VersionOrderProperty, NumbersCompareByValue, ())
{
    const auto a = *rc::gen::arbitrary<std::uint64_t>();
    const auto b = *rc::gen::arbitrary<std::uint64_t>();
    const QString prefix = QStringLiteral("3.");
    RC_ASSERT(order(prefix + QString::number(a), prefix + QString::number(b)) == (a < b   ? '<'
                                                                                  : a > b ? '>'
                                                                                          : '='));
}

} // namespace
} // namespace veltrix
