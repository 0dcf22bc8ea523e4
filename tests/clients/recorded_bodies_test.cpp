// SPDX-License-Identifier: GPL-3.0-or-later
// Bodies that the real service once sent, when the machine has some.
#include "clients/itunes_client.h"
#include "json/json_error.h"
#include "support/fake_http.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// What another parser makes of a body: the number of results, or nothing when it is no answer.
std::optional<qsizetype> resultsOf(const QByteArray &body)
{
    const QJsonObject object = QJsonDocument::fromJson(body).object();
    if (!object[QLatin1String("resultCount")].isDouble() ||
        !object[QLatin1String("results")].isArray())
        return std::nullopt;
    return object[QLatin1String("results")].toArray().size();
}

TEST(RecordedBodies, AnswersDecodeThroughTheClientAndOthersFail)
{
    const QString folder = qEnvironmentVariable("VELTRIX_RECORDED_BODIES");
    if (folder.isEmpty())
        GTEST_SKIP() << "VELTRIX_RECORDED_BODIES names no folder of recorded bodies";
    const QFileInfoList files = QDir(folder).entryInfoList({QStringLiteral("*.json")});
    ASSERT_FALSE(files.isEmpty());
    for (const QFileInfo &file : files) {
        SCOPED_TRACE(file.fileName().toStdString());
        const QByteArray recorded = contentOf(file.filePath());
        // The recording, and the same cut short, which is no answer.
        for (const QByteArray &sent : {recorded, recorded.first(recorded.trimmed().size() / 2)}) {
            const auto clock = std::make_shared<VirtualClock>();
            FakeHttp http(clock);
            http.answerWith(FakeHttp::response(200, sent));
            ITunesClient client({ITunesClient::defaultBaseURL(), http.sender(),
                                 std::make_shared<ITunesTrafficController>(clock)});
            const Outcome outcome(
                client.search(QStringLiteral("x"), QStringLiteral("US"), 200, {}));
            if (const std::optional<qsizetype> count = resultsOf(sent)) {
                ASSERT_TRUE(outcome.hasValue()) << outcome.failureText().toStdString();
                EXPECT_EQ(outcome.value().size(), *count);
            } else {
                EXPECT_TRUE(outcome.holds<DecodingError>());
            }
        }
    }
}

} // namespace
} // namespace veltrix
