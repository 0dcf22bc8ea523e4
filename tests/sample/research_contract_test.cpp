// SPDX-License-Identifier: GPL-3.0-or-later
// The sample research service keeps the contract of supabase/contract, case by case.
#include "research_contract.h"
#include "research_world.h"
#include "sample/research_question.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

namespace veltrix::sample
{

namespace
{

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using AppStoreState = ResearchWorld::AppStoreState;

constexpr milliseconds pace(3'200);
/// The client of a request over loopback; the name that the service knows it by.
const QString ourselves = QStringLiteral("127.0.0.1");

const Contract &contract()
{
    static const Contract read = Contract::read(QStringLiteral(VELTRIX_RESEARCH_CONTRACT));
    return read;
}

const AppStore &appStore()
{
    static const AppStore store([] { return QDate(2026, 11, 21); });
    return store;
}

ResearchQuestion questionOf(const ContractCase &contractCase)
{
    const QJsonObject subject = subjectOf(contractCase);
    return {subject.value(u"keyword").toString(), subject.value(u"country").toString()};
}

/// Puts a fresh service into the state of a case.
class Given
{
public:
    Given(ResearchWorld &world, const ContractCase &contractCase)
        : m_world(world), m_given(contractCase.given), m_question(questionOf(contractCase))
    {
    }

    void drive()
    {
        static const std::map<QString, void (Given::*)()> states{
            {u"never asked"_qs, &Given::neverAsked},
            {u"fetched today"_qs, &Given::fetchedToday},
            {u"queued"_qs, &Given::queued},
            {u"stale"_qs, &Given::stale},
            {u"blocked"_qs, &Given::blocked},
            {u"failed"_qs, &Given::failed},
            {u"queue full"_qs, &Given::queueFull},
            {u"share spent"_qs, &Given::shareSpent},
            {u"40 outstanding"_qs, &Given::manyOutstanding},
            {u"database out of reach"_qs, &Given::databaseOutOfReach},
        };
        (this->*states.at(m_given.value(u"state").toString()))();
    }

private:
    /// A standing of the expected kind, or the state could not be reached.
    template <typename Kind>
    static void expect(const Standing &standing)
    {
        if (!std::holds_alternative<Kind>(standing))
            throw std::logic_error("the service is not in the state of the case");
    }

    Standing ask(const QString &client) { return m_world.queue().ask(m_question, client); }
    static ResearchQuestion other(int number)
    {
        return {ResearchWorld::anotherKeyword + u' ' + QString::number(number), u"US"_qs};
    }
    /// Queues keywords that no case asks for.
    void askForOthers(int count, const QString &client)
    {
        for (int i = 0; i < count; ++i)
            expect<Pending>(m_world.queue().ask(other(++m_others), client));
    }
    void askForOthersAsManyClients(int count)
    {
        for (int client = 0; count > 0; ++client) {
            const int share = std::min(count, ResearchQueue::mostOutstanding);
            askForOthers(share, QStringLiteral("client %1").arg(client));
            count -= share;
        }
    }
    /// Lets the worker work all that is queued off.
    void workOff(int jobs)
    {
        m_world.queue().wake();
        m_world.advance(jobs * pace);
    }

    void neverAsked() {}
    void fetchedToday()
    {
        ask(u"somebody"_qs);
        workOff(1);
        expect<Ready>(ask(u"somebody"_qs));
        if (m_given.contains(u"blocked"))
            blockFor(m_given.value(u"blocked").toInt());
    }
    void queued()
    {
        askForOthersAsManyClients(m_given.value(u"place").toInt() - 1);
        ask(u"somebody"_qs);
    }
    void stale()
    {
        fetchedToday();
        m_world.advance(24h);
        queued();
        expect<Stale>(ask(u"somebody"_qs));
    }
    void blocked()
    {
        queued();
        blockFor(m_given.value(u"seconds").toInt());
        expect<Blocked>(ask(u"somebody"_qs));
    }
    /// Whatever is next in the queue, and something is, brings the block about.
    void blockFor(int seconds)
    {
        m_world.setAppStore(AppStoreState::Blocks, seconds);
        askForOthers(1, u"somebody else"_qs);
        m_world.queue().wake();
        m_world.queue().ask(other(1), u"somebody else"_qs);
    }
    void failed()
    {
        m_world.setAppStore(AppStoreState::Fails);
        ask(u"somebody"_qs);
        m_world.queue().wake();
        m_world.advance(15s);
        expect<Failed>(ask(u"somebody"_qs));
    }
    void queueFull() { askForOthersAsManyClients(int(ResearchQueue::mostQueued)); }
    void shareSpent()
    {
        for (int spent = 0; spent < ResearchQueue::mostADay;
             spent += ResearchQueue::mostOutstanding) {
            askForOthers(ResearchQueue::mostOutstanding, ourselves);
            workOff(ResearchQueue::mostOutstanding);
        }
    }
    void manyOutstanding() { askForOthers(ResearchQueue::mostOutstanding, ourselves); }
    void databaseOutOfReach() { m_world.queue().loseDatabase(); }

    ResearchWorld &m_world;
    const QJsonObject m_given;
    const ResearchQuestion m_question;
    int m_others = 0;
};

} // namespace

void PrintTo(const ContractCase &contractCase, std::ostream *stream)
{
    *stream << contractCase.name.toStdString();
}

namespace
{

class ResearchContract : public testing::TestWithParam<ContractCase>
{
};

TEST_P(ResearchContract, IsKept)
{
    ResearchWorld world(appStore());
    Given(world, GetParam()).drive();
    httplib::Client client = world.client();
    const auto answer =
        client.send(contract().requestOf(GetParam(), QString::fromUtf8(publishableKey)));
    ASSERT_TRUE(answer) << httplib::to_string(answer.error());
    EXPECT_EQ(contract().differences(GetParam(), *answer).toStdString(), "");
}

/// "a question is posted, not got" becomes AQuestionIsPostedNotGot.
std::string testNameOf(const testing::TestParamInfo<ContractCase> &info)
{
    QString name;
    for (const QString &word : info.param.name.split(u' '))
        name += word.left(1).toUpper() + word.mid(1);
    return name.remove(QRegularExpression(QStringLiteral("[^A-Za-z0-9]"))).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Case, ResearchContract, testing::ValuesIn(contract().cases), testNameOf);

} // namespace
} // namespace veltrix::sample
