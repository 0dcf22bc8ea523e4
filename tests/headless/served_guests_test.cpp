// SPDX-License-Identifier: GPL-3.0-or-later
// Two starts on one data folder: one has it and measures for the other.
#include "headless/served_guests.h"

#include "effects/atomic_file.h"
#include "effects/data_folder_lock.h"
#include "headless/export_tables.h"
#include "headless/measure_messages.h"
#include "headless/measure_text.h"
#include "headless/rank_telling.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "store/store_fixture.h"

#include <QCoreApplication>
#include <QLocalSocket>
#include <QPointer>

#include <atomic>
#include <memory>
#include <thread>

namespace veltrix
{
namespace
{

using namespace std::chrono_literals;

class Guests : public StoreTest
{
protected:
    Guests()
    {
        addKeyword("moon");
        addKeyword("tide");
        EXPECT_EQ(m_owner.acquire(), DataFolderLock::Outcome::Acquired);
        QObject::connect(&m_owner, &DataFolderLock::wishReceived, [this](FolderGuest *guest) {
            m_guest = guest;
            m_guests->serve(guest);
        });
    }

    /// Asks as another process would, while this one's event loop turns.
    void ask(const QByteArray &wish)
    {
        auto socket = std::make_unique<QLocalSocket>();
        socket->connectToServer(
            QString::fromUtf8(readWholeFile(folder.filePath(text(".veltrix.lock")))));
        socket->write(wish + '\n');
        waitFor([&socket] { return socket->canReadLine(); });
        EXPECT_EQ(socket->readLine(), QByteArray("taken\n"));
        m_connection = std::make_unique<FolderOwner>(std::move(socket));
        QObject::connect(m_connection.get(), &FolderOwner::answered,
                         [this](const QByteArray &line) { m_take(line); });
        QObject::connect(m_connection.get(), &FolderOwner::ended, [this] { m_hasEnded = true; });
        m_connection->listen();
    }
    /// The same, for an export: what came before the end of the connection.
    std::vector<ExportMessage> answersTo(const ExportWish &wish)
    {
        const auto messages = std::make_shared<std::vector<ExportMessage>>();
        m_take = [messages](const QByteArray &line) {
            messages->push_back(fromJson<ExportMessage>(line));
        };
        ask(toJson(wish));
        waitFor([this] { return m_hasEnded; });
        return *messages;
    }
    void take(const MeasureMessage &message)
    {
        if (message.keyword)
            m_told.append(turnText(*message.keyword));
        if (message.summary)
            m_told.append(summaryText(*message.summary));
        if (message.wrongUse)
            m_told.append(*message.wrongUse);
    }

    DataFolderLock m_owner{folder.path()};
    RankTelling m_telling{*store, folder.filePath(text("told.json")), [] {
                              return DigestChoice();
                          }};
    std::unique_ptr<ServedGuests> m_guests =
        std::make_unique<ServedGuests>(*store, m_telling, exportTables());
    std::unique_ptr<FolderOwner> m_connection;
    /// Who asked last, while he is there.
    QPointer<FolderGuest> m_guest;
    std::function<void(const QByteArray &line)> m_take = [this](const QByteArray &line) {
        take(fromJson<MeasureMessage>(line));
    };
    QStringList m_told;
    bool m_hasEnded = false;
};

TEST_F(Guests, AreToldEachKeywordAndTheEnd)
{
    ask(toJson(MeasureWish{}));
    waitFor([this] { return m_hasEnded; });
    EXPECT_EQ(m_told, (QStringList{text("moon · US · Tideline: rank 2, First observation"),
                                   text("tide · US · Tideline: rank 2, First observation"),
                                   text("2 keywords measured.")}));
    EXPECT_EQ(stateOnDisk().snapshots.size(), 2U);
}

TEST_F(Guests, ThatNameNothingTrackedAreToldSo)
{
    ask(toJson(MeasureWish{{text("Nobody")}, {}, false, false}));
    waitFor([this] { return m_hasEnded; });
    EXPECT_EQ(m_told, QStringList{text("No app is called “Nobody”. There are “Tideline”.")});
}

TEST_F(Guests, ThatLeaveTakeTheirWishWithThem)
{
    client->holds = true;
    ask(toJson(MeasureWish{}));
    waitFor([this] { return !client->searches.isEmpty(); });
    m_connection.reset();
    waitFor([this] { return store->refreshProgress().isIdle(); });
    client->release();
    EXPECT_EQ(client->searches.size(), 1);
    EXPECT_EQ(stateOnDisk().snapshots.size(), 0U);
}

TEST_F(Guests, AreLetGoWhenTheProgramEnds)
{
    client->holds = true;
    ask(toJson(MeasureWish{}));
    waitFor([this] { return !client->searches.isEmpty(); });
    m_guests.reset();
    store.reset();
    EXPECT_EQ(m_told, QStringList()) << "a sum would be the end of the wish";
    m_connection.reset();
    waitFor([this] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return !m_guest;
    });
}

TEST_F(Guests, AreWaitedForByOneThatHasDoneItsOwn)
{
    const Outcome<Done> nobody(finished(m_guests->allServed(view.get_token())));
    EXPECT_TRUE(nobody.hasValue());
    client->holds = true;
    ask(toJson(MeasureWish{}));
    waitFor([this] { return !client->searches.isEmpty(); });
    Outcome<Done> all(finished(m_guests->allServed(view.get_token())));
    EXPECT_FALSE(all.isDone());
    client->release();
    client->release();
    EXPECT_TRUE(all.wait().hasValue());
    waitFor([this] { return m_hasEnded; });
    EXPECT_EQ(m_told.constLast(), text("2 keywords measured."));
}

TEST_F(Guests, AreGivenAnExportAndItsEnd)
{
    const auto messages = answersTo({{}, {}, false, false});
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0], ExportMessage(text("keyword\nmoon\ntide\n")));
    EXPECT_EQ(messages[1], ExportMessage(ExportEnd()));
}

