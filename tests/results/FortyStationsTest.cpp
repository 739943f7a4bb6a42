#include "station/results/PostgresResults.h"
#include "tests/results/PostgresServer.h"
#include "tests/station/StationFiles.h"
#include "tests/support/Wait.h"

#include <algorithm>
#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

using platform::Dictionary;
using station::PostgresResults;
using station::ResultOwner;
using testsupport::PostgresServer;
using testsupport::waitUntil;

namespace {

constexpr int Stations = 40;
constexpr int Phases = 4;
constexpr int AnswersInPhase = 6;
constexpr auto Limit = std::chrono::seconds(120);

/// Lets the writers go on, a phase at a time.
class Phase
{
public:
    void go()
    {
        const std::lock_guard lock(m_mutex);
        ++m_number;
        m_changed.notify_all();
    }
    void await(int number)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this, number] { return m_number >= number; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_number = 0;
};

/// One station: an outbox, and a sequence that answers.
class Writer
{
public:
    Writer(const PostgresServer &server, const QString &outbox, int number, Phase &phase)
        : m_run(QStringLiteral("run%1").arg(number))
        , m_results(station::ServerAddress(server.address()), outbox,
                    {station::Backoff(std::chrono::milliseconds(10), std::chrono::milliseconds(200)), Limit})
        , m_thread([this, &phase] { work(phase); })
    {}
    ~Writer() { m_thread.join(); }
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    bool waits() const { return !m_results.state().waiting().isEmpty(); }
    bool hasFailed() const { return m_results.hasFailed(); }

private:
    void work(Phase &phase)
    {
        m_results.write(station::RunBegun{m_run, "Line", "/s", {}, QDateTime::currentDateTimeUtc()});
        for (int i = 0; i < Phases * AnswersInPhase; ++i) {
            phase.await(1 + i / AnswersInPhase);
            const Dictionary answer{{"SN", QString("%1-%2").arg(m_run).arg(i + 1)}, {"second", i}};
            const QDateTime now = QDateTime::currentDateTimeUtc();
            m_results.write(station::CallDone{m_run,
                                              {"ask.lua", 0, {}, 0, "G", {"S"}},
                                              {"showView", {}, answer, {}},
                                              i + 1,
                                              {},
                                              now,
                                              now,
                                              0});
        }
    }

    QString m_run;
    mutable PostgresResults m_results;
    std::thread m_thread;
};

class FortyStationsTest : public ::testing::Test
{
protected:
    FortyStationsTest() { m_server.start(); }

    bool anyWaits() const
    {
        return std::any_of(m_writers.cbegin(), m_writers.cend(),
                           [](const Writer &writer) { return writer.waits(); });
    }
    int stored() const { return m_server.rows("SELECT count(*) FROM calls").value(0).toInt(); }
    /// At any moment each station's answers are there whole, from the first one on without a gap.
    void expectOrder() const
    {
        EXPECT_EQ(m_server.rows("SELECT run FROM calls GROUP BY run HAVING max(call) <> count(*)"),
                  QStringList());
        EXPECT_EQ(m_server.rows("SELECT run, call FROM calls LEFT JOIN answers USING (run, sequence, call)"
                                " GROUP BY run, call HAVING count(value) <> 2"),
                  QStringList());
        EXPECT_EQ(m_server.rows("SELECT run FROM calls WHERE run NOT IN (SELECT run FROM runs)"),
                  QStringList());
    }

    testsupport::StationFiles m_files;
    PostgresServer m_server;
    Phase m_phase;
    std::list<Writer> m_writers;
};

TEST_F(FortyStationsTest, HaveEveryAnswerOnceAndInOrderThoughTheServerIsStoppedAndKilledMeanwhile)
{
    for (int i = 0; i < Stations; ++i)
        m_writers.emplace_back(m_server, m_files.path(QString("outbox%1.sqlite").arg(i)), i, m_phase);
    for (int phase = 0; phase < Phases; ++phase) {
        const int before = phase * AnswersInPhase * Stations;
        m_phase.go();
        // In the midst: some of the phase's answers have come, others wait.
        ASSERT_TRUE(waitUntil([&] { return stored() > before; }, Limit));
        if (phase % 2 == 0)
            m_server.stopAtOnce();
        else
            m_server.kill();
        EXPECT_TRUE(waitUntil([this] { return anyWaits(); }, Limit));
        m_server.start();
        expectOrder();
        ASSERT_TRUE(waitUntil([&] { return stored() == before + AnswersInPhase * Stations; }, Limit));
        expectOrder();
    }
    ASSERT_TRUE(waitUntil([this] { return !anyWaits(); }, Limit));
    EXPECT_TRUE(std::none_of(m_writers.cbegin(), m_writers.cend(),
                             [](const Writer &writer) { return writer.hasFailed(); }));
    EXPECT_EQ(m_server.rows("SELECT count(*) FROM answers WHERE label = 'SN' AND value = run || '-' || call"),
              QStringList{QString::number(Stations * Phases * AnswersInPhase)});
    EXPECT_EQ(m_server.rows("SELECT count(*), count(DISTINCT station_id) FROM runs"), QStringList{"40|40"});
}

} // namespace
