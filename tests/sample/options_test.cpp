// SPDX-License-Identifier: GPL-3.0-or-later
// The command line.
#include "sample/options.h"

#include <gmock/gmock.h>

namespace veltrix::sample
{
namespace
{

std::variant<Options, Farewell> read(const QStringList &arguments)
{
    return readOptions(QStringList{QStringLiteral("veltrix-sample-services")} + arguments);
}

Options accepted(const QStringList &arguments)
{
    const auto result = read(arguments);
    EXPECT_TRUE(std::holds_alternative<Options>(result));
    return std::holds_alternative<Options>(result) ? std::get<Options>(result) : Options();
}

TEST(Options, HaveDefaults)
{
    const Options options = accepted({});
    EXPECT_EQ(options.port, 0);
    EXPECT_EQ(options.throttle, 0);
    EXPECT_FALSE(options.date.has_value());
    EXPECT_FALSE(options.dieWithParent);
    EXPECT_EQ(options.updateVersion, u"99.0.0");
    EXPECT_EQ(options.faults, 0);
    EXPECT_EQ(options.researchBehind, std::chrono::seconds(0));
}

TEST(Options, AreReadFromTheCommandLine)
{
    const Options options = accepted(
        {u"--port=8080"_qs, u"--https-port"_qs, u"8443"_qs, u"--date"_qs, u"2026-02-28"_qs,
         u"--throttle=20"_qs, u"--faults=2"_qs, u"--fault-seed=7"_qs, u"--research-behind=3600"_qs,
         u"--research-pending"_qs, u"--ready-file=r"_qs, u"--log=l"_qs, u"--certificate-file=c"_qs,
         u"--update-version=1.2"_qs, u"--die-with-parent"_qs,
         u"--update-seed=AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA="_qs});
    EXPECT_EQ(options.port, 8080);
    EXPECT_EQ(options.httpsPort, 8443);
    EXPECT_EQ(options.date, QDate(2026, 2, 28));
    EXPECT_EQ(options.throttle, 20);
    EXPECT_EQ(options.faults, 2);
    EXPECT_EQ(options.faultSeed, 7U);
    EXPECT_EQ(options.researchBehind, std::chrono::hours(1));
    EXPECT_TRUE(options.researchPending);
    EXPECT_EQ(options.readyFile, u"r");
    EXPECT_EQ(options.logFile, u"l");
    EXPECT_EQ(options.certificateFile, u"c");
    EXPECT_EQ(options.updateVersion, u"1.2");
    EXPECT_EQ(options.updateSeed, QByteArray(32, '\0'));
    EXPECT_TRUE(options.dieWithParent);
}

TEST(Options, RefuseWhatMakesNoSense)
{
    for (const QString &argument :
         {u"--port=x"_qs, u"--port=65536"_qs, u"--https-port=-1"_qs, u"--throttle=many"_qs,
          u"--date=2026-02-30"_qs, u"--date=today"_qs, u"--update-seed=AAAA"_qs,
          u"--nonsense"_qs}) {
        const auto result = read({argument});
        const auto *farewell = std::get_if<Farewell>(&result);
        ASSERT_NE(farewell, nullptr) << argument.toStdString();
        EXPECT_EQ(farewell->status, 2);
        EXPECT_FALSE(farewell->text.isEmpty());
    }
}

TEST(Options, ExplainThemselvesAndTheCommands)
{
    const auto result = read({u"--help"_qs});
    const auto *farewell = std::get_if<Farewell>(&result);
    ASSERT_NE(farewell, nullptr);
    EXPECT_EQ(farewell->status, 0);
    for (const char *text : {"--port", "--throttle", "sample:", "throttled", "garbage", "pending"})
        EXPECT_THAT(farewell->text.toStdString(), testing::HasSubstr(text));
}

} // namespace
} // namespace veltrix::sample