TEST_F(Guests, AreToldWhatOfAnExportIsNotTracked)
{
    const auto messages = answersTo({{}, {text("FR")}, true, true});
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0], ExportMessage(ExportEnd{
                               text("No keyword is tracked in the storefront “FR”."), true}));
}

TEST_F(Guests, ThatReadSlowlyAreSentNoMoreThanTheyTake)
{
    // Far more than a socket holds, in pieces of one keyword each.
    for (int i = 0; i < 40; ++i) {
        KeywordSnapshot large =
            snapshotOf(addKeyword(qUtf8Printable(QString::number(i))), Seconds(60));
        large.popularityStatus = QString(100'000, u'x');
        plant(large);
    }
    m_guests = std::make_unique<ServedGuests>(*store, m_telling, exportTables());
    auto socket = std::make_unique<QLocalSocket>();
    socket->setReadBufferSize(1000);
    socket->connectToServer(
        QString::fromUtf8(readWholeFile(folder.filePath(text(".veltrix.lock")))));
    socket->write(toJson(ExportWish{{}, {}, true, true}) + '\n');
    FolderGuest *guest = nullptr;
    QObject::connect(&m_owner, &DataFolderLock::wishReceived,
                     [&guest](FolderGuest *served) { guest = served; });
    waitFor([&guest] { return guest != nullptr; });
    const auto held = guest->findChild<QLocalSocket *>()->bytesToWrite();
    EXPECT_GT(held, 0);
    EXPECT_LT(held, 300'000) << "a keyword's, and not that of all";

    qint64 read = 0;
    waitFor([&] {
        read += socket->readAll().size();
        return socket->state() == QLocalSocket::UnconnectedState;
    });
    EXPECT_GT(read, 4'000'000);
}

TEST_F(Guests, WithoutAWishAreSentAway)
{
    ask("{\"storefronts\":3}");
    waitFor([this] { return m_hasEnded; });
    EXPECT_EQ(m_told, QStringList());
}

TEST_F(Guests, AreTakenWhileSomebodyMeasuresAndElseGetNoAnswer)
{
    const auto isTaken = [this](std::chrono::milliseconds patience) {
        std::atomic<bool> isDone = false;
        bool taken = false;
        std::thread second([&] {
            taken =
                DataFolderLock(folder.path()).askOwner(toJson(MeasureWish{}), patience) != nullptr;
            isDone = true;
        });
        waitFor([&isDone] { return isDone.load(); });
        second.join();
        return taken;
    };
    EXPECT_TRUE(isTaken(10s));
    QObject::disconnect(&m_owner, &DataFolderLock::wishReceived, nullptr, nullptr);
    EXPECT_FALSE(isTaken(200ms));
}

} // namespace
} // namespace veltrix
